#include "desktop/grid_columns.h"

#include <QHeaderView>
#include <QTableView>
#include <algorithm>

#include "desktop/grid_table.h"
#include "desktop/metrics.h"
#include "desktop/qt_text.h"

namespace luming {
namespace {

constexpr int kSampleRows = 100;
constexpr int kWidestCharacters = 36;
constexpr int kNarrowestCharacters = 4;

}  // namespace

void GridColumns::Restart(int columns) {
  columns_.assign(static_cast<std::size_t>(columns) + 1, {});
}

int GridColumns::HeadWidth(const std::string& caption) const {
  QFont font = view_.font();
  font.setBold(true);
  return QFontMetrics(font).horizontalAdvance(ToQt(caption)) + 2 * metrics::kFrame;
}

int GridColumns::WidthOf(const Grid& grid, int col) const {
  const QFontMetrics text(view_.font());
  const int padding = 2 * metrics::kFrame;
  const int caption = HeadWidth(grid.Text(0, col));
  const int character = text.averageCharWidth();
  if (const int said = grid.ColumnWidth(col); said > 0) {
    const int width = said * character + padding;
    return grid.WidthIsOperators(col) ? width : std::max(width, caption);
  }
  int width = std::max(caption, kNarrowestCharacters * character + padding);
  const int rows = std::min(grid.MaxRows(), kSampleRows);
  for (int row = 1; row <= rows; ++row) {
    if (grid.Span(row, col) != std::pair{1, 1}) continue;
    width = std::max(width, text.horizontalAdvance(CellText(grid, row, col)) + padding);
  }
  return std::min(width, std::max(caption, kWidestCharacters * character));
}

void GridColumns::Measure(const Grid& grid) {
  for (int col = 1; col < static_cast<int>(columns_.size()); ++col) {
    Column& column = columns_[static_cast<std::size_t>(col)];
    if (column.dragged || grid.ColumnHidden(col)) continue;
    if (grid.WidthIsOperators(col)) {
      Dragged(col, WidthOf(grid, col));
      continue;
    }
    column.needed = std::max(column.needed, WidthOf(grid, col));
    const bool text = grid.MaxRows() == 0 || grid.CellAlign(1, col) == Align::kLeft;
    column.grows = grid.ColumnWidth(col) == 0 && text;
  }
  for (int col = 1; col < static_cast<int>(columns_.size()); ++col) MakeRoomForGroup(grid, col);
}

/// The columns of a group that is wider than all of them share what it needs.
void GridColumns::MakeRoomForGroup(const Grid& grid, int first) {
  const std::string group = grid.HeadGroup(first);
  if (group.empty() || grid.HeadGroup(first - 1) == group) return;
  std::vector<Column*> sharing;
  int lacking = HeadWidth(group);
  for (int col = first; grid.HeadGroup(col) == group; ++col) {
    if (grid.ColumnHidden(col)) continue;
    Column& column = columns_[static_cast<std::size_t>(col)];
    lacking -= column.needed;
    if (!column.dragged) sharing.push_back(&column);
  }
  for (std::size_t left = sharing.size(); left > 0 && lacking > 0; --left) {
    const int more = (lacking + static_cast<int>(left) - 1) / static_cast<int>(left);
    sharing[left - 1]->needed += more;
    lacking -= more;
  }
}

std::vector<int> GridColumns::VisibleColumns(const Grid& grid) const {
  std::vector<int> visible;
  for (int col = 1; col < static_cast<int>(columns_.size()); ++col) {
    if (!grid.ColumnHidden(col)) visible.push_back(col);
  }
  return visible;
}

void GridColumns::Apply(const Grid& grid) {
  applying_ = true;
  for (int col = 1; col < static_cast<int>(columns_.size()); ++col) {
    view_.setColumnHidden(col - 1, grid.ColumnHidden(col));
  }
  const std::vector<int> visible = VisibleColumns(grid);
  const auto at = [this](int col) -> const Column& { return columns_[static_cast<std::size_t>(col)]; };
  const bool any_grows = std::ranges::any_of(visible, [&](int col) { return at(col).grows; });
  const auto grows = [&](int col) { return !at(col).dragged && (at(col).grows || !any_grows); };
  int room = view_.viewport()->width();
  int growing = 0;
  for (const int col : visible) {
    room -= at(col).needed;
    if (grows(col)) growing += at(col).needed;
  }
  room = std::max(room, 0);
  for (const int col : visible) {
    // What is left is shared out by need; the last of the growing columns takes what rounding leaves.
    const int extra = grows(col) && growing > 0 ? room * at(col).needed / growing : 0;
    if (grows(col)) {
      room -= extra;
      growing -= at(col).needed;
    }
    view_.setColumnWidth(col - 1, at(col).needed + extra);
  }
  applying_ = false;
}

int GridColumns::CharactersIn(int width) const {
  const int character = std::max(1, QFontMetrics(view_.font()).averageCharWidth());
  return std::max(1, (width - 2 * metrics::kFrame + character / 2) / character);
}

void GridColumns::Dragged(int col, int width) {
  Column& column = columns_.at(static_cast<std::size_t>(col));
  column.needed = width;
  column.dragged = true;
  column.grows = false;
}

}  // namespace luming
