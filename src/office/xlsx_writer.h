#pragma once

#include <string>

#include "platform/workbook.h"

namespace luming {

/// The sheet as bytes of an ".xlsx" file. Failure when the format cannot hold it or there is no room for it.
std::string XlsxBytes(const Sheet& sheet, const Progress& progress);

}  // namespace luming
