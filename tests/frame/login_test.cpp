#include "frame/login.h"

#include "frame/main_window.h"
#include "frame/storehouse_choice.h"
#include "support/app_test.h"

namespace luming {
namespace {

using Sent = std::vector<std::string>;

class LoginTest : public AppTest {
 protected:
  LoginTest() {
    Connect();
    PrepareLogin();
  }

  password& Dialog() {
    auto& dialog = app.forms.Get<password>(app);
    dialog.Show();
    return dialog;
  }

  void Enter(const std::string& name, const std::string& typed) {
    password& dialog = Dialog();
    dialog.Combo1.SetText(name);
    dialog.Text1.SetText(typed);
    dialog.UserClick(dialog.Command1);
  }

  /// The operator takes the storehouse in that row of the list.
  void ChooseStorehouse(int row) {
    desktop.modals.push_back([row](Form& form) {
      auto& list = dynamic_cast<Frm_CheckYK&>(form);
      list.fpSpread1.UserActivate(row, 1);
      list.UserClick(list.Command1);
    });
  }
};

TEST_F(LoginTest, LoadListsTheUsersAndTakesTimeAndSettings) {
  WriteBytes(home / "User.data", "last\r\n");
  WriteBytes(home / "LUMN.ini", "[\xCA\xE4\xC8\xEB\xB7\xA8]\r\nIME=42\r\n");
  password& dialog = Dialog();
  EXPECT_EQ(dialog.Combo1.Items(), (Sent{"张三", "李四"}));
  EXPECT_EQ(dialog.Combo1.Text(), "last");
  EXPECT_EQ(devices.clock_settings, (std::vector<DateTime>{DateTime(2026, 3, 1, 10, 2, 30)}));
  EXPECT_EQ(app.IME, 42);
  EXPECT_EQ(dialog.Image1.File(), suite / "KVReg" / "KVLogIn.jpg");
}

TEST_F(LoginTest, FailureWhileLoadingIsShownAndTheFormComesUpAllTheSame) {
  app.IME = 7;
  devices.refuses = true;
  password& dialog = Dialog();
  EXPECT_TRUE(dialog.IsShown());
  EXPECT_EQ(dialog.Combo1.Items().size(), 2U);
  EXPECT_EQ(app.IME, 7) << "the rest of the load is skipped";
  EXPECT_NE(desktop.TakeBox().text.find("没有权限"), std::string::npos);
}

TEST_F(LoginTest, ClosedConnectionIsOpenedForTheList) {
  app.Cn->Close();
  EXPECT_EQ(Dialog().Combo1.Items().size(), 2U);
}

TEST_F(LoginTest, TheOperatorsSettingsAreTakenOver) {
  ChooseStorehouse(1);
  Enter("张三", "1'234'");
  EXPECT_EQ(app.CurUser.UserPassword, "1234") << "single quotes are stripped";
  EXPECT_EQ(app.CurUser.GetGroup, "药库");
  EXPECT_EQ(app.CurUser.SZSQ, "SQ01");
  EXPECT_EQ(app.IME, 67699721);

  store.Answer("select SQBH from Yf_sq where username like'李四'", {"SQBH"}, {{TextValue("A")}, {TextValue("B")}});
  ChooseStorehouse(3);
  Enter("李四", "1234");
  EXPECT_EQ(app.CurUser.SZSQ, "SQ01") << "of two units none is taken";
}

TEST_F(LoginTest, NullsInTheOperatorsRowStopTheLogin) {
  const std::vector<std::string> columns = {"username", "group_name", "IME", "SearchType"};
  const auto answer = [&](FakeStore::Row row) {
    store.Answer("select * from userdb where username like '张三' and password like '1234'", columns, {std::move(row)});
  };
  for (const FakeStore::Row& row : {FakeStore::Row{TextValue("张三"), Value(), NumberValue(1), TextValue("a")},
                                    FakeStore::Row{TextValue("张三"), TextValue("药库"), Value(), TextValue("a")},
                                    FakeStore::Row{TextValue("张三"), TextValue("药库"), NumberValue(1), Value()}}) {
    answer(row);
    Enter("张三", "1234");
    EXPECT_NE(desktop.TakeBox().text.find("错误号：  94"), std::string::npos);
    EXPECT_EQ(app.forms.FindAs<mainfrm>(), nullptr);
    EXPECT_TRUE(Dialog().IsShown());
  }
}

TEST_F(LoginTest, NullRightStopsTheLoginAtItsRow) {
  store.Answer("Select MoudelKey,QX from QX_Temp2 Where Groupname ='药库'", {"MoudelKey", "QX"},
               {{TextValue("YPGL_YPPD"), NumberValue(1)}, {TextValue("YPGL_CKFY"), Value()}});
  Enter("张三", "1234");
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_TRUE(app.CurUser.YPGL_YPPD);
  EXPECT_EQ(app.forms.FindAs<mainfrm>(), nullptr);
}

TEST_F(LoginTest, EachKeyGivesItsOwnRightAndUnknownOnesNone) {
  EXPECT_EQ(kAllRights.size(), 34U);
  EXPECT_EQ(kAllRights.back().key, "YPGL_SeeReport");
  for (const OperatorRight& right : kAllRights) {
    PrepareLogin({{std::string(right.key), true}, {"YPGL_Unknown", true}, {"ypgl_yppd", true}});
    app.CurUser = {};
    ChooseStorehouse(3);
    Enter("张三", "1234");
    for (const OperatorRight& other : kAllRights) {
      EXPECT_EQ(app.CurUser.*other.flag, other.key == right.key) << right.key << " " << other.key;
    }
    app.forms.UnloadAll();
  }
}

}  // namespace
}  // namespace luming
