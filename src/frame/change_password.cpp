#include "frame/change_password.h"

#include "frame/screens.h"
#include "platform/statement.h"

namespace luming {

ChangPassword::ChangPassword(AppContext& app) : Form(app.forms, kName, "更改密码", WindowKind::kDialog), app_(app) {
  OldPassTxt.key_down.Connect(this, &ChangPassword::OldPassTxt_KeyDown);
  NewPassTxt.key_down.Connect(this, &ChangPassword::NewPassTxt_KeyDown);
  NewPassTxt2.key_down.Connect(this, &ChangPassword::NewPassTxt2_KeyDown);
}

Layout ChangPassword::Arrange() const {
  return Column({
      Frame1,
      Fields(1, {Layout(OldPassTxt).Width(28), NewPassTxt, NewPassTxt2}),
      Row({Space(), ComOk, ComCancel}),
  });
}

void ChangPassword::Load() {
  Frame1.SetCaption(app_.CurUser.GetUserName + "  更改密码");
}

void ChangPassword::OldPassTxt_KeyDown(KeyEvent& event) {
  if (event.code == key::kEnter) NewPassTxt.SetFocus();
}

void ChangPassword::NewPassTxt_KeyDown(KeyEvent& event) {
  if (event.code == key::kEnter) NewPassTxt2.SetFocus();
}

void ChangPassword::NewPassTxt2_KeyDown(KeyEvent& event) {
  if (event.code == key::kEnter) ComOk.SetFocus();
}

void ChangPassword::ComOk_Click() {
  if (NewPassTxt.Text() != NewPassTxt2.Text()) {
    app_.desktop.MsgBox({"两次输入的密码不一至", box::kInformation, "错误"});
    return;
  }
  const Box question{"你真的要更改密码吗？", box::kQuestion + box::kYesNo + box::kSecondIsDefault, "提示"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) return;
  if (OldPassTxt.Text() != app_.CurUser.UserPassword) {
    app_.desktop.MsgBox({"旧密码输入错误", box::kWarning, "错误"});
    OldPassTxt.SetFocus();
    return;
  }
  ChangeTo(NewPassTxt.Text());
}

void ChangPassword::ChangeTo(const std::string& wanted) {
  try {
    ValueSource typed(NewPassTxt.Caption());
    typed.secret = true;
    app_.Cn->Execute("update  userdb set password=" + Quoted(wanted, typed) + "where username like" +
                     Quoted(app_.CurUser.GetUserName, "操作员"));
    app_.desktop.MsgBox({"密码更改成功！", box::kInformation, "信息"});
    Unload();
  } catch (const Failure& failure) {
    app_.desktop.MsgBox({"出错信息：" + failure.description(), 0, AppContext::kTitle});
  }
}

const Screen kChangePassword = ModalScreen<ChangPassword>();

}  // namespace luming
