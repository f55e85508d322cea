#include "masterdata/drug_field.h"

#include "frame/gateway.h"
#include "masterdata/drug_choice.h"
#include "platform/statement.h"

namespace luming {

DrugField::DrugField(Form* form, AppContext& app, const char* button)
    : BM(form, "BM", "编码", {.ime = Ime::kOff}), PM(form, "PM", "品名"), choose(form, button, "……"), app_(app) {
  choose.click.Connect(this, &DrugField::Choose);
}

void DrugField::Take(const std::string& code) {
  Recordset rows;
  OpenRs(app_, rows, "Select YPMC From YF_YPML Where YPBM Like" + Quoted(code, "编码"));
  PM.SetText(rows.RecordCount() > 0 ? rows.Field(0).TextOrEmpty() : "");
  CloseRs(rows);
  BM.SetText(code);
}

void DrugField::Clear() {
  BM.SetText("");
  PM.SetText("");
}

void DrugField::SetEnabled(bool enabled) {
  BM.SetEnabled(enabled);
  PM.SetEnabled(enabled);
  choose.SetEnabled(enabled);
}

void DrugField::Choose() {
  ChooseDrug(app_, BM.Owner());
}

Layout DrugField::Arrange() const {
  constexpr int kCode = 10;
  return Row({Layout(BM).Width(kCode), Layout(PM).Stretch(1), choose});
}

}  // namespace luming
