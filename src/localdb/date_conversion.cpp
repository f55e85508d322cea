#include <array>
#include <cstdio>

#include "localdb/conversion.h"
#include "localdb/errors.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Reads the parts of a date text from left to right.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : text_(text) {}

  void SkipBlanks() {
    while (at_ < text_.size() && text_[at_] == ' ') ++at_;
  }
  bool AtEnd() const { return at_ == text_.size(); }
  char Peek() const { return AtEnd() ? '\0' : text_[at_]; }
  bool Take(char c) {
    if (Peek() != c) return false;
    ++at_;
    return true;
  }
  /// Up to `most` digits; nothing without any.
  std::optional<int> Number(std::size_t most) {
    std::size_t start = at_;
    int value = 0;
    while (at_ < text_.size() && at_ - start < most && IsDigit(text_[at_])) value = value * 10 + (text_[at_++] - '0');
    if (at_ == start || IsDigit(Peek())) return std::nullopt;
    return value;
  }
  std::size_t DigitsAhead() const {
    std::size_t end = at_;
    while (end < text_.size() && IsDigit(text_[end])) ++end;
    return end - at_;
  }
  std::optional<int> FixedDigits(std::size_t count) {
    int value = 0;
    for (std::size_t i = 0; i < count; ++i) {
      if (!IsDigit(Peek())) return std::nullopt;
      value = value * 10 + (text_[at_++] - '0');
    }
    return value;
  }
  bool TakeWord(std::string_view word) {
    if (!EqualsIgnoreCase(text_.substr(at_, word.size()), word)) return false;
    at_ += word.size();
    return true;
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;
};

struct DateParts {
  int year = 1900, month = 1, day = 1;
  int hour = 0, minute = 0, second = 0, millisecond = 0;
};

int FullYear(int year, bool short_form) {
  if (!short_form) return year;
  return year < 50 ? 2000 + year : 1900 + year;
}

// "20260301" or "260301".
bool ReadSolidDate(DateReader& in, std::size_t digits, DateParts& parts) {
  parts.year = FullYear(*in.FixedDigits(digits - 4), digits == 6);
  parts.month = *in.FixedDigits(2);
  parts.day = *in.FixedDigits(2);
  return true;
}

// "2026-3-1", "2026/3/1", "2026.3.1" or "3/1/2026".
bool ReadSeparatedDate(DateReader& in, DateParts& parts) {
  std::size_t first_digits = in.DigitsAhead();
  auto first = in.Number(4);
  char separator = in.Peek();
  if (!first || (separator != '-' && separator != '/' && separator != '.')) return false;
  in.Take(separator);
  auto second = in.Number(2);
  if (!second || !in.Take(separator)) return false;
  std::size_t last_digits = in.DigitsAhead();
  auto third = in.Number(4);
  if (!third) return false;
  bool year_last = first_digits <= 2 && last_digits == 4;
  parts.year = year_last ? *third : FullYear(*first, first_digits <= 2);
  parts.month = year_last ? *first : *second;
  parts.day = year_last ? *second : *third;
  return true;
}

bool ReadFraction(DateReader& in, DateParts& parts) {
  std::size_t digits = in.DigitsAhead();
  auto fraction = in.Number(9);
  if (!fraction) return false;
  double value = *fraction;
  for (; digits < 3; ++digits) value *= 10;
  for (; digits > 3; --digits) value /= 10;
  parts.millisecond = static_cast<int>(value);
  return true;
}

bool ReadTime(DateReader& in, DateParts& parts) {
  auto hour = in.Number(2);
  if (!hour) return false;
  parts.hour = *hour;
  bool has_minutes = in.Take(':');
  if (has_minutes) {
    auto minute = in.Number(2);
    if (!minute) return false;
    parts.minute = *minute;
    if (in.Take(':')) {
      auto second = in.Number(2);
      if (!second) return false;
      parts.second = *second;
      if ((in.Take('.') || in.Take(':')) && !ReadFraction(in, parts)) return false;
    }
  }
  in.SkipBlanks();
  bool pm = in.TakeWord("PM");
  bool half_day = pm || in.TakeWord("AM");
  if (half_day && (parts.hour < 1 || parts.hour > 12)) parts.hour = 99;
  if (half_day && parts.hour <= 12) parts.hour = parts.hour % 12 + (pm ? 12 : 0);
  return has_minutes || half_day;
}

