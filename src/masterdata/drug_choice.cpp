#include "masterdata/drug_choice.h"

#include "masterdata/clean_control.h"
#include "masterdata/screens.h"

namespace luming {

namespace {

const PickerSettings kPicker{.enter = EnterKey::kLeftAlone,
                             .columns = StandardColumns({.LSJ = "0.000", .PFJ = "0.000000"})};

}  // namespace

ek_PMXZ::ek_PMXZ(AppContext& app)
    : Form(app.forms, kName, "选择药品", WindowKind::kDialog),
      fpSpread1(this, "fpSpread1", PickerGridColumns(kPicker)),
      picker(this, app, kPicker, &fpSpread1),
      app_(app) {
  fpSpread1.SetRowMode(true);
  picker.picked.Connect(this, &ek_PMXZ::PickItem);
}

Layout ek_PMXZ::Arrange() const {
  return Column({picker.SearchLine(), Layout(fpSpread1).Width(116).Height(20)});
}

void ek_PMXZ::Load() {
  CleanControl::SetControlColor(*this);
  picker.Load();
}

void ek_PMXZ::FormKeyDown(KeyEvent& event) {
  if (event.code == key::kEsc) {
    event.handled = true;
    Unload();
    return;
  }
  picker.FormKeyDown(event);
}

void ek_PMXZ::PickItem(PickedBy) {
  const std::string code = picker.ActiveCode();
  if (code.empty()) return;
  if (auto* parent = dynamic_cast<DrugTaker*>(app_.forms.Find(parent_))) parent->FillD_Form(code);
  Unload();
}

void ChooseDrug(AppContext& app, const Form& parent) {
  auto& list = app.forms.Get<ek_PMXZ>(app);
  list.SetParent(parent);
  list.Show();
}

const Screen kDrugChoice = ShownScreen<ek_PMXZ>();

}  // namespace luming
