#pragma once

#include "screen/grid.h"

namespace luming {

/// The look that all grids share. Screens call it on every grid when they load.
/// @param keepRows leaves the rows; else the grid is emptied
void GridInit(Grid& grid, bool keepRows = false);

}  // namespace luming
