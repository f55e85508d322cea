#include "frame/ini_text.h"

#include <algorithm>

#include "util/ansi_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\v\f";

std::string_view Stripped(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view WithoutQuotes(std::string_view value) {
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

/// Name of the section that the line opens; nothing when it opens none.
std::optional<std::string_view> SectionOf(std::string_view line) {
  const std::string_view text = Stripped(line);
  if (!text.starts_with('[')) return std::nullopt;
  const std::size_t close = text.rfind(']');
  if (close == std::string_view::npos) return std::nullopt;
  return Stripped(text.substr(1, close - 1));
}

struct Entry {
  std::string_view key;
  std::string_view value;
};

std::optional<Entry> EntryOf(std::string_view line) {
  const std::string_view text = Stripped(line);
  const std::size_t equals = text.find('=');
  if (text.starts_with(';') || equals == std::string_view::npos) return std::nullopt;
  return Entry{Stripped(text.substr(0, equals)), WithoutQuotes(Stripped(text.substr(equals + 1)))};
}

bool IsPlainAscii(std::string_view bytes) {
  return std::ranges::all_of(bytes, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

std::string OnOneLine(std::string_view text) {
  std::string line(text);
  std::ranges::replace_if(
      line, [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  return line;
}

}  // namespace

IniText::IniText(std::string_view bytes) {
  marked_ = bytes.starts_with(kByteOrderMark);
  if (marked_) bytes.remove_prefix(kByteOrderMark.size());
  utf8_ = marked_ || (!IsPlainAscii(bytes) && IsValidUtf8(bytes));
  if (bytes.find('\n') != std::string_view::npos && bytes.find("\r\n") == std::string_view::npos) line_end_ = "\n";
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\n');
    std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines_.emplace_back(line);
  }
}

std::string IniText::Decode(std::string_view line) const {
  return utf8_ ? ToValidUtf8(line) : FromAnsi(line);
}

std::string IniText::Encode(std::string_view text) const {
  return utf8_ ? std::string(text) : ToAnsi(text);
}

IniText::Place IniText::Locate(std::string_view section, std::string_view key) const {
  Place place;
  bool inside = false;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const std::string line = Decode(lines_[i]);
    if (const auto name = SectionOf(line)) {
      if (place.has_section) return place;
      inside = EqualsIgnoreCase(*name, section);
      place.has_section = inside;
    }
    if (!inside) continue;
    if (!Stripped(line).empty()) place.section_end = i + 1;
    const auto entry = EntryOf(line);
    if (!SectionOf(line) && entry && EqualsIgnoreCase(entry->key, key)) {
      place.line = i;
      return place;
    }
  }
  return place;
}

std::optional<std::string> IniText::Find(std::string_view section, std::string_view key) const {
  const Place place = Locate(section, key);
  if (!place.line) return std::nullopt;
  const std::string line = Decode(lines_[*place.line]);
  const std::string_view value = EntryOf(line)->value;
  return std::string(value.substr(0, value.find('\0')));
}

void IniText::Set(std::string_view section, std::string_view key, std::string_view value) {
  const Place place = Locate(section, key);
  const std::string line = Encode(OnOneLine(std::string(key) + "=" + std::string(value)));
  if (place.line) {
    lines_[*place.line] = line;
  } else if (place.has_section) {
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place.section_end), line);
  } else {
    lines_.push_back(Encode(OnOneLine("[" + std::string(section) + "]")));
    lines_.push_back(line);
  }
}

std::string IniText::Bytes() const {
  std::string bytes(marked_ ? kByteOrderMark : std::string_view());
  for (const std::string& line : lines_) bytes.append(line).append(line_end_);
  return bytes;
}

}  // namespace luming
