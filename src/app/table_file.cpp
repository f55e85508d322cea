#include "app/table_file.h"

#include <charconv>
#include <optional>

#include "util/date_text.h"
#include "util/failure.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

namespace {

Failure Damaged(const std::filesystem::path& file, std::size_t line, const std::string& what) {
  return {failure::kFileAccess, "数据文件 " + file.string() + " 第 " + std::to_string(line) + " 行" + what};
}

bool IsColumnName(const std::string& name) {
  return !name.empty() &&
         name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_") == std::string::npos;
}

/// The days of "@-3"; nothing for any other text.
std::optional<int> DaysFromToday(const std::string& field) {
  if (field.size() < 2 || field[0] != '@') return std::nullopt;
  int days = 0;
  const char* end = field.data() + field.size();
  const auto [stop, error] = std::from_chars(field.data() + 1, end, days);
  if (stop != end || error != std::errc{}) return std::nullopt;
  return days;
}

}  // namespace

std::string ReadTextFile(const std::filesystem::path& file) {
  std::optional<std::string> bytes = ReadWholeFile(file);
  if (!bytes) throw Failure(failure::kFileNotFound, "缺少数据库文件：" + file.string());
  if (!IsValidUtf8(*bytes)) throw Failure(failure::kFileAccess, "文件不是 UTF-8 编码：" + file.string());
  return Replace(*bytes, "\r\n", "\n");
}

TableFile ReadTableFile(const std::filesystem::path& file) {
  std::vector<std::string> lines = Split(ReadTextFile(file), "\n");
  if (!lines.empty() && lines.back().empty()) lines.pop_back();
  if (lines.empty() || lines[0].empty()) throw Damaged(file, 1, "没有列名。");
  TableFile table{file.stem().string(), Split(lines[0], "\t"), {}};
  for (const std::string& column : table.columns) {
    if (!IsColumnName(column)) throw Damaged(file, 1, "的列名“" + column + "”不正确。");
  }
  table.rows.reserve(lines.size() - 1);
  for (std::size_t i = 1; i < lines.size(); ++i) {
    std::vector<std::string> fields = lines[i].empty() ? std::vector<std::string>{""} : Split(lines[i], "\t");
    if (fields.size() != table.columns.size()) {
      throw Damaged(
          file, i + 1,
          "有 " + std::to_string(fields.size()) + " 个字段，应为 " + std::to_string(table.columns.size()) + " 个。");
    }
    table.rows.push_back(std::move(fields));
  }
  return table;
}

std::string SqlOfField(const std::string& field, const DateTime& today) {
  if (field == "\\N") return "NULL";
  if (const std::optional<int> days = DaysFromToday(field)) {
    return "'" + FormatDate(today.AddDays(*days), "yyyy-mm-dd") + "'";
  }
  return "'" + Replace(field, "'", "''") + "'";
}

}  // namespace luming
