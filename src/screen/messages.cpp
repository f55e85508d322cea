#include "screen/messages.h"

namespace luming {

void NumberedMessages::Add(std::string_view text, Control& field) {
  Add(text);
  field.SetFocus();
}

void NumberedMessages::Add(std::string_view text) {
  list_.append(static_cast<std::size_t>(indent_), ' ').append(std::to_string(++count_)).append(text).append("\r\n");
}

bool NumberedMessages::Pass(Desktop& desktop) const {
  if (Empty()) return true;
  desktop.MsgBox({"系统提示您:\r\n\r\n" + list_, box::kStop, "提示"});
  return false;
}

}  // namespace luming
