#include <optional>

#include "localdb/collation.h"
#include "localdb/engine_functions.h"
#include "util/text.h"
#include "util/text_equality.h"

namespace luming::localdb {
namespace {

struct Element {
  enum class Kind : std::uint8_t { kCharacter, kAny, kMany, kSet } kind = Kind::kCharacter;
  char32_t character = 0;
  std::string_view set;
};

/// One element of the pattern; moves `at` behind it.
Element ReadElement(std::string_view pattern, std::size_t& at, char32_t escape) {
  std::size_t start = at;
  char32_t c = NextCodePoint(pattern, at);
  if (escape != 0 && c == escape && at < pattern.size())
    return {Element::Kind::kCharacter, NextCodePoint(pattern, at), {}};
  if (c == '%') return {Element::Kind::kMany, 0, {}};
  if (c == '_') return {Element::Kind::kAny, 0, {}};
  if (c == '[') {
    std::size_t end = pattern.find(']', start + 2);
    if (end != std::string_view::npos) {
      at = end + 1;
      return {Element::Kind::kSet, 0, pattern.substr(start + 1, end - start - 1)};
    }
  }
  return {Element::Kind::kCharacter, c, {}};
}

bool InSet(std::string_view set, char32_t c) {
  bool negated = set.size() > 1 && set.front() == '^';
  if (negated) set.remove_prefix(1);
  std::uint32_t weight = CharacterWeight(c);
  for (std::size_t at = 0; at < set.size();) {
    std::uint32_t low = CharacterWeight(NextCodePoint(set, at));
    std::uint32_t high = low;
    if (at + 1 < set.size() && set[at] == '-') {
      ++at;
      high = CharacterWeight(NextCodePoint(set, at));
    }
    if (weight >= low && weight <= high) return !negated;
  }
  return negated;
}

bool Matches(const Element& element, char32_t c) {
  switch (element.kind) {
    case Element::Kind::kAny:
      return true;
    case Element::Kind::kSet:
      return InSet(element.set, c);
    default:
      return FoldCase(element.character) == FoldCase(c);
  }
}

}  // namespace

// Only the last % is ever gone back to, so the time is bounded by the product of both lengths.
bool MatchesLike(std::string_view pattern, std::string_view value, char32_t escape) {
  std::size_t p = 0;
  std::size_t v = 0;
  std::optional<std::size_t> pattern_behind_many;
  std::size_t value_of_many = 0;
  for (;;) {
    if (p < pattern.size()) {
      std::size_t next = p;
      Element element = ReadElement(pattern, next, escape);
      if (element.kind == Element::Kind::kMany) {
        pattern_behind_many = p = next;
        value_of_many = v;
        continue;
      }
      if (v < value.size()) {
        std::size_t behind = v;
        if (Matches(element, NextCodePoint(value, behind))) {
          p = next;
          v = behind;
          continue;
        }
      }
    } else if (value.find_first_not_of(' ', v) == std::string_view::npos) {
      return true;
    }
    if (!pattern_behind_many || value_of_many >= value.size()) return false;
    NextCodePoint(value, value_of_many);
    p = *pattern_behind_many;
    v = value_of_many;
  }
}

}  // namespace luming::localdb
