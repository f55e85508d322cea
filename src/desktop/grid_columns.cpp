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

constexpr int kPadding = 2 * metrics::kFrame;

}  // namespace

WidthLimit::WidthLimit(const QFont& font) : font_(font) {
  const QFontMetricsF metrics(font);
  for (std::size_t c = 0; c < ascii_.size(); ++c) {
    ascii_[c] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(c)));
  }
  ideograph_ = metrics.horizontalAdvance(QChar(u'国'));
  other_ = ideograph_ * 5 / 4;
}

int WidthLimit::Of(std::string_view text) const {
  double width = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ascii_.size()) {
      width += ascii_[byte];
    } else if (byte >= 0xE3 && byte <= 0xE9) {  // begins an ideograph or a mark of its width
      width += ideograph_;
    } else if (byte >= 0xC0) {
      width += other_;
    }
  }
  return qRound(width);
}

GridColumns::GridColumns(QTableView& view) : view_(view), limit_(view.font()) {}

void GridColumns::Restart(int columns) {
  columns_.assign(static_cast<std::size_t>(columns) + 1, {});
}

int GridColumns::HeadWidth(const std::string& caption) const {
  QFont font = view_.font();
  font.setBold(true);
  return QFontMetrics(font).horizontalAdvance(ToQt(caption)) + kPadding;
}

int GridColumns::CaptionWidth(const Grid& grid, int col) {
  Column& column = columns_[static_cast<std::size_t>(col)];
  std::string caption = grid.Text(0, col);
  if (column.caption_width == 0 || caption != column.caption) {
    column.caption_width = HeadWidth(caption);
    column.caption = std::move(caption);
  }
  return column.caption_width;
}

int GridColumns::SaidWidth(const Grid& grid, int col) const {
  return grid.ColumnWidth(col) * QFontMetrics(view_.font()).averageCharWidth() + kPadding;
}

/// @param known the column is that wide already
int GridColumns::ContentWidth(const Grid& grid, int col, int caption, int known) const {
  const QFontMetrics text(view_.font());
  const int character = text.averageCharWidth();
  const int most = std::max(caption, kWidestCharacters * character);
  int width = std::max({known, caption, kNarrowestCharacters * character + kPadding});
  const int rows = std::min(grid.MaxRows(), kSampleRows);
  for (int row = 1; row <= rows && width < most; ++row) {
    if (grid.Span(row, col) != std::pair{1, 1}) continue;
    if (limit_.Of(grid.Text(row, col)) + kPadding <= width) continue;
    width = std::max(width, text.horizontalAdvance(CellText(grid, row, col)) + kPadding);
  }
  return std::min(width, most);
}

void GridColumns::Measure(const Grid& grid) {
  if (limit_.font() != view_.font()) {
    limit_ = WidthLimit(view_.font());
    for (Column& column : columns_) column.caption_width = 0;
  }
  for (int col = 1; col < static_cast<int>(columns_.size()); ++col) {
    Column& column = columns_[static_cast<std::size_t>(col)];
    if (column.dragged || grid.ColumnHidden(col)) continue;
    if (grid.WidthIsOperators(col)) {
      Dragged(col, SaidWidth(grid, col));
      continue;
    }
    const bool said = grid.ColumnWidth(col) > 0;
    const int caption = CaptionWidth(grid, col);
    const int width = said ? std::max(SaidWidth(grid, col), caption) : ContentWidth(grid, col, caption, column.needed);
    column.needed = std::max(column.needed, width);
    const bool text = grid.MaxRows() == 0 || grid.CellAlign(1, col) == Align::kLeft;
    column.grows = !said && text;
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
    if (view_.isColumnHidden(col - 1) != grid.ColumnHidden(col)) {
      view_.setColumnHidden(col - 1, grid.ColumnHidden(col));
    }
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
    const int width = at(col).needed + extra;
    // Said anew, even the same width makes the table measure all its heads.
    if (view_.columnWidth(col - 1) != width) view_.setColumnWidth(col - 1, width);
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
