#pragma once

#include <QAbstractTableModel>

#include "screen/grid.h"

namespace luming {

/// A grid as Qt reads it: only what is painted is asked for. It reads the grid itself; Qt hears of rows and columns
/// that came or went when Settle is called, so that a handler that changes thousands of cells costs one look.
class GridTable final : public QAbstractTableModel {
 public:
  explicit GridTable(Grid& grid) : grid_(&grid) {}

  /// Tells Qt of the present size. @return true when the number of rows or columns differs from the last time
  bool Settle();
  void Detach() { grid_ = nullptr; }
  /// Null once the form has closed.
  Grid* grid() const { return grid_; }

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : cols_; }
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool SettleRows();
  bool SettleColumns();

  Grid* grid_;
  int rows_ = 0;
  int cols_ = 0;
};

/// Text of a cell on one line.
QString CellText(const Grid& grid, int row, int col);

}  // namespace luming
