#include "screen/forms.h"
#include "util/date_text.h"

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

DateBox::DateBox(Form* form, std::string name, std::string caption)
    : Control(form, ControlKind::kDateBox, std::move(name), std::move(caption)),
      value_(form->Registry().clock().Today()) {}

void DateBox::SetValue(const DateTime& value) {
  if (value_ == value) return;
  Forms::HandlerScope scope(Owner().Registry());
  value_ = value;
  Changed();
  change.Fire();
}

std::string DateBox::Text() const {
  return FormatDate(value_, "yyyy-mm-dd");
}

void DateBox::DefaultKey(KeyEvent& event) {
  if (ReadOnly() || (event.code != key::kUp && event.code != key::kDown)) return;
  event.handled = true;
  SetValue(value_.AddDays(event.code == key::kUp ? 1 : -1));
}

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
