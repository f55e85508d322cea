#include "screen/option_button.h"

#include "screen/forms.h"

namespace luming {

OptionButton::OptionButton(Form* form, std::string name, std::string caption, std::string group, bool chosen)
    : Control(form, ControlKind::kOptionButton, std::move(name), std::move(caption)),
      group_(std::move(group)),
      chosen_(chosen) {}

void OptionButton::SetChosen(bool chosen) {
  if (chosen_ == chosen) return;
  Forms::HandlerScope scope(Owner().Registry());
  chosen_ = chosen;
  Changed();
  if (!chosen) return;
  for (Control* control : Owner().Controls()) {
    auto* other = dynamic_cast<OptionButton*>(control);
    if (other && other != this && other->group_ == group_) other->SetChosen(false);
  }
  click.Fire();
}

void OptionButton::DefaultKey(KeyEvent& event) {
  if (event.code != key::kSpace) return;
  event.handled = true;
  UserClick();
}

void OptionButton::UserClick() {
  if (!ReadOnly()) SetChosen(true);
}

}  // namespace luming
