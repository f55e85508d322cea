#include "app/connection_router.h"

#include "util/text.h"

namespace luming {

std::string ConnectionStringValue(std::string_view connection_string, std::string_view key) {
  for (const std::string& part : Split(connection_string, ";")) {
    const std::size_t equals = part.find('=');
    if (equals == std::string::npos) continue;
    if (EqualsIgnoreCase(Trim(std::string_view(part).substr(0, equals)), key)) return Trim(part.substr(equals + 1));
  }
  return {};
}

void RoutedConnection::Open(std::string_view connection_string) {
  const std::string source = ConnectionStringValue(connection_string, "Data Source");
  if (source.empty()) {
    throw Failure(failure::kGeneralProvider, "没有指定数据库服务器，请设置服务器名和数据库名称。");
  }
  const Maker& maker = EqualsIgnoreCase(source, kEmbedded) ? embedded_ : server_;
  if (!maker)
    throw Failure(failure::kGeneralProvider, "本程序没有 SQL Server 连接组件，无法连接服务器“" + source + "”。");
  std::unique_ptr<Connection> made = maker();
  made->Open(connection_string);
  chosen_ = std::move(made);
}

void RoutedConnection::Close() {
  if (chosen_) chosen_->Close();
}

Connection& RoutedConnection::Chosen() {
  if (!chosen_) throw StandardFailure(failure::kClosedObject);
  return *chosen_;
}

}  // namespace luming
