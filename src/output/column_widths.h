#pragma once

#include "frame/app_context.h"
#include "screen/grid.h"

namespace luming {

/// @name Widths that the operator has given to a grid's columns
/// Kept on the workstation in `ColumnWidths.ini` of the application directory, in average characters, by the names of
/// form and grid. A file that is missing or damaged gives no widths; one that cannot be written keeps none.
/// @{
void RestoreColumnWidths(const AppContext& app, Grid& grid);
void KeepColumnWidths(const AppContext& app, const Grid& grid);
/// @}

}  // namespace luming
