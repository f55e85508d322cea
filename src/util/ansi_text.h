#pragma once

#include <string>
#include <string_view>

namespace luming {

/// The system's code page is 936: it counts bytes where a byte limit applies and writes the local files.

/// Bytes of the text in code page 936; a character outside it counts as the one byte of its replacement '?'.
std::size_t AnsiLength(std::string_view utf8);
/// To code page 936; a character outside it becomes '?'.
std::string ToAnsi(std::string_view utf8);
/// From code page 936; a byte sequence that is none becomes U+FFFD.
std::string FromAnsi(std::string_view bytes);

/// Cuts a text to a limit in bytes of its ANSI form, as the fields do when the focus leaves them. A text that reads as
/// a date comes back untouched, blanks included; any other is trimmed first. No double-byte character is split.
std::string CutAnsi(std::string_view utf8, std::size_t limit);

}  // namespace luming
