#include "localdb/conversion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "localdb/errors.h"
#include "util/ansi_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

std::string_view Trimmed(std::string_view text) {
  auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

// Reads sign, digits, point and, if allowed, exponent; nothing unless the whole text is used.
std::optional<double> ReadNumber(std::string_view text, bool exponent) {
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return std::nullopt;
  }
  auto format = exponent ? std::chars_format::general : std::chars_format::fixed;
  for (char c : text) {
    bool number = (c >= '0' && c <= '9') || c == '.' || c == '-' || (exponent && (c == 'e' || c == 'E' || c == '+'));
    if (!number) return std::nullopt;
  }
  double value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, format);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<std::int64_t> ReadInteger(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  std::int64_t value = 0;
  auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument) return std::nullopt;
  if (error == std::errc::result_out_of_range) return std::numeric_limits<std::int64_t>::max();
  return value;
}

struct Range {
  std::int64_t low;
  std::int64_t high;
};

Range RangeOf(TypeKind kind) {
  switch (kind) {
    case TypeKind::kTinyInt:
      return {0, 255};
    case TypeKind::kSmallInt:
      return {-32768, 32767};
    case TypeKind::kBigInt:
      return {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()};
    default:
      return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
  }
}

std::string PlainText(const Datum& value) {
  if (auto* whole = std::get_if<std::int64_t>(&value)) return std::to_string(*whole);
  if (auto* number = std::get_if<double>(&value)) return NumberText(*number);
  if (auto* text = std::get_if<std::string>(&value)) return *text;
  return "NULL";
}

std::int64_t WholeInRange(std::int64_t value, const SqlType& to) {
  auto [low, high] = RangeOf(to.kind);
  if (value < low || value > high) throw SqlError(native::kOverflow, std::to_string(value), TypeName(to.kind));
  return value;
}

std::int64_t TextToWhole(std::string_view text, const SqlType& to) {
  std::string_view digits = Trimmed(text);
  if (digits.empty()) return 0;
  if (to.kind == TypeKind::kBit) {
    if (EqualsIgnoreCase(digits, "true")) return 1;
    if (EqualsIgnoreCase(digits, "false")) return 0;
  }
  auto value = ReadInteger(digits);
  if (!value) throw SqlError(native::kInt, text, TypeName(to.kind));
  if (to.kind == TypeKind::kBit) return *value != 0;
  auto [low, high] = RangeOf(to.kind);
  if (*value < low || *value > high) throw SqlError(native::kIntRange, text, TypeName(to.kind));
  return *value;
}

Datum ToWhole(const Datum& value, const SqlType& to) {
  if (auto* text = std::get_if<std::string>(&value)) return TextToWhole(*text, to);
  if (auto* whole = std::get_if<std::int64_t>(&value)) {
    return to.kind == TypeKind::kBit ? std::int64_t{*whole != 0} : WholeInRange(*whole, to);
  }
  double number = std::trunc(std::get<double>(value));
  if (to.kind == TypeKind::kBit) return std::int64_t{std::get<double>(value) != 0};
  if (!(std::abs(number) < 9.2e18)) throw SqlError(native::kOverflow, PlainText(value), TypeName(to.kind));
  return WholeInRange(static_cast<std::int64_t>(number), to);
}

double TextToDecimal(const std::string& text, const SqlType& to) {
  std::string_view digits = Trimmed(text);
  if (to.kind == TypeKind::kMoney) {
    if (digits.empty()) return 0;
    for (std::string_view sign : {"￥", "¥", "$"}) {
      if (digits.starts_with(sign)) digits.remove_prefix(sign.size());
    }
  }
  auto number = ReadNumber(digits, false);
  if (!number) throw SqlError(native::kNumber, text, to.kind == TypeKind::kMoney ? "money" : "numeric");
  return *number;
}

