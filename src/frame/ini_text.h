#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace luming {

/// The lines of a settings file. Takes any bytes; lines that it does not understand stay as they are.
class IniText {
 public:
  /// @param bytes in code page 936 or UTF-8, told apart by the byte order mark or by the bytes themselves
  explicit IniText(std::string_view bytes);

  /// The value as it stands behind the "=", trimmed, without quotes around it. Nothing when there is no such key.
  std::optional<std::string> Find(std::string_view section, std::string_view key) const;
  /// Sets the first such key, or adds it at the end of the section, or adds the section. Line ends become blanks.
  void Set(std::string_view section, std::string_view key, std::string_view value);
  /// In the encoding and with the line ends of the bytes it was read from.
  std::string Bytes() const;

 private:
  struct Place {
    bool has_section = false;
    std::size_t section_end = 0;  ///< index behind the section's last line that is not blank
    std::optional<std::size_t> line;
  };
  Place Locate(std::string_view section, std::string_view key) const;
  std::string Decode(std::string_view line) const;
  std::string Encode(std::string_view text) const;

  bool utf8_ = false;
  bool marked_ = false;  ///< begins with a byte order mark
  std::string line_end_ = "\r\n";
  std::vector<std::string> lines_;  ///< as in the file, without line ends
};

}  // namespace luming
