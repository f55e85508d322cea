#include "screen/form.h"

#include <algorithm>
#include <utility>

#include "screen/button.h"
#include "screen/caption.h"
#include "screen/combo_box.h"
#include "screen/forms.h"
#include "screen/text_box.h"
#include "util/text.h"

namespace luming {

namespace {

unsigned long NextSerial() {
  static unsigned long last = 0;
  return ++last;
}

}  // namespace

Form::Form(Forms& forms, std::string name, std::string caption, WindowKind kind)
    : forms_(forms), serial_(NextSerial()), name_(std::move(name)), caption_(std::move(caption)), kind_(kind) {}

Form::~Form() = default;

void Form::SetCaption(std::string caption) {
  caption_ = std::move(caption);
  if (view_) view_->LookChanged();
}

void Form::SetBackColour(Colour colour) {
  back_colour_ = colour;
  if (view_) view_->LookChanged();
}

void Form::EnsureLoaded() {
  if (loaded_ || unloaded_) return;
  Forms::HandlerScope scope(forms_);
  loaded_ = true;
  try {
    Load();
  } catch (...) {
    CloseNow();  // half a screen is of no use to anyone
    throw;
  }
}

void Form::Show() {
  Forms::HandlerScope scope(forms_);
  EnsureLoaded();
  if (unloaded_) return;
  const bool was_in_front = shown_ && forms_.Top() == this;
  Appear();
  forms_.desktop().Show(*this);
  if (!was_in_front) BecomeActive();
}

void Form::ShowModal() {
  Forms::HandlerScope scope(forms_);
  EnsureLoaded();
  if (unloaded_) return;
  Appear();
  BecomeActive();
  if (unloaded_ || !shown_) return;
  struct Modality {
    explicit Modality(bool& modal) : modal_(modal) { modal_ = true; }
    ~Modality() { modal_ = false; }
    bool& modal_;
  } modality(modal_);
  forms_.desktop().RunModal(*this);
}

void Form::Appear() {
  const bool was_shown = std::exchange(shown_, true);
  if (kind_ != WindowKind::kFloating) {
    forms_.BroughtToFront(*this);
  } else if (!was_shown) {
    forms_.AppearedBeside(*this);
  }
}

void Form::TakeKeyboard() {
  if (!shown_) return;
  Forms::HandlerScope scope(forms_);
  forms_.BroughtToFront(*this);
  forms_.desktop().Show(*this);
  BecomeActive();
}

void Form::BecomeActive() {
  Activated();
  if (!unloaded_ && shown_ && !active_) SetActiveControl(NextTabStop(nullptr));
}

void Form::Hide() {
  if (!shown_) return;
  shown_ = false;
  forms_.WasHidden(*this);
  forms_.desktop().Hide(*this);
}

bool Form::Unload() {
  if (unloaded_) return true;
  Forms::HandlerScope scope(forms_);
  if (loaded_ && !QueryUnload()) return false;
  CloseNow();
  return true;
}

void Form::CloseNow() {
  Forms::HandlerScope scope(forms_);
  struct Departure {
    explicit Departure(Form& form) : form_(form) {}
    ~Departure() {
      form_.shown_ = false;
      form_.forms_.desktop().Close(form_);
      form_.forms_.Release(form_);
    }
    Form& form_;
  } departure(*this);
  if (std::exchange(unloaded_, true)) return;
  if (loaded_) Unloading();
}

void Form::UserClose() {
  Forms::HandlerScope scope(forms_);
  ClosedByFrame();
}

Control* Form::Find(std::string_view name) const {
  const auto found = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const Control* control) { return EqualsIgnoreCase(control->Name(), name); });
  return found == controls_.end() ? nullptr : *found;
}

void Form::SetActiveControl(Control* control) {
  if (control == active_ || (control && !control->CanFocus())) return;
  Forms::HandlerScope scope(forms_);
  ++focus_moves_;
  active_ = control;
  try {
    if (Control* left = std::exchange(entered_, nullptr)) left->FocusLost();
  } catch (...) {
    // The focus has moved, whatever the field made of it: the keyboard must not stay behind.
    if (!unloaded_ && active_ == control && view_) view_->FocusChanged(control);
    throw;
  }
  if (unloaded_ || active_ != control) return;  // the field that was left closed the form or sent the focus elsewhere
  if (view_) view_->FocusChanged(control);
  entered_ = control;
  if (control) control->FocusGained();
}

const std::vector<Control*>& Form::Stops() const {
  if (stops_.empty()) stops_ = TabOrder(Arrange(), controls_);
  return stops_;
}

