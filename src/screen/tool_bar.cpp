#include "screen/tool_bar.h"

#include "screen/forms.h"

namespace luming {

ToolBar::ToolBar(Form* form, std::string name, std::vector<ToolButton> buttons)
    : Control(form, ControlKind::kToolBar, std::move(name), {}), buttons_(std::move(buttons)) {}

void ToolBar::SetButtonEnabled(std::string_view button_key, bool enabled) {
  for (ToolButton& button : buttons_) {
    if (button.key == button_key) button.enabled = enabled;
  }
  Changed();
}

void ToolBar::UserPress(std::string_view button_key) {
  Forms::HandlerScope scope(Owner().Registry());
  if (!Enabled() || !Visible()) return;
  for (const ToolButton& button : buttons_) {
    if (button.key != button_key || !button.enabled) continue;
    const std::string pressed = button.key;
    button_click.Fire(pressed);
    return;
  }
}

}  // namespace luming
