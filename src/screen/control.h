#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "screen/event.h"
#include "util/date_time.h"

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

/// A field of a form: member of the form, declared once with name and caption; the tab order is the order of
/// declaration. Everything a view needs to draw it can be asked; every change tells the form's view.
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

class Label : public Control {
 public:
  Label(Form* form, std::string name, std::string caption = {})
      : Control(form, ControlKind::kLabel, std::move(name), std::move(caption)) {}
  bool CanFocus() const override { return false; }
  Event<> click;
  void UserClick() override { click.Fire(); }
};

/// What characters a text box lets through while typing (setting the text by code or pasting is not filtered).
enum class KeyFilter {
  kAny,
  kPrice,     ///< digits, backspace, one '.', and none as the first character
  kQuantity,  ///< character codes 46 to 57 ('.', '/', digits), backspace and '-'
  kDigits,
};

enum class Ime { kUnchanged, kOff, kOperator };  ///< kOperator: the keyboard layout the operator chose

/// Switches to the operator's keyboard layout where a field asks for it; switching off is the view's.
void TakeIme(Form& form, Ime ime);

struct TextOptions {
  std::size_t cut = 0;  ///< on leaving, cut to so many bytes of the ANSI form; 0 for never
  std::size_t max = 0;  ///< most characters that the operator can type; 0 for any. A text set by code is not held to it
  KeyFilter keys = KeyFilter::kAny;
  Ime ime = Ime::kUnchanged;
  bool masked = false;
  bool select_on_focus = false;
  bool multi_line = false;
};

class TextBox : public Control {
 public:
  TextBox(Form* form, std::string name, std::string caption = {}, TextOptions options = {});

  const std::string& Text() const { return text_; }
  void SetText(std::string text);  ///< fires change when it differs
  /// Puts more behind the text, as a log does; the cost is that of what is added.
  void AppendText(std::string_view more);
  const TextOptions& Options() const { return options_; }

  void SelectAll();
  std::size_t SelStart() const { return sel_start_; }    ///< in characters
  std::size_t SelLength() const { return sel_length_; }  ///< in characters
  void SetSelection(std::size_t start, std::size_t length);

  /// Whether a typed character passes the filter against the present text.
  bool Accepts(char32_t character) const;
  /// The whole text after an edit by the operator in the view; fires change.
  void UserText(std::string text);

  Event<> change;

  void FocusGained() override;
  void FocusLost() override;
  void DefaultKey(KeyEvent& event) override;  ///< Backspace, Delete, Home, End, Left, Right without a view
  bool TypeCharacter(char32_t character) override;

 private:
  TextOptions options_;
  std::string text_;
  std::size_t sel_start_ = 0;
  std::size_t sel_length_ = 0;

  void ReplaceSelection(std::string_view with);
  void MoveCaret(std::size_t position);
};

enum class ComboStyle { kFree, kFixed };  ///< free: any text, the list helps; fixed: a list entry only

struct ComboOptions {
  ComboStyle style = ComboStyle::kFree;
  std::vector<std::string> items = {};
  int selected = -1;  ///< entry shown at first; -1 none
  std::size_t cut = 0;
  Ime ime = Ime::kUnchanged;
};

class ComboBox : public Control {
 public:
  ComboBox(Form* form, std::string name, std::string caption = {}, ComboOptions options = {});

  ComboStyle Style() const { return options_.style; }
  const ComboOptions& Options() const { return options_; }
  const std::vector<std::string>& Items() const { return items_; }
  void AddItem(std::string item);
  void Clear();  ///< removes the entries; a fixed list loses its text, too

  const std::string& Text() const { return text_; }
  /// Free: any text, fires change. Fixed: the entry of that text, else failure 383 as a read-only list gives.
  void SetText(std::string text);
  int ListIndex() const { return index_; }
  void SetListIndex(int index);  ///< -1 for none; fires click (and change when the text differs)

  void SelectAll();  ///< the next typed character replaces the text
  bool TextSelected() const { return text_selected_; }

  void OpenList();  ///< asks the view to drop the list down
  bool ListIsOpen() const { return list_open_; }
  void CloseList();

  void UserText(std::string text);  ///< typed by the operator; free style only
  void UserChoose(int index);       ///< picked by the operator

  Event<> change;
  Event<> click;

  void FocusGained() override;
  void FocusLost() override;
  void DefaultKey(KeyEvent& event) override;  ///< Up and Down walk the list
  bool TypeCharacter(char32_t character) override;

 private:
  ComboOptions options_;
  std::vector<std::string> items_;
  std::string text_;
  int index_ = -1;
  bool list_open_ = false;
  bool text_selected_ = false;

  int IndexOf(std::string_view text) const;
  void Show(std::string text, int index);
  void ChooseByFirstLetter(char32_t character);
};

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

/// One of the options of its form that bear the same group name; setting one clears the others.
class OptionButton : public Control {
 public:
  OptionButton(Form* form, std::string name, std::string caption, std::string group = {}, bool chosen = false);
  bool Chosen() const { return chosen_; }
  void SetChosen(bool chosen);
  const std::string& Group() const { return group_; }
  Event<> click;
  void DefaultKey(KeyEvent& event) override;  ///< Space
  void UserClick() override;

