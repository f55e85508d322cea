#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "localdb/types.h"
#include "platform/database.h"

namespace luming::localdb {

/// A value as the engine stores it: flags and whole numbers, decimals and floats, text; a date is the canonical text
/// "2026-03-01 08:05:00.000". What it means is said by the SqlType that goes with it.
using Datum = std::variant<std::monostate, std::int64_t, double, std::string>;

inline bool IsNull(const Datum& value) {
  return std::holds_alternative<std::monostate>(value);
}

/// What becomes of a text that is too long: storing it in a column is error 8152, a cast or a variable cuts it.
enum class Overlong { kRefuse, kCut };

/// The value in another type. Throws SqlError 241, 242, 245, 248, 8114, 8115 or 8152.
/// @param style the style number of CONVERT between dates and text; -1 is the default form
Datum Convert(const Datum& value, const SqlType& from, const SqlType& to, Overlong overlong, int style = -1);

/// The number that a literal of the text stands for: whole if it fits 64 bits and has no point, else a double.
Datum NumberLiteral(std::string_view digits);
/// The type of such a literal: int, decimal by its digits, or float with an exponent.
SqlType NumberLiteralType(std::string_view digits);

/// Rounds half away from zero to the scale, judged on 15 digits, so that sums of decimals carry no dust.
double RoundToScale(double value, int scale);

/// Reads a date in any form that the server takes and gives its canonical text; throws SqlError 241 or 242.
std::string CanonicalDate(std::string_view text);

std::string CanonicalDate(const DateTime& moment);
DateTime FromCanonicalDate(std::string_view canonical);

/// The text of a date by the style number of CONVERT; -1 is the default "Mar  1 2026  8:05AM".
std::string StyledDate(const DateTime& moment, int style);

/// Nothing when the text, read as code page 936 counts it, fits the text type; else where it must be cut, in bytes.
std::optional<std::size_t> CutPosition(std::string_view text, const SqlType& type);

}  // namespace luming::localdb
