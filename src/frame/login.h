#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/form.h"
#include "screen/picture.h"
#include "screen/text_box.h"

namespace luming {

/// The login.
class password : public Form {
 public:
  static constexpr const char* kName = "password";
  explicit password(AppContext& app);

  Picture Image1{this, "Image1"};
  ComboBox Combo1{this, "Combo1", "用户姓名："};
  TextBox Text1{this, "Text1", "用户密码：", {.masked = true}};
  Button Command1{this, "Command1", "登陆(&P)", &password::Command1_Click};
  Button Command2{this, "Command2", "退出(&Q)", &password::Command2_Click};

  /// The whole of the login: takes over the operator and the rights, opens the main window, asks for the storehouse.
  void TestUserPassword(const std::string& name, const std::string& typed);

  Layout Arrange() const override;

 protected:
  void Load() override;
  void Activated() override;
  void ClosedByFrame() override;

 private:
  void FillUsers();
  void TakeServerTime();
  bool IsListed(const std::string& name) const;
  void RefusePassword();
  void TakeOver(const Recordset& user, const std::string& name, const std::string& stripped);
  void ReadRights();
  void ReadReportUnit();
  void EnterProgram(const std::string& name);

  void Combo1_KeyDown(KeyEvent& event);
  void Text1_KeyDown(KeyEvent& event);
  void Command1_Click();
  void Command2_Click();

  AppContext& app_;
  int failed_attempts_ = 0;
};

}  // namespace luming
