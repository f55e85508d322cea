#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "util/clock.h"

namespace luming::test {

/// One step of a script of SQL and what is expected of it. tests/sql/README.md tells the format.
struct SqlStep {
  enum class Kind { kOk, kError, kQuery };
  Kind kind = Kind::kOk;
  int line = 0;
  std::string sql;
  std::string expected;              ///< rows of a query; number, and perhaps a part of the text, of an error
  std::vector<std::string> columns;  ///< of a query that looks at some columns only
};

/// Throws std::runtime_error with the line when the script breaks the format.
std::vector<SqlStep> ReadSqlScript(std::string_view text);

/// The rows of all results, fields apart by tabs; a line "----" stands between results. No `columns` means all.
std::string RowsText(Recordset& rows, const std::vector<std::string>& columns);

/// Runs one step. Gives what is wrong with the outcome, nothing when it is as expected.
std::string RunSqlStep(Connection& connection, const SqlStep& step);

/// Makes the store "test" with the program's own tables and procedures.
void MakeScriptStore(const std::filesystem::path& directory, const Clock& clock);

/// What a script runs on: a connection to a store made by MakeScriptStore, and what stands behind it.
class SqlStage {
 public:
  virtual ~SqlStage() = default;
  virtual Connection& Open(const std::filesystem::path& directory, const Clock& clock) = 0;
};

/// Adds one test for each script of tests/sql to the test program. False when there is none.
bool RegisterSqlScripts(const char* suite, const std::function<std::unique_ptr<SqlStage>()>& make_stage);

}  // namespace luming::test
