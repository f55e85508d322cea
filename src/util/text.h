#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace luming {

/// All text inside the program is UTF-8. Positions and lengths here count characters (code points), as an operator
/// does.

std::size_t CharCount(std::string_view text);
std::string Left(std::string_view text, std::size_t count);
std::string Right(std::string_view text, std::size_t count);
/// @param start 1 is the first character
std::string Mid(std::string_view text, std::size_t start, std::size_t count = std::string::npos);
std::vector<std::string> Characters(std::string_view text);

/// Blanks only (U+0020), as the database and the screens trim.
std::string Trim(std::string_view text);
std::string TrimRight(std::string_view text);
std::string Replace(std::string_view text, std::string_view what, std::string_view with);
/// An empty text has no parts; an empty separator separates nothing.
std::vector<std::string> Split(std::string_view text, std::string_view separator);
std::string Join(const std::vector<std::string>& parts, std::string_view separator);

/// ASCII letters only; what the comparison of names and commands needs.
std::string LowerAscii(std::string_view text);
std::string UpperAscii(std::string_view text);
bool EqualsIgnoreCase(std::string_view left, std::string_view right);

bool IsValidUtf8(std::string_view bytes);
/// The same bytes with each byte that is no UTF-8 replaced by U+FFFD.
std::string ToValidUtf8(std::string_view bytes);
/// Decodes the character at `position` (a byte offset) and moves `position` behind it; U+FFFD for a bad byte.
char32_t NextCodePoint(std::string_view text, std::size_t& position);
std::string EncodeUtf8(char32_t code_point);

}  // namespace luming
