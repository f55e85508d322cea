#include <algorithm>

#include "screen/grid_cells.h"
#include "util/number_text.h"

namespace luming {
namespace {

/// Texts longer than any quantity or price are document numbers and codes, and stay left.
constexpr std::size_t kLongestNumber = 11;

bool ReadsAsQuantity(const std::string& text) {
  const bool coded = text.size() > 1 && text[0] == '0' && text[1] != '.';
  return !text.empty() && text.size() <= kLongestNumber && !coded && IsNumeric(text);
}

}  // namespace

/// Makes the change to the look of the widest thing that the arguments name and takes it back from the narrower ones.
template <class Change>
void Grid::ApplyLook(int row, int first_col, int last_col, Change apply) {
  Cells& cells = *cells_;
  if (row > cells.MaxRows()) return;
  const bool all_cols = first_col < 0 || (first_col <= 1 && last_col >= cells.MaxCols());
  const int first = all_cols ? 1 : std::max(first_col, 1);
  const int last = all_cols || last_col < 0 ? cells.MaxCols() : std::min(last_col, cells.MaxCols());
  const auto forget_cells = [&](Cells::Row& at) {
    if (!at.extras) return;
    if (row < 0 && all_cols) apply(at.extras->look, false);
    for (auto& [col, look] : at.extras->cell_looks) {
      if (col >= first && col <= last) apply(look, false);
    }
  };
  if (row < 0) {
    std::for_each(cells.rows.begin() + 1, cells.rows.end(), forget_cells);
    if (all_cols) apply(cells.look, true);
    for (int col = first; col <= last; ++col) apply(cells.ColumnAt(col).look, !all_cols);
  } else if (all_cols) {
    forget_cells(cells.RowAt(row));
    apply(cells.RowAt(row).Extra().look, true);
  } else {
    for (int col = first; col <= last; ++col) apply(cells.RowAt(row).Extra().cell_looks[col], true);
  }
  Redraw();
}

void Grid::SetKind(int row, int col, CellKind kind) {
  ApplyLook(row, col, col, [&](GridLook& look, bool set) { look.kind = set ? std::optional(kind) : std::nullopt; });
}

CellKind Grid::Kind(int row, int col) const {
  return cells_->Resolve(row, col, &GridLook::kind, CellKind::kText);
}

void Grid::SetComboItems(int row, int col, std::vector<std::string> items) {
  const auto shared = std::make_shared<const std::vector<std::string>>(std::move(items));
  ApplyLook(row, col, col,
            [&](GridLook& look, bool set) { look.combo_items = set ? std::optional(shared) : std::nullopt; });
}

std::vector<std::string> Grid::ComboItems(int row, int col) const {
  const auto items = cells_->Resolve(row, col, &GridLook::combo_items, {});
  return items ? *items : std::vector<std::string>();
}

void Grid::SetBold(int row, int first_col, int last_col, bool bold) {
  ApplyLook(row, first_col, last_col,
            [&](GridLook& look, bool set) { look.bold = set ? std::optional(bold) : std::nullopt; });
}

bool Grid::Bold(int row, int col) const {
  return cells_->Resolve(row, col, &GridLook::bold, false);
}

void Grid::SetLocked(int row, int first_col, int last_col, bool locked) {
  ApplyLook(row, first_col, last_col,
            [&](GridLook& look, bool set) { look.locked = set ? std::optional(locked) : std::nullopt; });
}

bool Grid::Locked(int row, int col) const {
  return cells_->Resolve(row, col, &GridLook::locked, false);
}

void Grid::SetAlign(int row, int col, Align align) {
  ApplyLook(row, col, col, [&](GridLook& look, bool set) { look.align = set ? std::optional(align) : std::nullopt; });
}

Align Grid::CellAlign(int row, int col) const {
  const Align said = cells_->Resolve(row, col, &GridLook::align, Align::kDefault);
  if (said != Align::kDefault) return said;
  if (row <= 0) return Align::kCentre;
  switch (ColumnHolds(col)) {
    case Holds::kText:
    case Holds::kCode:
      return Align::kLeft;
    case Holds::kFigure:
      return Align::kRight;
    case Holds::kDate:
      return Align::kCentre;
    case Holds::kAnything:
      break;
  }
  switch (Kind(row, col)) {
    case CellKind::kNumber:
      return Align::kRight;
    case CellKind::kCheck:
      return Align::kCentre;
    default:
      return ReadsAsQuantity(cells_->Shown(row, col)) ? Align::kRight : Align::kLeft;
  }
}

void Grid::SetColours(int row, int first_col, int last_col, Colour text, Colour back) {
  ApplyLook(row, first_col, last_col, [&](GridLook& look, bool set) {
    look.text_colour = set ? std::optional(text) : std::nullopt;
    look.back_colour = set ? std::optional(back) : std::nullopt;
  });
}

Colour Grid::CellTextColour(int row, int col) const {
  return cells_->Resolve(row, col, &GridLook::text_colour, kNoColour);
}

Colour Grid::CellBackColour(int row, int col) const {
  return cells_->Resolve(row, col, &GridLook::back_colour, kNoColour);
}

void Grid::SetSpan(int row, int col, int rows, int cols) {
  if (!cells_->Inside(row, col)) return;
  auto& spans = cells_->RowAt(row).Extra().spans;
  std::erase_if(spans, [&](const Cells::SpanCell& span) { return span.col == col; });
  if (rows > 1 || cols > 1) spans.push_back({col, std::max(rows, 1), std::max(cols, 1)});
  cells_->max_span_rows = std::max(cells_->max_span_rows, rows);
  Redraw();
}

std::pair<int, int> Grid::Span(int row, int col) const {
  if (row <= 0 && HeaderRows() == 2) return HeadSpan(row, col);
  if (!cells_->Inside(row, col)) return {0, 0};
  for (int above = std::max(0, row - cells_->max_span_rows + 1); above <= row; ++above) {
    const Cells::Extras* extras = cells_->RowAt(above).extras.get();
    if (!extras) continue;
    for (const Cells::SpanCell& span : extras->spans) {
      if (above == row && span.col == col) return {span.rows, span.cols};
      const bool covers = row < above + span.rows && col >= span.col && col < span.col + span.cols;
      if (covers) return {0, 0};
    }
  }
  return {1, 1};
}

void Grid::SetGridLines(bool on) {
  cells_->grid_lines = on;
}

bool Grid::GridLines() const {
  return cells_->grid_lines;
}

void Grid::SetGridColours(Colour back, Colour grey_area, Colour locked_text) {
  cells_->back = back;
  cells_->grey_area = grey_area;
  cells_->locked_text = locked_text;
  Redraw();
}

Colour Grid::GridBack() const {
  return cells_->back;
}

Colour Grid::GreyArea() const {
  return cells_->grey_area;
}

Colour Grid::LockedText() const {
  return cells_->locked_text;
}

void Grid::SetPageLines(int lines) {
  cells_->page_lines = lines;
  Redraw();
}

int Grid::PageLines() const {
  return cells_->page_lines;
}

void Grid::SetRowMode(bool on) {
  cells_->row_mode = on;
  Redraw();
}

bool Grid::RowMode() const {
  return cells_->row_mode;
}

}  // namespace luming
