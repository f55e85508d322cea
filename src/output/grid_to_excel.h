#pragma once

#include <string>

#include "frame/app_context.h"
#include "platform/workbook.h"
#include "screen/grid.h"

namespace luming {

/// Asks for a file and writes the grid into it as a workbook, its header rows first. Cancelling changes nothing.
/// Failure of the file comes through; the grid stays as it was and no half file is left.
/// @param sheetName empty: the caption of the grid's form
void GridToExcel(AppContext& app, Grid& grid, const std::string& sheetName = {});

/// The grid as a sheet, as its columns are declared: codes and texts are texts, figures numbers, days dates; a column
/// that says nothing goes by what all its cells look like. Hidden columns stay out; formulas stay live.
Sheet SheetOf(const Grid& grid, const std::string& name);

}  // namespace luming
