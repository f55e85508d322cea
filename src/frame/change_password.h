#pragma once

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/label.h"
#include "screen/text_box.h"

namespace luming {

/// 更改密码: the operator's own password. What LockApp and a further change accept stays the old one until the next
/// login.
class ChangPassword : public Form {
 public:
  static constexpr const char* kName = "ChangPassword";
  explicit ChangPassword(AppContext& app);

  Label Frame1{this, "Frame1"};
  TextBox OldPassTxt{this, "OldPassTxt", "输入旧密码", {.masked = true}};
  TextBox NewPassTxt{this, "NewPassTxt", "输入新密码", {.masked = true}};
  TextBox NewPassTxt2{this, "NewPassTxt2", "确认新密码", {.masked = true}};
  Button ComOk{this, "ComOk", "更改密码(&C)", &ChangPassword::ComOk_Click};
  Button ComCancel{this, "ComCancel", "关闭(&Q)", &ChangPassword::ComCancel_Click, ButtonRole::kCancel};

  Layout Arrange() const override;

 protected:
  void Load() override;
  void FormKeyDown(KeyEvent& event) override { SendTab(*this, event.code); }

 private:
  void OldPassTxt_KeyDown(KeyEvent& event);
  void NewPassTxt_KeyDown(KeyEvent& event);
  void NewPassTxt2_KeyDown(KeyEvent& event);
  void ComOk_Click();
  void ComCancel_Click() { Unload(); }
  void ChangeTo(const std::string& wanted);

  AppContext& app_;
};

}  // namespace luming
