#pragma once

#include <string>

#include "frame/app_context.h"
#include "frame/local_files.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/form.h"
#include "screen/label.h"
#include "screen/text_box.h"

namespace luming {

/// 数据库连接错误: lets the operator repair a connection that cannot be opened.
class LinkDatabaseErr : public Form {
 public:
  static constexpr const char* kName = "LinkDatabaseErr";
  explicit LinkDatabaseErr(AppContext& app);

  Label ShowTitle{this, "ShowTitle",
                  "由于以下数据库错误，数据库连接无法完成。请选择‘退出’按钮中止本次连接，"
                  "或选择‘设置’按钮修改配置信息后选择‘重试’按钮重新连接。"};
  Label ErrInfoShow{this, "ErrInfoShow"};
  Button ButSet{this, "ButSet", "设置(&S)", &LinkDatabaseErr::ButSet_Click};
  Button ButRec{this, "ButRec", "重试(&R)", &LinkDatabaseErr::ButRec_Click};
  Button ButExit{this, "ButExit", "退出(&X)", &LinkDatabaseErr::ButExit_Click};
  ComboBox TxtServerName{this, "TxtServerName", "服务器名："};
  TextBox TxtDatabaseName{this, "TxtDatabaseName", "数据库名称"};
  TextBox TxtUser{this, "TxtUser", "用户名："};
  TextBox TxtPassword{this, "TxtPassword", "登陆密码：", {.masked = true}};
  Button Command4{this, "Command4", "恢复默认值", &LinkDatabaseErr::Command4_Click};
  Button Command1{this, "Command1", "帮助(&H)", &LinkDatabaseErr::Command1_Click};

  /// The operator wants the start to run again.
  bool RetryChosen() const { return state_ == kStart; }

  Layout Arrange() const override;

 protected:
  void Load() override;
  void ClosedByFrame() override;

 private:
  static constexpr const char* kStart = "Start";

  void LoadConnFields();
  void SaveConnFields();
  std::string GetConectionstr() const;
  void ListServers();
  void ShowFields(bool shown);

  void ButSet_Click();
  void ButRec_Click();
  void ButExit_Click();
  void Command1_Click();
  void Command4_Click();

  AppContext& app_;
  std::string state_;
};

/// Shows the dialog modally with the description of what went wrong.
/// @return true when the start is to be tried again; every other way out of the dialog ends the process
bool AskForConnection(AppContext& app, const std::string& description);

/// The same for a connection that was lost while the program runs: a retry runs the whole start again.
void RepairConnection(AppContext& app, const std::string& description);

}  // namespace luming
