#include "screen/text_box.h"

#include <algorithm>

#include "screen/forms.h"
#include "util/ansi_text.h"
#include "util/text.h"

namespace luming {
namespace {

bool IsControlCharacter(char32_t character) {
  return character < U' ' || character == 0x7F;
}

}  // namespace

TextBox::TextBox(Form* form, std::string name, std::string caption, TextOptions options)
    : Control(form, ControlKind::kTextBox, std::move(name), std::move(caption)), options_(options) {}

void TextBox::SetText(std::string text) {
  if (text == text_) return;
  Forms::HandlerScope scope(Owner().Registry());
  text_ = std::move(text);
  sel_start_ = 0;
  sel_length_ = 0;
  Changed();
  change.Fire();
}

void TextBox::AppendText(std::string_view more) {
  if (more.empty()) return;
  Forms::HandlerScope scope(Owner().Registry());
  text_ += more;
  Changed();
  change.Fire();
}

void TextBox::SelectAll() {
  SetSelection(0, CharCount(text_));
}

void TextBox::SetSelection(std::size_t start, std::size_t length) {
  const std::size_t count = CharCount(text_);
  sel_start_ = std::min(start, count);
  sel_length_ = std::min(length, count - sel_start_);
  Changed();
}

bool TextBox::Accepts(char32_t character) const {
  // What is selected goes: a point typed over it is the first character.
  const std::string stays = Left(text_, sel_start_) + Mid(text_, sel_start_ + sel_length_ + 1);
  return character == key::kBackspace || Passes(options_.keys, character, stays);
}

void TextBox::UserText(std::string text) {
  if (options_.max > 0) text = Left(text, std::max(options_.max, CharCount(text_)));
  if (text == text_) return;
  Forms::HandlerScope scope(Owner().Registry());
  text_ = std::move(text);
  const std::size_t count = CharCount(text_);
  sel_start_ = std::min(sel_start_, count);
  sel_length_ = std::min(sel_length_, count - sel_start_);
  Changed();
  change.Fire();
}

void TextBox::FocusGained() {
  TakeIme(Owner(), options_.ime);
  if (options_.select_on_focus) SelectAll();
  Control::FocusGained();
}

void TextBox::FocusLost() {
  if (options_.cut > 0) SetText(CutAnsi(text_, options_.cut));
  Control::FocusLost();
}

void TextBox::ReplaceSelection(std::string_view with) {
  const std::size_t start = sel_start_;
  std::string text = Left(text_, start);
  text.append(with).append(Mid(text_, start + sel_length_ + 1));
  sel_start_ = start + CharCount(with);
  sel_length_ = 0;
  UserText(std::move(text));
}

void TextBox::MoveCaret(std::size_t position) {
  SetSelection(position, 0);
}

void TextBox::DefaultKey(KeyEvent& event) {
  if (event.ctrl || event.alt) return;
  const bool edits = event.code == key::kBackspace || event.code == key::kDelete;
  const bool breaks_line = event.code == key::kEnter && options_.multi_line;
  if ((edits || breaks_line) && ReadOnly()) return;
  event.handled = true;
  if (edits && sel_length_ == 0) {
    if (event.code == key::kBackspace && sel_start_-- == 0) return MoveCaret(0);
    sel_length_ = 1;
  }
  if (edits) return ReplaceSelection("");
  if (breaks_line) return ReplaceSelection("\n");
  switch (event.code) {
    case key::kHome:
      return MoveCaret(0);
    case key::kEnd:
      return MoveCaret(CharCount(text_));
    case key::kLeft:
      return MoveCaret(sel_start_ > 0 && sel_length_ == 0 ? sel_start_ - 1 : sel_start_);
    case key::kRight:
      return MoveCaret(sel_start_ + std::max<std::size_t>(sel_length_, 1));
    default:
      event.handled = false;
  }
}

bool TextBox::TypeCharacter(char32_t character) {
  if (ReadOnly() || IsControlCharacter(character) || !Accepts(character)) return false;
  if (options_.max > 0 && sel_length_ == 0 && CharCount(text_) >= options_.max) return false;
  ReplaceSelection(EncodeUtf8(character));
  return true;
}

}  // namespace luming
