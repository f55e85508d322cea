#pragma once

#include <QFont>
#include <array>
#include <string>
#include <string_view>
#include <vector>

class QTableView;

namespace luming {

class Grid;

/// A width that no text of a font exceeds, found without shaping it: most cells of a list are known to fit by it.
class WidthLimit {
 public:
  explicit WidthLimit(const QFont& font);

  const QFont& font() const { return font_; }
  int Of(std::string_view text) const;  ///< pixels

 private:
  QFont font_;
  std::array<double, 128> ascii_{};
  double ideograph_;
  double other_;  ///< of a character that may come from another font
};

/// Chooses the widths of a grid's columns: as the screen says, else by caption and the first rows, and shares out what
/// room is left. A width that the operator has set stays.
class GridColumns {
 public:
  explicit GridColumns(QTableView& view);

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
    std::string caption;
    int caption_width = 0;  ///< of that caption, room around it included
  };
  int HeadWidth(const std::string& caption) const;
  int CaptionWidth(const Grid& grid, int col);
  int SaidWidth(const Grid& grid, int col) const;
  int ContentWidth(const Grid& grid, int col, int caption, int known) const;
  void MakeRoomForGroup(const Grid& grid, int first);
  std::vector<int> VisibleColumns(const Grid& grid) const;

  QTableView& view_;
  WidthLimit limit_;
  std::vector<Column> columns_;
  bool applying_ = false;
};

}  // namespace luming
