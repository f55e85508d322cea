#include "desktop/grid_table.h"

#include "desktop/qt_text.h"

namespace luming {

QString CellText(const Grid& grid, int row, int col) {
  QString text = ToQt(grid.Text(row, col));
  text.remove('\r');
  text.replace('\n', ' ');
  return text;
}

bool GridTable::Settle() {
  const bool columns = SettleColumns();
  return SettleRows() || columns;
}

bool GridTable::SettleColumns() {
  const int cols = grid_->MaxCols();
  if (cols == cols_) return false;
  beginResetModel();
  cols_ = cols;
  endResetModel();
  return true;
}

bool GridTable::SettleRows() {
  const int rows = grid_->MaxRows();
  if (rows == rows_) return false;
  // Rows come and go at the end, which keeps the place that the operator has scrolled to.
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  return true;
}

QVariant GridTable::data(const QModelIndex& index, int role) const {
  if (!grid_ || role != Qt::DisplayRole) return {};
  return CellText(*grid_, index.row() + 1, index.column() + 1);
}

QVariant GridTable::headerData(int section, Qt::Orientation orientation, int role) const {
  if (!grid_) return {};
  if (orientation == Qt::Vertical) {
    if (role == Qt::DisplayRole) return section + 1;
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return {};
  }
  if (role == Qt::DisplayRole) return CellText(*grid_, 0, section + 1);
  if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignCenter);
  return {};
}

}  // namespace luming
