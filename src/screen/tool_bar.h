#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "screen/control.h"

namespace luming {

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

}  // namespace luming
