#include "localdb/sql_script.h"

#include <stdexcept>

#include "localdb/errors.h"
#include "util/text.h"

namespace luming::test {
namespace {

std::string Outcome(const Failure& failure) {
  auto* error = dynamic_cast<const localdb::SqlError*>(&failure);
  std::string native = error ? std::to_string(error->native()) : "-";
  return native + " (" + std::to_string(failure.number()) + ") " + failure.description();
}

std::string CheckError(const Failure& failure, const SqlStep& step) {
  std::size_t blank = step.expected.find(' ');
  std::string number = step.expected.substr(0, blank);
  std::string text = blank == std::string::npos ? "" : step.expected.substr(blank + 1);
  std::string outcome = Outcome(failure);
  bool right = outcome.starts_with(number + " ") && failure.description().find(text) != std::string::npos;
  return right ? "" : "wanted error " + step.expected + ", found error " + outcome;
}

std::string FieldText(const Value& value) {
  return value.IsNull() ? "NULL" : value.Text();
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
      if (line.starts_with("error ")) {
        step.kind = SqlStep::Kind::kError;
        step.expected = line.substr(6);
      } else if (line == "query" || line.starts_with("query ")) {
        step.kind = SqlStep::Kind::kQuery;
        if (line != "query") step.columns = Split(line.substr(6), ",");
      } else if (line != "ok") {
        throw std::runtime_error("line " + std::to_string(line_number) + ": ok, query or error wanted");
      }
      steps.push_back(step);
      in_step = true;
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

}  // namespace luming::test
