#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/grid.h"

namespace luming {

// Paper forms that are filled into workbooks of the directory "MB". `direct` goes to the printer, else the preview
// opens. Each has one trap: a missing or damaged template, or no office program, shows the common error box.

/// The issue note of a document.
void PrintCKD(AppContext& app, bool direct, const std::string& number);

/// The receipt note of the document that is active in `list`.
/// @param list   heads: 1 number, 3 date, 5 supplier
/// @param detail lines: name, specification, unit, origin, quantity, purchase price and amount, retail price and
///               amount, difference, batch, expiry; then its total row and, last, the row that names the people
void PrintRKD(AppContext& app, bool direct, const Grid& list, const Grid& detail);

/// The wholesale note of the document that is active in `list`.
/// @param list   heads: 3 buyer
/// @param detail lines: code, then name, specification, unit, quantity, wholesale price and amount, retail price and
///               amount, origin, expiry, batch; then its total row, if it has one, and, last, the row that names the
///               people
void PrintPFD(AppContext& app, bool direct, const Grid& list, const Grid& detail);

}  // namespace luming
