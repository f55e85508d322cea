#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"

namespace luming {

/// The value behind "key=" in a connection string, keys without regard to case; empty when it is missing.
std::string ConnectionStringValue(std::string_view connection_string, std::string_view key);

/// A connection that becomes the embedded database or the server by the data source that it is opened with.
class RoutedConnection : public Connection {
 public:
  using Maker = std::function<std::unique_ptr<Connection>()>;

  /// @param server empty in a program without that adapter: opening one is a Failure then
  RoutedConnection(Maker embedded, Maker server) : embedded_(std::move(embedded)), server_(std::move(server)) {}

  static constexpr std::string_view kEmbedded = "(localdb)";

  void Open(std::string_view connection_string) override;
  void Close() override;
  bool IsOpen() const override { return chosen_ && chosen_->IsOpen(); }
  Recordset Execute(std::string_view sql) override { return Chosen().Execute(sql); }
  void BeginTrans() override { Chosen().BeginTrans(); }
  void CommitTrans() override { Chosen().CommitTrans(); }
  void RollbackTrans() override { Chosen().RollbackTrans(); }

 private:
  Connection& Chosen();

  Maker embedded_;
  Maker server_;
  std::unique_ptr<Connection> chosen_;
};

}  // namespace luming
