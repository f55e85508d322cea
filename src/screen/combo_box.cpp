#include "screen/combo_box.h"

#include <algorithm>

#include "screen/forms.h"
#include "util/ansi_text.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {
namespace {

bool IsControlCharacter(char32_t character) {
  return character < U' ' || character == 0x7F;
}

std::string WithoutLastCharacter(const std::string& text) {
  const std::size_t count = CharCount(text);
  return count == 0 ? text : Left(text, count - 1);
}

}  // namespace

ComboBox::ComboBox(Form* form, std::string name, std::string caption, ComboOptions options)
    : Control(form, ControlKind::kComboBox, std::move(name), std::move(caption)),
      options_(std::move(options)),
      items_(options_.items) {
  if (options_.selected >= 0 && options_.selected < static_cast<int>(items_.size())) {
    index_ = options_.selected;
    text_ = items_[static_cast<std::size_t>(index_)];
  }
}

void ComboBox::AddItem(std::string item) {
  items_.push_back(std::move(item));
  Changed();
}

void ComboBox::Clear() {
  items_.clear();
  index_ = -1;
  if (options_.style == ComboStyle::kFixed) text_.clear();
  Changed();
}

int ComboBox::IndexOf(std::string_view text) const {
  const auto found = std::find(items_.begin(), items_.end(), text);
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ComboBox::Show(std::string text, int index) {
  index_ = index;
  text_selected_ = false;
  const bool differs = text_ != text;
  text_ = std::move(text);
  Changed();
  if (differs) change.Fire();
}

void ComboBox::SetText(std::string text) {
  if (text == text_) return;
  Forms::HandlerScope scope(Owner().Registry());
  const int index = IndexOf(text);
  if (options_.style == ComboStyle::kFree) {
    Show(std::move(text), index);
  } else if (index >= 0) {
    SetListIndex(index);
  } else {
    throw Failure(383, "列表“" + Name() + "”的文本只能取自列表，列表中没有“" + text + "”。");
  }
}

void ComboBox::SetListIndex(int index) {
  if (index < -1 || index >= static_cast<int>(items_.size())) {
    throw Failure(380, "列表“" + Name() + "”没有第 " + std::to_string(index + 1) + " 项。");
  }
  Forms::HandlerScope scope(Owner().Registry());
  Show(index < 0 ? std::string() : items_[static_cast<std::size_t>(index)], index);
  click.Fire();
}

void ComboBox::SelectAll() {
  text_selected_ = true;
  Changed();
}

void ComboBox::OpenList() {
  list_open_ = true;
  Changed();
}

void ComboBox::CloseList() {
  if (!list_open_) return;
  list_open_ = false;
  Changed();
}

void ComboBox::UserText(std::string text) {
  if (options_.style == ComboStyle::kFixed) return;
  text_selected_ = false;
  if (text == text_) return;
  Forms::HandlerScope scope(Owner().Registry());
  const int index = IndexOf(text);
  Show(std::move(text), index);
}

void ComboBox::UserChoose(int index) {
  Forms::HandlerScope scope(Owner().Registry());
  CloseList();
  SetListIndex(index);
}

void ComboBox::FocusGained() {
  TakeIme(Owner(), options_.ime);
  if (options_.style == ComboStyle::kFree) SelectAll();
  Control::FocusGained();
}

void ComboBox::FocusLost() {
  CloseList();
  text_selected_ = false;
  if (options_.cut > 0 && options_.style == ComboStyle::kFree) SetText(CutAnsi(text_, options_.cut));
  Control::FocusLost();
}

void ComboBox::DefaultKey(KeyEvent& event) {
  if (ReadOnly() || event.ctrl) return;
  const int last = static_cast<int>(items_.size()) - 1;
  const bool free = options_.style == ComboStyle::kFree;
  event.handled = true;
  if (event.code == key::kDown && event.alt) {
    OpenList();
  } else if (event.code == key::kDown && index_ < last) {
    SetListIndex(index_ + 1);
  } else if (event.code == key::kUp && index_ > 0) {
    SetListIndex(index_ - 1);
  } else if (event.code == key::kEsc && list_open_) {
    CloseList();
  } else if (free && event.code == key::kBackspace) {
    UserText(text_selected_ ? std::string() : WithoutLastCharacter(text_));
  } else if (free && event.code == key::kDelete && text_selected_) {
    UserText({});
  } else {
    event.handled = event.code == key::kDown || event.code == key::kUp;
  }
}

bool ComboBox::TypeCharacter(char32_t character) {
  if (ReadOnly() || IsControlCharacter(character)) return false;
  if (options_.style == ComboStyle::kFixed) {
    ChooseByFirstLetter(character);
  } else {
    UserText((text_selected_ ? std::string() : text_) + EncodeUtf8(character));
  }
  return true;
}

void ComboBox::ChooseByFirstLetter(char32_t character) {
  const std::string letter = EncodeUtf8(character);
  const int count = static_cast<int>(items_.size());
  for (int step = 1; step <= count; ++step) {
    const int at = (std::max(index_, -1) + step) % count;
    if (!EqualsIgnoreCase(Left(items_[static_cast<std::size_t>(at)], 1), letter)) continue;
    SetListIndex(at);
    return;
  }
}

}  // namespace luming
