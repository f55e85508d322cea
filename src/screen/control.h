#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "screen/event.h"

namespace luming {

class Form;

enum class ControlKind {
  kLabel,
  kTextBox,
  kComboBox,
  kCheckBox,
  kOptionButton,
  kDateBox,
  kButton,
  kGrid,
  kTree,
  kToolBar,
  kPicture,
  kProgressBar
};

/// 24-bit colour 0xRRGGBB.
using Colour = std::uint32_t;

/// A field of a form: member of the form, declared once with name and caption. Everything a view needs to draw it can
/// be asked; every change tells the form's view.
class Control {
 public:
  /// @param form the form whose member this is; it outlives the control
  Control(Form* form, ControlKind kind, std::string name, std::string caption);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  ControlKind Kind() const { return kind_; }
  Form& Owner() const { return *form_; }
  const std::string& Name() const { return name_; }

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  /// Free text of the screen; not empty marks a control that survives clearing.
  const std::string& Tag() const { return tag_; }
  void SetTag(std::string tag) { tag_ = std::move(tag); }
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  /// A field that must not stay empty: the view marks its caption.
  bool Required() const { return required_; }
  void SetRequired(bool required) { required_ = required; }
  bool ReadOnly() const { return read_only_; }
  void SetReadOnly(bool read_only);
  Colour TextColour() const { return text_colour_; }
  Colour BackColour() const { return back_colour_; }  ///< kNoColour: the desktop's own
  void SetTextColour(Colour colour);
  void SetBackColour(Colour colour);
  static constexpr Colour kNoColour = 0xFF000000;

  /// Whether Tab stops here: a visible, enabled field that takes input.
  virtual bool CanFocus() const;
  void SetFocus();
  bool HasFocus() const;

  Event<> got_focus;
  Event<> lost_focus;
  Event<KeyEvent&> key_down;

  /// Called by the form when the focus comes and goes; runs the control's own behaviour, then the event.
  virtual void FocusGained();
  virtual void FocusLost();
  /// What the key does by itself when no handler took it; sets handled when it did something.
  virtual void DefaultKey(KeyEvent&) {}
  /// A character typed at this control; false when it refuses or has no use for it.
  virtual bool TypeCharacter(char32_t) { return false; }
  /// What a click on the control does by itself.
  virtual void UserClick() {}

 protected:
  void Changed();  ///< tells the view

 private:
  Form* form_;
  ControlKind kind_;
  std::string name_;
  std::string caption_;
  std::string tag_;
  bool enabled_ = true;
  bool visible_ = true;
  bool read_only_ = false;
  bool required_ = false;
  Colour text_colour_ = kNoColour;
  Colour back_colour_ = kNoColour;
};

}  // namespace luming
