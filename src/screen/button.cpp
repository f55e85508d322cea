#include "screen/button.h"

#include "screen/forms.h"

namespace luming {

Button::Button(Form* form, std::string name, std::string caption, ButtonRole role)
    : Control(form, ControlKind::kButton, std::move(name), std::move(caption)), role_(role) {}

void Button::DefaultKey(KeyEvent& event) {
  if ((event.code != key::kEnter && event.code != key::kSpace) || event.alt || event.ctrl) return;
  event.handled = true;
  UserClick();
}

void Button::UserClick() {
  Forms::HandlerScope scope(Owner().Registry());
  click.Fire();
}

}  // namespace luming
