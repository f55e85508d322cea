#include "frame/ini_file.h"

#include <optional>

#include "frame/ini_text.h"
#include "util/ansi_text.h"
#include "util/failure.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

namespace {

constexpr std::size_t kLargestFile = 4U << 20;

IniText ReadIniText(const std::filesystem::path& file) {
  return IniText(ReadWholeFile(file, kLargestFile).value_or(std::string()));
}

/// Nothing when the key, the file or the right to read it is missing.
std::optional<std::string> Lookup(const std::filesystem::path& file, std::string_view section, std::string_view key) {
  try {
    return ReadIniText(file).Find(section, key);
  } catch (const Failure&) {
    return std::nullopt;
  }
}

/// As many characters as fit into the bytes of code page 936.
std::string CutToBytes(std::string_view text, std::size_t limit) {
  std::size_t used = 0;
  std::size_t position = 0;
  while (position < text.size()) {
    std::size_t next = position;
    NextCodePoint(text, next);
    used += AnsiLength(text.substr(position, next - position));
    if (used > limit) break;
    position = next;
  }
  return std::string(text.substr(0, position));
}

/// The whole number that the text begins with, modulo 2^32 as the settings service gives it; 0 when there is none.
std::int32_t LeadingInteger(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::uint32_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    number = number * 10 + static_cast<std::uint32_t>(c - '0');
  }
  return static_cast<std::int32_t>(negative ? 0U - number : number);
}

}  // namespace

void CIniFile::SpecifyIni(std::string_view path) {
  path_ = Trim(path);
}

bool CIniFile::CheckIniSet() {
  error_msg_.clear();
  if (path_.empty()) error_msg_ = "没有指定 INI 文件";
  return !path_.empty();
}

std::string CIniFile::ReadString(std::string_view section, std::string_view key, int& size) {
  if (!CheckIniSet()) return {};
  const std::size_t longest = size > 0 ? static_cast<std::size_t>(size) : 0;
  ++size;
  return TrimRight(CutToBytes(Lookup(path_, section, key).value_or(std::string()), longest));
}

void CIniFile::WriteString(std::string_view section, std::string_view key, std::string_view value) {
  if (!CheckIniSet()) return;
  try {
    IniText text = ReadIniText(path_);
    text.Set(section, key, value);
    ReplaceFile(path_, text.Bytes());
  } catch (const Failure&) {
    error_msg_ = "写入失败";
  }
}

std::int32_t CIniFile::ReadInt(std::string_view section, std::string_view key) {
  if (!CheckIniSet()) return 0;
  const std::optional<std::string> value = Lookup(path_, section, key);
  if (!value || value->empty()) {
    error_msg_ = "不能读取";
    return 0;
  }
  return LeadingInteger(*value);
}

}  // namespace luming
