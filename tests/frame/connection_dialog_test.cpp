#include "frame/connection_dialog.h"

#include "frame/startup.h"
#include "support/app_test.h"

namespace luming {
namespace {

using Sent = std::vector<std::string>;

class ConnectionDialogTest : public AppTest {
 protected:
  LinkDatabaseErr& Shown() {
    auto& dialog = app.forms.Get<LinkDatabaseErr>(app);
    dialog.Show();
    return dialog;
  }
  void Fill(LinkDatabaseErr& dialog, const std::string& server) {
    dialog.TxtServerName.SetText(server);
    dialog.TxtDatabaseName.SetText("db");
    dialog.TxtUser.SetText("sa");
    dialog.TxtPassword.SetText("p;w");
  }
};

TEST_F(ConnectionDialogTest, FieldsAreCoveredUntilTheyAreWanted) {
  devices.servers = {"SQL1", "SQL2"};
  LinkDatabaseErr& dialog = Shown();
  EXPECT_FALSE(dialog.TxtServerName.Visible());
  EXPECT_EQ(dialog.TxtServerName.Items(), devices.servers);
  EXPECT_EQ(dialog.ErrInfoShow.TextColour(), 0xFF0000U);
  EXPECT_EQ(dialog.BackColour(), 0xC5DDFFU);
  dialog.UserClick(dialog.ButSet);
  EXPECT_TRUE(dialog.TxtServerName.Visible());
  EXPECT_TRUE(dialog.TxtPassword.Visible());

  dialog.TxtPassword.SetText("old");
  dialog.UserClick(dialog.Command4);
  EXPECT_EQ(dialog.TxtServerName.Text(), "YK-01");
  EXPECT_EQ(dialog.TxtDatabaseName.Text(), "lumndata");
  EXPECT_EQ(dialog.TxtUser.Text(), "sa");
  EXPECT_EQ(dialog.TxtPassword.Text(), "old") << "the default takes no password away";
}

TEST_F(ConnectionDialogTest, NetworkWithoutAnAnswerAddsNoServers) {
  devices.refuses = true;
  EXPECT_TRUE(Shown().TxtServerName.Items().empty());
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(ConnectionDialogTest, RetrySavesTheFieldsAsTypedAndTheNextOpeningShowsThem) {
  LinkDatabaseErr& dialog = Shown();
  Fill(dialog, "药库服务器");
  dialog.UserClick(dialog.ButRec);
  EXPECT_TRUE(dialog.RetryChosen());
  EXPECT_TRUE(dialog.IsUnloaded());
  EXPECT_EQ(ReadConnStr(app), "Provider=sqloledb;Data Source=药库服务器;Initial Catalog=db;User ID=sa;Password=p;w;");
  LinkDatabaseErr& again = Shown();
  EXPECT_NE(&again, &dialog);
  EXPECT_EQ(again.TxtServerName.Text(), "药库服务器");
  EXPECT_EQ(again.TxtPassword.Text(), "p;w");
}

TEST_F(ConnectionDialogTest, StringTooLongForItsRecordIsToldAndTheRestIsSaved) {
  LinkDatabaseErr& dialog = Shown();
  Fill(dialog, "short");
  dialog.UserClick(dialog.ButRec);
  const std::string before = ReadConnStr(app);
  LinkDatabaseErr& again = Shown();
  Fill(again, std::string(80, 's'));
  again.UserClick(again.ButRec);
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.title, "读连接字符串时出错");
  EXPECT_EQ(box.text, "出错信息：错误的记录长度");
  EXPECT_EQ(ReadConnStr(app), before);
  EXPECT_EQ(Shown().TxtServerName.Text(), std::string(80, 's'));
}

TEST_F(ConnectionDialogTest, DamagedRecordIsToldAndTheOthersAreRead) {
  ConnectionFile file(home);
  file.Write(2, "server");
  file.Write(6, "user");
  file.Save();
  std::string bytes = ReadBytes(home / "DatabaseSet.data");
  bytes[4 * 128] = '\xFF';
  WriteBytes(home / "DatabaseSet.data", bytes);
  LinkDatabaseErr& dialog = Shown();
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.title, "读取连接串时出错!");
  EXPECT_EQ(box.text, "出错信息:错误的记录长度");
  EXPECT_EQ(dialog.TxtServerName.Text(), "server");
  EXPECT_EQ(dialog.TxtDatabaseName.Text(), "");
  EXPECT_EQ(dialog.TxtUser.Text(), "user");
}

TEST_F(ConnectionDialogTest, EveryOtherWayOutEndsTheProcess) {
  EXPECT_THROW(Shown().UserClose(), ProcessEnded);
  EXPECT_TRUE(desktop.Ended());
  EXPECT_TRUE(app.forms.All().empty());
}

TEST_F(ConnectionDialogTest, StartIsTriedAgainAsOftenAsTheOperatorWants) {
  PrepareLogin();
  for (int attempt = 1; attempt <= 3; ++attempt) {
    store.FailOpen(Failure(failure::kGeneralProvider, "第" + std::to_string(attempt) + "次失败"));
    desktop.modals.push_back([this, attempt](Form& form) {
      auto& dialog = dynamic_cast<LinkDatabaseErr&>(form);
      EXPECT_EQ(dialog.ErrInfoShow.Caption(), "第" + std::to_string(attempt) + "次失败");
      Fill(dialog, "S" + std::to_string(attempt));
      dialog.UserClick(dialog.ButRec);
    });
  }
  Main(app);
  EXPECT_EQ(store.Connections(), 4) << "each start makes a connection of its own";
  EXPECT_EQ(app.ConnStr, "Provider=sqloledb;Data Source=S3;Initial Catalog=db;User ID=sa;Password=p;w;");
  EXPECT_TRUE(app.forms.Find("password")->IsShown());
  EXPECT_EQ(app.forms.Find("LinkDatabaseErr"), nullptr);
}

}  // namespace
}  // namespace luming
