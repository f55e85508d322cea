#include "localdb/collation.h"

#include <sqlite3.h>

#include <array>
#include <memory>

#include "util/ansi_text.h"
#include "util/text.h"
#include "util/text_equality.h"

namespace luming::localdb {
namespace {

// Weights go in four bands: signs, digits and letters, all else by its code, common Chinese characters by pinyin.
constexpr std::uint32_t kLetterBand = 0x1000;
constexpr std::uint32_t kOtherBand = 0x10000;
constexpr std::uint32_t kPinyinBand = 0x200000;
constexpr std::uint32_t kRareBand = 0x300000;
constexpr char32_t kFirstIdeograph = 0x4e00;
constexpr char32_t kLastIdeograph = 0x9fff;
constexpr char32_t kLastCharacter = 0x10ffff;
constexpr std::uint32_t kHighest = 0xffffffff;

constexpr unsigned kFirstCommon = 0xb0a1;
constexpr unsigned kLastCommon = 0xd7f9;

/// Weights of the ideographs, worked out once from the code page.
const std::array<std::uint32_t, kLastIdeograph - kFirstIdeograph + 1>& IdeographWeights() {
  static const auto weights = [] {
    auto table = std::make_unique<std::array<std::uint32_t, kLastIdeograph - kFirstIdeograph + 1>>();
    for (char32_t c = kFirstIdeograph; c <= kLastIdeograph; ++c) {
      std::string ansi = ToAnsi(EncodeUtf8(c));
      unsigned code =
          ansi.size() == 2 ? static_cast<unsigned char>(ansi[0]) << 8 | static_cast<unsigned char>(ansi[1]) : 0;
      bool common = code >= kFirstCommon && code <= kLastCommon && (code & 0xff) >= 0xa1;
      (*table)[c - kFirstIdeograph] = common ? kPinyinBand + code : kRareBand + c;
    }
    return table;
  }();
  return *weights;
}

constexpr std::array<std::uint32_t, 128> MakeAsciiWeights() {
  std::array<std::uint32_t, 128> weights{};
  for (std::uint32_t c = 0; c < 128; ++c) {
    bool upper = c >= 'A' && c <= 'Z';
    bool letter = upper || (c >= 'a' && c <= 'z');
    bool digit = c >= '0' && c <= '9';
    weights[c] = letter || digit ? kLetterBand + (upper ? c + 32 : c) : c + 1;
  }
  return weights;
}

constexpr auto kAsciiWeights = MakeAsciiWeights();

bool Within(char32_t c, char32_t low, char32_t high) {
  return c >= low && c <= high;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// Compares from two places inside the texts on, character by character.
int CompareCharacters(std::string_view left, std::string_view right) {
  std::size_t l = 0;
  std::size_t r = 0;
  while (l < left.size() && r < right.size()) {
    std::uint32_t a = CharacterWeight(NextCodePoint(left, l));
    std::uint32_t b = CharacterWeight(NextCodePoint(right, r));
    if (a != b) return a < b ? -1 : 1;
  }
  return l < left.size() ? 1 : r < right.size() ? -1 : 0;
}

int Collate(void*, int left_size, const void* left, int right_size, const void* right) {
  return CompareText({static_cast<const char*>(left), static_cast<std::size_t>(left_size)},
                     {static_cast<const char*>(right), static_cast<std::size_t>(right_size)});
}

}  // namespace

std::uint32_t CharacterWeight(char32_t character) {
  if (character < 0x80) return kAsciiWeights[character];
  if (Within(character, kFirstIdeograph, kLastIdeograph)) return IdeographWeights()[character - kFirstIdeograph];
  // The last character of all closes the range of a prefix.
  if (character == kLastCharacter) return kHighest;
  return kOtherBand + FoldCase(character);
}

int CompareText(std::string_view left, std::string_view right) {
  left = WithoutTrailingBlanks(left);
  right = WithoutTrailingBlanks(right);
  std::size_t size = std::min(left.size(), right.size());
  std::size_t i = 0;
  // Most keys are ASCII and equal for a long way.
  for (; i < size; ++i) {
    auto a = static_cast<unsigned char>(left[i]);
    auto b = static_cast<unsigned char>(right[i]);
    if ((a | b) >= 0x80) break;
    if (kAsciiWeights[a] != kAsciiWeights[b]) return kAsciiWeights[a] < kAsciiWeights[b] ? -1 : 1;
  }
  if (i == size) return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
  return CompareCharacters(left.substr(i), right.substr(i));
}

void RegisterCollation(sqlite3* store) {
  sqlite3_create_collation_v2(store, "TSQL", SQLITE_UTF8, nullptr, Collate, nullptr);
}

}  // namespace luming::localdb
