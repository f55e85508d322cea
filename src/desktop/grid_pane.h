#pragma once

#include <QKeyEvent>
#include <QTableView>
#include <functional>

#include "desktop/grid_table.h"

namespace luming {

class GridHeads;

/// A table on the screen: paints the cells that are in view and tells where the mouse was pressed. Which cell is active
/// is the grid's to say; the pane keeps no selection of its own.
class GridPane final : public QTableView {
 public:
  GridPane(GridTable& table, QWidget* parent);

  struct Place {
    int row = 0;
    int col = 0;
  };
  std::function<void(Place)> on_press;
  std::function<void(Place)> on_click;
  std::function<void(Place)> on_double_click;
  std::function<void(Place)> on_right_press;
  std::function<void()> on_resize;

  Grid* grid() const { return table_.grid(); }
  /// Shows the heads as the grid has them now.
  void SettleHeads();
  /// The cell is drawn with the focus mark, the row as chosen, in strong colours.
  bool HasKeyboard() const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent*) override {}
  void keyPressEvent(QKeyEvent* event) override { event->ignore(); }
  void resizeEvent(QResizeEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  Place PlaceAt(const QMouseEvent& event) const;

  GridTable& table_;
  GridHeads* heads_;
  Place pressed_;
};

}  // namespace luming
