#include "frame/lock.h"

#include "frame/screens.h"

namespace luming {

LockApp::LockApp(AppContext& app) : Form(app.forms, kName, "锁定系统", WindowKind::kCover), app_(app) {
  Image1.mouse_move.Connect(this, &LockApp::Image1_MouseMove);
  Picture1.mouse_move.Connect(this, &LockApp::Picture1_MouseMove);
  Text1.key_down.Connect(this, &LockApp::Text1_KeyDown);
}

Layout LockApp::Arrange() const {
  const Layout panel = Column({
      Layout(Picture1).Height(5),
      Frame1,
      Row({Layout(Image1).Width(3).Height(2), Layout(Text1).Width(24), Command1}),
  });
  return Column({Space(), Row({Space(), Group("", panel), Space()}), Space()});
}

void LockApp::Load() {
  Frame1.SetCaption(" 本程序由“" + app_.CurUser.GetUserName + "”锁定");
  Text1.SetFocus();
}

void LockApp::Text1_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  Command1_Click();
}

void LockApp::Command1_Click() {
  if (Text1.Text() == app_.CurUser.UserPassword) {
    Unload();
    return;
  }
  Text1.SetText("");
  Text1.SetFocus();
  app_.desktop.MsgBox({"密码错误!", box::kInformation, "提示"});
}

const Screen kLock = ModalScreen<LockApp>();

}  // namespace luming
