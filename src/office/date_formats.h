#pragma once

#include <string_view>

#include "platform/database.h"

namespace luming {

/// Workbooks store dates as numbers; only the number format of the cell tells one from the other.

/// Whether the built-in number format of that number shows a date or a time.
bool IsBuiltInDateFormat(int number);
/// The same for a format's text: "yyyy-mm-dd", "[$-804]h:mm;@".
bool IsDateFormat(std::string_view format);

/// Which day a workbook counts from.
enum class DateBase { k1900, k1904 };
/// What a cell with that number holds: under a date format the moment it stands for, if there is one.
Value ValueOfNumber(double number, bool is_date, DateBase base);

}  // namespace luming
