#pragma once

#include <memory>
#include <string>

#include "platform/workbook.h"

namespace luming {

/// Reads the main stream of an .xls file: BIFF8 (Excel 97 and later) and BIFF5. Failure when it is damaged, older, or
/// under a password.
std::unique_ptr<SheetReader> ReadXls(std::string stream);

}  // namespace luming
