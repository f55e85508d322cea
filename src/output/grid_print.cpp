#include "output/grid_print.h"

#include <algorithm>
#include <array>

#include "output/grid_routines.h"

namespace luming {

namespace {

constexpr int kControlNumber = 45;
constexpr const char* kFont = "宋体";

std::vector<PrintItem> NineItems(const GridPrintOptions& options) {
  constexpr auto kHeader = PrintItem::kHeader;
  constexpr auto kFooter = PrintItem::kFooter;
  constexpr auto kLeft = PrintItem::kLeft;
  constexpr auto kRight = PrintItem::kRight;
  constexpr auto kCentre = PrintItem::kCentre;
  return {
      {kHeader, kCentre, 1, "{报表名}", kFont, 16, true},
      {kHeader, kLeft, 2, "{空行}", "", 0, false},
      {kHeader, kCentre, 3, "{空行}", "", 0, false},
      {kHeader, kLeft, 4, "{单位名称}", kFont, 9, false},
      {kHeader, kRight, 4, options.dateFrom.empty() ? "" : "日期：{统计日期}", kFont, 9, false},
      {kFooter, kLeft, 1, options.footLeft, kFont, 9, false},
      {kFooter, kCentre, 1, "{页码}", kFont, 9, false},
      {kFooter, kRight, 1, options.footRight, kFont, 9, false},
      {kHeader, kCentre, 4, options.headCentre, kFont, 9, false},
  };
}

/// Switches the lines of the grid off as long as it lives.
class WithoutLines {
 public:
  WithoutLines(Grid& grid, bool wanted) : grid_(grid), wanted_(wanted) {
    if (wanted_) grid_.SetGridLines(false);
  }
  ~WithoutLines() {
    if (wanted_) grid_.SetGridLines(true);
  }
  WithoutLines(const WithoutLines&) = delete;
  WithoutLines& operator=(const WithoutLines&) = delete;

 private:
  Grid& grid_;
  bool wanted_;
};

PrintAlign Printed(Align align) {
  if (align == Align::kRight) return PrintAlign::kRight;
  return align == Align::kCentre ? PrintAlign::kCentre : PrintAlign::kLeft;
}

/// One row of the visible columns. A span counts the visible columns alone and begins at the first of them.
std::vector<PrintCell> PrintedRow(const Grid& grid, int row, const std::vector<int>& visible) {
  std::vector<PrintCell> cells(visible.size());
  for (std::size_t i = 0; i < visible.size(); ++i) {
    cells[i] = {grid.Text(row, visible[i]), Printed(grid.CellAlign(row, visible[i])), grid.Bold(row, visible[i])};
  }
  for (int col = 1; col <= grid.MaxCols(); ++col) {
    const auto [rows, cols] = grid.Span(row, col);
    if (rows == 1 && cols == 1) continue;
    const auto first = std::ranges::lower_bound(visible, col);
    const auto end = std::ranges::lower_bound(visible, col + std::max(cols, 1));
    if (first == end) continue;
    const auto at = static_cast<std::size_t>(first - visible.begin());
    if (cols == 0) {
      // Covered, unless it stands in for the hidden column at which the span begins.
      if (*first == col && cells[at].cols == 1) cells[at] = {"", PrintAlign::kLeft, false, 0, 0};
      continue;
    }
    const int width = static_cast<int>(end - first);
    for (int covered = 1; covered < width; ++covered) {
      cells[at + static_cast<std::size_t>(covered)] = {"", PrintAlign::kLeft, false, 0, 0};
    }
    cells[at] = {grid.Text(row, col), Printed(grid.CellAlign(row, col)), grid.Bold(row, col), rows, width};
  }
  return cells;
}

}  // namespace

bool IsDataRow(const Grid& grid, int row) {
  const bool spans_all = grid.MaxCols() > 1 && grid.Span(row, 1).second >= grid.MaxCols();
  return !spans_all && !grid.IsTotalRow(row);
}

PrintGrid PrintedGrid(const Grid& grid) {
  PrintGrid printed;
  std::vector<int> visible;
  for (int col = 1; col <= grid.MaxCols(); ++col) {
    if (grid.ColumnHidden(col)) continue;
    visible.push_back(col);
    printed.widths.push_back(grid.ColumnWidth(col));
    if (col <= grid.FrozenCols()) ++printed.leading;
  }
  for (int row = 1 - grid.HeaderRows(); row <= 0; ++row) {
    printed.heads.push_back(PrintedRow(grid, row, visible));
    for (PrintCell& head : printed.heads.back()) head.bold = true;
  }
  for (int row = 1; row <= grid.MaxRows(); ++row) {
    printed.rows.push_back(PrintedRow(grid, row, visible));
    if (IsDataRow(grid, row)) ++printed.counted_rows;
  }
  printed.lines = grid.GridLines();
  return printed;
}

void GridPrint(AppContext& app, Grid& grid, const std::string& title, const GridPrintOptions& options) {
  if (grid.MaxRows() == 0) {
    app.desktop.MsgBox(
        {std::string(AppContext::kTitle) + "  未发现可以打印的内容。", box::kWarning, AppContext::kTitle});
    return;
  }
  PrintJob job;
  job.items = NineItems(options);
  job.values = {{"统计日期", options.dateFrom + " 到 " + options.dateTo}};
  const WithoutLines without_lines(grid, options.hideOption);
  job.grid = PrintedGrid(grid);
  job.number = kControlNumber;
  job.unit_name = options.unitName.empty() ? app.ReportUnit : options.unitName;
  job.operator_name = app.CurUser.GetUserName;
  job.title = title;
  if (options.direct) {
    app.printing.Print(job);
  } else {
    app.printing.Preview(job);
  }
}

}  // namespace luming
