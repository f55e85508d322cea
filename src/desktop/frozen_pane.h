#pragma once

#include "desktop/grid_pane.h"

namespace luming {

/// The columns of a grid that stay in view while the rest scrolls: a second table laid over the first one's left edge.
/// What the operator does to its heads counts for the first one's.
class FrozenPane {
 public:
  /// Both outlive it; the pane belongs to `main`.
  FrozenPane(GridTable& table, GridPane& main);

  GridPane& pane() { return *pane_; }
  /// Takes over columns, widths and place from the main table; hidden while nothing is frozen.
  void Follow(const Grid& grid);

 private:
  GridPane& main_;
  GridPane* pane_;
  bool following_ = false;  ///< place and widths come from the main table, not from the operator
};

}  // namespace luming