double ToDouble(const Datum& value) {
  if (auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  return std::get<double>(value);
}

double PowerOfTen(int exponent) {
  static const std::array<double, 39> powers = [] {
    std::array<double, 39> table{};
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = std::pow(10.0, static_cast<double>(i));
    return table;
  }();
  return powers[static_cast<std::size_t>(std::clamp(exponent, 0, 38))];
}

Datum ToDecimal(const Datum& value, const SqlType& to) {
  auto* text = std::get_if<std::string>(&value);
  double number = RoundToScale(text ? TextToDecimal(*text, to) : ToDouble(value), to.scale);
  if (!(std::abs(number) < PowerOfTen(to.precision - to.scale))) {
    throw SqlError(native::kOverflow, PlainText(value), TypeName(to.kind));
  }
  return number;
}

Datum ToFloat(const Datum& value) {
  auto* text = std::get_if<std::string>(&value);
  if (!text) return ToDouble(value);
  std::string_view digits = Trimmed(*text);
  if (digits.empty()) return 0.0;
  auto number = ReadNumber(digits, true);
  if (!number) throw SqlError(native::kNumber, *text, "float");
  return *number;
}

std::string FixedPoint(double value, int scale) {
  if (scale > 15) return NumberText(value);
  std::string picture = scale > 0 ? "0." + std::string(static_cast<std::size_t>(scale), '0') : "0";
  return FormatNumber(value, picture);
}

// The server shows a float as text with six digits; whole numbers keep theirs.
std::string FloatText(double value) {
  if (value == std::trunc(value) && std::abs(value) < 1e6) return std::to_string(static_cast<std::int64_t>(value));
  char buffer[40];
  auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 6);
  return std::string(buffer, end);
}

std::string TextOf(const Datum& value, const SqlType& from, int style) {
  if (from.IsDate()) return StyledDate(FromCanonicalDate(std::get<std::string>(value)), style);
  if (auto* number = std::get_if<double>(&value)) {
    if (from.kind == TypeKind::kFloat) return FloatText(*number);
    if (from.kind == TypeKind::kMoney) return FixedPoint(*number, 2);
    if (from.IsDecimal()) return FixedPoint(*number, from.scale);
  }
  return PlainText(value);
}

Datum ToText(const Datum& value, const SqlType& from, const SqlType& to, Overlong overlong, int style) {
  std::string text = TextOf(value, from, style);
  if (auto cut = CutPosition(text, to)) {
    if (overlong == Overlong::kRefuse && text.find_first_not_of(' ', *cut) != std::string::npos) {
      throw SqlError(native::kTooLong, text, std::to_string(to.length));
    }
    text.resize(*cut);
  }
  if (to.IsFixed() && to.length > 0) {
    std::size_t used = to.IsWide() ? CharCount(text) : AnsiLength(text);
    if (used < static_cast<std::size_t>(to.length)) text.append(static_cast<std::size_t>(to.length) - used, ' ');
  }
  return text;
}

// Whole days count from 1900-01-01, as the server's dates do.
DateTime FromDayNumber(double days) {
  if (!(days >= -53690 && days < 2958464)) throw SqlError(native::kOverflow, NumberText(days), "datetime");
  double whole = std::floor(days);
  return DateTime(1900, 1, 1)
      .AddDays(static_cast<std::int64_t>(whole))
      .AddSeconds(std::llround((days - whole) * 86400));
}

Datum ToDate(const Datum& value, const SqlType& from, const SqlType& to) {
  auto* text = std::get_if<std::string>(&value);
  std::string canonical = !text           ? CanonicalDate(FromDayNumber(ToDouble(value)))
                          : from.IsDate() ? *text
                                          : CanonicalDate(*text);
  if (to.kind == TypeKind::kDate) canonical.replace(10, 13, " 00:00:00.000");
  if (to.kind == TypeKind::kSmallDateTime) {
    DateTime moment = FromCanonicalDate(canonical);
    DateTime rounded = moment.AddSeconds(moment.Second() >= 30 ? 60 - moment.Second() : -moment.Second());
    canonical = CanonicalDate(rounded).replace(19, 4, ".000");
  }
  return canonical;
}

