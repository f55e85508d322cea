#include "screen/date_box.h"

#include <array>

#include "screen/forms.h"
#include "util/date_text.h"

namespace luming {

namespace {

enum DatePart { kYear, kMonth, kDay, kDateParts };
constexpr std::array<std::size_t, kDateParts> kDigitsOf = {4, 2, 2};

/// The date with one of its parts changed; a day past the end of the month becomes its last day, unless it is the day
/// that was given. The date itself when there is none such.
DateTime WithPart(const DateTime& date, int part, int number) {
  const int year = part == kYear ? number : date.Year();
  const int month = part == kMonth ? number : date.Month();
  int day = part == kDay ? number : date.Day();
  if (!IsCivilDate(year, month, 1) || (part == kDay && !IsCivilDate(year, month, day))) return date;
  while (!IsCivilDate(year, month, day)) --day;
  return {year, month, day, date.Hour(), date.Minute(), date.Second(), date.Millisecond()};
}

}  // namespace

DateBox::DateBox(Form* form, std::string name, std::string caption)
    : Control(form, ControlKind::kDateBox, std::move(name), std::move(caption)),
      value_(form->Registry().clock().Today()) {}

void DateBox::SetValue(const DateTime& value) {
  if (value_ == value) return;
  Forms::HandlerScope scope(Owner().Registry());
  value_ = value;
  Changed();
  change.Fire();
}

std::string DateBox::Text() const {
  return FormatDate(value_, "yyyy-mm-dd");
}

void DateBox::SelectAll() {
  part_ = kYear;
  typed_.clear();
}

void DateBox::FocusGained() {
  SelectAll();
  Control::FocusGained();
}

bool DateBox::NextPart() {
  if (typed_.empty()) return false;
  ++part_;
  typed_.clear();
  return true;
}

bool DateBox::TypeDigit(char digit) {
  const int part = part_;
  const std::string typed = typed_ + digit;
  const bool whole = typed.size() == kDigitsOf[static_cast<std::size_t>(part)];
  const int number = std::stoi(typed);
  // A year counts once it is whole, month and day as soon as they can be one.
  const DateTime date = part == kYear && !whole ? value_ : WithPart(value_, part, number);
  const bool is_part = part == kYear ? date.Year() == number : (part == kMonth ? date.Month() : date.Day()) == number;
  if (whole && !is_part) return false;
  typed_ = typed;
  if (whole) NextPart();
  if (is_part) SetValue(date);
  return true;
}

bool DateBox::TypeCharacter(char32_t character) {
  if (ReadOnly() || part_ == kDateParts) return false;
  if (character == U'-' || character == U'/' || character == U'.') return NextPart();
  return character >= U'0' && character <= U'9' && TypeDigit(static_cast<char>(character));
}

void DateBox::DefaultKey(KeyEvent& event) {
  if (ReadOnly() || (event.code != key::kUp && event.code != key::kDown)) return;
  event.handled = true;
  SetValue(value_.AddDays(event.code == key::kUp ? 1 : -1));
}

}  // namespace luming