Control* Form::NextTabStop(const Control* from, bool backward) const {
  const std::vector<Control*>& stops = Stops();
  const auto count = static_cast<std::ptrdiff_t>(stops.size());
  const auto start = std::ranges::find(stops, from) - stops.begin();
  std::ptrdiff_t at = start == count ? (backward ? 0 : -1) : start;
  for (std::ptrdiff_t step = 0; step < count; ++step) {
    at = (at + (backward ? count - 1 : 1)) % count;
    Control* control = stops[static_cast<std::size_t>(at)];
    if (control->CanFocus()) return control;
  }
  return nullptr;
}

bool Form::UserKey(KeyEvent event) {
  Forms::HandlerScope scope(forms_);
  Control* const target = active_;
  const unsigned moves = focus_moves_;
  walk_requested_ = false;
  RunKeyHandlers(event);
  const bool walk = std::exchange(walk_requested_, false);
  if (unloaded_ || focus_moves_ != moves) return true;

  bool default_took_it = false;
  if (!event.handled && !event.widget_edits && target && target->CanFocus()) {
    target->DefaultKey(event);
    default_took_it = event.handled;
  }
  if (unloaded_ || focus_moves_ != moves) return true;
  const bool in_grid = target && target->Kind() == ControlKind::kGrid;  // keeps Tab and so Enter to itself
  if (walk && !default_took_it && !in_grid) WalkOn();
  if (walk) return true;
  if (!event.handled) DefaultFormKey(event);
  return event.handled;
}

void Form::RunKeyHandlers(KeyEvent& event) {
  Control* const target = active_;
  FormKeyDown(event);
  if (event.handled || unloaded_ || !target || !target->CanFocus()) return;
  target->key_down.Fire(event);
}

void Form::WalkOn() {
  Control* const from = active_;
  Control* const next = NextTabStop(from);
  if (!next || next == from) return;
  SetActiveControl(next);
  const bool started_over = std::ranges::find(Stops(), next) <= std::ranges::find(Stops(), from);
  if (unloaded_ || active_ != next || started_over) return;
  if (auto* combo = dynamic_cast<ComboBox*>(next)) combo->OpenList();
  if (auto* box = dynamic_cast<TextBox*>(next)) box->SelectAll();
}

void Form::DefaultFormKey(KeyEvent& event) {
  if (event.alt && ClickByMnemonic(static_cast<char>(event.code))) {
    event.handled = true;
  } else if (event.code == key::kTab && !event.alt && !event.ctrl) {
    SetActiveControl(NextTabStop(active_, event.shift));
    event.handled = true;
  } else if (event.code == key::kEnter || event.code == key::kEsc) {
    Button* button = ButtonOf(event.code == key::kEnter ? ButtonRole::kDefault : ButtonRole::kCancel);
    if (!button) return;
    event.handled = true;
    button->UserClick();
  }
}

Button* Form::ButtonOf(ButtonRole role) const {
  for (Control* control : controls_) {
    auto* button = dynamic_cast<Button*>(control);
    if (button && button->Role() == role && button->CanFocus()) return button;
  }
  return nullptr;
}

bool Form::ClickByMnemonic(char letter) {
  for (Control* control : controls_) {
    if (letter == 0 || Mnemonic(control->Caption()) != letter || !control->CanFocus()) continue;
    const bool presses = control->Kind() == ControlKind::kButton || control->Kind() == ControlKind::kCheckBox ||
                         control->Kind() == ControlKind::kOptionButton;
    if (presses) {
      UserClick(*control);
    } else {
      UserFocus(*control);
    }
    return true;
  }
  return false;
}

bool Form::UserType(char32_t character) {
  Forms::HandlerScope scope(forms_);
  return active_ && active_->CanFocus() && active_->TypeCharacter(character);
}

void Form::UserClick(Control& control) {
  if (!control.Enabled() || !control.Visible()) return;
  Forms::HandlerScope scope(forms_);
  if (control.CanFocus()) {
    UserFocus(control);
    // Leaving the other field may have closed the form or taken the control out of use.
    if (unloaded_ || !control.CanFocus()) return;
  }
  control.UserClick();
}

void Form::UserFocus(Control& control) {
  SetActiveControl(&control);
}

void Form::Adopt(Control* control) {
  controls_.push_back(control);
  stops_.clear();
}

void Form::Forget(Control* control) {
  std::erase(controls_, control);
  stops_.clear();
  if (active_ == control) active_ = nullptr;
  if (entered_ == control) entered_ = nullptr;
}

void Form::LeaveUnusable(Control* control) {
  if (control != active_ || control->CanFocus()) return;
  SetActiveControl(NextTabStop(control));
}

void SendTab(Form& form, int key_code) {
  if (key_code == key::kEnter) form.walk_requested_ = true;
}

}  // namespace luming