Datum DateToNumber(const std::string& canonical) {
  DateTime moment = FromCanonicalDate(canonical);
  double time = moment.Hour() * 3600.0 + moment.Minute() * 60.0 + moment.Second() + moment.Millisecond() / 1000.0;
  return static_cast<double>(moment.DaysSince(DateTime(1900, 1, 1))) + time / 86400;
}

}  // namespace

double RoundToScale(double value, int scale) {
  double size = std::abs(value);
  int places = std::clamp(scale, 0, 15);
  // A double has no more than 15 digits that count.
  while (places > 0 && size * PowerOfTen(places) >= 1e15) --places;
  double scaled = size * PowerOfTen(places);
  if (!(scaled < 9e15)) return value;
  double rounded = std::floor(scaled * (1 + 4e-16) + 0.5) / PowerOfTen(places);
  return rounded == 0 ? 0.0 : std::copysign(rounded, value);
}

std::optional<std::size_t> CutPosition(std::string_view text, const SqlType& type) {
  if (!type.IsText() || type.length == SqlType::kMaxLength) return std::nullopt;
  std::size_t limit = static_cast<std::size_t>(type.length);
  if (text.size() <= limit) return std::nullopt;
  std::size_t used = 0;
  for (std::size_t position = 0; position < text.size();) {
    std::size_t start = position;
    char32_t character = NextCodePoint(text, position);
    used += character < 0x80 || type.IsWide() ? 1 : AnsiLength(text.substr(start, position - start));
    if (used > limit) return start;
  }
  return std::nullopt;
}

Datum Convert(const Datum& value, const SqlType& from, const SqlType& to, Overlong overlong, int style) {
  if (luming::localdb::IsNull(value) || to.IsNull()) return value;
  if (to.IsText()) return ToText(value, from, to, overlong, style);
  if (to.IsDate()) return ToDate(value, from, to);
  if (from.IsDate()) return Convert(DateToNumber(std::get<std::string>(value)), SqlType::Float(), to, overlong);
  if (to.IsInteger()) return ToWhole(value, to);
  return to.IsDecimal() ? ToDecimal(value, to) : ToFloat(value);
}

namespace {

/// The digits as one whole number, and how many stand behind the point. Nothing past 15 digits or with an exponent: up
/// to there the quotient of both is the nearest double.
struct ShortNumber {
  std::int64_t digits;
  int places;
};

std::optional<ShortNumber> ReadShortNumber(std::string_view text) {
  constexpr std::size_t kMostDigits = 15;
  if (text.size() > kMostDigits + 1) return std::nullopt;
  ShortNumber number{0, -1};
  int seen = 0;
  for (const char c : text) {
    if (c >= '0' && c <= '9') {
      number.digits = number.digits * 10 + (c - '0');
      ++seen;
      if (number.places >= 0) ++number.places;
    } else if (c == '.' && number.places < 0) {
      number.places = 0;
    } else {
      return std::nullopt;
    }
  }
  if (seen == 0 || seen > static_cast<int>(kMostDigits)) return std::nullopt;
  return number;
}

}  // namespace

Datum NumberLiteral(std::string_view digits) {
  if (const auto number = ReadShortNumber(digits)) {
    if (number->places < 0) return number->digits;
    return static_cast<double>(number->digits) / PowerOfTen(number->places);
  }
  std::int64_t whole = 0;
  auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
  if (error == std::errc() && end == digits.data() + digits.size()) return whole;
  double number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

SqlType NumberLiteralType(std::string_view digits) {
  std::size_t point = std::string_view::npos;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (digits[i] == 'e' || digits[i] == 'E') return SqlType::Float();
    if (digits[i] == '.') point = i;
  }
  if (point == std::string_view::npos) {
    if (digits.size() < 10) return SqlType::Int();
    Datum value = NumberLiteral(digits);
    auto* whole = std::get_if<std::int64_t>(&value);
    if (whole && *whole <= std::numeric_limits<std::int32_t>::max()) return SqlType::Int();
    return SqlType::Decimal(static_cast<int>(digits.size()), 0);
  }
  return SqlType::Decimal(static_cast<int>(digits.size()) - 1, static_cast<int>(digits.size() - point) - 1);
}

}  // namespace luming::localdb
