#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace luming {

/// A settings file: sections in brackets, lines "key=value", names without regard to case, in code page 936 or UTF-8.
/// A file that is missing, unreadable or garbage reads as one without keys.
class CIniFile {
 public:
  /// @param path trimmed and kept
  void SpecifyIni(std::string_view path);

  /// The value without surrounding quotes and trailing blanks; empty when the key or the path is missing.
  /// @param size longest value in bytes of code page 936; the caller's variable goes up by 1
  std::string ReadString(std::string_view section, std::string_view key, int& size);
  /// Creates file, section and key as needed and leaves all other lines as they are.
  void WriteString(std::string_view section, std::string_view key, std::string_view value);
  /// 0 when the key is missing, which ErrorMsg then tells.
  std::int32_t ReadInt(std::string_view section, std::string_view key);

  const std::string& ErrorMsg() const { return error_msg_; }

 private:
  bool CheckIniSet();

  std::filesystem::path path_;
  std::string error_msg_;
};

}  // namespace luming