 private:
  std::string group_;
  bool chosen_;
};

class DateBox : public Control {
 public:
  DateBox(Form* form, std::string name, std::string caption = {});
  const DateTime& Value() const { return value_; }
  void SetValue(const DateTime& value);  ///< fires change when it differs
  std::string Text() const;              ///< "yyyy-mm-dd"
  Event<> change;

  void SelectAll();  ///< the next typed digit begins the year anew
  void FocusGained() override;
  void DefaultKey(KeyEvent& event) override;  ///< Up and Down: one day
  /// Digits fill the year, the month and the day in turn, each as far as it makes a date; "-", "/" and "." go on to the
  /// next of them.
  bool TypeCharacter(char32_t character) override;

 private:
  bool TypeDigit(char digit);
  bool NextPart();

  DateTime value_;
  int part_ = 0;  // which of year, month and day is being typed
  std::string typed_;
};

enum class ButtonRole { kPlain, kDefault, kCancel };  ///< default: Enter elsewhere clicks it; cancel: Esc does

class Button : public Control {
 public:
  Button(Form* form, std::string name, std::string caption, ButtonRole role = ButtonRole::kPlain);
  /// `Button Command1{this, "Command1", "入库(&R)", &ek_YK_RKMX::Command1_Click};`
  template <class Screen, class Base>
  Button(Screen* form, std::string name, std::string caption, void (Base::*handler)(),
         ButtonRole role = ButtonRole::kPlain)
      : Button(static_cast<Form*>(form), std::move(name), std::move(caption), role) {
    click.Connect(static_cast<Base*>(form), handler);
  }
  ButtonRole Role() const { return role_; }
  Event<> click;
  void DefaultKey(KeyEvent& event) override;  ///< Enter and Space
  void UserClick() override;

 private:
  ButtonRole role_;
};

struct ToolButton {
  std::string caption;
  std::string key;  ///< what the handler is told
  bool starts_group = false;
  bool enabled = true;
};

class ToolBar : public Control {
 public:
  ToolBar(Form* form, std::string name, std::vector<ToolButton> buttons);
  const std::vector<ToolButton>& Buttons() const { return buttons_; }
  void SetButtonEnabled(std::string_view button_key, bool enabled);
  void UserPress(std::string_view button_key);
  bool CanFocus() const override { return false; }
  Event<const std::string&> button_click;

 private:
  std::vector<ToolButton> buttons_;
};

/// What a picture shows while it has no file.
enum class Emblem { kNone, kProgram, kLock };

class Picture : public Control {
 public:
  Picture(Form* form, std::string name, Emblem emblem = Emblem::kNone)
      : Control(form, ControlKind::kPicture, std::move(name), {}), emblem_(emblem) {}
  const std::filesystem::path& File() const { return file_; }
  void SetFile(std::filesystem::path file);  ///< a missing or unreadable file draws the emblem
  Emblem Shown() const { return emblem_; }
  int BorderStyle() const { return border_style_; }  ///< 1: a line stands around it
  void SetBorderStyle(int style);
  bool CanFocus() const override { return false; }
  Event<> click;
  Event<> mouse_move;
  void UserClick() override { click.Fire(); }
  void UserMouseMove() { mouse_move.Fire(); }  ///< the mouse came over it

 private:
  std::filesystem::path file_;
  Emblem emblem_;
  int border_style_ = 0;
};

/// Shows how far long work has come.
class ProgressBar : public Control {
 public:
  ProgressBar(Form* form, std::string name) : Control(form, ControlKind::kProgressBar, std::move(name), {}) {}
  double Share() const { return share_; }  ///< from 0 to 1
  void SetShare(double share);
  bool CanFocus() const override { return false; }

 private:
  double share_ = 0;
};

struct TreeNode {
  int id = 0;  ///< index in Tree::Nodes()
  int parent = -1;
  std::string text;
  std::string key;
  std::string
      image;  ///< key of the picture ahead of the text: "None", "Some" and "All" are check boxes; empty for none
  bool expanded = false;
  bool removed = false;
};

class Tree : public Control {
 public:
  Tree(Form* form, std::string name) : Control(form, ControlKind::kTree, std::move(name), {}) {}
  int AddNode(int parent, std::string text, std::string node_key = {});  ///< parent -1: a root; returns the id
  void RemoveNode(int id);                                               ///< with all below it
  void Clear();
  const std::vector<TreeNode>& Nodes() const { return nodes_; }  ///< parents stand ahead of their children
  void SetNodeText(int id, std::string text);
  void SetNodeImage(int id, std::string image);
  void SetExpanded(int id, bool expanded);
  int Selected() const { return selected_; }  ///< -1 for none
  void Select(int id);                        ///< by code: no event
  void UserSelect(int id);                    ///< fires node_click
  Event<int> node_click;
  Event<int> node_double_click;

 private:
  std::vector<TreeNode> nodes_;
  int selected_ = -1;
};

}  // namespace luming
