#pragma once

#include <QHeaderView>
#include <QHelpEvent>

#include "desktop/grid_table.h"

namespace luming {

/// Shows a text that the operator points at in full; an empty one takes away what is shown.
/// @param place within `widget` that the text belongs to
void ShowToolTip(const QHelpEvent& event, QWidget& widget, const QRect& place, const QString& text);

/// The heads of a grid's columns, in one row or in two: there the columns of a group stand under one head, and a column
/// without a group fills both rows. A group that is parted by the edge of the frozen columns has a head on either side.
class GridHeads final : public QHeaderView {
 public:
  GridHeads(GridTable& table, QWidget* parent);

  /// Takes as much room as the grid has header rows.
  void Settle();
  QSize sizeHint() const override;

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;

 private:
  bool SharesHead(int section, int other) const;
  /// Where the head of the section's group stands.
  QRect GroupRect(const QRect& upper, int section) const;

  GridTable& table_;
  int rows_ = 1;
};

}  // namespace luming
