#include "documents/entry_dialog.h"

#include "stock/stock_move.h"
#include "util/number_text.h"

namespace luming {

EntryDialog::EntryDialog(AppContext& app, LineGrid& lines, const char* name, const char* caption)
    : Form(app.forms, name, caption, WindowKind::kDialog), app_(app), lines_(lines) {}

void EntryDialog::Cancel() {
  lines_.CancelLine();
  Unload();
}

bool EntryDialog::Refuse(const std::string& words, Control& field) {
  app_.desktop.MsgBox({words, box::kWarning, "系统提示"});
  field.SetFocus();
  return false;
}

bool EntryDialog::QuantityPasses(TextBox& quantity, const QuantityWords& words, std::int16_t factor, double stock) {
  if (quantity.Text().empty()) return Refuse(words.when_empty, quantity);
  const double typed = CDbl(quantity.Text());
  if (typed == 0) return Refuse(words.when_zero, quantity);
  return SmallestUnits(typed, factor) <= stock || Refuse("你输入的数量已超过最大的库存量！", quantity);
}

void EntryDialog::Start(TextBox& field) {
  field.SetFocus();
  field.SelectAll();
}

void EntryDialog::FormKeyDown(KeyEvent& event) {
  if (event.code == key::kEsc) {
    event.handled = true;
    Cancel();
  } else {
    SendTab(*this, event.code);
  }
}

}  // namespace luming
