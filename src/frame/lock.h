#pragma once

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/label.h"
#include "screen/picture.h"
#include "screen/text_box.h"

namespace luming {

/// Covers the work until the operator's password is given; the window's frame does not close it.
class LockApp : public Form {
 public:
  static constexpr const char* kName = "LockApp";
  explicit LockApp(AppContext& app);

  Picture Picture1{this, "Picture1", Emblem::kProgram};
  Picture Image1{this, "Image1", Emblem::kLock};
  Label Frame1{this, "Frame1"};
  TextBox Text1{this, "Text1", "输入密码", {.masked = true}};
  Button Command1{this, "Command1", "解锁(&O)", &LockApp::Command1_Click};

  Layout Arrange() const override;

 protected:
  void Load() override;
  void ClosedByFrame() override {}

 private:
  void Image1_MouseMove() { Image1.SetBorderStyle(1); }
  void Picture1_MouseMove() { Image1.SetBorderStyle(0); }
  void Text1_KeyDown(KeyEvent& event);
  void Command1_Click();

  AppContext& app_;
};

}  // namespace luming
