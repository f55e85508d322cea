#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "app/connection_router.h"
#include "sqlserver/server_connection.h"
#include "support/receipt_test.h"
#include "tds_server/tds_server.h"

namespace luming {

/// The receipt screen over the wire: adapter, driver, server, and behind it the store, which the test can look into.
class WireReceiptTest : public ReceiptTest {
 protected:
  using Patience = ServerConnection::Patience;

  WireReceiptTest() : store(app.Cn) { Connect(Patience{}); }

  void Connect(Patience patience) {
    app.ConnStr = AddressOf(server);
    app.Cn = std::make_shared<RoutedConnection>(nullptr,
                                                [patience] { return std::make_unique<ServerConnection>(patience); });
    app.Cn->Open(app.ConnStr);
  }
  /// From here on a statement gets one second.
  void BecomeImpatient() { Connect({std::chrono::seconds(2), std::chrono::seconds(1)}); }

  static std::string AddressOf(const tds::TdsServer& server) {
    return "Provider=sqloledb;Data Source=127.0.0.1," + std::to_string(server.Port()) +
           ";Initial Catalog=lumndata;User ID=sa;Password=;";
  }

  std::shared_ptr<Connection> store;  ///< beside the program, without a wire
  tds::TdsServer server{directory.Path(), clock};
};

}  // namespace luming
