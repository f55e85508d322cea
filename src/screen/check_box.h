#pragma once

#include <string>

#include "screen/control.h"

namespace luming {

class CheckBox : public Control {
 public:
  CheckBox(Form* form, std::string name, std::string caption, bool checked = false);
  bool Checked() const { return checked_; }
  void SetChecked(bool checked);  ///< fires click when it differs
  Event<> click;
  void DefaultKey(KeyEvent& event) override;  ///< Space
  void UserClick() override;

 private:
  bool checked_;
};

}  // namespace luming
