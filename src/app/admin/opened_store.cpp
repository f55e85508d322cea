#include "app/admin/opened_store.h"

#include <algorithm>

#include "app/store_place.h"
#include "util/ansi_text.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {

OpenedStore::OpenedStore(const std::string& place) : connection_(OpenStore(place, clock_)) {}

Recordset OpenedStore::Run(std::string_view sql, const std::vector<std::string>& texts) const {
  std::string statement;
  std::size_t next = 0;
  for (const char character : sql) {
    if (character == '?') {
      statement += "'" + Replace(texts.at(next++), "'", "''") + "'";
    } else {
      statement += character;
    }
  }
  return connection_->Execute(statement);
}

std::vector<std::string> OpenedStore::Column(std::string_view sql, const std::vector<std::string>& texts) const {
  std::vector<std::string> column;
  for (Recordset rows = Run(sql, texts); !rows.Eof(); rows.MoveNext()) {
    column.push_back(std::as_const(rows).Field(0).TextOrEmpty());
  }
  return column;
}

int OpenedStore::Count(std::string_view sql, const std::vector<std::string>& texts) const {
  const Recordset rows = Run(sql, texts);
  return rows.Eof() ? 0 : static_cast<int>(rows.Field(0).NumberOr(0));
}

void OpenedStore::Change(const std::function<void()>& change) const {
  connection_->BeginTrans();
  try {
    change();
    connection_->CommitTrans();
  } catch (const std::exception&) {
    connection_->RollbackTrans();
    throw;
  }
}

void DemandUsableName(const std::string& what, const std::string& name) {
  constexpr std::size_t kColumnWidth = 50;
  const auto refuse = [&](const std::string& why) {
    throw Failure(failure::kInvalidCall, what + "“" + name + "”" + why);
  };
  if (Trim(name).empty()) throw Failure(failure::kInvalidCall, what + "不能为空。");
  if (!IsValidUtf8(name)) throw Failure(failure::kInvalidCall, what + "不是 UTF-8 编码的文字。");
  if (Trim(name) != name) refuse("的前后不能有空格。");
  // The screens put names into their statements as they stand and compare them by pattern.
  if (name.find_first_of("'\"[]%_") != std::string::npos) refuse("不能包含引号、方括号、百分号和下划线。");
  const auto is_control = [](char byte) { return static_cast<unsigned char>(byte) < ' ' || byte == 0x7F; };
  if (std::ranges::any_of(name, is_control)) throw Failure(failure::kInvalidCall, what + "不能包含控制字符。");
  if (FromAnsi(ToAnsi(name)) != name) refuse("中有代码页 936（GBK）没有的字，无法保存。");
  if (const std::size_t length = AnsiLength(name); length > kColumnWidth) {
    refuse("太长：共 " + std::to_string(length) + " 个字节，最多 50 个字节（一个汉字两个字节）。");
  }
}

std::vector<std::string> ListOf(const std::string& text) {
  std::vector<std::string> parts;
  for (const std::string& part : Split(Replace(Replace(text, "，", ","), "、", ","), ",")) {
    if (const std::string name = Trim(part); !name.empty()) parts.push_back(name);
  }
  return parts;
}

std::string Listed(const std::vector<std::string>& names, const char* none) {
  return names.empty() ? none : Join(names, "、");
}

std::string TableText(const std::vector<std::vector<std::string>>& rows) {
  // In code page 936 a character has as many bytes as a terminal gives it places.
  std::vector<std::size_t> widths;
  for (const std::vector<std::string>& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t at = 0; at < row.size(); ++at) widths[at] = std::max(widths[at], AnsiLength(row[at]));
  }
  constexpr std::size_t kGap = 2;
  std::string text;
  for (const std::vector<std::string>& row : rows) {
    std::string line;
    for (std::size_t at = 0; at < row.size(); ++at) {
      line += row[at];
      if (at + 1 < row.size()) line += std::string(widths[at] - AnsiLength(row[at]) + kGap, ' ');
    }
    text += TrimRight(line) + "\n";
  }
  return text;
}

}  // namespace luming
