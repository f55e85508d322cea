#include "util/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>

#include "util/failure.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr int kDigits = 15;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// ---- Reading ----

/// The text with full-width characters, the currency sign and the ideographic blank in their ASCII forms, '$' standing
/// for the currency. Nothing when another character outside ASCII occurs.
std::optional<std::string> AsciiForm(std::string_view text) {
  std::string ascii;
  ascii.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const char32_t c = NextCodePoint(text, position);
    if (c == U'￥' || c == U'¥') {
      ascii += '$';
      continue;
    }
    const char32_t narrow = c == U'　' ? U' ' : c >= U'！' && c <= U'～' ? c - U'！' + U'!' : c;
    if (narrow >= 0x80 || narrow == U'$') return std::nullopt;
    ascii += static_cast<char>(narrow);
  }
  return ascii;
}

/// A plain number without sign ahead: digits, a point, an exponent. Nothing past the range of a double.
std::optional<double> ReadPlain(std::string_view text) {
  const bool starts = !text.empty() && (IsDigit(text[0]) || (text.size() > 1 && text[0] == '.' && IsDigit(text[1])));
  if (!starts) return std::nullopt;
  double value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (stop != end || error != std::errc{}) return std::nullopt;
  return value;
}

/// The same with thousands separators among the digits ahead of the point.
std::optional<double> ReadSeparated(std::string_view text) {
  if (text.find(',') == std::string_view::npos) return ReadPlain(text);
  if (!IsDigit(text[0])) return std::nullopt;
  const std::size_t whole = text.find_first_not_of("0123456789,");
  std::string digits;
  for (const char c : text.substr(0, whole)) {
    if (c != ',') digits += c;
  }
  if (whole != std::string_view::npos) digits += text.substr(whole);
  return ReadPlain(digits);
}

void TrimBlanks(std::string_view& text) {
  constexpr std::string_view kBlanks = " \t";
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

bool TakeFirst(std::string_view& text, char wanted) {
  if (text.empty() || text.front() != wanted) return false;
  text.remove_prefix(1);
  TrimBlanks(text);
  return true;
}

/// Takes one sign from either end; false when there is none.
bool TakeSign(std::string_view& text, bool& negative) {
  if (text.empty()) return false;
  const auto is_sign = [](char c) { return c == '-' || c == '+'; };
  if (is_sign(text.front())) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  } else if (is_sign(text.back())) {
    negative = text.back() == '-';
    text.remove_suffix(1);
  } else {
    return false;
  }
  TrimBlanks(text);
  return true;
}

std::optional<double> ReadDecorated(std::string_view text) {
  const std::optional<std::string> ascii = AsciiForm(text);
  if (!ascii) return std::nullopt;
  std::string_view rest = *ascii;
  TrimBlanks(rest);
  bool negative = false;
  const bool currency = TakeFirst(rest, '$');
  TakeSign(rest, negative);
  if (!currency) TakeFirst(rest, '$');
  const std::optional<double> value = ReadSeparated(rest);
  if (value && negative) return -*value;
  return value;
}

// ---- Writing ----

/// The 15 significant digits of a double without trailing zeros: the value is 0.DIGITS times ten to the power `point`.
struct Decimal {
  bool negative = false;
  int count = 0;  ///< 0 for the value 0
  int point = 0;
  std::array<char, 24> digits{};
};

void DropTrailingZeros(Decimal& decimal) {
  while (decimal.count > 0 && decimal.digits[static_cast<std::size_t>(decimal.count) - 1] == '0') --decimal.count;
}

