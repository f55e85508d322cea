#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "screen/key_filter.h"

namespace luming {

/// What a column's cells are: it says where they stand, unless a cell or row says otherwise, and what an export makes
/// of them.
enum class Holds {
  kAnything,  ///< quantities right, the rest left
  kText,      ///< left
  kCode,      ///< left; nobody counts with it, so it is exported as text even if it is all digits
  kFigure,    ///< right
  kDate,      ///< centred
};

/// What the operator may type into the cells of a column that is there to be typed in.
struct CellEntry {
  KeyFilter keys = KeyFilter::kAny;
  std::size_t cut = 0;  ///< to so many bytes of the ANSI form when the edit ends; 0 for never
  bool figure = false;  ///< what is no number is refused and the old text stays; the cell may be emptied
};

/// One column as a screen declares it; a bare caption converts to it. What else there is to say follows in a row:
/// GridColumn("编码", 10).Code().Locked().
struct GridColumn {
  GridColumn(const char* column_caption) : caption(column_caption) {}  // NOLINT(google-explicit-constructor)
  explicit GridColumn(std::string column_caption, int column_width = 0)
      : caption(std::move(column_caption)), width(column_width) {}

  GridColumn&& Holding(Holds what) && {
    holds = what;
    return std::move(*this);
  }
  GridColumn&& Text() && { return std::move(*this).Holding(Holds::kText); }
  GridColumn&& Code() && { return std::move(*this).Holding(Holds::kCode); }
  GridColumn&& Figure() && { return std::move(*this).Holding(Holds::kFigure); }
  GridColumn&& Date() && { return std::move(*this).Holding(Holds::kDate); }
  /// The operator never sees it.
  GridColumn&& Hidden() && {
    hidden = true;
    return std::move(*this);
  }
  /// Its cells are not edited in place.
  GridColumn&& Locked() && {
    locked = true;
    return std::move(*this);
  }

  /// Its cells are there to be typed in: they are shaded.
  GridColumn&& Typed(CellEntry by_rule) && {
    entry = by_rule;
    return std::move(*this);
  }

  /// Its head stands under that of a group; neighbours in the same group share the group's head. As soon as a column of
  /// a grid has a group the grid has two header rows, and a column without one spans both.
  GridColumn&& Under(std::string its_group) && {
    group = std::move(its_group);
    return std::move(*this);
  }

  std::string caption;
  std::string group;
  int width = 0;  ///< in average characters; 0: the view chooses by caption and contents
  Holds holds = Holds::kAnything;
  bool hidden = false;
  bool locked = false;
  std::optional<CellEntry> entry;
};

/// Where a column's text comes from when a grid is filled from a recordset.
struct ColumnSource {
  const char* field;         ///< empty: the cells stay empty
  const char* picture = "";  ///< of FormatNumber or FormatDate; empty: the default text
};

}  // namespace luming
