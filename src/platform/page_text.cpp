#include <algorithm>

#include "platform/page_plan.h"
#include "platform/print_columns.h"

namespace luming {

namespace {

void AppendItems(std::string& text, const PlannedPage& page, double from, double to) {
  for (const ItemLine& line : page.items) {
    if (line.y < from || line.y >= to) continue;
    for (std::size_t i = 0; i < line.parts.size(); ++i) text += (i ? "\t" : "") + line.parts[i].text;
    text += '\n';
  }
}

/// What a cell shows in this piece of its row. A wrapped text that stands in one piece is one line again.
std::string ShownText(const PrintGrid& grid, const PagePlan& plan, const PlannedPage& page, const RowPiece& piece,
                      std::size_t column, const TextMetrics& metrics) {
  const PrintCell& cell = CellAt(grid, piece, page.columns[column].col);
  if (cell.cols == 0 || cell.text.empty()) return "";
  const PrintFont font{plan.body.name, plan.body.points, cell.bold};
  const double width = SpannedWidth(page.columns, column, cell.cols) - 2 * plan.padding;
  const std::vector<std::string> lines = WrapText(cell.text, width, font, metrics);
  if (piece.first_line == 0 && piece.lines * std::max(cell.rows, 1) >= static_cast<int>(lines.size())) return cell.text;
  std::string shown;
  for (int line = piece.first_line; line < piece.first_line + piece.lines; ++line) {
    if (line < static_cast<int>(lines.size())) shown += lines[static_cast<std::size_t>(line)];
  }
  return shown;
}

}  // namespace

std::string PagesAsText(const PrintJob& job, const PagePlan& plan, const TextMetrics& metrics) {
  std::string text;
  for (const PlannedPage& page : plan.pages) {
    AppendItems(text, page, 0, plan.paper.height / 2);
    for (const RowPiece& piece : page.rows) {
      for (std::size_t column = 0; column < page.columns.size(); ++column) {
        if (column > 0) text += '\t';
        text += ShownText(job.grid, plan, page, piece, column, metrics);
      }
      text += '\n';
    }
    if (!page.count_note.empty()) text += page.count_note + "\n";
    AppendItems(text, page, plan.paper.height / 2, plan.paper.height);
    text += '\f';
  }
  return text;
}

}  // namespace luming
