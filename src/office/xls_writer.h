#pragma once

#include <string>

#include "platform/workbook.h"

namespace luming {

/// The sheet as bytes of an ".xls" file (BIFF8 in an OLE2 container). Failure when the format cannot hold it.
std::string XlsBytes(const Sheet& sheet, const Progress& progress);

}  // namespace luming
