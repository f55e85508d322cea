#pragma once

#include <memory>
#include <string>

#include "platform/workbook.h"

namespace luming {

/// Reads the bytes of an .xlsx file. Failure when it is damaged or no workbook of that kind.
std::unique_ptr<SheetReader> ReadXlsx(std::string bytes);

}  // namespace luming
