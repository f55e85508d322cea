#pragma once

#include "stock/line_grid.h"

namespace luming {

/// What the line grids of the documents do each in its own way, a row a document, so that they can be compared.
struct AllLineHabits {
  LineHabits receipt;
  LineHabits return_to_supplier;
  LineHabits requisition;
  LineHabits loss;
  LineHabits stock_take;
  LineHabits issue_note;
};

// clang-format off
inline const AllLineHabits kLineHabits = {
  //                      summed       resummed  deletion                           scroll               duplicates            parked as
  .receipt            = {{10},        {10},     AfterDelete::kSumThenRemoveTotals, ScrollTo::kLastFive, Duplicates::kRefused, "RYYP.Dat"},
  // Column 10 is the expiry here, as if this were a receipt; the amount stands in column 8.
  .return_to_supplier = {{10},        {10},     AfterDelete::kSumThenRemoveTotals, ScrollTo::kLastFive, Duplicates::kRefused, nullptr},
  .requisition        = {{10},        {},       AfterDelete::kNothing,             ScrollTo::kLastFive, Duplicates::kRefused, nullptr},
  // Unit and batch among them, while the amounts in columns 10 and 12: only the second is summed.
  .loss               = {{6, 7, 8, 11, 12}, {}, AfterDelete::kNothing,             ScrollTo::kLastRow,  Duplicates::kRefused, nullptr},
  // Its total comes and goes with the screen's own RecalcTotal.
  .stock_take         = {{},          {},       AfterDelete::kNothing,             ScrollTo::kLastRow,  Duplicates::kRefused, "PDD.Dat"},
  .issue_note         = {{9, 11, 12}, {},       AfterDelete::kNothing,             ScrollTo::kLastFive, Duplicates::kRefused, nullptr},
};
// clang-format on

}  // namespace luming
