#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace luming::localdb {

/// What a byte of a statement can begin. Names go on with anything outside ASCII.
enum CharClass : std::uint8_t { kOther, kBlank, kLetter, kDigit, kOperator };

constexpr std::array<CharClass, 256> MakeClasses() {
  std::array<CharClass, 256> classes{};
  for (std::size_t c = 0; c < 256; ++c) {
    bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' || c >= 0x80;
    if (letter) classes[c] = kLetter;
    if (c >= '0' && c <= '9') classes[c] = kDigit;
    if (c == ' ' || (c >= '\t' && c <= '\r')) classes[c] = kBlank;
  }
  for (char c : std::string_view("(),.;+-*/%=<>!&|^~:")) classes[static_cast<std::size_t>(c)] = kOperator;
  return classes;
}

inline constexpr auto kClasses = MakeClasses();

constexpr std::array<bool, 256> MakeNameCharacters() {
  std::array<bool, 256> continues{};
  for (std::size_t c = 0; c < 256; ++c) {
    continues[c] = kClasses[c] == kLetter || kClasses[c] == kDigit || c == '@' || c == '$';
  }
  return continues;
}

inline constexpr auto kNameCharacters = MakeNameCharacters();

inline CharClass ClassOf(char c) {
  return kClasses[static_cast<unsigned char>(c)];
}
inline bool ContinuesName(char c) {
  return kNameCharacters[static_cast<unsigned char>(c)];
}

// What a literal leaves in a key; no token holds these.
inline constexpr char kNumberMark = '\1';
inline constexpr char kStringMark = '\2';

}  // namespace luming::localdb
