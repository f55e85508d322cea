#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"

namespace luming {

/// A connection that becomes the embedded database or the server by the data source that it is opened with. One that
/// was lost is opened again by the next statement, unless that belongs to a transaction which went with it.
class RoutedConnection : public Connection {
 public:
  using Maker = std::function<std::unique_ptr<Connection>()>;

  /// @param server empty in a program without that adapter: opening one is a Failure then
  RoutedConnection(Maker embedded, Maker server) : embedded_(std::move(embedded)), server_(std::move(server)) {}

  static constexpr std::string_view kEmbedded = "(localdb)";

  void Open(std::string_view connection_string) override;
  void Close() override;
  bool IsOpen() const override { return chosen_ && chosen_->IsOpen(); }
  Recordset Execute(std::string_view sql) override { return OpenOne().Execute(sql); }
  void BeginTrans() override;
  void CommitTrans() override;
  void RollbackTrans() override;
  void SetHurry(bool hurry) override {
    if (chosen_) chosen_->SetHurry(hurry);
  }

 private:
  Connection& Chosen();
  /// The same, opened again if it was lost.
  Connection& OpenOne();

  Maker embedded_;
  Maker server_;
  std::unique_ptr<Connection> chosen_;
  std::string address_;   ///< empty unless it was opened and not closed since
  int transactions_ = 0;  ///< begun and not ended, one within the other
};

}  // namespace luming
