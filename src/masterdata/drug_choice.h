#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "stock/item_picker.h"

namespace luming {

/// A form that takes the drug chosen in the list below.
class DrugTaker {
 public:
  virtual void FillD_Form(const std::string& code) = 0;

 protected:
  ~DrugTaker() = default;
};

/// The choice list: finds one drug of the catalogue for the form that asked for it.
class ek_PMXZ : public Form {
 public:
  static constexpr const char* kName = "ek_PMXZ";
  explicit ek_PMXZ(AppContext& app);

  Grid fpSpread1;
  ItemPicker picker;

  Layout Arrange() const override;

  /// Which form gets the choice: a DrugTaker. It may close meanwhile; the choice goes nowhere then.
  void SetParent(const Form& parent) { parent_ = parent.Name(); }

 protected:
  void Load() override;
  void Activated() override { picker.AwaitNext(); }
  void FormKeyDown(KeyEvent& event) override;

 private:
  void PickItem(PickedBy);

  AppContext& app_;
  std::string parent_;
};

/// Opens the choice list, not modally, for that form.
void ChooseDrug(AppContext& app, const Form& parent);

}  // namespace luming
