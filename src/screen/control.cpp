#include "screen/control.h"

#include "screen/forms.h"

namespace luming {

Control::Control(Form* form, ControlKind kind, std::string name, std::string caption)
    : form_(form), kind_(kind), name_(std::move(name)), caption_(std::move(caption)) {
  form_->Adopt(this);
}

Control::~Control() {
  form_->Forget(this);
}

void Control::SetCaption(std::string caption) {
  if (caption_ == caption) return;
  caption_ = std::move(caption);
  Changed();
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Changed();
  form_->LeaveUnusable(this);
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Changed();
  form_->LeaveUnusable(this);
}

void Control::SetReadOnly(bool read_only) {
  if (read_only_ == read_only) return;
  read_only_ = read_only;
  Changed();
}

void Control::SetTextColour(Colour colour) {
  text_colour_ = colour;
  Changed();
}

void Control::SetBackColour(Colour colour) {
  back_colour_ = colour;
  Changed();
}

bool Control::CanFocus() const {
  return enabled_ && visible_;
}

void Control::SetFocus() {
  form_->SetActiveControl(this);
}

bool Control::HasFocus() const {
  return form_->ActiveControl() == this;
}

void Control::FocusGained() {
  got_focus.Fire();
}

void Control::FocusLost() {
  lost_focus.Fire();
}

void Control::Changed() {
  if (FormView* view = form_->View()) view->ControlChanged(*this);
}

void TakeIme(Form& form, Ime ime) {
  const auto& operator_ime = form.Registry().operator_ime;
  if (ime == Ime::kOperator && operator_ime) operator_ime();
}

void Picture::SetFile(std::filesystem::path file) {
  file_ = std::move(file);
  Changed();
}

void Picture::SetBorderStyle(int style) {
  if (border_style_ == style) return;
  border_style_ = style;
  Changed();
}

ToolBar::ToolBar(Form* form, std::string name, std::vector<ToolButton> buttons)
    : Control(form, ControlKind::kToolBar, std::move(name), {}), buttons_(std::move(buttons)) {}

void ToolBar::SetButtonEnabled(std::string_view button_key, bool enabled) {
  for (ToolButton& button : buttons_) {
    if (button.key == button_key) button.enabled = enabled;
  }
  Changed();
}

void ToolBar::UserPress(std::string_view button_key) {
  Forms::HandlerScope scope(Owner().Registry());
  if (!Enabled() || !Visible()) return;
  for (const ToolButton& button : buttons_) {
    if (button.key != button_key || !button.enabled) continue;
    const std::string pressed = button.key;
    button_click.Fire(pressed);
    return;
  }
}

}  // namespace luming
