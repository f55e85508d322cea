#include "stock/drug_list.h"

namespace luming {

namespace {

constexpr Colour kStoppedText = 0x808080;

/// The recordset stands on its first row afterwards.
std::vector<int> StoppedRows(Recordset& rows) {
  std::vector<int> stopped;
  if (rows.RecordCount() == 0) return stopped;
  const std::size_t flag = rows.ColumnIndex("SFTY");
  for (int row = 1; !rows.Eof(); rows.MoveNext(), ++row) {
    if (rows.Field(flag).NumberOr(0) == 1) stopped.push_back(row);
  }
  rows.MoveFirst();
  return stopped;
}

}  // namespace

void FillDrugList(Grid& grid, Recordset&& rows, const std::vector<ColumnSource>& sources) {
  const std::vector<int> stopped = StoppedRows(rows);
  grid.Fill(std::move(rows), sources);
  for (const int row : stopped) ShowStopped(grid, row, true);
}

void ShowStopped(Grid& grid, int row, bool stopped) {
  grid.SetColours(row, -1, -1, stopped ? kStoppedText : Control::kNoColour, Control::kNoColour);
}

}  // namespace luming
