#include "masterdata/charge_items.h"

#include <algorithm>

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/screens.h"
#include "output/grid_routines.h"
#include "stock/line_grid.h"
#include "util/text.h"

namespace luming {

namespace {

enum ItemColumn { kItem = 1, kOfDrugs, kInStock };

}  // namespace

ek_SFXMGL::ek_SFXMGL(AppContext& app) : Form(app.forms, kName, "收费项目管理", WindowKind::kDialog), app_(app) {
  fpSpread1.SetKind(-1, kOfDrugs, CellKind::kCheck);
  fpSpread1.SetKind(-1, kInStock, CellKind::kCheck);
}

Layout ek_SFXMGL::Arrange() const {
  return Column({
      Layout(fpSpread1).Height(20),
      Row({Command1, Command2, Command5, Space(), Command3, Command4}),
  });
}

void ek_SFXMGL::Load() {
  CleanControl::SetControlColor(*this);
  GridInit(fpSpread1);
  if (!app_.CurUser.YPGL_SFXMGL) {
    CheckRight(app_, "YPGL_SFXMGL");
    Unload();
    return;
  }
  // Saving a list that could not be read would empty the table.
  Command3.SetEnabled(ReadItems());
}

bool ek_SFXMGL::ReadItems() {
  return Trapped(app_, [this] {
    Recordset rows;
    OpenRs(app_, rows, "select sItemName,YPBZ,SFJKC FROM eK_ChargeItem");
    fpSpread1.Fill(std::move(rows), {{"sItemName"}, {"YPBZ"}, {"SFJKC"}});
  });
}

/// A flag that is not "0" is saved as "1", so a new item shows both set.
void ek_SFXMGL::BeginItem(int row) {
  fpSpread1.SetText(row, kOfDrugs, "1");
  fpSpread1.SetText(row, kInStock, "1");
  fpSpread1.SetActiveCell(row, kItem);
  fpSpread1.SetFocus();
}

void ek_SFXMGL::Command1_Click() {
  fpSpread1.SetMaxRows(fpSpread1.MaxRows() + 1);
  BeginItem(fpSpread1.MaxRows());
}

void ek_SFXMGL::Command2_Click() {
  const int row = std::max(fpSpread1.ActiveRow(), 1);
  fpSpread1.SetMaxRows(fpSpread1.MaxRows() + 1);
  fpSpread1.InsertRows(row, 1);
  BeginItem(row);
}

void ek_SFXMGL::Command5_Click() {
  GridDelRow(fpSpread1, fpSpread1.ActiveRow());
}

bool ek_SFXMGL::NamesAreUnique() {
  for (int row = 2; row <= fpSpread1.MaxRows(); ++row) {
    const std::string name = Trim(fpSpread1.Text(row, kItem));
    if (name.empty()) continue;
    for (int above = 1; above < row; ++above) {
      if (Trim(fpSpread1.Text(above, kItem)) != name) continue;
      app_.desktop.MsgBox(StandsAlready(name, above));
      fpSpread1.SetActiveCell(row, kItem);
      fpSpread1.SetFocus();
      return false;
    }
  }
  return true;
}

void ek_SFXMGL::RemoveNamelessRows() {
  for (int row = fpSpread1.MaxRows(); row >= 1; --row) {
    if (Trim(fpSpread1.Text(row, kItem)).empty()) GridDelRow(fpSpread1, row);
  }
}

Statement ek_SFXMGL::InsertStatement(int row) const {
  const auto flag = [&](int col) { return fpSpread1.Text(row, col) == "0" ? "'0'" : "'1'"; };
  return "Insert into eK_ChargeItem (sItemName,YPBZ,SFJKC)values(" +
         Quoted(fpSpread1.Text(row, kItem), {fpSpread1.Text(0, kItem), row}) + "," + flag(kOfDrugs) + "," +
         flag(kInStock) + ")";
}

/// Not one transaction: a failure leaves the table without the items that were still to come.
void ek_SFXMGL::Command3_Click() {
  if (!NamesAreUnique()) return;
  RemoveNamelessRows();
  if (!ExecSql(app_, "delete eK_ChargeItem")) return;
  for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
    if (!ExecSql(app_, InsertStatement(row))) return;
  }
  app_.desktop.MsgBox({"保存成功", box::kInformation, "提示"});
}

const Screen kChargeItems = ShownScreen<ek_SFXMGL>();

}  // namespace luming
