#include "office/sheet_cells.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "office/read_failures.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr std::size_t kMostCells = 5'000'000;

/// A head as one line: what stands around it or breaks it is the look of the sheet.
std::string HeadText(const Value& value) {
  std::string text = value.TextOrEmpty();
  for (const char* break_of_line : {"\r", "\n", "\t"}) text = Replace(text, break_of_line, "");
  return Trim(text);
}

}  // namespace

void SheetCells::Set(std::size_t row, std::size_t col, Value value) {
  const auto* text = std::get_if<std::string>(&value.data());
  if (value.IsNull() || (text && text->empty())) return;
  if (cells_.size() == kMostCells) throw TooLargeWorkbook();
  cells_.push_back({row, col, std::move(value)});
}

void SheetCells::Sort() {
  const auto place = [](const Cell& cell) { return std::tie(cell.row, cell.col); };
  const auto before = [&place](const Cell& a, const Cell& b) { return place(a) < place(b); };
  if (!std::ranges::is_sorted(cells_, before)) std::ranges::stable_sort(cells_, before);
}

std::vector<std::string> SheetCells::HeadNames(std::size_t first_col, std::size_t cols) {
  std::vector<std::string> names(cols);
  const std::size_t head_row = cells_.front().row;
  for (const Cell& cell : cells_) {
    if (cell.row != head_row) break;
    names[cell.col - first_col] = HeadText(cell.value);
  }
  std::map<std::string, int> times;  // that a name has come, in lower case
  for (std::size_t i = 0; i < cols; ++i) {
    const std::string name = names[i].empty() ? "F" + std::to_string(i + 1) : names[i];
    names[i] = name;
    int& again = times[LowerAscii(name)];
    while (again++ > 0) {
      names[i] = name + std::to_string(again - 1);
      if (times.emplace(LowerAscii(names[i]), 1).second) break;
    }
  }
  return names;
}

Recordset SheetCells::TakeTable() {
  if (cells_.empty()) return Recordset(std::vector<std::string>());
  Sort();
  const auto [left, right] = std::ranges::minmax_element(cells_, {}, &Cell::col);
  const std::size_t first_col = left->col;
  const std::size_t cols = right->col - first_col + 1;
  const std::size_t head_row = cells_.front().row;
  const std::size_t rows = cells_.back().row - head_row;
  if (rows > kMostCells / cols) throw TooLargeWorkbook();
  Recordset table(HeadNames(first_col, cols));
  auto cell = std::ranges::find_if(cells_, [head_row](const Cell& each) { return each.row != head_row; });
  for (std::size_t row = head_row + 1; row <= head_row + rows; ++row) {
    Value* const values = table.AppendRow();
    for (; cell != cells_.end() && cell->row == row; ++cell) values[cell->col - first_col] = std::move(cell->value);
  }
  cells_.clear();
  return table;
}

}  // namespace luming
