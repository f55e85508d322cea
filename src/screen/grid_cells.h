#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "screen/grid.h"
#include "screen/grid_formula.h"

namespace luming {

/// What is said about the look of a cell, a row, a column or the whole grid; what is not said is left to the next
/// wider.
struct GridLook {
  std::optional<CellKind> kind;
  std::optional<bool> bold;
  std::optional<bool> locked;
  std::optional<Align> align;
  std::optional<Colour> text_colour;
  std::optional<Colour> back_colour;
  std::optional<std::shared_ptr<const std::vector<std::string>>> combo_items;
};

/// The document behind a grid. A row carries its own looks, spans and formulas, so they move with it.
struct Grid::Cells {
  struct FormulaCell {
    std::string formula;
    SumRange range;
    std::string result;
    std::uint64_t computed_at = 0;  ///< the count of changes that the result takes in
  };

  struct SpanCell {
    int col;
    int rows;
    int cols;
  };

  /// What most rows do not have.
  struct Extras {
    GridLook look;
    std::map<int, GridLook> cell_looks;
    std::map<int, FormulaCell> formulas;
    std::vector<SpanCell> spans;
    bool total = false;
  };

  struct Row {
    std::vector<std::string> texts;  ///< only as long as the last text that was set
    std::unique_ptr<Extras> extras;

    Extras& Extra();
    const std::string* Find(int col) const;
    std::string& At(int col);
    const FormulaCell* Formula(int col) const;
  };

  struct Column {
    int width = 0;
    bool width_is_operators = false;
    bool hidden = false;
    Holds holds = Holds::kAnything;
    std::string group;
    std::optional<CellEntry> entry;
    GridLook look;
    std::uint64_t changed_at = 0;  ///< the count of changes after the last one in this column
  };

  std::vector<Row> rows = std::vector<Row>(1);  ///< row 0 is the header
  std::vector<Column> columns;
  GridLook look;
  std::uint64_t changes = 1;  ///< of texts and formulas, since the grid was made
  std::uint64_t rows_moved_at = 1;
  int column_sets = 0;
  int max_span_rows = 1;
  int frozen_cols = 0;
  int active_row = 0;
  int active_col = 0;
  int top_row = 1;
  bool row_mode = false;
  int page_lines = 0;
  bool redraw = true;
  bool grid_lines = true;
  Colour back = Control::kNoColour;
  Colour grey_area = Control::kNoColour;
  Colour locked_text = Control::kNoColour;

  int MaxRows() const { return static_cast<int>(rows.size()) - 1; }
  int MaxCols() const { return static_cast<int>(columns.size()); }
  bool Inside(int row, int col) const { return row >= 0 && row <= MaxRows() && col >= 1 && col <= MaxCols(); }
  bool IsCell(int row, int col) const { return row >= 1 && Inside(row, col); }
  Row& RowAt(int row) { return rows[static_cast<std::size_t>(row)]; }
  const Row& RowAt(int row) const { return rows[static_cast<std::size_t>(row)]; }
  Column& ColumnAt(int col) { return columns[static_cast<std::size_t>(col) - 1]; }
  const Column& ColumnAt(int col) const { return columns[static_cast<std::size_t>(col) - 1]; }

  /// The text as it is shown: of a formula the present result.
  const std::string& Shown(int row, int col);
  void SetText(int row, int col, std::string text);
  void SetColumns(std::vector<GridColumn> declared);
  void SetMaxRows(int count);
  void TextChanged(int col) { ColumnAt(col).changed_at = ++changes; }
  void RowsMoved() { rows_moved_at = ++changes; }
  void KeepActiveCellInside();

  /// The first that says something: cell, row, column, grid. `said` gives the member of a look.
  template <class T>
  T Resolve(int row, int col, std::optional<T> GridLook::*said, T otherwise) const {
    if (!Inside(row, col)) return otherwise;
    if (const Extras* extras = RowAt(row).extras.get()) {
      const auto own = extras->cell_looks.find(col);
      if (own != extras->cell_looks.end() && own->second.*said) return *(own->second.*said);
      if (extras->look.*said) return *(extras->look.*said);
    }
    if (row == 0) return otherwise;
    if (ColumnAt(col).look.*said) return *(ColumnAt(col).look.*said);
    return (look.*said).value_or(otherwise);
  }

 private:
  bool IsPresent(const FormulaCell& cell) const;
  void Compute(FormulaCell& cell, int row, int col);

  int computing_ = 0;
};

}  // namespace luming
