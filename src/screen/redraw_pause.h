#pragma once

#include "screen/grid.h"

namespace luming {

/// Holds the view of a grid back until all cells are set.
class RedrawPause {
 public:
  explicit RedrawPause(Grid& grid) : grid_(grid) { grid_.SetReDraw(false); }
  ~RedrawPause() { grid_.SetReDraw(true); }
  RedrawPause(const RedrawPause&) = delete;
  RedrawPause& operator=(const RedrawPause&) = delete;

 private:
  Grid& grid_;
};

}  // namespace luming
