#include "localdb/sql_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "localdb/local_connection.h"
#include "support/temp_directory.h"

namespace luming::test {
namespace {

namespace fs = std::filesystem;

/// Runs one script of tests/sql over a fresh store that holds the program's own tables and procedures.
class SqlScriptTest : public testing::Test {
 public:
  explicit SqlScriptTest(fs::path script) : script_(std::move(script)) {}

  void TestBody() override {
    TempDirectory directory;
    FixedClock clock(DateTime(2026, 3, 1, 10, 30, 0));
    CreateStore(directory.Path(), "test");
    LocalConnection connection(directory.Path(), clock);
    connection.Open("Provider=sqloledb;Data Source=(localdb);Initial Catalog=test;User ID=sa;Password=;");
    for (const char* file : {"schema.sql", "procedures.sql"}) {
      connection.RunScript(ReadBytes(fs::path(LUMING_SOURCE_DIR) / "database" / file));
    }
    for (const SqlStep& step : ReadSqlScript(ReadBytes(script_))) {
      std::string wrong = RunSqlStep(connection, step);
      EXPECT_EQ(wrong, "") << script_.filename().string() << ":" << step.line << "\n" << step.sql;
    }
  }

 private:
  fs::path script_;
};

// One test for each script, found when the program starts.
const bool kRegistered = [] {
  std::vector<fs::path> scripts;
  for (const auto& entry : fs::directory_iterator(fs::path(LUMING_SOURCE_DIR) / "tests" / "sql")) {
    if (entry.path().extension() == ".test") scripts.push_back(entry.path());
  }
  std::sort(scripts.begin(), scripts.end());
  for (const fs::path& script : scripts) {
    testing::RegisterTest("SqlScript", script.stem().c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [script]() -> SqlScriptTest* { return new SqlScriptTest(script); });
  }
  return !scripts.empty();
}();

TEST(SqlScripts, AreFound) {
  EXPECT_TRUE(kRegistered);
}

}  // namespace
}  // namespace luming::test
