#pragma once

#include <vector>

#include "platform/recordset.h"
#include "screen/grid.h"

namespace luming {

/// Fills a grid with rows of the drug catalogue. A stopped drug stays in every list, since what is left of it has to be
/// returned, counted or scrapped and its stop can be lifted; it stands there in grey.
void FillDrugList(Grid& grid, Recordset&& rows, const std::vector<ColumnSource>& sources);

/// Shows one row of such a list as that of a stopped drug, or of one in use.
void ShowStopped(Grid& grid, int row, bool stopped);

}  // namespace luming
