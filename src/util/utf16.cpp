#include "util/utf16.h"

#include "util/text.h"

namespace luming {

namespace {

constexpr char32_t kBeyondFirstPlane = 0x10000;
constexpr char32_t kReplacement = 0xFFFD;

bool IsFirstHalf(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool IsSecondHalf(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

std::u16string ToUtf16(std::string_view utf8) {
  std::u16string units;
  units.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const char32_t c = NextCodePoint(utf8, position);
    if (c < kBeyondFirstPlane) {
      units.push_back(static_cast<char16_t>(c));
    } else {
      units.push_back(static_cast<char16_t>(0xD800 + ((c - kBeyondFirstPlane) >> 10)));
      units.push_back(static_cast<char16_t>(0xDC00 + ((c - kBeyondFirstPlane) & 0x3FF)));
    }
  }
  return units;
}

std::string FromUtf16(std::u16string_view units) {
  std::string utf8;
  utf8.reserve(units.size() * 3);
  for (std::size_t i = 0; i < units.size(); ++i) {
    char32_t c = units[i];
    if (IsFirstHalf(units[i]) && i + 1 < units.size() && IsSecondHalf(units[i + 1])) {
      c = kBeyondFirstPlane + ((c - 0xD800) << 10) + (units[++i] - 0xDC00U);
    } else if (IsFirstHalf(units[i]) || IsSecondHalf(units[i])) {
      c = kReplacement;
    }
    utf8 += EncodeUtf8(c);
  }
  return utf8;
}

}  // namespace luming
