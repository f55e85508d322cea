#include "stock/stock_column.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace luming {

GridColumn StockColumn(const char* caption) {
  constexpr std::array<std::string_view, 2> kTexts = {"编码", "批号"};
  GridColumn column(caption);
  if (std::ranges::find(kTexts, caption) != kTexts.end()) column.align = Align::kLeft;
  return column;
}

}  // namespace luming
