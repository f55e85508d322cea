#include <algorithm>
#include <utility>

#include "screen/grid_cells.h"

namespace luming {

void Grid::Cells::SetColumns(std::vector<GridColumn> declared) {
  const std::vector<Column> before = std::exchange(columns, std::vector<Column>(declared.size()));
  const std::vector<std::string> captions = std::move(rows.front().texts);
  rows = std::vector<Row>(1);
  bool differs = declared.size() != before.size();
  for (std::size_t i = 0; i < declared.size(); ++i) {
    Column& column = columns[i];
    const bool same = i < captions.size() && captions[i] == declared[i].caption && before[i].group == declared[i].group;
    differs = differs || !same;
    column.width_is_operators = same && before[i].width_is_operators;
    column.width = column.width_is_operators ? before[i].width : declared[i].width;
    column.hidden = declared[i].hidden;
    column.holds = declared[i].holds;
    column.group = std::move(declared[i].group);
    column.entry = declared[i].entry;
    if (declared[i].locked) column.look.locked = true;
    SetText(0, static_cast<int>(i) + 1, std::move(declared[i].caption));
  }
  if (differs) ++column_sets;
  RowsMoved();
  KeepActiveCellInside();
}

void Grid::SetColumns(std::vector<GridColumn> columns) {
  cells_->SetColumns(std::move(columns));
  Redraw();
}

int Grid::MaxCols() const {
  return cells_->MaxCols();
}

int Grid::ColumnSets() const {
  return cells_->column_sets;
}

int Grid::HeaderRows() const {
  return std::ranges::all_of(cells_->columns, [](const Cells::Column& column) { return column.group.empty(); }) ? 1 : 2;
}

std::string Grid::HeadGroup(int col) const {
  return cells_->Inside(0, col) ? cells_->ColumnAt(col).group : std::string();
}

void Grid::SetHeading(const std::string& words) {
  for (Cells::Column& column : cells_->columns) column.group = words;
  Redraw();
}

/// The upper of two header rows.
std::string Grid::UpperHead(int row, int col) const {
  if (row < -1 || HeaderRows() == 1) return {};
  const std::string group = HeadGroup(col);
  return group.empty() ? cells_->Shown(0, col) : group;
}

std::pair<int, int> Grid::HeadSpan(int row, int col) const {
  if (row < -1 || !cells_->Inside(0, col)) return {0, 0};
  const std::string group = HeadGroup(col);
  const bool upper = row < 0;
  if (group.empty()) return upper ? std::pair(2, 1) : std::pair(0, 0);
  if (!upper) return {1, 1};
  if (HeadGroup(col - 1) == group) return {0, 0};
  int end = col + 1;
  while (HeadGroup(end) == group) ++end;
  return {1, end - col};
}

Holds Grid::ColumnHolds(int col) const {
  return cells_->Inside(0, col) ? cells_->ColumnAt(col).holds : Holds::kAnything;
}

const CellEntry* Grid::Entry(int row, int col) const {
  if (!cells_->IsCell(row, col) || ReadOnly() || Locked(row, col) || IsTotalRow(row)) return nullptr;
  const std::optional<CellEntry>& entry = cells_->ColumnAt(col).entry;
  return entry ? &*entry : nullptr;
}

void Grid::SetColumnHidden(int col, bool hidden) {
  if (!cells_->Inside(0, col)) return;
  cells_->ColumnAt(col).hidden = hidden;
  Redraw();
}

bool Grid::ColumnHidden(int col) const {
  return cells_->Inside(0, col) && cells_->ColumnAt(col).hidden;
}

void Grid::SetColumnWidth(int col, int characters) {
  if (!cells_->Inside(0, col)) return;
  cells_->ColumnAt(col).width = std::max(characters, 0);
  Redraw();
}

void Grid::UserColumnWidth(int col, int characters) {
  if (!cells_->Inside(0, col)) return;
  cells_->ColumnAt(col).width_is_operators = true;
  SetColumnWidth(col, std::max(characters, 1));
}

bool Grid::WidthIsOperators(int col) const {
  return cells_->Inside(0, col) && cells_->ColumnAt(col).width_is_operators;
}

int Grid::ColumnWidth(int col) const {
  return cells_->Inside(0, col) ? cells_->ColumnAt(col).width : 0;
}

void Grid::SetFrozenCols(int cols) {
  cells_->frozen_cols = std::max(cols, 0);
  Redraw();
}

int Grid::FrozenCols() const {
  return std::min(cells_->frozen_cols, MaxCols());
}

}  // namespace luming
