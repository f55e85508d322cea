#include "util/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace luming {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Decoded {
  char32_t code_point;
  std::size_t length;  ///< in bytes; 0 for bytes that are no UTF-8
};

unsigned char ByteAt(std::string_view text, std::size_t position) {
  return static_cast<unsigned char>(text[position]);
}

/// The character at `position`, which lies within the text. Overlong forms, surrogates and what lies past U+10FFFF are
/// no UTF-8.
Decoded Decode(std::string_view text, std::size_t position) {
  const unsigned char lead = ByteAt(text, position);
  if (lead < 0x80) return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() - position < length) return {kReplacement, 0};
  char32_t code_point = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = ByteAt(text, position + i);
    if ((next & 0xC0) != 0x80) return {kReplacement, 0};
    code_point = (code_point << 6) | (next & 0x3Fu);
  }
  const bool overlong = (length == 3 && code_point < 0x800) || (length == 4 && code_point < 0x10000);
  const bool surrogate = code_point >= 0xD800 && code_point < 0xE000;
  if (overlong || surrogate || code_point > 0x10FFFF) return {kReplacement, 0};
  return {code_point, length};
}

bool EightAscii(std::string_view text, std::size_t position) {
  std::uint64_t bytes = 0;
  if (text.size() - position < sizeof bytes) return false;
  std::memcpy(&bytes, text.data() + position, sizeof bytes);
  return (bytes & 0x8080808080808080U) == 0;
}

/// Begins there a character of three bytes, of those that ideographs lie among? Any continuation of their lead is good.
bool IsCommonIdeograph(std::string_view text, std::size_t position) {
  const auto continues = [&](std::size_t i) { return (ByteAt(text, position + i) & 0xC0) == 0x80; };
  const unsigned char lead = ByteAt(text, position);
  return lead > 0xE0 && lead < 0xED && text.size() - position >= 3 && continues(1) && continues(2);
}

/// The byte offset behind the character at `position`; a bad byte is a character of its own.
std::size_t Next(std::string_view text, std::size_t position) {
  return position + std::max<std::size_t>(1, Decode(text, position).length);
}

/// The byte offset `count` characters behind `position`, or the end of the text.
std::size_t Advance(std::string_view text, std::size_t position, std::size_t count) {
  while (count > 0 && position < text.size()) {
    position = Next(text, position);
    --count;
  }
  return position;
}

char LowerLetter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
char UpperLetter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::size_t CharCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t position = 0; position < text.size(); ++count) position = Next(text, position);
  return count;
}

std::string Left(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, Advance(text, 0, count)));
}

std::string Right(std::string_view text, std::size_t count) {
  const std::size_t all = CharCount(text);
  return std::string(text.substr(Advance(text, 0, all > count ? all - count : 0)));
}

std::string Mid(std::string_view text, std::size_t start, std::size_t count) {
  const std::size_t begin = Advance(text, 0, start > 0 ? start - 1 : 0);
  return std::string(text.substr(begin, Advance(text, begin, count) - begin));
}

std::vector<std::string> Characters(std::string_view text) {
  std::vector<std::string> characters;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t next = Next(text, position);
    characters.emplace_back(text.substr(position, next - position));
    position = next;
  }
  return characters;
}

std::string Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string TrimRight(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string Replace(std::string_view text, std::string_view what, std::string_view with) {
  return Join(Split(text, what), with);
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> parts;
  if (text.empty()) return parts;
  std::size_t begin = 0;
  if (!separator.empty()) {
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator, begin)) {
      parts.emplace_back(text.substr(begin, end - begin));
      begin = end + separator.size();
    }
  }
  parts.emplace_back(text.substr(begin));
  return parts;
}

std::string Join(const std::vector<std::string>& parts, std::string_view separator) {
  std::string joined;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) joined += separator;
    joined += parts[i];
  }
  return joined;
}

std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), LowerLetter);
  return lower;
}

std::string UpperAscii(std::string_view text) {
  std::string upper(text);
  std::ranges::transform(upper, upper.begin(), UpperLetter);
  return upper;
}

bool EqualsIgnoreCase(std::string_view left, std::string_view right) {
  return left.size() == right.size() &&
         std::ranges::equal(left, right, [](char a, char b) { return a == b || LowerLetter(a) == LowerLetter(b); });
}

bool IsValidUtf8(std::string_view bytes) {
  for (std::size_t position = 0; position < bytes.size();) {
    if (EightAscii(bytes, position)) {
      position += 8;
      continue;
    }
    if (IsCommonIdeograph(bytes, position)) {
      position += 3;
      continue;
    }
    const std::size_t length = Decode(bytes, position).length;
    if (length == 0) return false;
    position += length;
  }
  return true;
}

std::string ToValidUtf8(std::string_view bytes) {
  std::string valid;
  valid.reserve(bytes.size());
  for (std::size_t position = 0; position < bytes.size();) {
    const std::size_t length = Decode(bytes, position).length;
    if (length == 0) {
      valid += EncodeUtf8(kReplacement);
      ++position;
    } else {
      valid.append(bytes, position, length);
      position += length;
    }
  }
  return valid;
}

char32_t NextCodePoint(std::string_view text, std::size_t& position) {
  if (position >= text.size()) return kReplacement;
  const Decoded decoded = Decode(text, position);
  position += std::max<std::size_t>(1, decoded.length);
  return decoded.code_point;
}

std::string EncodeUtf8(char32_t code_point) {
  if (code_point > 0x10FFFF || (code_point >= 0xD800 && code_point < 0xE000)) code_point = kReplacement;
  const auto tail = [code_point](int shift) { return static_cast<char>(0x80 | ((code_point >> shift) & 0x3F)); };
  if (code_point < 0x80) return {static_cast<char>(code_point)};
  if (code_point < 0x800) return {static_cast<char>(0xC0 | (code_point >> 6)), tail(0)};
  if (code_point < 0x10000) return {static_cast<char>(0xE0 | (code_point >> 12)), tail(6), tail(0)};
  return {static_cast<char>(0xF0 | (code_point >> 18)), tail(12), tail(6), tail(0)};
}

}  // namespace luming
