#pragma once

#include <string>

#include "frame/app_context.h"
#include "output/grid_print.h"
#include "screen/grid.h"

namespace luming {

/// What the print and export buttons of all screens do, see GridPrint and GridToExcel. Failures are shown in the common
/// box.
void PrintTrapped(AppContext& app, Grid& grid, const std::string& title, const GridPrintOptions& options = {});
void ExportTrapped(AppContext& app, Grid& grid, const std::string& sheetName = {});

/// The same for any grid, whether its screen has such buttons or not, under its form's caption.
void RunGridCommand(AppContext& app, Grid& grid, GridCommand command);

}  // namespace luming
