#include "platform/connection_string.h"

#include <algorithm>
#include <optional>

#include "util/text.h"

namespace luming {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::size_t SkipBlanks(std::string_view text, std::size_t position) {
  return std::min(text.find_first_not_of(kBlanks, position), text.size());
}

std::string_view WithoutBlanks(std::string_view text) {
  text.remove_prefix(SkipBlanks(text, 0));
  const std::size_t last = text.find_last_not_of(kBlanks);
  return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

/// A value in quotes that begins at `position` and is the whole of its part; moves `position` behind the part then.
std::optional<std::string> QuotedValue(std::string_view text, std::size_t& position) {
  std::size_t at = SkipBlanks(text, position);
  if (at == text.size() || (text[at] != '\'' && text[at] != '"')) return std::nullopt;
  const char quote = text[at++];
  std::string value;
  for (; at < text.size(); ++at) {
    if (text[at] == quote) {
      if (at + 1 == text.size() || text[at + 1] != quote) break;
      ++at;
    }
    value += text[at];
  }
  if (at == text.size()) return std::nullopt;
  at = SkipBlanks(text, at + 1);
  if (at < text.size() && text[at] != ';') return std::nullopt;
  position = at;
  return value;
}

std::string PlainValue(std::string_view text, std::size_t& position) {
  const std::size_t end = std::min(text.find(';', position), text.size());
  const std::string_view value = text.substr(position, end - position);
  position = end;
  return std::string(WithoutBlanks(value));
}

}  // namespace

ConnectionString::ConnectionString(std::string_view text) {
  for (std::size_t position = 0; position < text.size(); ++position) {
    const std::size_t stop = text.find_first_of("=;", position);
    if (stop == std::string_view::npos) return;
    const std::string key(WithoutBlanks(text.substr(position, stop - position)));
    position = stop;
    if (text[stop] == ';') continue;
    ++position;
    std::optional<std::string> value = QuotedValue(text, position);
    if (!value) value = PlainValue(text, position);
    if (!key.empty()) parts_.emplace_back(key, std::move(*value));
  }
}

const std::string* ConnectionString::Find(std::initializer_list<std::string_view> keys) const {
  for (const std::string_view key : keys) {
    const auto found = std::find_if(parts_.rbegin(), parts_.rend(),
                                    [key](const auto& part) { return EqualsIgnoreCase(part.first, key); });
    if (found != parts_.rend()) return &found->second;
  }
  return nullptr;
}

std::string ConnectionString::Value(std::initializer_list<std::string_view> keys) const {
  const std::string* found = Find(keys);
  return found ? *found : std::string();
}

}  // namespace luming
