#include <algorithm>
#include <utility>

#include "screen/forms.h"
#include "screen/grid_cells.h"
#include "util/ansi_text.h"
#include "util/number_text.h"

namespace luming {
namespace {

constexpr int kRowsOfPage = 20;

}  // namespace

bool Grid::CanFocus() const {
  return Control::CanFocus();
}

void Grid::UserActivate(int row, int col) {
  if (!cells_->IsCell(row, col)) return;
  const CellRef from{ActiveRow(), ActiveCol()};
  const CellRef to{row, col};
  if (from.row == to.row && from.col == to.col) return;
  Forms::HandlerScope scope(Owner().Registry());
  bool stay = false;
  if (cells_->IsCell(from.row, from.col)) leave_cell.Fire(from, to, stay);
  if (stay || !cells_->IsCell(row, col)) return;
  SetActiveCell(row, col);
  if (row != from.row) row_focus.Fire(row);
}

void Grid::UserClickCell(int row, int col) {
  if (!Control::CanFocus() || !cells_->IsCell(row, col)) return;
  Forms::HandlerScope scope(Owner().Registry());
  Owner().UserFocus(*this);
  if (Owner().IsUnloaded()) return;
  UserActivate(row, col);
  if (!Owner().IsUnloaded() && ActiveRow() == row && ActiveCol() == col) click.Fire(row, col);
}

void Grid::UserDoubleClick(int row, int col) {
  if (!Control::CanFocus()) return;
  Forms::HandlerScope scope(Owner().Registry());
  double_click.Fire(row, col);
}

void Grid::UserRightClick(int row, int col) {
  if (!Control::CanFocus()) return;
  Forms::HandlerScope scope(Owner().Registry());
  Owner().UserFocus(*this);
  if (Owner().IsUnloaded()) return;
  UserActivate(row, col);
  if (Owner().IsUnloaded()) return;
  if (right_click.IsConnected()) {
    right_click.Fire(row, col);
  } else if (Owner().Registry().grid_command) {
    OfferCommands();
  }
}

std::optional<int> Grid::OfferCommands(std::vector<MenuEntry> own) {
  Forms& forms = Owner().Registry();
  if (forms.grid_command) {
    const bool grouped = !own.empty();
    own.push_back({"打印预览(&P)", static_cast<int>(GridCommand::kPreview), {}, grouped});
    own.push_back({"导出到 Excel(&E)", static_cast<int>(GridCommand::kExport)});
  }
  const std::optional<int> chosen = forms.desktop().PopUp(own);
  if (!chosen || Owner().IsUnloaded()) return std::nullopt;
  if (*chosen > static_cast<int>(GridCommand::kExport)) return chosen;
  UserCommand(static_cast<GridCommand>(*chosen));
  return std::nullopt;
}

bool Grid::CanEdit(int row, int col) {
  if (!Control::CanFocus() || ReadOnly() || RowMode()) return false;
  if (!cells_->IsCell(row, col) || Locked(row, col) || Kind(row, col) == CellKind::kStatic) return false;
  if (cells_->RowAt(row).Formula(col)) return false;
  Forms::HandlerScope scope(Owner().Registry());
  bool refuse = false;
  before_edit.Fire({row, col}, refuse);
  return !refuse;
}

bool Grid::UserEdit(int row, int col, std::string text) {
  Forms::HandlerScope scope(Owner().Registry());
  if (!CanEdit(row, col)) return false;
  const CellEntry* entry = Entry(row, col);
  if (entry && entry->cut > 0) text = CutAnsi(text, entry->cut);
  const bool figure = Kind(row, col) == CellKind::kNumber || (entry && entry->figure);
  if (figure && !text.empty() && !IsNumeric(text)) return true;
  if (text == cells_->Shown(row, col)) return true;
  bool refuse = false;
  check_edit.Fire({row, col}, text, refuse);
  if (refuse) return true;
  SetText(row, col, std::move(text));
  change.Fire(row, col);
  return true;
}

void Grid::UserHeaderClick(int col) {
  if (!Control::CanFocus()) return;
  Forms::HandlerScope scope(Owner().Registry());
  header_click.Fire(col);
}

void Grid::UserCommand(GridCommand command) {
  Forms& forms = Owner().Registry();
  Forms::HandlerScope scope(forms);
  if (forms.grid_command) forms.grid_command(*this, command);
}

int Grid::NextVisibleCol(int col, int step) const {
  int next = col + step;
  while (next >= 1 && next <= MaxCols() && ColumnHidden(next)) next += step;
  return next >= 1 && next <= MaxCols() ? next : col;
}

void Grid::DefaultKey(KeyEvent& event) {
  if (event.ctrl && !event.alt && (event.code == 'P' || event.code == 'E')) {
    event.handled = true;
    UserCommand(event.code == 'P' ? GridCommand::kPreview : GridCommand::kExport);
    return;
  }
  if (event.alt || MaxRows() == 0) return;
  int row = ActiveRow();
  int col = ActiveCol();
  const bool whole_rows = RowMode() || event.ctrl;
  event.handled = true;
  switch (event.code) {
    case key::kUp:
      --row;
      break;
    case key::kDown:
      ++row;
      break;
    case key::kPageUp:
      row -= kRowsOfPage;
      break;
    case key::kPageDown:
      row += kRowsOfPage;
      break;
    case key::kLeft:
      col = NextVisibleCol(col, -1);
      break;
    case key::kRight:
      col = NextVisibleCol(col, 1);
      break;
    case key::kHome:
      (whole_rows ? row : col) = whole_rows ? 1 : NextVisibleCol(0, 1);
      break;
    case key::kEnd:
      (whole_rows ? row : col) = whole_rows ? MaxRows() : NextVisibleCol(MaxCols() + 1, -1);
      break;
    default:
      event.handled = false;
      return;
  }
  UserActivate(std::clamp(row, 1, MaxRows()), col);
}

}  // namespace luming
