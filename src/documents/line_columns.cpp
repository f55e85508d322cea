#include "documents/line_columns.h"

#include "documents/entry_fields.h"
#include "util/number_text.h"

namespace luming {

namespace sent {

void Text(Statement& statement, const std::string& cell, const ValueSource& source) {
  statement += Quoted(cell, source);
}

void Figure(Statement& statement, const std::string& cell, const ValueSource& source) {
  statement += Bare(cell, source);
}

void FigureOr0(Statement& statement, const std::string& cell, const ValueSource& source) {
  statement += Bare(cell.empty() ? "0" : cell, source);
}

void Ratio(Statement& statement, const std::string& cell, const ValueSource& source) {
  statement += Bare(cell.empty() ? "1" : cell, source);
}

void Money(Statement& statement, const std::string& cell, const ValueSource& source) {
  statement += Bare(cell.empty() ? "0" : FormatNumberText(cell, "0.00"), source);
}

void DayOrNull(Statement& statement, const std::string& cell, const ValueSource&) {
  statement += luming::DayOrNull(cell);
}

}  // namespace sent

namespace {

std::optional<CellEntry> EntryOf(Cell cell) {
  switch (cell) {
    case Cell::kLocked:
    case Cell::kHidden:
      break;
    case Cell::kQuantity:
      return CellEntry{QuantityBox().keys, QuantityBox().cut, true};
    case Cell::kCount:
      return CellEntry{.keys = KeyFilter::kPrice, .figure = true};
    case Cell::kPrice:
      return CellEntry{PriceBox().keys, PriceBox().cut, true};
    case Cell::kBatch:
      return CellEntry{.cut = limit::kBatch};
    case Cell::kDay:
      return CellEntry{};
  }
  return std::nullopt;
}

}  // namespace

std::vector<GridColumn> GridColumnsOf(LineColumns columns) {
  std::vector<GridColumn> made;
  for (const LineColumn& column : columns) {
    made.push_back(GridColumn(column.caption).Holding(column.holds));
    made.back().hidden = column.cell == Cell::kHidden;
    made.back().entry = EntryOf(column.cell);
    made.back().locked = !made.back().entry;
  }
  return made;
}

}  // namespace luming
