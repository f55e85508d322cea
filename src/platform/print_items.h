#pragma once

#include <vector>

#include "platform/page_plan.h"

namespace luming {

/// The header's or footer's lines, placeholders filled but "{页码}", y counted from 0. Items that would run into each
/// other on one line get lines of their own.
std::vector<ItemLine> ItemLines(const PrintJob& job, int area, double width, const PrintFont& body,
                                const TextMetrics& metrics);

/// Height of all of them.
double HeightOf(const std::vector<ItemLine>& lines);

/// A copy with the page number filled in, moved down to `y`.
std::vector<ItemLine> OnPage(std::vector<ItemLine> lines, double y, int page, int pages);

}  // namespace luming
