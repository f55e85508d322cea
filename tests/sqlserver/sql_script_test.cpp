#include "localdb/sql_script.h"

#include <gtest/gtest.h>

#include <optional>

#include "sqlserver/server_connection.h"
#include "tds_server/tds_server.h"

namespace luming::test {
namespace {

/// The whole way: adapter, driver manager, driver, wire, and the engine behind a server.
class WireStage : public SqlStage {
 public:
  Connection& Open(const std::filesystem::path& directory, const Clock& clock) override {
    server_.emplace(directory, clock);
    connection_.Open("Provider=sqloledb;Data Source=127.0.0.1," + std::to_string(server_->Port()) +
                     ";Initial Catalog=test;User ID=sa;Password=;");
    return connection_;
  }

 private:
  std::optional<tds::TdsServer> server_;
  ServerConnection connection_;
};

const bool kRegistered = RegisterSqlScripts("SqlScriptOverWire", [] { return std::make_unique<WireStage>(); });

TEST(SqlScriptsOverWire, AreFound) {
  EXPECT_TRUE(kRegistered);
}

}  // namespace
}  // namespace luming::test
