#include "office/date_formats.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "util/text.h"

namespace luming {

namespace {

bool Between(int number, int first, int last) {
  return number >= first && number <= last;
}

/// A part in brackets names a colour, a locale, a condition, or counts hours, minutes or seconds beyond a day.
bool CountsTime(std::string_view inside) {
  if (inside.empty()) return false;
  const std::string letters = LowerAscii(inside);
  return letters.find_first_not_of(letters.front()) == std::string::npos &&
         std::string_view("hms").find(letters.front()) != std::string_view::npos;
}

/// The moment of a day number; nothing outside the range of dates.
std::optional<DateTime> DateOfSerial(double serial, DateBase base) {
  constexpr double kDaysTo1904 = 1462;
  constexpr double kLeapDayThatNeverWas = 60;  // 1900-02-29 has a number
  constexpr double kDayBehindTheLast = 2958466;
  constexpr double kMillisecondsOfADay = 86'400'000;
  if (base == DateBase::k1904) serial += kDaysTo1904;
  if (base == DateBase::k1900 && serial >= 1 && serial < kLeapDayThatNeverWas) serial += 1;
  if (!(serial >= 0 && serial < kDayBehindTheLast)) return std::nullopt;
  const std::chrono::milliseconds passed(std::llround(serial * kMillisecondsOfADay));
  return DateTime(DateTime().Point() + passed);
}

}  // namespace

bool IsBuiltInDateFormat(int number) {
  return Between(number, 14, 22) || Between(number, 27, 36) || Between(number, 45, 47) || Between(number, 50, 58);
}

bool IsDateFormat(std::string_view format) {
  constexpr std::string_view kDateLetters = "ymdhsYMDHS";
  for (std::size_t i = 0; i < format.size(); ++i) {
    const char c = format[i];
    if (c == ';') return false;  // the format of positive numbers decides
    if (c == '\\' || c == '_' || c == '*') {
      ++i;
    } else if (c == '"') {
      i = std::min(format.find('"', i + 1), format.size());
    } else if (c == '[') {
      const std::size_t end = std::min(format.find(']', i), format.size());
      if (CountsTime(format.substr(i + 1, end - i - 1))) return true;
      i = end;
    } else if (kDateLetters.find(c) != std::string_view::npos) {
      return true;
    }
  }
  return false;
}

Value ValueOfNumber(double number, bool is_date, DateBase base) {
  if (!is_date) return Value(number);
  const std::optional<DateTime> moment = DateOfSerial(number, base);
  if (!moment) return Value(number);
  return Value(*moment);
}

}  // namespace luming
