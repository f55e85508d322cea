#pragma once

#include <string>
#include <vector>

class QTableView;

namespace luming {

class Grid;

/// Chooses the widths of a grid's columns: as the screen says, else by caption and the first rows, and shares out what
/// room is left. A width that the operator has set stays.
class GridColumns {
 public:
  explicit GridColumns(QTableView& view) : view_(view) {}

  /// Forgets widths found before, for a grid whose columns have changed.
  void Restart(int columns);
  /// Measures the captions and the first rows. Columns only grow, so that a search does not make them jump.
  void Measure(const Grid& grid);
  /// Applies hidden columns and widths to the view's present room.
  void Apply(const Grid& grid);
  /// A width in pixels in average characters.
  int CharactersIn(int width) const;
  /// The operator dragged the edge of a column.
  void Dragged(int col, int width);
  bool IsApplying() const { return applying_; }

 private:
  struct Column {
    int needed = 0;  ///< pixels
    bool dragged = false;
    bool grows = false;  ///< takes a part of the free room
  };
  int HeadWidth(const std::string& caption) const;
  int WidthOf(const Grid& grid, int col) const;
  void MakeRoomForGroup(const Grid& grid, int first);
  std::vector<int> VisibleColumns(const Grid& grid) const;

  QTableView& view_;
  std::vector<Column> columns_;
  bool applying_ = false;
};

}  // namespace luming
