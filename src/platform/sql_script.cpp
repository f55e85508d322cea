#include "platform/sql_script.h"

#include "util/text.h"

namespace luming {

namespace {

bool IsSeparator(std::string_view line) {
  while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == ';')) line.remove_suffix(1);
  return EqualsIgnoreCase(Trim(line), "GO");
}

bool IsBlank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

std::vector<SqlBatch> SplitScript(std::string_view script) {
  std::vector<SqlBatch> batches;
  SqlBatch batch{"", 1};
  std::size_t line_number = 0;
  const auto finish = [&] {
    if (!IsBlank(batch.text)) batches.push_back(std::move(batch));
    batch = {"", line_number + 1};
  };
  for (const std::string& line : Split(script, "\n")) {
    ++line_number;
    if (IsSeparator(line)) {
      finish();
    } else {
      batch.text += line + "\n";
    }
  }
  finish();
  return batches;
}

void RunScript(Connection& connection, std::string_view script) {
  connection.BeginTrans();
  for (const SqlBatch& batch : SplitScript(script)) {
    try {
      connection.Execute(batch.text);
    } catch (const Failure& failure) {
      if (connection.IsOpen()) connection.RollbackTrans();
      const std::string place = "脚本第 " + std::to_string(batch.first_line) + " 行起的一批语句：";
      throw Failure(failure.number(), place + failure.description(), failure.source());
    }
  }
  connection.CommitTrans();
}

}  // namespace luming
