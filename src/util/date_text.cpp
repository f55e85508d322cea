#include "util/date_text.h"

#include <array>
#include <charconv>

#include "util/failure.h"

namespace luming {

namespace {

constexpr std::array<std::string_view, 7> kWeekdays = {"星期日", "星期一", "星期二", "星期三",
                                                       "星期四", "星期五", "星期六"};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// ---- Reading ----

struct TimeOfDay {
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
};

struct CivilDay {
  int year = 1899;
  int month = 12;
  int day = 30;
};

/// Two-digit years 30 to 99 are of the twentieth century.
int FullYear(int year) {
  return year < 30 ? year + 2000 : year < 100 ? year + 1900 : year;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  void SkipBlanks() {
    while (position_ < text_.size() && text_[position_] == ' ') ++position_;
  }
  bool AtEnd() const { return position_ == text_.size(); }
  std::size_t Position() const { return position_; }
  void Return(std::size_t position) { position_ = position; }

  bool Take(std::string_view wanted) {
    if (text_.substr(position_, wanted.size()) != wanted) return false;
    position_ += wanted.size();
    return true;
  }
  /// Takes the mark with the blanks around it, or nothing at all.
  bool TakeMark(std::string_view mark) {
    const std::size_t begin = position_;
    SkipBlanks();
    if (!Take(mark)) {
      position_ = begin;
      return false;
    }
    SkipBlanks();
    return true;
  }
  /// A number of at most `most` digits; -1, and nothing taken, when there is none or it is longer.
  int Number(std::size_t most) {
    std::size_t end = position_;
    int value = 0;
    for (; end < text_.size() && IsDigit(text_[end]); ++end) {
      if (end - position_ == most) return -1;
      value = value * 10 + (text_[end] - '0');
    }
    if (end == position_) return -1;
    digits_ = end - position_;
    position_ = end;
    return value;
  }
  std::size_t LastDigits() const { return digits_; }  ///< how many digits the last number had

 private:
  std::string_view text_;
  std::size_t position_ = 0;
  std::size_t digits_ = 0;
};

/// "2026年3月1日", "2026年3月", "3月1日", from behind the first number.
std::optional<CivilDay> ReadNamedDay(Reader& reader, int first, int this_year) {
  CivilDay day{this_year, first, 1};
  if (reader.TakeMark("年")) {
    day.year = FullYear(first);
    day.month = reader.Number(2);
    if (day.month < 0 || !reader.TakeMark("月")) return std::nullopt;
    const std::size_t behind_month = reader.Position();
    const int number = reader.Number(2);
    if (number < 0) return day;
    day.day = number;
    if (reader.TakeMark("日")) return day;
    reader.Return(behind_month);
    day.day = 1;
    return day;
  }
  if (!reader.TakeMark("月")) return std::nullopt;
  day.day = reader.Number(2);
  if (day.day < 0 || !reader.TakeMark("日")) return std::nullopt;
  return day;
}

/// "2026-3-1", "26-3-1", "3-1-2026", "2026-3", "3-1" with one of three marks, from behind the first number. Points need
/// three numbers: with fewer the text is a price.
std::optional<CivilDay> ReadMarkedDay(Reader& reader, int first, std::size_t first_digits, int this_year) {
  constexpr std::array<std::string_view, 3> kMarks = {"-", "/", "."};
  for (const std::string_view mark : kMarks) {
    if (!reader.TakeMark(mark)) continue;
    const int second = reader.Number(2);
    if (second < 0) return std::nullopt;
    if (!reader.TakeMark(mark)) {
      if (mark == ".") return std::nullopt;
      if (first_digits == 4) return CivilDay{first, second, 1};
      return CivilDay{this_year, first, second};
    }
    const int third = reader.Number(4);
    if (third < 0) return std::nullopt;
    if (first_digits != 4 && reader.LastDigits() == 4) return CivilDay{third, first, second};
    return CivilDay{FullYear(first), second, third};
  }
  return std::nullopt;
}

std::optional<CivilDay> ReadDay(Reader& reader, int this_year) {
  const int first = reader.Number(4);
  if (first < 0) return std::nullopt;
  const std::size_t first_digits = reader.LastDigits();
  if (first_digits == 3) return std::nullopt;
  if (const auto named = ReadNamedDay(reader, first, this_year)) return named;
  return ReadMarkedDay(reader, first, first_digits, this_year);
}

/// The digits behind a second's point, cut to milliseconds; -1 when there are none or more than nine.
int ReadFraction(Reader& reader) {
  int fraction = reader.Number(9);
  for (std::size_t digits = reader.LastDigits(); fraction >= 0 && digits != 3; digits += digits < 3 ? 1 : -1) {
    fraction = digits < 3 ? fraction * 10 : fraction / 10;
  }
  return fraction;
}

enum class Half { kNone, kMorning, kAfternoon };

Half ReadHalf(Reader& reader) {
  for (const std::string_view mark : {"上午", "AM", "am"}) {
    if (reader.TakeMark(mark)) return Half::kMorning;
  }
  for (const std::string_view mark : {"下午", "PM", "pm"}) {
    if (reader.TakeMark(mark)) return Half::kAfternoon;
  }
  return Half::kNone;
}

/// "8:05", "8:05:00", "8:05:00.250", "下午 3:05", "3:05 PM".
std::optional<TimeOfDay> ReadTime(Reader& reader) {
  TimeOfDay time;
  Half half = ReadHalf(reader);
  time.hour = reader.Number(2);
  if (time.hour < 0 || !reader.TakeMark(":")) return std::nullopt;
  time.minute = reader.Number(2);
  if (time.minute < 0) return std::nullopt;
  if (reader.TakeMark(":")) {
    time.second = reader.Number(2);
    if (time.second < 0) return std::nullopt;
    if (reader.Take(".")) {
      time.millisecond = ReadFraction(reader);
      if (time.millisecond < 0) return std::nullopt;
    }
  }
  if (half == Half::kNone) half = ReadHalf(reader);
  if (half != Half::kNone) {
    if (time.hour < 1 || time.hour > 12) return std::nullopt;
    time.hour = time.hour % 12 + (half == Half::kAfternoon ? 12 : 0);
  }
  return time;
}

std::optional<DateTime> Joined(const CivilDay& day, const TimeOfDay& time) {
  if (!IsCivilDate(day.year, day.month, day.day)) return std::nullopt;
  if (time.hour > 23 || time.minute > 59 || time.second > 59) return std::nullopt;
  return DateTime(day.year, day.month, day.day, time.hour, time.minute, time.second, time.millisecond);
}

/// Two digits at `position`; a number far out of every range when they are none.
int TwoDigits(std::string_view text, std::size_t position) {
  const char high = text[position];
  const char low = text[position + 1];
  return IsDigit(high) && IsDigit(low) ? (high - '0') * 10 + (low - '0') : 1000;
}

/// The forms that the database and the screens send by the thousand: "2026-03-01" and "2026-03-01 08:05:00".
std::optional<DateTime> ReadCanonical(std::string_view text) {
  if (text.size() != 10 && text.size() != 19) return std::nullopt;
  if (text[4] != '-' || text[7] != '-') return std::nullopt;
  const CivilDay day{TwoDigits(text, 0) * 100 + TwoDigits(text, 2), TwoDigits(text, 5), TwoDigits(text, 8)};
  TimeOfDay time;
  if (text.size() == 19) {
    if (text[10] != ' ' || text[13] != ':' || text[16] != ':') return std::nullopt;
    time = {TwoDigits(text, 11), TwoDigits(text, 14), TwoDigits(text, 17), 0};
  }
  return Joined(day, time);
}

// ---- Writing ----

void AppendNumber(std::string& out, int number, int width) {
  std::array<char, 12> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  const auto length = static_cast<int>(end - digits.data());
  if (length < width) out.append(static_cast<std::size_t>(width - length), '0');
  out.append(digits.data(), end);
}

struct Parts {
  CivilDay day;
  TimeOfDay time;
};

Parts PartsOf(const DateTime& value) {
  const auto midnight = std::chrono::floor<std::chrono::days>(value.Point());
  const std::chrono::year_month_day civil{midnight};
  const std::chrono::hh_mm_ss time{value.Point() - midnight};
  return {{static_cast<int>(civil.year()), static_cast<int>(static_cast<unsigned>(civil.month())),
           static_cast<int>(static_cast<unsigned>(civil.day()))},
          {static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
           static_cast<int>(time.seconds().count()), 0}};
}

char LowerLetter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

void AppendLongDate(std::string& out, const CivilDay& day) {
  AppendNumber(out, day.year, 4);
  out += "年";
  AppendNumber(out, day.month, 1);
  out += "月";
  AppendNumber(out, day.day, 1);
  out += "日";
}

/// One run of a code letter; false when it is no code.
bool AppendCode(std::string& out, const Parts& parts, char letter, std::size_t length, bool behind_hour) {
  const bool year = letter == 'y' && (length == 4 || length == 2);
  if (year) {
    AppendNumber(out, length == 4 ? parts.day.year : parts.day.year % 100, static_cast<int>(length));
    return true;
  }
  if (letter == 'd' && length == 6) {
    AppendLongDate(out, parts.day);
    return true;
  }
  if (length > 2) return false;
  const auto width = static_cast<int>(length);
  switch (letter) {
    case 'm':
      AppendNumber(out, behind_hour ? parts.time.minute : parts.day.month, width);
      return true;
    case 'd':
      AppendNumber(out, parts.day.day, width);
      return true;
    case 'h':
      AppendNumber(out, parts.time.hour, width);
      return true;
    case 'n':
      AppendNumber(out, parts.time.minute, width);
      return true;
    case 's':
      AppendNumber(out, parts.time.second, width);
      return true;
    default:
      return false;
  }
}

}  // namespace

std::optional<DateTime> ParseDate(std::string_view text, const DateTime& today) {
  if (const auto canonical = ReadCanonical(text)) return canonical;
  Reader reader(text);
  reader.SkipBlanks();
  const std::size_t begin = reader.Position();
  CivilDay day;
  if (const auto read = ReadDay(reader, today.Year())) {
    day = *read;
    reader.SkipBlanks();
    if (reader.AtEnd()) return Joined(day, {});
  } else {
    reader.Return(begin);
  }
  const auto time = ReadTime(reader);
  reader.SkipBlanks();
  if (!time || !reader.AtEnd()) return std::nullopt;
  return Joined(day, *time);
}

bool IsDate(std::string_view text) {
  const DateTime leap_year(2000, 1, 1);
  return ParseDate(text, leap_year).has_value();
}

DateTime CDate(std::string_view text, const DateTime& today) {
  const auto value = ParseDate(text, today);
  if (!value) throw StandardFailure(failure::kTypeMismatch);
  return *value;
}

std::string DateText(const DateTime& value) {
  constexpr DateTime kDayZero;
  if (value.Date() == kDayZero) return FormatDate(value, "h:nn:ss");
  return FormatDate(value, value.HasTime() ? "yyyy/m/d h:nn:ss" : "yyyy/m/d");
}

std::string FormatDate(const DateTime& value, std::string_view format) {
  const Parts parts = PartsOf(value);
  std::string text;
  text.reserve(format.size());
  bool behind_hour = false;
  for (std::size_t i = 0; i < format.size();) {
    const char letter = LowerLetter(format[i]);
    std::size_t end = i + 1;
    while (end < format.size() && LowerLetter(format[end]) == letter) ++end;
    if (AppendCode(text, parts, letter, end - i, behind_hour)) {
      behind_hour = letter == 'h';
    } else {
      text += format.substr(i, end - i);
    }
    i = end;
  }
  return text;
}

std::string_view WeekdayName(const DateTime& value) {
  return kWeekdays[static_cast<std::size_t>(value.Weekday()) - 1];
}

}  // namespace luming
