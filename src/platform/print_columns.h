#pragma once

#include <vector>

#include "platform/page_plan.h"

namespace luming {

/// How a grid's columns are spread over pages.
struct ColumnPlan {
  Paper paper;  ///< turned if that lets the columns stand on one page
  PrintFont body;
  double padding = 2;
  std::vector<std::vector<ColumnPlace>> groups;  ///< columns of the pages that stand side by side; at least one
};

/// Columns are made narrower together with the font down to a readable size, on upright paper first, then on turned
/// paper; when that does not do, whole columns continue on further pages, behind the leading ones.
ColumnPlan PlanColumns(const PrintGrid& grid, const Paper& paper, const TextMetrics& metrics);

/// Width of `cols` columns of the grid from the place at `at` on, as far as they stand on this page.
double SpannedWidth(const std::vector<ColumnPlace>& columns, std::size_t at, int cols);

}  // namespace luming
