#include "frame/main_window.h"

#include "frame/gateway.h"
#include "frame/windows.h"
#include "support/app_test.h"

namespace luming {
namespace {

using Names = std::vector<std::string>;

/// A child window that may refuse to close.
class Sheet : public Form {
 public:
  Sheet(AppContext& app, std::string name, std::string caption, bool stays = false)
      : Form(app.forms, std::move(name), std::move(caption), WindowKind::kChild), stays_(stays) {}
  Layout Arrange() const override { return Column({}); }

 protected:
  bool QueryUnload() override { return !stays_; }

 private:
  bool stays_;
};

template <char Letter>
class LetteredSheet : public Sheet {
 public:
  static constexpr char kName[] = {Letter, '\0'};
  explicit LetteredSheet(AppContext& app) : Sheet(app, kName, "caption", Letter == 'S') {}
};
using SheetA = LetteredSheet<'A'>;
using SheetB = LetteredSheet<'B'>;
using StubbornSheet = LetteredSheet<'S'>;

class MainWindowTest : public AppTest {
 protected:
  MainWindowTest() { Connect(); }

  mainfrm& Frame() {
    auto& frame = app.forms.Get<mainfrm>(app);
    frame.Show();
    return frame;
  }

  Names Open() {
    Names names;
    for (const Form* form : app.forms.All()) names.push_back(form->Name());
    return names;
  }

  void OpenSheets() {
    app.forms.UnloadAll();
    Frame();
    app.forms.Get<SheetA>(app).Show();
    app.forms.Get<SheetB>(app).Show();
  }
};

TEST_F(MainWindowTest, DayBeyondTheCalendarLeavesThePanelEmpty) {
  clock.Set(DateTime(1900, 1, 1));
  EXPECT_EQ(Frame().StatusPanel(3), "");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(MainWindowTest, PictureOfTheSuite) {
  std::filesystem::create_directories(suite / "KVReg");
  WriteBytes(suite / "KVReg" / "Back.Jpg", "x");
  EXPECT_EQ(Frame().BackPicture(), suite / "KVReg" / "Back.Jpg");
}

TEST_F(MainWindowTest, ExpiryWarningOnlyForOneAndItsFailureIsShown) {
  int warned = 0;
  commands.expiry_warning = [&](AppContext&) {
    ++warned;
    throw Failure(1, "出错");
  };
  struct Case {
    const char* setting;
    int warned;
  };
  for (const Case& one :
       {Case{"", 0}, Case{"药品失效预警=0", 0}, Case{"药品失效预警=2", 0}, Case{"药品失效预警=1", 1}}) {
    WriteBytes(home / "LUMN.ini", std::string("[报警]\n") + one.setting + "\n");
    Frame();
    EXPECT_EQ(warned, one.warned) << one.setting;
    app.forms.UnloadAll();
  }
  EXPECT_NE(desktop.TakeBox().text.find("出错"), std::string::npos);
}

TEST_F(MainWindowTest, CommandIgnoresFailuresAndUnknownNumbers) {
  commands.commands = {{1, "", [](AppContext&) { throw Failure(1, "出错"); }}, Awaited(2, "Later")};
  mainfrm& frame = Frame();
  frame.Execute(1);
  frame.Execute(2);
  frame.Execute(3);
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_TRUE(frame.StateOf(1).enabled);
  EXPECT_FALSE(frame.StateOf(2).enabled) << "greyed while there is no such screen";
  EXPECT_FALSE(frame.StateOf(3).enabled);
}

TEST_F(MainWindowTest, CommandBehindARightOpensOrRefuses) {
  commands.commands = {Behind("YPGL_YPDCCX", Opens(551, ChildScreen<SheetA>()))};
  store.Answer("Select MoudelName From Qx_Temp Where MoudelKey='YPGL_YPDCCX'", {"MoudelName"},
               {{TextValue("低储报警")}});
  mainfrm& frame = Frame();
  frame.Execute(551);
  EXPECT_NE(desktop.TakeBox().text.find("【低储报警】"), std::string::npos);
  EXPECT_EQ(Open(), (Names{"mainfrm"}));
  app.CurUser.YPGL_YPDCCX = true;
  frame.Execute(551);
  EXPECT_EQ(Open(), (Names{"mainfrm", "A"}));
}

TEST_F(MainWindowTest, WhichFormsACloseLeaves) {
  struct Case {
    const char* keep;
    const char* second_keep;
    const char* caption;
    Names left;
  };
  for (const Case& one : {
           Case{"", "", "", {"mainfrm"}},
           Case{"", "B", "", {"B"}},
           Case{"A", "", "caption", {"mainfrm", "A"}},
           Case{"A", "", "other", {"mainfrm"}},
           Case{"A", "B", "caption", {"A", "B"}},
           Case{"missing", "", "caption", {"mainfrm"}},
       }) {
    OpenSheets();
    CloseForms(app, one.keep, one.second_keep, one.caption);
    EXPECT_EQ(Open(), one.left) << one.keep << " " << one.second_keep << " " << one.caption;
  }
}

TEST_F(MainWindowTest, FormThatRefusesToCloseDoesNotHoldUpTheOthers) {
  Frame();
  app.forms.Get<StubbornSheet>(app).Show();
  app.forms.Get<SheetA>(app).Show();
  CloseForms(app);
  EXPECT_EQ(Open(), (Names{"mainfrm", "S"}));
}

TEST_F(MainWindowTest, ThemesAndBarsAreCheckedAsTheyStand) {
  mainfrm& frame = Frame();
  for (int theme = 0; theme < 4; ++theme) {
    frame.SetTheme(theme);
    for (int id = 1001; id <= 1004; ++id) EXPECT_EQ(frame.StateOf(id).checked, id == 1001 + theme);
  }
  EXPECT_TRUE(frame.StateOf(1101).checked);
  frame.ToggleToolBar();
  EXPECT_FALSE(frame.StateOf(1101).checked);
  EXPECT_TRUE(frame.StateOf(1103).checked);
  frame.ToggleStatusBar();
  EXPECT_FALSE(frame.StateOf(1103).checked);
}

TEST_F(MainWindowTest, ManualAndCalculator) {
  Frame().OpenManual();
  Frame().StartCalculator();
  EXPECT_EQ(devices.started, (Names{(suite / "云杉服务平台用户手册.chm").string(), "/system/calc.exe"}));
  devices.refuses = true;
  Frame().OpenManual();
  EXPECT_NE(desktop.TakeBox().text.find("没有权限"), std::string::npos) << "the manual's failure is shown";
}

}  // namespace
}  // namespace luming
