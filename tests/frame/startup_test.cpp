#include "frame/startup.h"

#include "frame/connection_dialog.h"
#include "frame/login.h"
#include "frame/main_window.h"
#include "frame/storehouse_choice.h"
#include "support/app_test.h"

namespace luming {
namespace {

using Sent = std::vector<std::string>;

/// Remembers the skin.
class SkinDesktop : public ScriptedDesktop {
 public:
  std::vector<std::string> skins;
  void AttachSkin(const std::filesystem::path& file) override { skins.push_back(file.string()); }
};

class StartupTest : public AppTest {
 protected:
  StartupTest() { PrepareLogin(); }

  void ExitDialogWith(const std::string& description) {
    desktop.modals.push_back([description](Form& form) {
      auto& dialog = dynamic_cast<LinkDatabaseErr&>(form);
      EXPECT_EQ(dialog.ErrInfoShow.Caption(), description);
      dialog.UserClick(dialog.ButExit);
    });
  }
};

TEST_F(StartupTest, WithoutAHandOffTheConnectionFileCountsAndTheLoginShows) {
  ConnectionFile file(home);
  file.Write(1, "Data Source=A;");
  file.Save();
  WriteBytes(home / "LUMN.ini", "[配置]\n药库类型=中药库\n");
  app.CommandLine = "  ";
  Main(app);
  EXPECT_EQ(store.TakeSent().front(), "open Data Source=A;");
  EXPECT_EQ(app.KFMC, "中药库");
  EXPECT_TRUE(app.forms.FindAs<password>()->IsShown());
}

TEST_F(StartupTest, FirstStartWithoutFilesEndsInTheConnectionDialog) {
  store.FailOpen(Failure(failure::kGeneralProvider, "没有指定数据库服务器"));
  ExitDialogWith("没有指定数据库服务器");
  EXPECT_THROW(Main(app), ProcessEnded);
  EXPECT_EQ(std::filesystem::file_size(home / "DatabaseSet.data"), 0U) << "the empty file stays behind";
}

TEST_F(StartupTest, HandOffOfTheLauncherLogsInWithoutADialog) {
  app.CommandLine = "Data Source=B;$张三$1234$";
  desktop.modals.push_back([](Form& form) {
    auto& list = dynamic_cast<Frm_CheckYK&>(form);
    list.fpSpread1.UserDoubleClick(1, 1);
  });
  Main(app);
  EXPECT_EQ(app.ConnStr, "Data Source=B;");
  EXPECT_EQ(app.CurUser.GetUserName, "张三");
  EXPECT_EQ(devices.clock_settings.size(), 1U) << "the login form loads all the same";
  EXPECT_TRUE(app.forms.FindAs<mainfrm>()->IsShown());
  EXPECT_EQ(app.forms.FindAs<password>(), nullptr);
  EXPECT_FALSE(std::filesystem::exists(home / "DatabaseSet.data"));
}

TEST_F(StartupTest, RefusedHandOffLeavesTheProcessWithoutAWindow) {
  struct Case {
    const char* hand_off;
    const char* message;
  };
  for (const Case& one : {Case{"B$张三$no$", "密码错误，请重新输入！"}, Case{"B$王五$1234$", "该用户不存在！"},
                          Case{"B$$$", "该用户不存在！"}}) {
    app.CommandLine = one.hand_off;
    Main(app);
    EXPECT_EQ(desktop.TakeBoxTexts(), (Sent{one.message}));
    EXPECT_EQ(app.forms.Top(), nullptr);
    EXPECT_FALSE(desktop.Ended());
    app.forms.UnloadAll();
  }
}

TEST_F(StartupTest, HandOffShortOfASeparatorEndsInTheConnectionDialog) {
  for (const char* hand_off : {"B$张三$1234", "B$张三", "B", "-x"}) {
    app.CommandLine = hand_off;
    app.Ended = false;
    ExitDialogWith("无效的过程调用或参数");
    EXPECT_THROW(Main(app), ProcessEnded);
    EXPECT_TRUE(store.TakeSent().empty()) << "nothing was connected";
  }
}

TEST_F(StartupTest, EndClosesTheConnectionAndUnloadsEveryForm) {
  Main(app);
  app.forms.Get<mainfrm>(app).Show();
  store.TakeSent();
  EXPECT_THROW(app.forms.Get<mainfrm>(app).UserClose(), ProcessEnded);
  EXPECT_EQ(store.TakeSent(), (Sent{"close"}));
  EXPECT_EQ(app.Cn, nullptr);
  EXPECT_TRUE(app.forms.All().empty());
  EXPECT_TRUE(desktop.Ended());
  EXPECT_TRUE(desktop.boxes.empty()) << "closing the frame asks nothing";
}

TEST_F(StartupTest, SkinOfTheSuite) {
  SkinDesktop skins;
  AppContext skinned(
      {skins, devices, printing, workbooks, clock}, home, [this] { return store.Connect(); }, commands);
  LoadSkin(skinned);
  EXPECT_TRUE(skins.skins.empty()) << "no settings, no skin";

  WriteBytes(suite / "Sys.ini", "[Skin]\nSkinName=blue.she\nUseSkin=2\n");
  LoadSkin(skinned);
  EXPECT_TRUE(skins.skins.empty());

  WriteBytes(suite / "Sys.ini", "[Skin]\nSkinName=blue.she\nUseSkin=1\n");
  WriteBytes(home / "Sys.ini", "[Skin]\nSkinName=own.she\nUseSkin=1\n");
  LoadSkin(skinned);
  LoadSkin(skinned, "云杉启动器");
  EXPECT_EQ(skins.skins, (Sent{(suite / "SKIN" / "blue.she").string(), (home / "SKIN" / "own.she").string()}));
}

TEST_F(StartupTest, ParentOfAnApplicationAtTheRootIsNone) {
  struct Case {
    const char* path;
    const char* parent;
  };
  for (const Case& one : {Case{"/srv/suite/yk", "/srv/suite/"}, Case{"/yky", "/"}, Case{"/yk", ""}, Case{"/", ""}}) {
    const AppContext placed(
        ports, one.path, [this] { return store.Connect(); }, commands);
    EXPECT_EQ(ParentDirectory(placed), one.parent) << one.path;
  }
}

}  // namespace
}  // namespace luming
