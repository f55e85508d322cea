#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "screen/control.h"
#include "screen/ime.h"

namespace luming {

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

}  // namespace luming
