#pragma once

#include <gtest/gtest.h>

#include <string>

#include "localdb/local_connection.h"
#include "sqlserver/server_connection.h"
#include "support/failure_of.h"
#include "support/temp_directory.h"
#include "tds_server/tds_server.h"

namespace luming {

/// A server over an empty store, and connections to it over the wire with the real driver.
class WireTest : public ::testing::Test {
 protected:
  WireTest() { CreateStore(directory.Path(), "lumndata"); }

  /// As the connection dialog puts it together.
  std::string Address(const std::string& database = "lumndata", const std::string& user = "sa",
                      const std::string& password = "") const {
    return "Provider=sqloledb;Data Source=127.0.0.1," + std::to_string(server.Port()) + ";Initial Catalog=" + database +
           ";User ID=" + user + ";Password=" + password + ";";
  }
  void Connect() { connection.Open(Address()); }
  std::string First(const std::string& sql) { return connection.Execute(sql).Field(0).TextOrEmpty(); }
  long NumberOf(const std::string& sql) {
    return FailureOf([&] { connection.Execute(sql); });
  }

  TempDirectory directory;
  FixedClock clock{DateTime(2026, 3, 1, 8, 5, 0)};
  tds::TdsServer server{directory.Path(), clock};
  ServerConnection connection;
};

}  // namespace luming
