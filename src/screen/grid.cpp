#include "screen/grid.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "screen/grid_cells.h"
#include "util/ansi_text.h"
#include "util/number_text.h"

namespace luming {

Grid::Grid(Form* form, std::string name, std::vector<GridColumn> columns)
    : Control(form, ControlKind::kGrid, std::move(name), {}), cells_(std::make_unique<Cells>()) {
  cells_->SetColumns(std::move(columns));
}

Grid::~Grid() = default;

int Grid::MaxRows() const {
  return cells_->MaxRows();
}

void Grid::SetMaxRows(int rows) {
  if (rows == MaxRows()) return;
  cells_->SetMaxRows(rows);
  Redraw();
}

std::string Grid::Text(int row, int col) const {
  return row < 0 ? UpperHead(row, col) : cells_->Shown(row, col);
}

void Grid::SetText(int row, int col, std::string text) {
  cells_->SetText(row, col, std::move(text));
  Redraw();
}

double Grid::Number(int row, int col) const {
  return Val(cells_->Shown(row, col));
}

void Grid::SetFormula(int row, int col, std::string formula) {
  if (!cells_->IsCell(row, col)) return;
  Cells::Row& at = cells_->RowAt(row);
  if (formula.empty()) {
    if (at.extras) at.extras->formulas.erase(col);
  } else {
    const std::optional<SumRange> range = ParseSum(formula);
    if (!range) throw Failure(failure::kInvalidCall, "表格不认识公式“" + formula + "”。");
    at.Extra().formulas[col] = {std::move(formula), *range, {}, 0};
  }
  cells_->TextChanged(col);
  Redraw();
}

std::string Grid::Formula(int row, int col) const {
  if (!cells_->IsCell(row, col)) return {};
  const Cells::FormulaCell* cell = cells_->RowAt(row).Formula(col);
  return cell ? cell->formula : std::string();
}

void Grid::InsertRows(int row, int count) {
  auto& rows = cells_->rows;
  if (row < 1 || row > MaxRows() || count < 1) return;
  const std::size_t added = static_cast<std::size_t>(std::min(count, MaxRows() - row + 1));
  rows.resize(rows.size() - added);
  std::vector<Cells::Row> fresh(added);
  rows.insert(rows.begin() + row, std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
  cells_->RowsMoved();
  Redraw();
}

void Grid::DeleteRows(int row, int count) {
  auto& rows = cells_->rows;
  if (row < 1 || row > MaxRows() || count < 1) return;
  const std::size_t size = rows.size();
  const int removed = std::min(count, MaxRows() - row + 1);
  rows.erase(rows.begin() + row, rows.begin() + row + removed);
  rows.resize(size);
  cells_->RowsMoved();
  Redraw();
}

void Grid::SwapRows(int first, int second) {
  const bool inside = std::min(first, second) >= 1 && std::max(first, second) <= MaxRows();
  if (!inside || first == second) return;
  std::swap(cells_->RowAt(first), cells_->RowAt(second));
  cells_->RowsMoved();
  Redraw();
}

namespace {

/// Numbers stand ahead of texts, empty cells behind both; texts go in the order of the code page, which is that of
/// their pinyin for the common characters.
struct SortKey {
  int rank;
  double number;
  std::string text;

  explicit SortKey(const std::string& shown) {
    const std::optional<double> value = ParseNumber(shown);
    rank = value ? 0 : shown.empty() ? 2 : 1;
    number = value.value_or(0);
    if (!value) text = ToAnsi(shown);
  }
  bool operator<(const SortKey& other) const {
    if (rank != other.rank) return rank < other.rank;
    return rank == 0 ? number < other.number : text < other.text;
  }
};

}  // namespace

void Grid::SortRows(int col, bool ascending) {
  if (!cells_->Inside(0, col)) return;
  int count = MaxRows();
  while (count > 0 && IsTotalRow(count)) --count;
  std::vector<SortKey> keys;
  keys.reserve(static_cast<std::size_t>(count));
  for (int row = 1; row <= count; ++row) keys.emplace_back(cells_->Shown(row, col));
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    return ascending ? keys[left] < keys[right] : keys[right] < keys[left];
  });
  std::vector<Cells::Row> sorted;
  sorted.reserve(order.size());
  for (const std::size_t from : order) sorted.push_back(std::move(cells_->rows[from + 1]));
  std::move(sorted.begin(), sorted.end(), cells_->rows.begin() + 1);
  cells_->RowsMoved();
  Redraw();
}

