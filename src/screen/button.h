#pragma once

#include <string>
#include <utility>

#include "screen/control.h"

namespace luming {

enum class ButtonRole { kPlain, kDefault, kCancel };  ///< default: Enter elsewhere clicks it; cancel: Esc does

class Button : public Control {
 public:
  Button(Form* form, std::string name, std::string caption, ButtonRole role = ButtonRole::kPlain);
  /// `Button Command1{this, "Command1", "入库(&R)", &ek_YK_RKMX::Command1_Click};`
  template <class Screen, class Base>
  Button(Screen* form, std::string name, std::string caption, void (Base::*handler)(),
         ButtonRole role = ButtonRole::kPlain)
      : Button(static_cast<Form*>(form), std::move(name), std::move(caption), role) {
    click.Connect(static_cast<Base*>(form), handler);
  }
  ButtonRole Role() const { return role_; }
  Event<> click;
  void DefaultKey(KeyEvent& event) override;  ///< Enter and Space
  void UserClick() override;

 private:
  ButtonRole role_;
};

}  // namespace luming
