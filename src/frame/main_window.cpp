#include "frame/main_window.h"

#include "frame/gateway.h"
#include "frame/ini_file.h"
#include "frame/login.h"
#include "frame/screens.h"
#include "frame/startup.h"
#include "frame/system_directory.h"
#include "util/lunar_calendar.h"

namespace luming {

namespace {

constexpr int kUnitPanel = 2;
constexpr int kCalendarPanel = 3;
constexpr int kOperatorPanel = 4;

std::string LunarLine(const DateTime& today) {
  try {
    return LunarCalendar(today).GET_NL();
  } catch (const Failure&) {
    return {};
  }
}

}  // namespace

mainfrm::mainfrm(AppContext& app) : MainFrame(app.forms, kName, AppContext::kTitle), app_(app) {}

void mainfrm::Load() {
  FillStatusPanels();
  WarnOfExpiry();
  LoadBackPicture();
}

void mainfrm::FillStatusPanels() {
  SetStatusPanel(kUnitPanel, app_.ReportUnit);
  SetStatusPanel(kCalendarPanel, LunarLine(app_.clock.Today()));
  SetStatusPanel(kOperatorPanel, app_.CurUser.GetUserName);
}

/// No right is tested here, though the command for the same list tests one.
void mainfrm::WarnOfExpiry() {
  Trapped(app_, [this] {
    CIniFile ini;
    ini.SpecifyIni(SettingsFile(app_.AppPath));
    if (ini.ReadInt("报警", "药品失效预警") == 1 && app_.commands.expiry_warning) app_.commands.expiry_warning(app_);
  });
}

void mainfrm::LoadBackPicture() {
  const std::filesystem::path file = ParentDirectory(app_) / "KVReg" / "Back.Jpg";
  std::error_code unreadable;
  if (std::filesystem::exists(file, unreadable)) SetBackPicture(file);
}

void mainfrm::ShowOperator(std::string text) {
  SetStatusPanel(kOperatorPanel, std::move(text));
}

CommandState mainfrm::StateOf(int command) const {
  CommandState state;
  const Command* row = app_.commands.Find(command);
  state.enabled = row && row->action;
  if (command >= command::kFirstTheme && command <= command::kLastTheme) {
    state.checked = Theme() == command - command::kFirstTheme;
  }
  if (command == command::kToolBar) state.checked = ToolBarVisible();
  if (command == command::kStatusBar) state.checked = StatusBarVisible();
  return state;
}

void mainfrm::Execute(int command) {
  const Command* row = app_.commands.Find(command);
  if (!row || !row->action) return;
  Forms::HandlerScope scope(app_.forms);
  try {
    row->action(app_);
  } catch (const Failure&) {
  }
}

void mainfrm::Workspace_RClick(Form* item) {
  if (!item) return;
  item->Show();
  const std::vector<MenuEntry> popup = {
      {"关闭(&C)", command::kCloseChild},
      {"全部关闭(&A)", command::kCloseAll},
      {"关闭其它所有窗口(&O)", command::kCloseOthers},
      {"&Workspace Actions",
       command::kWorkspaceActions,
       {{"层叠(&C)", command::kCascade},
        {"横向平铺(&H)", command::kTileHorizontally},
        {"纵向平铺(&V)", command::kTileVertically}},
       true},
  };
  if (const auto chosen = app_.desktop.PopUp(popup)) Execute(*chosen);
}

void mainfrm::SetTheme(int theme) {
  SetThemeNumber(theme);
  app_.desktop.SetTheme(theme);
}

void mainfrm::ToggleToolBar() {
  SetToolBarVisible(!ToolBarVisible());
}

void mainfrm::ToggleStatusBar() {
  SetStatusBarVisible(!StatusBarVisible());
}

void mainfrm::CloseActiveChild() {
  if (Form* child = app_.forms.ActiveChild()) child->Unload();
}

void mainfrm::CloseAllChildren() {
  CloseForms(app_);
}

void mainfrm::CloseOtherChildren() {
  if (const Form* child = app_.forms.ActiveChild()) CloseForms(app_, child->Name(), {}, child->Caption());
}

void mainfrm::SwitchOperator() {
  app_.SwitchUser = true;
  app_.forms.Get<password>(app_).Show();
}

void mainfrm::AskToExit() {
  const Answer answer = app_.desktop.MsgBox({"你真的要退出系统吗？", box::kQuestion | box::kYesNo, "提示"});
  if (answer == Answer::kYes) ExitApp(app_);
}

void mainfrm::OpenManual() {
  Trapped(app_, [this] { app_.devices.OpenDocument(ParentDirectory(app_) / "云杉服务平台用户手册.chm"); });
}

void mainfrm::StartCalculator() {
  app_.devices.StartProgram(Cls_SysDir(app_.devices).GetSysDir() / "calc.exe");
}

void mainfrm::ClosedByFrame() {
  ExitApp(app_);
}

const Screen kMainWindow = ShownScreen<mainfrm>();

}  // namespace luming
