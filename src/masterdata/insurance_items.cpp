#include "masterdata/insurance_items.h"

#include <array>
#include <span>
#include <vector>

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/screens.h"
#include "output/grid_routines.h"
#include "util/text.h"

namespace luming {

namespace {

struct CatalogueField {
  const char* column;
  const char* caption;
  Holds holds = Holds::kAnything;
};

constexpr auto kDrugFields = std::to_array<CatalogueField>({
    {"drug_code", "药品编号", Holds::kCode},
    {"drug_name", "药品名称"},
    {"drug_sort", "药品简码", Holds::kCode},
    {"other_name", "其他名称"},
    {"other_sort", "其他简码", Holds::kCode},
    {"drug_type", "药品类型"},
    {"item_class", "级别"},
    {"spec", "规格"},
    {"dosage_code", "剂型名称"},
    {"usage_code", "用法"},
    {"price", "单价"},
    {"illfit_code", "适用症"},
    {"rate", "比例"},
    {"memo", "备注"},
    {"status", "有效状态"},
    {"scbz", "上传标志"},
    {"drug_bzbh", "标准编号", Holds::kCode},
    {"drug_pcode", "上级编码", Holds::kCode},
    {"drug_islast", "是否末级"},
    {"rate_status", "饮片状态"},
    {"drug_unit", "药品单位"},
});

constexpr auto kTreatmentFields = std::to_array<CatalogueField>({
    {"item_code", "项目编号", Holds::kCode},
    {"item_name", "项目名称"},
    {"item_sort", "项目简码", Holds::kCode},
    {"other_name", "其他名称"},
    {"other_sort", "其他简码", Holds::kCode},
    {"item_type", "项目类型"},
    {"item_class", "费用类型"},
    {"unit_code", "单位"},
    {"price", "单价"},
    {"rate", "补偿比例"},
    {"memo", "备注"},
    {"dept", "科室"},
    {"item_bzbh", "标准编号", Holds::kCode},
});

using CatalogueFields = std::span<const CatalogueField>;

CatalogueFields FieldsOf(bool drugs) {
  return drugs ? CatalogueFields(kDrugFields) : CatalogueFields(kTreatmentFields);
}

std::string Aliases(CatalogueFields fields) {
  std::vector<std::string> aliases;
  for (const CatalogueField& field : fields) aliases.push_back(field.column + std::string(" AS ") + field.caption);
  return Join(aliases, ",");
}

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
  return Column({Row({Layout(SFLB).Width(14), Layout(PM).Stretch(1)}), Layout(fpSpread1).Width(116).Height(20)});
}

void NHXMXZ::Load() {
  CleanControl::SetControlColor(*this);
  GridInit(fpSpread1);
  ShowHeads();
}

bool NHXMXZ::SearchesDrugs() const {
  return SFLB.ListIndex() == 0;
}

void NHXMXZ::ShowHeads() {
  std::vector<GridColumn> columns;
  for (const CatalogueField& field : FieldsOf(SearchesDrugs())) {
    columns.push_back(GridColumn(field.caption).Holding(field.holds));
  }
  fpSpread1.SetColumns(std::move(columns));
}

Statement NHXMXZ::SearchStatement() const {
  const std::string text = CleanSearchText(PM.Text()) + "%";
  const std::string drugs = "Select " + Aliases(kDrugFields) + " from drug Where drug_sort Like";
  const std::string treatments = "Select " + Aliases(kTreatmentFields) + " From item Where item_sort Like";
  return (SearchesDrugs() ? drugs : treatments) + Quoted(text, PM.Caption()) + " Or other_sort Like" +
         Quoted(text, PM.Caption());
}

void NHXMXZ::Search() {
  Trapped(app_, [this] {
    Recordset rows;
    OpenRs(app_, rows, SearchStatement());
    ShowHeads();
    fpSpread1.Fill(std::move(rows));
  });
}

void NHXMXZ::FormKeyDown(KeyEvent& event) {
  if (event.code != key::kEsc) return;
  event.handled = true;
  Unload();
}

void NHXMXZ::PM_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  if (fpSpread1.MaxRows() == 0) return;
  fpSpread1.SetActiveCell(1, 1);
  fpSpread1.SetFocus();
}

void NHXMXZ::fpSpread1_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  Take(fpSpread1.ActiveRow());
}

void NHXMXZ::fpSpread1_DblClick(int row, int) {
  Take(row);
}

void NHXMXZ::Take(int row) {
  if (row < 1 || row > fpSpread1.MaxRows()) return;
  taken_code_ = fpSpread1.Text(row, 1);
  Unload();
}

const Screen kInsuranceItems = ModalScreen<NHXMXZ>();

}  // namespace luming
