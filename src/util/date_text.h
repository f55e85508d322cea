#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "util/date_time.h"

namespace luming {

/// Reads what a Chinese desktop accepts as a date: "2026-3-1", "2026/3/1 8:05:00", "2026.3.1", "2026年3月1日",
/// "26-3-1", "3-1" (this year is `today`'s), a time alone ("8:05"), blanks around and between. Two-digit years are 1930
/// to 2029. A time alone falls on the day zero. "3.1" is a number. Nothing for other text.
std::optional<DateTime> ParseDate(std::string_view text, const DateTime& today);

/// True if ParseDate would read the text. Which year "3-1" falls in does not matter here.
bool IsDate(std::string_view text);

/// As ParseDate, throwing failure 13 when the text is no date.
DateTime CDate(std::string_view text, const DateTime& today);

/// The default text of a date value: "2026/3/1", with a time unless it is midnight: "2026/3/1 8:05:00"; for the day
/// zero the time alone. Milliseconds are dropped.
std::string DateText(const DateTime& value);

/// Formats with the codes "yyyy", "yy", "mm", "m", "dd", "d", "hh", "h", "nn", "n", "ss", "s" (either case; "mm" behind
/// an hour is minutes) and the named format "dddddd" ("2026年3月1日"). Other characters stand for themselves.
std::string FormatDate(const DateTime& value, std::string_view format);

/// "星期日" to "星期六".
std::string_view WeekdayName(const DateTime& value);

}  // namespace luming
