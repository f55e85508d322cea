#include "localdb/sql_script.h"

#include <gtest/gtest.h>

#include <optional>

#include "localdb/local_connection.h"

namespace luming::test {
namespace {

class EmbeddedStage : public SqlStage {
 public:
  Connection& Open(const std::filesystem::path& directory, const Clock& clock) override {
    connection_.emplace(directory, clock);
    connection_->Open("Provider=sqloledb;Data Source=(localdb);Initial Catalog=test;User ID=sa;Password=;");
    return *connection_;
  }

 private:
  std::optional<LocalConnection> connection_;
};

const bool kRegistered = RegisterSqlScripts("SqlScript", [] { return std::make_unique<EmbeddedStage>(); });

TEST(SqlScripts, AreFound) {
  EXPECT_TRUE(kRegistered);
}

}  // namespace
}  // namespace luming::test
