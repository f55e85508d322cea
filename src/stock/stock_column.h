#pragma once

#include "screen/grid.h"

namespace luming {

/// A column of a stock grid by its caption. Codes and batch numbers keep to the left, although many look like numbers.
GridColumn StockColumn(const char* caption);

}  // namespace luming