void Grid::SetTotalRow(int row, bool total) {
  if (row >= 1 && row <= MaxRows()) cells_->RowAt(row).Extra().total = total;
}

bool Grid::IsTotalRow(int row) const {
  if (row < 1 || row > MaxRows()) return false;
  const Cells::Extras* extras = cells_->RowAt(row).extras.get();
  return extras && extras->total;
}

int Grid::ActiveRow() const {
  return cells_->active_row;
}

int Grid::ActiveCol() const {
  return cells_->active_col;
}

void Grid::SetActiveCell(int row, int col) {
  cells_->active_row = row;
  cells_->active_col = col;
  cells_->KeepActiveCellInside();
  Redraw();
}

int Grid::TopRow() const {
  return cells_->top_row;
}

void Grid::SetTopRow(int row) {
  cells_->top_row = row;
  cells_->KeepActiveCellInside();
  Redraw();
}

void Grid::SetReDraw(bool on) {
  cells_->redraw = on;
  Redraw();
}

void Grid::Redraw() {
  if (cells_->redraw) Changed();
}

/// Which field of a record fills a column, and how it is shown.
struct Grid::FieldOf {
  static constexpr std::size_t kNone = std::string::npos;
  std::size_t index;
  const char* picture;
};

std::vector<Grid::FieldOf> Grid::FieldsOf(const Recordset& rows, const std::vector<ColumnSource>& sources) {
  std::vector<FieldOf> fields;
  for (const ColumnSource& source : sources) {
    fields.push_back({*source.field == '\0' ? FieldOf::kNone : rows.ColumnIndex(source.field), source.picture});
  }
  return fields;
}

void Grid::Fill(Recordset&& rows, const std::vector<ColumnSource>& sources) {
  FillRows(rows, FieldsOf(rows, sources), Texts::kMoved);
}

void Grid::Fill(Recordset& rows, const std::vector<ColumnSource>& sources) {
  const std::vector<FieldOf> fields = FieldsOf(rows, sources);
  if (rows.RecordCount() > 0) rows.MoveFirst();
  FillRows(rows, fields, Texts::kCopied);
}

void Grid::Fill(Recordset&& rows) {
  if (!rows.IsOpen()) throw StandardFailure(failure::kClosedObject);
  std::vector<FieldOf> fields;
  std::vector<GridColumn> columns;
  bool fits = MaxCols() == static_cast<int>(rows.ColumnCount());
  for (const std::string& name : rows.ColumnNames()) {
    fields.push_back({fields.size(), ""});
    columns.emplace_back(name);
    fits = fits && Text(0, static_cast<int>(fields.size())) == name;
  }
  if (!fits) SetColumns(std::move(columns));
  FillRows(rows, fields, Texts::kMoved);
}

void Grid::FillRows(Recordset& rows, const std::vector<FieldOf>& fields, Texts taken) {
  const int count = rows.RecordCount();
  const std::size_t filled = std::min(fields.size(), cells_->columns.size());
  cells_->rows.resize(static_cast<std::size_t>(count) + 1);
  for (int row = 1; row <= count; ++row) {
    Cells::Row& at = cells_->RowAt(row);
    at.extras.reset();
    at.texts.resize(filled);
    for (std::size_t i = 0; i < filled; ++i) {
      const auto [index, picture] = fields[i];
      if (index == FieldOf::kNone) {
        at.texts[i].clear();
        continue;
      }
      Value& value = rows.Field(index);
      if (*picture != '\0') {
        at.texts[i] = value.Format(picture);
      } else {
        at.texts[i] = taken == Texts::kMoved ? value.TakeText() : value.TextOrEmpty();
      }
    }
    rows.MoveNext();
  }
  cells_->RowsMoved();
  cells_->KeepActiveCellInside();
  Redraw();
}

}  // namespace luming
