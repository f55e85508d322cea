#include "platform/statement.h"

#include "util/date_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr std::size_t kShownCharacters = 30;

/// Whether every quote is one of an adjacent pair, so that a literal around the text ends where it should.
bool QuotesArePaired(std::string_view text) {
  for (std::size_t at = text.find('\''); at != std::string_view::npos; at = text.find('\'', at + 2)) {
    if (text.substr(at + 1, 1) != "'") return false;
  }
  return true;
}

std::size_t DigitsAt(std::string_view text, std::size_t at) {
  const std::size_t end = text.find_first_not_of("0123456789", at);
  return (end == std::string_view::npos ? text.size() : end) - at;
}

/// Whether a text is a number by the words of the database, which are fewer than an operator's: no currency sign, no
/// separators of thousands.
bool IsNumberLiteral(std::string_view text) {
  std::size_t at = 0;
  const auto skip_one_of = [&](std::string_view characters) {
    const bool found = at < text.size() && characters.find(text[at]) != std::string_view::npos;
    if (found) ++at;
    return found;
  };
  while (skip_one_of(" ")) {
  }
  skip_one_of("+-");
  std::size_t digits = DigitsAt(text, at);
  at += digits;
  if (skip_one_of(".")) {
    const std::size_t decimals = DigitsAt(text, at);
    digits += decimals;
    at += decimals;
  }
  if (digits == 0) return false;
  if (skip_one_of("eE")) {
    skip_one_of("+-");
    const std::size_t exponent = DigitsAt(text, at);
    if (exponent == 0) return false;
    at += exponent;
  }
  while (skip_one_of(" ")) {
  }
  return at == text.size();
}

/// "“第3行 数量”的内容“abc”", and without a name "内容“abc”".
std::string ContentOf(const ValueSource& source, std::string_view text) {
  std::string words;
  if (!source.name.empty()) {
    words = "“" + (source.row == 0 ? "" : "第" + std::to_string(source.row) + "行 ");
    words.append(source.name).append("”的");
  }
  if (source.secret) return words + "内容";
  const std::string start = Left(text, kShownCharacters);
  return words + "内容“" + start + (start.size() < text.size() ? "…”" : "”");
}

}  // namespace

Statement& Statement::operator+=(const Statement& part) {
  text_ += part.text_;
  if (flaw_.empty()) flaw_ = part.flaw_;
  return *this;
}

Statement& Statement::operator+=(const Quoted& value) {
  text_ += '\'';
  text_ += value.text;
  text_ += '\'';
  if (flaw_.empty() && !QuotesArePaired(value.text)) {
    flaw_ = ContentOf(value.source, value.text) + "含有不成对的单引号，语句无法执行。";
  }
  return *this;
}

Statement& Statement::operator+=(const Bare& value) {
  text_ += value.text;
  if (flaw_.empty() && !IsNumberLiteral(value.text)) {
    flaw_ = ContentOf(value.source, value.text) + "不是数字，语句无法执行。";
  }
  return *this;
}

Statement operator+(Statement left, std::string_view right) {
  left += right;
  return left;
}

Statement operator+(Statement left, const Statement& right) {
  left += right;
  return left;
}

Statement operator+(Statement left, const Quoted& right) {
  left += right;
  return left;
}

Statement operator+(Statement left, const Bare& right) {
  left += right;
  return left;
}

Statement operator+(std::string left, const Statement& right) {
  return Statement(std::move(left)) + right;
}

Statement operator+(std::string left, const Quoted& right) {
  return Statement(std::move(left)) + right;
}

Statement operator+(std::string left, const Bare& right) {
  return Statement(std::move(left)) + right;
}

Statement InsertOf(std::string words, std::initializer_list<Statement> values) {
  Statement insert(std::move(words));
  const char* separator = "";
  for (const Statement& value : values) {
    insert += separator;
    insert += value;
    separator = ",";
  }
  insert += ")";
  return insert;
}

Statement DayOrNull(std::string_view text) {
  return IsDate(text) ? Statement(Quoted(text)) : Statement("Null");
}

std::string Less(double quantity) {
  return quantity < 0 ? "-(" + NumberText(quantity) + ")" : "-" + NumberText(quantity);
}

}  // namespace luming
