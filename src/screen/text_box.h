#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "screen/control.h"
#include "screen/ime.h"
#include "screen/key_filter.h"

namespace luming {

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

}  // namespace luming
