#include "screen/grid_cells.h"

#include <algorithm>

namespace luming {
namespace {

const std::string kNoText;
constexpr int kDeepestFormula = 100;  // formulas that sum formulas

}  // namespace

Grid::Cells::Extras& Grid::Cells::Row::Extra() {
  if (!extras) extras = std::make_unique<Extras>();
  return *extras;
}

const std::string* Grid::Cells::Row::Find(int col) const {
  return col >= 1 && col <= static_cast<int>(texts.size()) ? &texts[static_cast<std::size_t>(col) - 1] : nullptr;
}

std::string& Grid::Cells::Row::At(int col) {
  if (col > static_cast<int>(texts.size())) texts.resize(static_cast<std::size_t>(col));
  return texts[static_cast<std::size_t>(col) - 1];
}

const Grid::Cells::FormulaCell* Grid::Cells::Row::Formula(int col) const {
  if (!extras) return nullptr;
  const auto found = extras->formulas.find(col);
  return found == extras->formulas.end() ? nullptr : &found->second;
}

const std::string& Grid::Cells::Shown(int row, int col) {
  if (!Inside(row, col)) return kNoText;
  Row& at = RowAt(row);
  if (at.Formula(col)) {
    FormulaCell& cell = at.extras->formulas.find(col)->second;
    if (!IsPresent(cell)) Compute(cell, row, col);
    return cell.result;
  }
  const std::string* text = at.Find(col);
  return text ? *text : kNoText;
}

bool Grid::Cells::IsPresent(const FormulaCell& cell) const {
  if (cell.computed_at < rows_moved_at) return false;
  const int last = std::min(cell.range.last_col, MaxCols());
  for (int col = cell.range.first_col; col <= last; ++col) {
    if (cell.computed_at < ColumnAt(col).changed_at) return false;
  }
  return true;
}

void Grid::Cells::Compute(FormulaCell& cell, int row, int col) {
  if (computing_ >= kDeepestFormula) return;
  ++computing_;
  cell.computed_at = changes;  // ahead of the sum: a range that leads back to its own formula counts the old result
  DecimalSum sum;
  const int last_row = std::min(cell.range.last_row, MaxRows());
  const int last_col = std::min(cell.range.last_col, MaxCols());
  for (int r = cell.range.first_row; r <= last_row; ++r) {
    for (int c = cell.range.first_col; c <= last_col; ++c) {
      if (r != row || c != col) sum.Add(Shown(r, c));
    }
  }
  cell.result = sum.Text();
  --computing_;
}

void Grid::Cells::SetText(int row, int col, std::string text) {
  if (!Inside(row, col)) return;
  Row& at = RowAt(row);
  if (at.Formula(col)) at.extras->formulas.erase(col);
  if (text.empty() && !at.Find(col)) return;
  at.At(col) = std::move(text);
  TextChanged(col);
}

void Grid::Cells::SetMaxRows(int count) {
  rows.resize(static_cast<std::size_t>(std::max(count, 0)) + 1);
  RowsMoved();
  KeepActiveCellInside();
}

void Grid::Cells::KeepActiveCellInside() {
  active_row = std::clamp(active_row, std::min(1, MaxRows()), MaxRows());
  active_col = std::clamp(active_col, std::min(1, MaxCols()), MaxCols());
  top_row = std::clamp(top_row, 1, std::max(1, MaxRows()));
}

}  // namespace luming
