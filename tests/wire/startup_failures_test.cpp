#include <gtest/gtest.h>

#include "app/composition.h"
#include "app/store_maker.h"
#include "frame/connection_dialog.h"
#include "frame/local_files.h"
#include "frame/login.h"
#include "frame/main_window.h"
#include "frame/storehouse_choice.h"
#include "support/scripted_desktop.h"
#include "support/temp_directory.h"
#include "tds_server/tds_server.h"
#include "util/text.h"

namespace luming {
namespace {

using tds::FaultKind;

const std::string kLost =
    "错误号：  -2147467259\r\n\r\n错误描述：与数据库服务器的连接已中断，操作没有完成。\r\n\r\n错误来源："
    "Microsoft OLE DB Provider for SQL Server";
const std::string kNothingRead =
    "错误号：  3704\r\n\r\n错误描述：对象关闭时，不允许操作。\r\n\r\n错误来源：ADODB.Recordset";

/// The whole program on an application directory whose connection file names the server.
class StartupFailuresTest : public ::testing::Test {
 protected:
  StartupFailuresTest() {
    MakeApplicationDirectory({.directory = home, .data = LUMING_DATABASE_DIR, .password = "1"}, clock);
    server = std::make_unique<tds::TdsServer>(home, clock, tds::ServerOptions{.password = "密码1"});
    program.SetClock(clock.Now());
    SetConnection("密码1");
  }

  std::string Source() const { return "127.0.0.1," + std::to_string(server->Port()); }
  std::string ConnectionString(const std::string& password, const std::string& database = "lumndata") const {
    return "Provider=sqloledb;Data Source=" + Source() + ";Initial Catalog=" + database +
           ";User ID=sa;Password=" + password + ";";
  }
  void SetConnection(const std::string& password, const std::string& database = "lumndata") {
    ConnectionFile file(home);
    file.Write(1, ConnectionString(password, database));
    file.Write(2, Source());
    file.Write(5, database);
    file.Write(6, "sa");
    file.Write(7, password);
    file.Save();
  }

  /// Works in the connection dialog, when it comes; what it tells goes to `told`.
  void InTheDialog(std::function<void(LinkDatabaseErr&)> work) {
    desktop.modals.push_back([this, work](Form& form) {
      auto& dialog = dynamic_cast<LinkDatabaseErr&>(form);
      told = dialog.ErrInfoShow.Caption();
      work(dialog);
    });
  }
  void RetryInTheDialog() {
    InTheDialog([](LinkDatabaseErr& dialog) { dialog.UserClick(dialog.ButRec); });
  }
  void LeaveTheDialog() {
    InTheDialog([](LinkDatabaseErr& dialog) { dialog.UserClick(dialog.ButExit); });
  }
  bool AsksForTheOperator() {
    Form* login = program.OpenForms()->Find("password");
    return login && login->IsShown();
  }
  void ChooseTheFirstStorehouse() {
    desktop.modals.push_back([](Form& form) {
      auto& list = dynamic_cast<Frm_CheckYK&>(form);
      list.UserClick(list.Command1);
    });
  }
  void EnterWithHandOff() {
    ChooseTheFirstStorehouse();
    program.Start(ConnectionString("密码1") + "$管理员$1$");
    ASSERT_TRUE(program.OpenForms()->FindAs<mainfrm>());
  }

  FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  TempDirectory directory;
  std::filesystem::path home = directory / "yk";
  std::unique_ptr<tds::TdsServer> server;
  ScriptedDesktop desktop;
  Program program{desktop, Machine::kUntouched, home};
  std::string told;
};

TEST_F(StartupFailuresTest, AServerThatIsNotThereBringsTheDialogUntilItIsBack) {
  server->Stop();
  RetryInTheDialog();
  InTheDialog([this](LinkDatabaseErr& dialog) {
    server->Start();
    dialog.UserClick(dialog.ButRec);
  });
  program.Start("");
  EXPECT_EQ(told.find("无法连接数据库服务器“" + Source() + "”：服务器没有运行、名称不正确或者网络不通。"), 0U) << told;
  EXPECT_TRUE(AsksForTheOperator());
  EXPECT_TRUE(desktop.modals.empty());
}

TEST_F(StartupFailuresTest, RefusalsAreToldAndMendedInTheDialog) {
  SetConnection("错", "没有");
  std::vector<std::string> tellings;
  InTheDialog([&](LinkDatabaseErr& dialog) {
    tellings.push_back(told);
    dialog.UserClick(dialog.ButSet);
    EXPECT_EQ(dialog.TxtPassword.Text(), "错");
    dialog.TxtPassword.UserText("密码1");
    dialog.UserClick(dialog.ButRec);
  });
  InTheDialog([&](LinkDatabaseErr& dialog) {
    tellings.push_back(told);
    EXPECT_EQ(dialog.TxtServerName.Text(), Source());
    dialog.UserClick(dialog.ButSet);
    dialog.TxtDatabaseName.UserText("lumndata");
    dialog.UserClick(dialog.ButRec);
  });
  program.Start("");
  EXPECT_EQ(tellings, (std::vector<std::string>{"用户“sa”登录失败。", "无法打开数据库“没有”，该数据库不存在。"}));
  EXPECT_TRUE(AsksForTheOperator());
}

TEST_F(StartupFailuresTest, ASemicolonInThePasswordBreaksTheString) {
  SetConnection("密;码");
  LeaveTheDialog();
  EXPECT_THROW(program.Start(""), ProcessEnded);
  EXPECT_EQ(told, "用户“sa”登录失败。");
  EXPECT_FALSE(program.OpenForms());
}

TEST_F(StartupFailuresTest, ServersThatCutOrTalkNonsenseAreNotThere) {
  for (const FaultKind kind : {FaultKind::kCutLogin, FaultKind::kGarbageLogin}) {
    server->Misbehave({.kind = kind, .times = 2});
    LeaveTheDialog();
    EXPECT_THROW(program.Start(""), ProcessEnded);
    EXPECT_EQ(told.find("无法连接数据库服务器“"), 0U) << told;
    server->Behave();
  }
  program.Start("");
  EXPECT_TRUE(AsksForTheOperator());
}

TEST_F(StartupFailuresTest, AShortHandOffBringsTheDialog) {
  LeaveTheDialog();
  EXPECT_THROW(program.Start(ConnectionString("密码1") + "$管理员$1"), ProcessEnded);
  EXPECT_EQ(told, StandardFailure(failure::kInvalidCall).description());
}

TEST_F(StartupFailuresTest, ALossWhileTheLoginReadsIsTold) {
  server->Misbehave({.kind = FaultKind::kCutBefore, .statement = "select * from userdb"});
  program.Start("");
  EXPECT_EQ(desktop.TakeBoxTexts(), std::vector<std::string>{kLost});
  ASSERT_TRUE(AsksForTheOperator());
  auto& login = *program.OpenForms()->FindAs<password>();
  EXPECT_TRUE(login.Combo1.Items().empty());
  login.Combo1.SetText("管理员");
  login.Text1.SetText("1");
  login.UserClick(login.Command1);
  EXPECT_EQ(desktop.TakeBoxTexts(), std::vector<std::string>{"该用户不存在！"});
  EXPECT_THROW(login.UserClick(login.Command2), ProcessEnded);
  program.Start("");
  ASSERT_TRUE(AsksForTheOperator());
  EXPECT_FALSE(program.OpenForms()->FindAs<password>()->Combo1.Items().empty());
}

TEST_F(StartupFailuresTest, WithoutAStorehouseOnlyTheExitIsLeft) {
  program.RunBeside("Delete YF_YKLX");
  desktop.modals.push_back([](Form& form) {
    auto& list = dynamic_cast<Frm_CheckYK&>(form);
    list.UserClick(list.Command1);
    list.UserClose();
  });
  EXPECT_THROW(program.Start(ConnectionString("密码1") + "$管理员$1$"), ProcessEnded);
  EXPECT_EQ(desktop.TakeBoxTexts(),
            (std::vector<std::string>{"请先在配置系统添加好药库并且关联好收费类型", "请选择您要进入的药库"}));
}

TEST_F(StartupFailuresTest, ALossBetweenTwoReadsIsToldAndReopened) {
  EnterWithHandOff();
  server->CutAll();
  program.ExecuteCommand(302);
  EXPECT_EQ(desktop.TakeBoxTexts(), (std::vector<std::string>{kLost, kNothingRead})) << "the read, then its reader";
  EXPECT_TRUE(program.Context()->Cn->IsOpen());
}

TEST_F(StartupFailuresTest, AServerThatStaysAwayBringsTheDialogOverTheOpenWindows) {
  EnterWithHandOff();
  server->Stop();
  RetryInTheDialog();
  InTheDialog([this](LinkDatabaseErr& dialog) {
    server->Start();
    dialog.UserClick(dialog.ButRec);
  });
  ChooseTheFirstStorehouse();
  program.ExecuteCommand(302);
  EXPECT_EQ(told.find("无法连接数据库服务器“"), 0U) << told;
  EXPECT_TRUE(program.OpenForms()->FindAs<mainfrm>()) << "the windows stay open";
  EXPECT_EQ(desktop.TakeBoxTexts(), (std::vector<std::string>{kLost, kNothingRead}));
  EXPECT_TRUE(program.Context()->Cn->IsOpen());
}

TEST_F(StartupFailuresTest, LeavingTheDialogEndsTheProcess) {
  EnterWithHandOff();
  server->Stop();
  LeaveTheDialog();
  EXPECT_THROW(program.ExecuteCommand(302), ProcessEnded);
  EXPECT_FALSE(program.OpenForms());
}

}  // namespace
}  // namespace luming
