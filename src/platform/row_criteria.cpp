#include "platform/row_criteria.h"

#include "util/date_text.h"
#include "util/failure.h"
#include "util/number_text.h"
#include "util/text.h"
#include "util/text_equality.h"

namespace luming {

namespace {

[[noreturn]] void Refuse() {
  throw StandardFailure(failure::kBadArgument);
}

/// The field's name, without the brackets that may stand around it.
std::string FieldOf(std::string_view text) {
  std::string name = Trim(text);
  if (name.starts_with('[') && name.ends_with(']')) name = name.substr(1, name.size() - 2);
  if (name.empty()) Refuse();
  return name;
}

std::string Unquoted(std::string_view literal) {
  if (literal.size() < 2 || !literal.ends_with('\'')) Refuse();
  literal = literal.substr(1, literal.size() - 2);
  std::string text;
  for (std::size_t at = 0; at < literal.size(); ++at) {
    if (literal[at] == '\'' && !literal.substr(++at).starts_with('\'')) Refuse();
    text += literal[at];
  }
  return text;
}

}  // namespace

RowCriteria::RowCriteria(std::string_view text) {
  const std::size_t sign = text.find_first_of("=<>");
  if (sign == std::string_view::npos) Refuse();
  field_ = FieldOf(text.substr(0, sign));
  equal_ = text[sign] == '=';
  if (!equal_ && !text.substr(sign).starts_with("<>")) Refuse();
  wanted_ = Trim(text.substr(sign + (equal_ ? 1 : 2)));
  const bool quoted = wanted_.starts_with('\'');
  if (quoted) wanted_ = Unquoted(wanted_);
  number_ = ParseNumber(wanted_);
  if (!quoted && !number_) Refuse();
}

bool RowCriteria::Holds(const Value& value) const {
  return (!value.IsNull() && Equals(value)) == equal_;
}

bool RowCriteria::Equals(const Value& value) const {
  if (const auto* text = std::get_if<std::string>(&value.data())) return EqualsInDatabase(*text, wanted_);
  if (const auto* moment = std::get_if<DateTime>(&value.data())) {
    const std::optional<DateTime> wanted = ParseDate(wanted_, DateTime());
    if (!wanted) Refuse();
    return *moment == *wanted;
  }
  if (!number_) Refuse();
  return value.Number() == *number_;
}

}  // namespace luming