bool ReadDateAndTime(std::string_view text, DateParts& parts) {
  DateReader in(text);
  in.SkipBlanks();
  if (in.AtEnd()) return true;
  std::size_t digits = in.DigitsAhead();
  DateReader time_only = in;
  bool date = digits == 8 || digits == 6 ? ReadSolidDate(in, digits, parts) : ReadSeparatedDate(in, parts);
  if (!date) {
    in = time_only;
    parts = DateParts();
    if (!ReadTime(in, parts)) return false;
  } else if (!in.AtEnd()) {
    bool apart = in.Take('T') || in.Peek() == ' ';
    in.SkipBlanks();
    if (!apart || (!in.AtEnd() && !ReadTime(in, parts))) return false;
  }
  in.SkipBlanks();
  return in.AtEnd();
}

constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string Print(const char* format, auto... values) {
  char buffer[64];
  int length = std::snprintf(buffer, sizeof buffer, format, values...);
  return std::string(buffer, static_cast<std::size_t>(length));
}

// Every date of a statement goes through here, so it is written without a format.
std::string CanonicalText(const DateParts& parts) {
  std::string text = "0000-00-00 00:00:00.000";
  auto put = [&](std::size_t end, int value) {
    for (; value > 0; value /= 10) text[end--] = static_cast<char>('0' + value % 10);
  };
  put(3, parts.year);
  put(6, parts.month);
  put(9, parts.day);
  put(12, parts.hour);
  put(15, parts.minute);
  put(18, parts.second);
  put(22, parts.millisecond);
  return text;
}

std::string ClockText(const DateTime& m) {
  return Print("%02d:%02d:%02d", m.Hour(), m.Minute(), m.Second());
}

std::string TwelveHourText(const DateTime& m) {
  int hour = m.Hour() % 12 == 0 ? 12 : m.Hour() % 12;
  return Print("%2d:%02d%s", hour, m.Minute(), m.Hour() < 12 ? "AM" : "PM");
}

}  // namespace

std::string CanonicalDate(std::string_view text) {
  DateParts parts;
  if (!ReadDateAndTime(text, parts)) throw SqlError(native::kDate, text);
  bool time = parts.hour < 24 && parts.minute < 60 && parts.second < 60;
  if (!time || !IsCivilDate(parts.year, parts.month, parts.day)) throw SqlError(native::kDateRange, text);
  return CanonicalText(parts);
}

std::string CanonicalDate(const DateTime& m) {
  return CanonicalText({m.Year(), m.Month(), m.Day(), m.Hour(), m.Minute(), m.Second(), m.Millisecond()});
}

DateTime FromCanonicalDate(std::string_view canonical) {
  constexpr std::size_t kLength = sizeof "2026-03-01 08:05:00.000" - 1;
  if (canonical.size() != kLength) throw SqlError(native::kDate, canonical);
  auto number = [&](std::size_t start, std::size_t count) {
    int value = 0;
    for (char c : canonical.substr(start, count)) {
      if (!IsDigit(c)) throw SqlError(native::kDate, canonical);
      value = value * 10 + (c - '0');
    }
    return value;
  };
  return DateTime(number(0, 4), number(5, 2), number(8, 2), number(11, 2), number(14, 2), number(17, 2), number(20, 3));
}

std::string StyledDate(const DateTime& m, int style) {
  std::string clock = ClockText(m);
  switch (style) {
    case 8:
    case 108:
      return clock;
    case 1:
      return Print("%02d/%02d/%02d", m.Month(), m.Day(), m.Year() % 100);
    case 2:
      return Print("%02d.%02d.%02d", m.Year() % 100, m.Month(), m.Day());
    case 11:
      return Print("%02d/%02d/%02d", m.Year() % 100, m.Month(), m.Day());
    case 12:
      return Print("%02d%02d%02d", m.Year() % 100, m.Month(), m.Day());
    case 101:
      return Print("%02d/%02d/%04d", m.Month(), m.Day(), m.Year());
    case 102:
      return Print("%04d.%02d.%02d", m.Year(), m.Month(), m.Day());
    case 103:
      return Print("%02d/%02d/%04d", m.Day(), m.Month(), m.Year());
    case 111:
      return Print("%04d/%02d/%02d", m.Year(), m.Month(), m.Day());
    case 112:
      return Print("%04d%02d%02d", m.Year(), m.Month(), m.Day());
    case 23:
      return Print("%04d-%02d-%02d", m.Year(), m.Month(), m.Day());
    case 20:
    case 120:
      return Print("%04d-%02d-%02d ", m.Year(), m.Month(), m.Day()) + clock;
    case 21:
    case 25:
    case 121:
      return CanonicalDate(m);
    case 126:
      return CanonicalDate(m).replace(10, 1, "T");
    default:
      return Print("%s %2d %04d ", kMonths[static_cast<std::size_t>(m.Month() - 1)], m.Day(), m.Year()) +
             TwelveHourText(m);
  }
}

}  // namespace luming::localdb