/// Takes the digits out of "d.ddde+xx".
void TakeScientific(const char* begin, const char* end, Decimal& decimal) {
  const char* exponent = static_cast<const char*>(std::memchr(begin, 'e', static_cast<std::size_t>(end - begin)));
  decimal.count = 0;
  for (const char* p = begin; p != exponent; ++p) {
    if (*p != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = *p;
  }
  int power = 0;
  std::from_chars(exponent[1] == '+' ? exponent + 2 : exponent + 1, end, power);
  decimal.point = power + 1;
}

Decimal ToDecimal(double value) {
  Decimal decimal;
  if (value == 0) return decimal;
  decimal.negative = value < 0;
  const double magnitude = std::fabs(value);
  // Nearly every quantity and price is a count of ten-thousandths that the double stands for exactly.
  constexpr double kScale = 10'000;
  constexpr int kScalePlaces = 4;
  const auto scaled = magnitude < 1e11 ? std::llround(magnitude * kScale) : 0LL;
  if (static_cast<double>(scaled) / kScale == magnitude) {
    const auto result = std::to_chars(decimal.digits.data(), decimal.digits.data() + decimal.digits.size(), scaled);
    decimal.count = static_cast<int>(result.ptr - decimal.digits.data());
    decimal.point = decimal.count - kScalePlaces;
  } else {
    // The shortest text that gives a normal double back is its text of 15 digits if it has no more digits than that.
    std::array<char, 40> text;
    char* const last = text.data() + text.size();
    TakeScientific(text.data(), std::to_chars(text.data(), last, magnitude, std::chars_format::scientific).ptr,
                   decimal);
    if (decimal.count > kDigits || magnitude < std::numeric_limits<double>::min()) {
      const auto rounded = std::to_chars(text.data(), last, magnitude, std::chars_format::scientific, kDigits - 1);
      TakeScientific(text.data(), rounded.ptr, decimal);
    }
  }
  DropTrailingZeros(decimal);
  return decimal;
}

/// Rounds half away from zero to `places` decimals.
void RoundTo(Decimal& decimal, int places) {
  const int keep = decimal.point + places;
  if (keep >= decimal.count) return;
  const bool up = keep >= 0 && decimal.digits[static_cast<std::size_t>(keep)] >= '5';
  decimal.count = std::max(keep, 0);
  if (up) {
    while (decimal.count > 0 && decimal.digits[static_cast<std::size_t>(decimal.count) - 1] == '9') --decimal.count;
    if (decimal.count > 0) {
      ++decimal.digits[static_cast<std::size_t>(decimal.count) - 1];
    } else {
      decimal.digits[0] = '1';
      decimal.count = 1;
      ++decimal.point;
    }
  }
  DropTrailingZeros(decimal);
  if (decimal.count == 0) decimal = Decimal{};
}

std::string_view DigitsOf(const Decimal& decimal) {
  return {decimal.digits.data(), static_cast<std::size_t>(decimal.count)};
}

/// The digits ahead of the point, without leading zeros: empty below 1.
void AppendWhole(std::string& out, const Decimal& decimal) {
  if (decimal.point <= 0) return;
  const std::string_view digits = DigitsOf(decimal);
  const auto point = static_cast<std::size_t>(decimal.point);
  out += digits.substr(0, point);
  if (point > digits.size()) out.append(point - digits.size(), '0');
}

/// The digits behind the point, at least `least` of them.
void AppendFraction(std::string& out, const Decimal& decimal, std::size_t least) {
  const std::size_t begin = out.size();
  if (decimal.count > decimal.point) {
    if (decimal.point < 0) out.append(static_cast<std::size_t>(-decimal.point), '0');
    out += DigitsOf(decimal).substr(static_cast<std::size_t>(std::max(decimal.point, 0)));
  }
  const std::size_t written = out.size() - begin;
  if (written < least) out.append(least - written, '0');
}

std::string ScientificText(const Decimal& decimal) {
  std::string text = decimal.negative ? "-" : "";
  const std::string_view digits = DigitsOf(decimal);
  text += digits[0];
  if (digits.size() > 1) text.append(1, '.').append(digits.substr(1));
  const int power = decimal.point - 1;
  text += power < 0 ? "E-" : "E+";
  if (std::abs(power) < 10) text += '0';
  return text + std::to_string(std::abs(power));
}

std::string TextOfNoNumber(double value) {
  if (std::isnan(value)) return "-1.#IND";
  return value < 0 ? "-1.#INF" : "1.#INF";
}

/// What a picture of '0', '#', '.' and ',' asks for.
struct Picture {
  std::string_view before;
  std::string_view after;
  std::size_t whole_least = 0;
  std::size_t fraction_least = 0;
  int fraction_most = 0;
  bool point = false;
  bool thousands = false;
};

Picture ReadPicture(std::string_view text) {
  constexpr std::string_view kCodes = "0#.,";
  Picture picture;
  std::size_t begin = std::min(text.find_first_of("0#"), text.size());
  if (begin > 0 && text[begin - 1] == '.') --begin;
  std::size_t i = begin;
  for (; i < text.size() && kCodes.find(text[i]) != std::string_view::npos; ++i) {
    const char c = text[i];
    if (c == ',') {
      picture.thousands = true;
    } else if (c == '.') {
      if (picture.point) break;
      picture.point = true;
    } else if (picture.point) {
      ++picture.fraction_most;
      if (c == '0') picture.fraction_least = static_cast<std::size_t>(picture.fraction_most);
    } else if (c == '0' || picture.whole_least > 0) {
      ++picture.whole_least;
    }
  }
  picture.before = text.substr(0, begin);
  picture.after = text.substr(i);
  return picture;
}

void SeparateThousands(std::string& out, std::size_t begin) {
  for (std::size_t i = out.size(); i > begin + 3;) {
    i -= 3;
    out.insert(i, 1, ',');
  }
}

template <class Whole>
Whole ToWhole(double value) {
  const double rounded = std::nearbyint(value);
  const bool fits = rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max();
  if (!fits) throw StandardFailure(failure::kOverflow);
  return static_cast<Whole>(rounded);
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
  if (const std::optional<double> plain = ReadPlain(text)) return plain;
  return ReadDecorated(text);
}

bool IsNumeric(std::string_view text) {
  return ParseNumber(text).has_value();
}

double CDbl(std::string_view text) {
  const std::optional<double> value = ParseNumber(text);
  if (!value) throw StandardFailure(failure::kTypeMismatch);
  return *value;
}

double Val(std::string_view text) {
  std::string digits;
  for (const char c : text) {
    if (c == ' ' || c == '\t' || c == '\n' || c == '\r') continue;
    const bool part = IsDigit(c) || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E';
    if (!part) break;
    digits += c;
  }
  std::string_view rest = digits;
  const bool negative = rest.starts_with('-');
  if (negative || rest.starts_with('+')) rest.remove_prefix(1);
  if (rest.empty() || (!IsDigit(rest[0]) && rest[0] != '.')) return 0;
  double value = 0;
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  if (result.ec != std::errc{}) return 0;
  return negative ? -value : value;
}

std::int32_t CLng(double value) {
  return ToWhole<std::int32_t>(value);
}
std::int32_t CLng(std::string_view text) {
  return CLng(CDbl(text));
}
std::int16_t CInt(double value) {
  return ToWhole<std::int16_t>(value);
}
std::int16_t CInt(std::string_view text) {
  return CInt(CDbl(text));
}

std::string NumberText(double value) {
  if (!std::isfinite(value)) return TextOfNoNumber(value);
  const Decimal decimal = ToDecimal(value);
  if (decimal.count == 0) return "0";
  if (decimal.point > kDigits || decimal.point < -3) return ScientificText(decimal);
  std::string text;
  if (decimal.negative) text += '-';
  if (decimal.point <= 0) text += '0';
  AppendWhole(text, decimal);
  if (decimal.count > decimal.point) {
    text += '.';
    AppendFraction(text, decimal, 0);
  }
  return text;
}

std::string FormatNumber(double value, std::string_view picture) {
  const bool has_digits = picture.find_first_of("0#") != std::string_view::npos;
  if (!std::isfinite(value) || !has_digits) return NumberText(value);
  const Picture asked = ReadPicture(picture);
  Decimal decimal = ToDecimal(value);
  RoundTo(decimal, asked.fraction_most);
  std::string text;
  if (decimal.negative) text += '-';
  text += asked.before;
  const std::size_t begin = text.size();
  const auto whole = static_cast<std::size_t>(std::max(decimal.point, 0));
  if (whole < asked.whole_least) text.append(asked.whole_least - whole, '0');
  AppendWhole(text, decimal);
  if (asked.thousands) SeparateThousands(text, begin);
  if (asked.point) {
    text += '.';
    AppendFraction(text, decimal, asked.fraction_least);
  }
  text += asked.after;
  return text;
}

std::string FormatNumberText(std::string_view text, std::string_view picture) {
  const std::optional<double> value = ParseNumber(text);
  return value ? FormatNumber(*value, picture) : std::string(text);
}

double RoundDecimal(double value, int decimals) {
  if (!std::isfinite(value)) return value;
  Decimal decimal = ToDecimal(value);
  RoundTo(decimal, decimals);
  if (decimal.count == 0) return 0;
  std::string text(DigitsOf(decimal));
  text.append(1, 'e').append(std::to_string(decimal.point - decimal.count));
  double rounded = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), rounded).ec != std::errc{}) return value;
  return decimal.negative ? -rounded : rounded;
}

}  // namespace luming
