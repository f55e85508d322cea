#pragma once

#include <string>

#include "frame/app_context.h"
#include "platform/printing.h"
#include "screen/grid.h"

namespace luming {

/// What callers of GridPrint may say beside grid and title; most say nothing.
struct GridPrintOptions {
  bool direct = false;     ///< prints at once; else the preview opens
  std::string unitName{};  ///< empty: the unit name of the process
  std::string dateFrom{};  ///< the period; an empty start leaves it out
  std::string dateTo{};
  bool hideOption = false;   ///< prints without lines between the cells
  std::string footLeft{};    ///< "制表人:" and a name
  std::string footRight{};   ///< "打印日期:" and a date
  std::string headCentre{};  ///< "出库方式:" and the mode
};

/// Prints or previews a grid under its title. An empty grid gives a box instead. Failure of the printer comes through.
void GridPrint(AppContext& app, Grid& grid, const std::string& title, const GridPrintOptions& options = {});

/// The visible columns of the grid as they stand.
PrintGrid PrintedGrid(const Grid& grid);

/// Whether a row is the operator's data: neither a total row nor a foot that spans the grid.
bool IsDataRow(const Grid& grid, int row);

}  // namespace luming
