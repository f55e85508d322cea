// Editing in the catalogue's grid, and saving what was edited.

#include <utility>

#include "frame/gateway.h"
#include "masterdata/catalogue_columns.h"
#include "masterdata/drug_catalogue.h"
#include "masterdata/phonetic.h"
#include "output/column_widths.h"
#include "screen/grid.h"
#include "stock/drug_list.h"
#include "util/number_text.h"

namespace luming {

namespace {

constexpr const char* kWarning = "你确实需要保存？保存后，药房中的药品目录将与药库保持一致（库存除外）！";

bool IsPrice(int column) {
  return column == catalogue::kPFJ || column == catalogue::kLSJ || column == catalogue::kCLLSJ;
}

}  // namespace

void Frm_YPML::fpSpread1_BeforeEdit(Grid::CellRef cell, bool& refuse) {
  const User_qx& user = app_.CurUser;
  refuse = fpSpread1.IsTotalRow(cell.row) || (cell.col == catalogue::kYKKCL && !user.YPGL_EDITKC) ||
           (IsPrice(cell.col) && !user.YPGL_EDITJG);
}

void Frm_YPML::fpSpread1_Change(int row, int col) {
  if (fpSpread1.IsTotalRow(row)) return;
  const std::string text = fpSpread1.Text(row, col);
  price_edited_ = col == catalogue::kLSJ;
  if (col == catalogue::kYPMC) {
    fpSpread1.SetText(row, catalogue::kPYDM, GetPYDM(app_, text));
    fpSpread1.SetText(row, catalogue::kWBDM, GetWBDM(app_, text));
  } else if (col == catalogue::kSPMC) {
    fpSpread1.SetText(row, catalogue::kSP_PYDM, GetPYDM(app_, text));
    fpSpread1.SetText(row, catalogue::kSP_WBDM, GetWBDM(app_, text));
  } else if (col == catalogue::kSFTY) {
    ShowStopped(fpSpread1, row, text != "0");
  }
  fpSpread1.SetText(row, catalogue::kChanged, "1");
  dirty_ = true;
}

/// The price of the smallest unit follows with two decimals. A price that was only walked past leaves it alone.
void Frm_YPML::fpSpread1_LeaveCell(Grid::CellRef from, Grid::CellRef, bool&) {
  if (!std::exchange(price_edited_, false)) return;
  const std::string ratio = fpSpread1.Text(from.row, catalogue::kCLB);
  const std::string price = fpSpread1.Text(from.row, catalogue::kLSJ);
  if (!IsNumeric(ratio) || CDbl(ratio) <= 1 || !IsNumeric(price)) return;
  fpSpread1.SetText(from.row, catalogue::kCLLSJ, FormatNumber(CDbl(price) / CDbl(ratio), "0.00"));
}

/// A price that was just typed may be saved from where it stands.
void Frm_YPML::fpSpread1_LostFocus() {
  bool stay = false;
  fpSpread1_LeaveCell({fpSpread1.ActiveRow(), fpSpread1.ActiveCol()}, {}, stay);
}

void Frm_YPML::Command1_Click() {
  if (app_.desktop.MsgBox({kWarning, box::kWarning + box::kYesNo, "警告"}) == Answer::kYes) SaveGrid();
}

bool Frm_YPML::SaveGrid() {
  if (!app_.CurUser.YPGL_EditYP) {
    CheckRight(app_, "YPGL_EditYP");
    return false;
  }
  return Trapped(app_, [this] {
    if (!app_.Cn) throw StandardFailure(failure::kBadConnection);
    int saved = 0;
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      if (fpSpread1.Text(row, catalogue::kChanged) != "1") continue;
      const std::string drug = fpSpread1.Text(row, catalogue::kYPBM) + " " + fpSpread1.Text(row, catalogue::kYPMC);
      About(drug, [&] { app_.Cn->Execute(CatalogueUpdate(fpSpread1, row)); });
      ++saved;
    }
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      if (!fpSpread1.Text(row, catalogue::kChanged).empty()) fpSpread1.SetText(row, catalogue::kChanged, "");
    }
    dirty_ = false;
    app_.desktop.MsgBox({"成功更新" + std::to_string(saved) + "条记录!", box::kInformation, "提示"});
  });
}

bool Frm_YPML::QueryUnload() {
  if (!dirty_) return true;
  fpSpread1_LostFocus();
  switch (app_.desktop.MsgBox({kWarning, box::kWarning + box::kYesNoCancel, "警告"})) {
    case Answer::kYes:
      return SaveGrid();
    case Answer::kNo:
      return true;
    default:
      return false;
  }
}

void Frm_YPML::Unloading() {
  KeepColumnWidths(app_, fpSpread1);
}

}  // namespace luming
