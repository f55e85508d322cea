#include "masterdata/nhxmxz.h"

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "output/spread_moud.h"

namespace luming {

namespace {

constexpr const char* kDrugs =
    "Select drug_code AS 药品编号,drug_name AS 药品名称,drug_sort AS 药品简码,other_name AS 其他名称,"
    "other_sort AS 其他简码,drug_type AS 药品类型,item_class AS 级别,spec AS 规格,dosage_code AS 剂型名称,"
    "usage_code AS 用法,price AS 单价,illfit_code AS 适用症,rate AS 比例,memo AS 备注,status AS 有效状态,"
    "scbz AS 上传标志,drug_bzbh AS 标准编号,drug_pcode AS 上级编码,drug_islast AS 是否末级,"
    "rate_status AS 饮片状态,drug_unit AS 药品单位 from drug Where drug_sort Like'";

constexpr const char* kTreatments =
    "Select item_code AS 项目编号,item_name AS 项目名称,item_sort AS 项目简码,other_name AS 其他名称,"
    "other_sort AS 其他简码,item_type AS 项目类型,item_class AS 费用类型,unit_code AS 单位,price AS 单价,"
    "rate AS 补偿比例,memo AS 备注,dept AS 科室,item_bzbh AS 标准编号 From item Where item_sort Like'";

}  // namespace

NHXMXZ::NHXMXZ(AppContext& app) : Form(app.forms, kName, "农合项目选择", WindowKind::kDialog), app_(app) {
  fpSpread1.SetRowMode(true);
  SFLB.change.Connect(this, &NHXMXZ::Search);
  PM.change.Connect(this, &NHXMXZ::Search);
  PM.key_down.Connect(this, &NHXMXZ::PM_KeyDown);
  fpSpread1.key_down.Connect(this, &NHXMXZ::fpSpread1_KeyDown);
  fpSpread1.double_click.Connect(this, &NHXMXZ::fpSpread1_DblClick);
}

Layout NHXMXZ::Arrange() const {
  return Column({Row({Layout(SFLB).Width(14), Layout(PM).Stretch(1)}), Layout(fpSpread1).Height(20)});
}

void NHXMXZ::Load() {
  CleanControl::SetControlColor(*this);
  GridInit(fpSpread1);
}

std::string NHXMXZ::Statement() const {
  const bool drugs = SFLB.ListIndex() == 0;
  const std::string text = CleanSearchText(PM.Text());
  return (drugs ? kDrugs : kTreatments) + text + "%' Or other_sort Like'" + text + "%'";
}

void NHXMXZ::Search() {
  try {
    Recordset rows;
    OpenRs(app_, rows, Statement());
    const std::vector<std::string> captions = rows.ColumnNames();
    std::vector<ColumnSource> sources;
    fpSpread1.SetMaxCols(static_cast<int>(captions.size()));
    for (std::size_t i = 0; i < captions.size(); ++i) {
      fpSpread1.SetText(0, static_cast<int>(i) + 1, captions[i]);
      sources.push_back({captions[i].c_str()});
    }
    fpSpread1.Fill(std::move(rows), sources);
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
  }
}

void NHXMXZ::FormKeyDown(KeyEvent& event) {
  if (event.code != key::kEsc) return;
  event.handled = true;
  Unload();
}

void NHXMXZ::PM_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  fpSpread1.SetActiveCell(1, 1);
  fpSpread1.SetFocus();
}

void NHXMXZ::fpSpread1_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  Take();
}

void NHXMXZ::fpSpread1_DblClick(int, int) {
  Take();
}

void NHXMXZ::Take() {
  if (fpSpread1.MaxRows() == 0) return;
  taken_code_ = fpSpread1.Text(fpSpread1.ActiveRow(), 1);
  Unload();
}

}  // namespace luming
