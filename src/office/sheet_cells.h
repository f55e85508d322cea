#pragma once

#include <cstddef>
#include <vector>

#include "platform/database.h"

namespace luming {

/// The cells of a sheet while it is read. Only those that hold something take room.
class SheetCells {
 public:
  /// Row and column from 0; of two values for one cell the later counts. NULL and an empty text are nothing. Failure
  /// when there are more cells than any sheet of use has.
  void Set(std::size_t row, std::size_t col, Value value);

  /// The block that holds them all as a table, see SheetReader::Read. Failure when it is too large.
  Recordset TakeTable();

 private:
  struct Cell {
    std::size_t row;
    std::size_t col;
    Value value;
  };

  void Sort();
  std::vector<std::string> HeadNames(std::size_t first_col, std::size_t cols);

  std::vector<Cell> cells_;
};

}  // namespace luming
