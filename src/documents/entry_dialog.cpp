#include "documents/entry_dialog.h"

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
