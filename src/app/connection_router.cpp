#include "app/connection_router.h"

#include "platform/connection_string.h"
#include "util/text.h"

namespace luming {

void RoutedConnection::Open(std::string_view connection_string) {
  const std::string source = ConnectionString(connection_string).Server();
  if (source.empty()) {
    throw Failure(failure::kGeneralProvider, "没有指定数据库服务器，请设置服务器名和数据库名称。");
  }
  const Maker& maker = EqualsIgnoreCase(source, kEmbedded) ? embedded_ : server_;
  if (!maker)
    throw Failure(failure::kGeneralProvider, "本程序没有 SQL Server 连接组件，无法连接服务器“" + source + "”。");
  std::unique_ptr<Connection> made = maker();
  made->Open(connection_string);
  chosen_ = std::move(made);
  address_ = connection_string;
  transactions_ = 0;
}

void RoutedConnection::Close() {
  address_.clear();
  transactions_ = 0;
  if (chosen_) chosen_->Close();
}

void RoutedConnection::BeginTrans() {
  OpenOne().BeginTrans();
  ++transactions_;
}

void RoutedConnection::CommitTrans() {
  if (transactions_ > 0) --transactions_;
  Chosen().CommitTrans();
}

void RoutedConnection::RollbackTrans() {
  transactions_ = 0;
  Chosen().RollbackTrans();
}

Connection& RoutedConnection::OpenOne() {
  Connection& chosen = Chosen();
  const bool lost = !address_.empty() && !chosen.IsOpen();
  if (lost && transactions_ == 0) chosen.Open(address_);
  return chosen;
}

Connection& RoutedConnection::Chosen() {
  if (!chosen_) throw StandardFailure(failure::kClosedObject);
  return *chosen_;
}

}  // namespace luming
