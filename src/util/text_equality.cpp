#include "util/text_equality.h"

#include "util/text.h"

namespace luming {

namespace {

bool Within(char32_t c, char32_t low, char32_t high) {
  return c >= low && c <= high;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace

char32_t FoldCase(char32_t c) {
  if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + 32 : c;
  if (Within(c, 0xc0, 0xde) && c != 0xd7) return c + 32;
  if (Within(c, 0x391, 0x3a9)) return c + 32;
  if (Within(c, 0x410, 0x42f)) return c + 32;
  if (Within(c, 0x400, 0x40f)) return c + 80;
  if (Within(c, 0x2160, 0x216f)) return c + 16;
  if (Within(c, 0xff21, 0xff3a)) return c + 32;
  return c;
}

bool EqualsInDatabase(std::string_view left, std::string_view right) {
  left = WithoutTrailingBlanks(left);
  right = WithoutTrailingBlanks(right);
  std::size_t l = 0;
  std::size_t r = 0;
  while (l < left.size() && r < right.size()) {
    if (FoldCase(NextCodePoint(left, l)) != FoldCase(NextCodePoint(right, r))) return false;
  }
  return l == left.size() && r == right.size();
}

}  // namespace luming
