#include "localdb/sql_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "localdb/errors.h"
#include "localdb/local_connection.h"
#include "platform/server_errors.h"
#include "platform/sql_script.h"
#include "support/temp_directory.h"
#include "util/text.h"

namespace luming::test {
namespace {

namespace fs = std::filesystem;

/// The server's own number, where the failure still knows it, and the one that an ADO client shows.
std::string Outcome(const Failure& failure) {
  const auto* error = dynamic_cast<const localdb::SqlError*>(&failure);
  const std::string native = error ? std::to_string(error->native()) + " " : "";
  return native + "(" + std::to_string(failure.number()) + ") " + failure.description();
}

std::string CheckError(const Failure& failure, const SqlStep& step) {
  const std::size_t blank = step.expected.find(' ');
  const int number = std::stoi(step.expected.substr(0, blank));
  const std::string text = blank == std::string::npos ? "" : step.expected.substr(blank + 1);
  const auto* error = dynamic_cast<const localdb::SqlError*>(&failure);
  const bool right = (!error || error->native() == number) && failure.number() == AdoNumberOf(number) &&
                     failure.description().find(text) != std::string::npos;
  return right ? "" : "wanted error " + step.expected + ", found error " + Outcome(failure);
}

std::string FieldText(const Value& value) {
  return value.IsNull() ? "NULL" : value.Text();
}

class SqlScriptTest : public testing::Test {
 public:
  SqlScriptTest(fs::path script, std::unique_ptr<SqlStage> stage)
      : script_(std::move(script)), stage_(std::move(stage)) {}

  void TestBody() override {
    const TempDirectory directory;
    const FixedClock clock(DateTime(2026, 3, 1, 10, 30, 0));
    MakeScriptStore(directory.Path(), clock);
    Connection& connection = stage_->Open(directory.Path(), clock);
    for (const SqlStep& step : ReadSqlScript(ReadBytes(script_))) {
      const std::string wrong = RunSqlStep(connection, step);
      EXPECT_EQ(wrong, "") << script_.filename().string() << ":" << step.line << "\n" << step.sql;
    }
    stage_.reset();
  }

 private:
  fs::path script_;
  std::unique_ptr<SqlStage> stage_;
};

/// "SQL => outcome" in one line. False for any other line.
bool ReadOneLineStep(const std::string& line, SqlStep& step) {
  const std::string arrow = " => ";
  const std::size_t end = line.rfind(arrow);
  if (end == std::string::npos) return false;
  const std::size_t colon = line.find(": ");
  const bool some_columns = colon < line.find(' ');
  if (some_columns) step.columns = Split(line.substr(0, colon), ",");
  const std::size_t start = some_columns ? colon + 2 : 0;
  step.sql = line.substr(start, end - start);
  const std::string outcome = line.substr(end + arrow.size());
  if (outcome == "ok") return true;
  if (outcome.starts_with("error ")) {
    step.kind = SqlStep::Kind::kError;
    step.expected = outcome.substr(6);
    return true;
  }
  step.kind = SqlStep::Kind::kQuery;
  if (outcome == "(no rows)") return true;
  for (const std::string& row : Split(outcome, " | ")) step.expected += row + "\n";
  return true;
}

}  // namespace

std::vector<SqlStep> ReadSqlScript(std::string_view text) {
  std::vector<SqlStep> steps;
  bool in_step = false;
  bool in_rows = false;
  int line_number = 0;
  for (const std::string& line : Split(text, "\n")) {
    ++line_number;
    if (in_step && line.empty()) in_step = in_rows = false;
    if (line.empty() || (!in_step && line.starts_with('#'))) continue;
    if (!in_step) {
      SqlStep step;
      step.line = line_number;
      in_step = !ReadOneLineStep(line, step);
      if (!in_step) {
        steps.push_back(step);
        continue;
      }
      if (line == "query" || line.starts_with("query ")) {
        step.kind = SqlStep::Kind::kQuery;
        if (line != "query") step.columns = Split(line.substr(6), ",");
      } else if (line != "ok") {
        throw std::runtime_error("line " + std::to_string(line_number) + ": ok, query or SQL => outcome wanted");
      }
      steps.push_back(step);
    } else if (in_rows) {
      steps.back().expected += line + "\n";
    } else if (line == "=>" && steps.back().kind == SqlStep::Kind::kQuery) {
      in_rows = true;
    } else {
      steps.back().sql += line + "\n";
    }
  }
  return steps;
}

std::string RowsText(Recordset& rows, const std::vector<std::string>& columns) {
  std::string text;
  for (; !rows.Eof(); rows.MoveNext()) {
    std::vector<std::string> fields;
    for (const std::string& column : columns) fields.push_back(FieldText(rows.Field(column)));
    for (std::size_t i = 0; columns.empty() && i < rows.ColumnCount(); ++i) fields.push_back(FieldText(rows.Field(i)));
    text += Join(fields, "\t") + "\n";
  }
  Recordset next = rows.NextRecordset();
  return next.IsOpen() ? text + "----\n" + RowsText(next, columns) : text;
}

std::string RunSqlStep(Connection& connection, const SqlStep& step) {
  try {
    Recordset rows = connection.Execute(step.sql);
    if (step.kind == SqlStep::Kind::kError) return "wanted error " + step.expected + ", found none";
    if (step.kind == SqlStep::Kind::kOk) return "";
    if (!rows.IsOpen()) return "wanted rows, found no result";
    std::string found = RowsText(rows, step.columns);
    return found == step.expected ? "" : "wanted rows\n" + step.expected + "found\n" + found;
  } catch (const Failure& failure) {
    if (step.kind == SqlStep::Kind::kError) return CheckError(failure, step);
    return "found error " + Outcome(failure);
  }
}

void MakeScriptStore(const fs::path& directory, const Clock& clock) {
  CreateStore(directory, "test");
  LocalConnection connection(directory, clock);
  connection.Open("Data Source=(localdb);Initial Catalog=test;");
  for (const char* file : {"schema.sql", "procedures.sql"}) {
    RunScript(connection, ReadBytes(fs::path(LUMING_SOURCE_DIR) / "database" / file));
  }
}

bool RegisterSqlScripts(const char* suite, const std::function<std::unique_ptr<SqlStage>()>& make_stage) {
  std::vector<fs::path> scripts;
  for (const auto& entry : fs::directory_iterator(fs::path(LUMING_SOURCE_DIR) / "tests" / "sql")) {
    if (entry.path().extension() == ".test") scripts.push_back(entry.path());
  }
  std::sort(scripts.begin(), scripts.end());
  for (const fs::path& script : scripts) {
    testing::RegisterTest(suite, script.stem().c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [=]() -> SqlScriptTest* { return new SqlScriptTest(script, make_stage()); });
  }
  return !scripts.empty();
}

}  // namespace luming::test
