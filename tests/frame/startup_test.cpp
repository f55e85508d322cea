#include "frame/startup.h"

#include "frame/local_files.h"
#include "frame/login.h"
#include "frame/main_window.h"
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
