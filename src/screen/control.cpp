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

}  // namespace luming
