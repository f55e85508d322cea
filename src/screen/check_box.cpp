#include "screen/check_box.h"

#include "screen/forms.h"

namespace luming {

CheckBox::CheckBox(Form* form, std::string name, std::string caption, bool checked)
    : Control(form, ControlKind::kCheckBox, std::move(name), std::move(caption)), checked_(checked) {}

void CheckBox::SetChecked(bool checked) {
  if (checked_ == checked) return;
  Forms::HandlerScope scope(Owner().Registry());
  checked_ = checked;
  Changed();
  click.Fire();
}

void CheckBox::DefaultKey(KeyEvent& event) {
  if (event.code != key::kSpace) return;
  event.handled = true;
  UserClick();
}

void CheckBox::UserClick() {
  if (!ReadOnly()) SetChecked(!checked_);
}

}  // namespace luming
