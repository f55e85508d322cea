#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace luming {

/// True for what a Chinese desktop accepts as a number: blanks around, a sign ahead or behind, "￥" or "¥", thousands
/// separators, a point, an exponent ("1e3"), full-width digits ("１２"). False for "", "-", "1-2".
bool IsNumeric(std::string_view text);

/// The number that a text accepted by IsNumeric stands for; nothing for any other text.
std::optional<double> ParseNumber(std::string_view text);

/// As ParseNumber, throwing failure 13 when the text is no number.
double CDbl(std::string_view text);

/// The number that the text begins with, blanks skipped, 0 when there is none. Never fails; knows no separators.
double Val(std::string_view text);

/// To a whole number, halves to the even neighbour: 2.5 is 2, 3.5 is 4. Failure 6 outside 32 bits, 13 for a text that
/// is no number.
std::int32_t CLng(double value);
std::int32_t CLng(std::string_view text);
/// The same within 16 bits, the range of a line's split ratio.
std::int16_t CInt(double value);
std::int16_t CInt(std::string_view text);

/// The default text of a double: 15 significant digits, no trailing zeros, "1E+15" from 1e15 on, "1E-05" style below.
std::string NumberText(double value);

/// Formats by a picture of '0', '#', one '.', ',' and literal characters around it: "0.00", "0.0000", "￥0.0000",
/// "#.00", "0000". Rounds half away from zero on the decimal text of 15 digits: 1.2345 as "0.000" is 1.235. No minus
/// stands ahead of a result of zero. A picture without '0' or '#' gives NumberText.
std::string FormatNumber(double value, std::string_view picture);

/// FormatNumber of a text that is a number; any other text, the empty one included, comes back as it is.
std::string FormatNumberText(std::string_view text, std::string_view picture);

/// Rounds half away from zero to `decimals` places, judged on the decimal text of 15 digits.
double RoundDecimal(double value, int decimals);

}  // namespace luming
