#include "masterdata/producer_choice.h"

#include "frame/ini_file.h"
#include "frame/startup.h"
#include "masterdata/screens.h"
#include "screen/grid_init.h"

namespace luming {

namespace {

constexpr const char* kSection = "窗体位置";
constexpr const char* kLeft = "ICD10X";
constexpr const char* kTop = "ICD10Y";

}  // namespace

Frm_Check::Frm_Check(AppContext& app) : Form(app.forms, kName, "药品产地查询", WindowKind::kFloating), app_(app) {
  fpSpread1.SetRowMode(true);
  fpSpread1.click.Connect(this, &Frm_Check::fpSpread1_Click);
  fpSpread1.key_down.Connect(this, &Frm_Check::fpSpread1_KeyDown);
}

Layout Frm_Check::Arrange() const {
  return Column({Layout(fpSpread1).Width(84).Height(14)});
}

void Frm_Check::Load() {
  GridInit(fpSpread1);
  CIniFile settings;
  settings.SpecifyIni(SettingsFile(app_.AppPath));
  int size = 8;
  if (settings.ReadString(kSection, kLeft, size).empty()) return;
  SetPlace({settings.ReadInt(kSection, kLeft), settings.ReadInt(kSection, kTop)});
}

void Frm_Check::Unloading() {
  if (!Place()) return;
  CIniFile settings;
  settings.SpecifyIni(SettingsFile(app_.AppPath));
  settings.WriteString(kSection, kLeft, std::to_string(Place()->left));
  settings.WriteString(kSection, kTop, std::to_string(Place()->top));
}

void Frm_Check::Fill_JB(Recordset& rows) {
  SetCaption("药品产地查询 共找到" + std::to_string(rows.RecordCount()) + "条数据");
  fpSpread1.Fill(std::move(rows), {{"CDMC"}, {"CDQC"}, {"PYDM"}});
  fpSpread1.SetActiveCell(1, 1);
}

void Frm_Check::EnterList() {
  fpSpread1.SetActiveCell(1, 1);
  TakeKeyboard();
  fpSpread1.SetFocus();
}

void Frm_Check::Take(int row) {
  if (row < 1 || row > fpSpread1.MaxRows()) return;
  taken.Fire(fpSpread1.Text(row, 1));
  Hide();
}

void Frm_Check::fpSpread1_Click(int row, int) {
  Take(row);
}

void Frm_Check::fpSpread1_KeyDown(KeyEvent& event) {
  if (event.code == key::kEnter) {
    event.handled = true;
    Take(fpSpread1.ActiveRow());
  } else if (event.code == key::kEsc) {
    event.handled = true;
    Hide();
  }
}

const Screen kProducerChoice = ShownScreen<Frm_Check>();

}  // namespace luming
