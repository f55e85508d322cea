#include "frame/connection_dialog.h"

#include "support/app_test.h"

namespace luming {
namespace {

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
  }
};

TEST_F(ConnectionDialogTest, ServersOfTheNetworkAreOfferedAndThisMachineIsTheDefault) {
  devices.servers = {"SQL1", "SQL2"};
  LinkDatabaseErr& dialog = Shown();
  EXPECT_EQ(dialog.TxtServerName.Items(), devices.servers);
  EXPECT_EQ(dialog.ErrInfoShow.TextColour(), 0xFF0000U);
  EXPECT_EQ(dialog.BackColour(), 0xC5DDFFU);
  dialog.UserClick(dialog.ButSet);
  dialog.UserClick(dialog.Command4);
  EXPECT_EQ(dialog.TxtServerName.Text(), "YK-01");
  dialog.Unload();
  devices.refuses = true;
  EXPECT_TRUE(Shown().TxtServerName.Items().empty()) << "a network without an answer adds none";
  EXPECT_TRUE(desktop.boxes.empty());
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

}  // namespace
}  // namespace luming
