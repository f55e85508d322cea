#pragma once

#include <string>

#include "platform/database.h"

namespace luming {

/// Fields joined by tabs, rows by line ends, NULL as "NULL".
std::string RowsText(Recordset rows);

}  // namespace luming
