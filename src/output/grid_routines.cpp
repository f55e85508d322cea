#include "output/grid_routines.h"

#include <utility>

#include "platform/workbook.h"
#include "util/text.h"

namespace luming {

void GridSumRow(Grid& grid, int caption_col, const std::vector<int>& columns) {
  const int lines = grid.MaxRows();
  if (lines == 0) return;
  const int total = lines + 1;
  grid.SetMaxRows(total);
  grid.SetText(total, 1, "");
  grid.SetText(total, caption_col, std::string(kTotalCaption));
  for (const int column : columns) {
    const std::string letters = ColumnLetters(column);
    grid.SetKind(total, column, CellKind::kNumber);
    grid.SetFormula(total, column, "SUM(" + letters + "1:" + letters + std::to_string(lines) + ")");
  }
  MakeTotalRow(grid, total, caption_col);
}

void MakeTotalRow(Grid& grid, int row, int caption_col) {
  grid.SetTotalRow(row, true);
  grid.SetAlign(row, caption_col, Align::kCentre);
  grid.SetBold(row, 1, grid.MaxCols(), true);
  grid.SetLocked(row, 1, grid.MaxCols(), true);
}

bool GridDelRow(Grid& grid, int row) {
  if (grid.MaxRows() == 0) {
    const std::string title = AppContext::kTitle;
    grid.Owner().Registry().desktop().MsgBox({title + "  未发现可以删除的内容。", box::kWarning, title});
    return false;
  }
  grid.DeleteRows(row, 1);
  grid.SetMaxRows(grid.MaxRows() - 1);
  return true;
}

void RemoveTotalRow(int col, std::string_view text, Grid& grid) {
  int row = 1;
  while (row <= grid.MaxRows()) {
    if (grid.Text(row, col) == text && GridDelRow(grid, row)) {
      row = 1;
    } else {
      ++row;
    }
  }
}

void SetSearchType(const AppContext& app, ComboBox& combo) {
  if (app.SearchType.empty()) {
    combo.SetListIndex(0);
  } else {
    combo.SetText(app.SearchType);
  }
}

std::string CleanSearchText(std::string_view text) {
  std::string clean = Trim(text);
  for (const std::string_view unwanted : {"'", "\n", "\r", " "}) clean = Replace(clean, unwanted, "");
  return clean;
}

std::optional<std::string> FileDialog(Desktop& desktop, FileRequest request) {
  constexpr std::size_t kLongestName = 260;
  if (CharCount(request.name) > kLongestName) {
    desktop.MsgBox(
        {"Filename Length Overflow", box::kWarning, std::string(AppContext::kTitle) + " - FileDialog Function"});
    return std::nullopt;
  }
  if (request.name.find_first_of("<>:\"/\\|?*") != std::string::npos) request.name.clear();
  return desktop.ChooseFile(request);
}

}  // namespace luming
