#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "screen/control.h"
#include "screen/layout.h"
#include "util/failure.h"

namespace luming {

class Button;
class Forms;
enum class ButtonRole;

enum class WindowKind {
  kMain,    ///< the frame with menus and workspace
  kChild,   ///< a tab of the workspace
  kDialog,  ///< a window of its own
  /// A small window that stays above all others and appears without taking the keyboard from the form in front.
  kFloating,
  kCover,  ///< a window without a frame that hides all others
};

/// Where a window stands: its upper left corner in pixels of the screen.
struct WindowPlace {
  int left = 0;
  int top = 0;
};

/// Told of every change of a form; the drawn desktop has one for each form it shows.
class FormView {
 public:
  virtual ~FormView() = default;
  virtual void ControlChanged(Control& control) = 0;
  virtual void FocusChanged(Control* control) = 0;
  virtual void LookChanged() = 0;  ///< caption or colour
};

/// A screen as a model: its fields are members, its rules member functions. Single instance for each class, owned by
/// Forms, created on first use and destroyed when closed, but never before its running handlers have returned.
class Form {
 public:
  Form(Forms& forms, std::string name, std::string caption, WindowKind kind);
  virtual ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  /// No other form has or will ever have it, whatever memory it lies in; never 0.
  unsigned long Serial() const { return serial_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  Colour BackColour() const { return back_colour_; }  ///< Control::kNoColour: the desktop's own
  void SetBackColour(Colour colour);
  WindowKind Kind() const { return kind_; }
  Forms& Registry() const { return forms_; }

  /// Runs Load if it has not run yet; Show and ShowModal do so by themselves.
  void EnsureLoaded();
  bool IsLoaded() const { return loaded_; }
  /// A form that unloads itself in its Load is not shown.
  void Show();
  void ShowModal();  ///< returns when the form is closed or hidden
  void Hide();
  /// A floating form that is shown gets the keyboard.
  void TakeKeyboard();
  bool IsShown() const { return shown_; }
  bool IsModal() const { return modal_; }  ///< while ShowModal waits for it
  /// Closes: asks QueryUnload, tells Unloading, leaves the registry. False when it was refused.
  bool Unload();
  bool IsUnloaded() const { return unloaded_; }
  /// The operator closes the window by its frame.
  void UserClose();

  virtual Layout Arrange() const = 0;

  /// Of a floating form: where it is to appear, then where the operator has moved it. Nothing: the desktop chooses.
  const std::optional<WindowPlace>& Place() const { return place_; }
  void SetPlace(WindowPlace place) { place_ = place; }

  /// Controls register themselves; this is their order of declaration. Tab follows the arrangement.
  const std::vector<Control*>& Controls() const { return controls_; }
  Control* Find(std::string_view name) const;  ///< by name, without regard to case; null when there is none
  /// The field of that name, for whoever drives a screen without knowing its class. Failure where there is none of that
  /// kind.
  template <class Kind>
  Kind& Field(std::string_view name) const {
    auto* field = dynamic_cast<Kind*>(Find(name));
    if (!field) throw StandardFailure(failure::kNoSuchField);
    return *field;
  }
  Control* ActiveControl() const { return active_; }
  void SetActiveControl(Control* control);  ///< leaves the old one, enters the new one
  /// Next control that Tab stops at; wraps. Null when there is none.
  Control* NextTabStop(const Control* from, bool backward = false) const;

  // What the operator does, called by the view and by scripts. Each runs as one handler.
  /// Key to the active control: FormKeyDown, then the control's key_down, then its own action, then the form's (Tab,
  /// the default and the cancel button). Returns true when something took it.
  bool UserKey(KeyEvent event);
  bool UserType(char32_t character);
  void UserClick(Control& control);
  void UserFocus(Control& control);

  void SetView(FormView* view) { view_ = view; }
  FormView* View() const { return view_; }

 protected:
  virtual void Load() {}
  virtual void Activated() {}  ///< comes to the front after being shown
  virtual bool QueryUnload() { return true; }
  virtual void Unloading() {}
  /// The operator closes the window by its frame; unloads unless a form says otherwise.
  virtual void ClosedByFrame() { Unload(); }
  virtual void FormKeyDown(KeyEvent&) {}  ///< sees every key ahead of the control

 private:
  friend class Control;
  friend void SendTab(Form& form, int key_code);
  friend class Forms;
  void Adopt(Control* control);
  void Forget(Control* control);
  void LeaveUnusable(Control* control);
  const std::vector<Control*>& Stops() const;
  void Appear();
  void BecomeActive();
  void CloseNow();
  void RunKeyHandlers(KeyEvent& event);
  void WalkOn();
  void DefaultFormKey(KeyEvent& event);
  bool ClickByMnemonic(char letter);
  Button* ButtonOf(ButtonRole role) const;

  Forms& forms_;
  const unsigned long serial_;
  std::string name_;
  std::string caption_;
  WindowKind kind_;
  std::optional<WindowPlace> place_;
  std::vector<Control*> controls_;
  mutable std::vector<Control*> stops_;  // in tab order, found when it is first asked for; empty until then
  Control* active_ = nullptr;
  Control* entered_ = nullptr;  // the control whose FocusGained has run and whose FocusLost has not
  unsigned focus_moves_ = 0;
  Colour back_colour_ = Control::kNoColour;
  FormView* view_ = nullptr;
  bool loaded_ = false;
  bool shown_ = false;
  bool modal_ = false;
  bool unloaded_ = false;
  bool walk_requested_ = false;
};

/// Enter acts as Tab: for key code 13 the form walks to the next tab stop once the key's handlers are through, unless
/// one of them moved the focus itself or took the key. A combo box reached so drops its list down; a text box has its
/// text selected. A grid uses Tab and so Enter for itself: the focus stays in it.
void SendTab(Form& form, int key_code);

}  // namespace luming
