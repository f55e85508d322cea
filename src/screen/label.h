#pragma once

#include <string>
#include <utility>

#include "screen/control.h"

namespace luming {

class Label : public Control {
 public:
  Label(Form* form, std::string name, std::string caption = {})
      : Control(form, ControlKind::kLabel, std::move(name), std::move(caption)) {}
  bool CanFocus() const override { return false; }
  Event<> click;
  void UserClick() override { click.Fire(); }
};

}  // namespace luming
