#include "screen/grid_init.h"

namespace luming {

namespace {
constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kRed = 0xFF0000;
}  // namespace

void GridInit(Grid& grid, bool keepRows) {
  grid.SetGridColours(kWhite, kWhite, kRed);
  if (!keepRows) grid.SetMaxRows(0);
}

}  // namespace luming
