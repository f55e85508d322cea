#include "frame/login.h"

#include <algorithm>

#include "frame/gateway.h"
#include "frame/ini_file.h"
#include "frame/local_files.h"
#include "frame/main_window.h"
#include "frame/screens.h"
#include "frame/startup.h"
#include "frame/storehouse_choice.h"
#include "util/text.h"

namespace luming {

namespace {
constexpr int kAttempts = 2;
}  // namespace

password::password(AppContext& app) : Form(app.forms, kName, "", WindowKind::kDialog), app_(app) {
  Combo1.key_down.Connect(this, &password::Combo1_KeyDown);
  Text1.key_down.Connect(this, &password::Text1_KeyDown);
}

void password::Load() {
  Image1.SetFile(ParentDirectory(app_) / "KVReg" / "KVLogIn.jpg");
  Trapped(app_, [this] {
    FillUsers();
    Combo1.SetText(ReadLastUser(app_));
    TakeServerTime();
    CIniFile ini;
    ini.SpecifyIni(SettingsFile(app_.AppPath));
    app_.IME = ini.ReadInt("输入法", "IME");
  });
}

/// Whoever comes back has only the password to type; who takes over from another has a name of their own.
void password::Activated() {
  if (!ActiveControl() && !app_.SwitchUser && IsListed(Combo1.Text())) Text1.SetFocus();
}

void password::FillUsers() {
  if (!app_.Cn->IsOpen()) app_.Cn->Open(app_.ConnStr);
  Recordset rs = app_.Cn->Execute("select * from userdb ");
  for (; !rs.Eof(); rs.MoveNext()) Combo1.AddItem(rs.Field("username").Text());
  CloseRs(rs);
}

/// Documents are stamped by the workstation, so all workstations go by the server's clock.
void password::TakeServerTime() {
  Recordset rs = app_.Cn->Execute("SELECT top 1 GETDATE() FROM sysobjects");
  app_.devices.SetClock(rs.Field(0).Date());
  CloseRs(rs);
}

void password::TestUserPassword(const std::string& name, const std::string& typed) {
  EnsureLoaded();
  const bool ran = Trapped(app_, [&] {
    const std::string stripped = Replace(typed, "'", "");
    if (!IsListed(name)) {
      app_.desktop.MsgBox({"该用户不存在！", box::kWarning, "系统提示"});
      Combo1.SetFocus();
      return;
    }
    const Recordset user =
        app_.Cn->Execute("select * from userdb where username like " + Quoted(name, Combo1.Caption()) +
                         " and password like " + Quoted(stripped, Text1.Caption()));
    if (user.RecordCount() == 0) {
      RefusePassword();
      return;
    }
    TakeOver(user, name, stripped);
    EnterProgram(name);
  });
  // What failed may have been asked when this window had gone already and the next had not come.
  if (!ran && !IsUnloaded() && !app_.forms.Find(mainfrm::kName)) Show();
}

bool password::IsListed(const std::string& name) const {
  return std::ranges::find(Combo1.Items(), name) != Combo1.Items().end();
}

void password::RefusePassword() {
  app_.desktop.MsgBox({"密码错误，请重新输入！", box::kStop, "系统提示"});
  if (++failed_attempts_ <= kAttempts) return;
  app_.desktop.MsgBox({"超过限制次数！本程序即将退出", box::kInformation, AppContext::kTitle});
  Unload();
  EndWithoutForms(app_);
}

void password::TakeOver(const Recordset& user, const std::string& name, const std::string& stripped) {
  User_qx& operator_now = app_.CurUser;
  operator_now.UserPassword = stripped;
  operator_now.GetUserName = name;
  operator_now.GetGroup = user.Field("group_name").Text();
  const Recordset unit =
      app_.Cn->Execute("select SQBH from Yf_sq where username like" + Quoted(name, Combo1.Caption()));
  if (unit.RecordCount() == 1) operator_now.SZSQ = unit.Field(0).Text();
  app_.IME = user.Field("IME").Long();
  app_.SearchType = user.Field("SearchType").Text();
  ReadRights();
  WriteLastUser(app_, name);
}

/// Rights that no row names keep their value, also that of the operator before.
void password::ReadRights() {
  Recordset rs =
      app_.Cn->Execute("Select MoudelKey,QX from QX_Temp2 Where Groupname =" + Quoted(app_.CurUser.GetGroup, "用户组"));
  for (; !rs.Eof(); rs.MoveNext()) {
    const OperatorRight* right = FindRight(rs.Field("MoudelKey").TextOrEmpty());
    if (right) app_.CurUser.*right->flag = rs.Field("QX").Bool();
  }
  CloseRs(rs);
}

/// The site's name stands in the dictionary of that code; a site without one prints none.
void password::ReadReportUnit() {
  Recordset rs = app_.Cn->Execute("Select top 1 DMMC From CS Where Controlid Like'BBDW'");
  if (!rs.Eof()) app_.ReportUnit = rs.Field(0).TextOrEmpty();
  CloseRs(rs);
}

void password::EnterProgram(const std::string& name) {
  Forms::HandlerScope scope(app_.forms);
  if (!app_.SwitchUser) ReadReportUnit();
  Hide();
  app_.desktop.DoEvents();
  if (!app_.SwitchUser) {
    app_.forms.Get<mainfrm>(app_).Show();
  } else {
    app_.forms.Get<mainfrm>(app_).ShowOperator("操作员：" + name);
  }
  Unload();
  auto& storehouse = app_.forms.Get<Frm_CheckYK>(app_);
  storehouse.ShowModal();
  if (!storehouse.Chosen()) ExitApp(app_);
}

void password::Combo1_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  Text1.SetFocus();
}

void password::Text1_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  Command1_Click();
}

void password::Command1_Click() {
  TestUserPassword(Combo1.Text(), Text1.Text());
}

void password::Command2_Click() {
  if (!app_.SwitchUser) ExitApp(app_);
  Unload();
}

void password::ClosedByFrame() {
  Unload();
  EndWithoutForms(app_);
}

Layout password::Arrange() const {
  return Column({
      Layout(Image1).Height(8),
      Fields(1, {Combo1, Text1}),
      Row({Space(), Command1, Command2}),
  });
}

const Screen kLogin = ShownScreen<password>();

}  // namespace luming
