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

  std::string OperatorPanel() { return app.forms.Get<mainfrm>(app).StatusPanel(4); }
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

TEST_F(LoginTest, UnknownNameIsRefusedBeforeTheDatabaseIsAskedAndDoesNotCount) {
  for (const char* name : {"王五", "", "张", "张三 "}) {
    Dialog();
    store.TakeSent();
    Enter(name, "1234");
    const Box box = desktop.TakeBox();
    EXPECT_EQ(box.text, "该用户不存在！");
    EXPECT_EQ(box.title, "系统提示");
    EXPECT_EQ(box.style, box::kWarning);
    EXPECT_TRUE(store.TakeSent().empty());
    EXPECT_EQ(Dialog().ActiveControl(), &Dialog().Combo1);
  }
}

TEST_F(LoginTest, ThirdWrongPasswordAtFirstLoginEndsTheProcess) {
  Enter("张三", "no");
  Enter("张三", "no");
  EXPECT_EQ(desktop.TakeBoxTexts(), (Sent{"密码错误，请重新输入！", "密码错误，请重新输入！"}));
  EXPECT_EQ(Dialog().Text1.Text(), "no") << "nothing is cleared";
  EXPECT_THROW(Enter("张三", "no"), ProcessEnded);
  EXPECT_EQ(desktop.TakeBoxTexts(), (Sent{"密码错误，请重新输入！", "超过限制次数！本程序即将退出"}));
  EXPECT_TRUE(desktop.Ended());
}

TEST_F(LoginTest, TwoFailuresAndASuccessLogIn) {
  Enter("张三", "no");
  Enter("张三", "no");
  ChooseStorehouse(1);
  Enter("张三", "1'234'");
  EXPECT_EQ(app.CurUser.GetUserName, "张三");
  EXPECT_EQ(app.CurUser.UserPassword, "1234") << "single quotes are stripped";
  EXPECT_EQ(app.CurUser.GetGroup, "药库");
  EXPECT_EQ(app.CurUser.SZSQ, "SQ01");
  EXPECT_EQ(app.IME, 67699721);
  EXPECT_EQ(app.SearchType, "五笔码");
  EXPECT_EQ(app.ReportUnit, "鹿鸣医院");
  EXPECT_EQ(app.KFMC, "西药库");
  EXPECT_EQ(app.forms.Get<mainfrm>(app).Caption(), "西药库管理系统");
  EXPECT_EQ(OperatorPanel(), "张三");
  EXPECT_EQ(app.forms.FindAs<password>(), nullptr);
  EXPECT_EQ(ReadBytes(home / "User.data"), "\xD5\xC5\xC8\xFD\r\n");
}

TEST_F(LoginTest, UnitOfAnOperatorIsTakenOnlyWhenItIsTheOnlyOne) {
  store.Answer("select SQBH from Yf_sq where username like'张三'", {"SQBH"}, {{TextValue("A")}, {TextValue("B")}});
  app.CurUser.SZSQ = "before";
  ChooseStorehouse(3);
  Enter("张三", "1234");
  EXPECT_EQ(app.CurUser.SZSQ, "before");
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
  EXPECT_EQ(AllRights().size(), 34U);
  EXPECT_EQ(AllRights().back().key, "YPGL_SeeReport");
  for (const OperatorRight& right : AllRights()) {
    PrepareLogin({{std::string(right.key), true}, {"YPGL_Unknown", true}, {"ypgl_yppd", true}});
    app.CurUser = {};
    ChooseStorehouse(3);
    Enter("张三", "1234");
    for (const OperatorRight& other : AllRights()) {
      EXPECT_EQ(app.CurUser.*other.flag, other.key == right.key) << right.key << " " << other.key;
    }
    app.forms.UnloadAll();
  }
}

TEST_F(LoginTest, SwitchedOperatorKeepsEveryRightThatTheNewGroupDoesNotName) {
  PrepareLogin({{"YPGL_YPPD", true}, {"YPGL_CKFY", true}, {"YPGL_XYKIN", true}});
  ChooseStorehouse(1);
  Enter("张三", "1234");
  PrepareLogin({{"YPGL_CKFY", false}});
  app.forms.Get<mainfrm>(app).SwitchOperator();
  ChooseStorehouse(3);
  Enter("李四", "1234");
  EXPECT_TRUE(app.CurUser.YPGL_YPPD);
  EXPECT_FALSE(app.CurUser.YPGL_CKFY);
  EXPECT_EQ(OperatorPanel(), "操作员：李四");
  EXPECT_EQ(app.KFMC, "器械库") << "the storehouse is asked again";
}

TEST_F(LoginTest, RefusedSwitchLeavesTheOldOperatorAtWork) {
  ChooseStorehouse(1);
  Enter("张三", "1234");
  app.forms.Get<mainfrm>(app).SwitchOperator();
  for (int i = 0; i < 3; ++i) Enter("李四", "no");
  EXPECT_EQ(app.forms.FindAs<password>(), nullptr);
  EXPECT_FALSE(app.Ended);
  EXPECT_EQ(app.CurUser.GetUserName, "张三");

  app.forms.Get<mainfrm>(app).SwitchOperator();
  Dialog().UserClick(Dialog().Command2);
  EXPECT_EQ(app.forms.FindAs<password>(), nullptr);
  EXPECT_FALSE(app.Ended);
}

TEST_F(LoginTest, LeavingTheFirstLoginEndsTheProcess) {
  EXPECT_THROW(Dialog().UserClick(Dialog().Command2), ProcessEnded);
  EXPECT_TRUE(desktop.Ended());
}

TEST_F(LoginTest, ClosingTheFirstLoginByItsFrameLeavesNoFormAndEndsTheProcess) {
  EXPECT_THROW(Dialog().UserClose(), ProcessEnded);
  EXPECT_TRUE(desktop.Ended());
}

TEST_F(LoginTest, EnterWalksFromNameToPasswordToLogin) {
  password& dialog = Dialog();
  dialog.Combo1.SetText("张三");
  dialog.UserFocus(dialog.Combo1);
  dialog.UserKey({.code = key::kEnter});
  EXPECT_EQ(dialog.ActiveControl(), &dialog.Text1);
  dialog.Text1.SetText("no");
  dialog.UserKey({.code = key::kEnter});
  EXPECT_EQ(desktop.TakeBox().text, "密码错误，请重新输入！");
}

class StorehouseTest : public LoginTest {
 protected:
  StorehouseTest() { app.forms.Get<mainfrm>(app).Show(); }
  Frm_CheckYK& List() {
    auto& list = app.forms.Get<Frm_CheckYK>(app);
    list.Show();
    return list;
  }
};

TEST_F(StorehouseTest, RightsStandAheadOfTheTwoNamedStorehouses) {
  struct Case {
    int row;
    bool User_qx::*right;
    const char* refusal;
  };
  for (const Case& one : {Case{1, &User_qx::XYKIN, "你没有进入西药库的权限，请给系统管理员联系。"},
                          Case{2, &User_qx::ZYKIN, "你没有进入中药库的权限，请给系统管理员联系。"}}) {
    app.CurUser = {};
    app.CurUser.*one.right = true;
    List().fpSpread1.UserActivate(one.row, 1);
    List().UserClick(List().Command1);
    EXPECT_EQ(app.forms.FindAs<Frm_CheckYK>(), nullptr);
    EXPECT_TRUE(desktop.boxes.empty());
  }
  app.CurUser = {};
  List().fpSpread1.UserClickCell(3, 1);
  List().fpSpread1.UserDoubleClick(3, 1);
  EXPECT_EQ(app.KFMC, "器械库") << "any other name needs no right";
  EXPECT_EQ(app.forms.Get<mainfrm>(app).Caption(), "器械库管理系统");

  List().fpSpread1.UserActivate(2, 1);
  List().UserFocus(List().fpSpread1);
  EXPECT_THROW(List().UserKey({.code = key::kEnter}), ProcessEnded);
  EXPECT_EQ(desktop.TakeBox().text, "你没有进入中药库的权限，请给系统管理员联系。");
}

TEST_F(StorehouseTest, EmptyListOffersNothingToChoose) {
  store.Answer("Select Sname From YF_YKLX Where SLX Like'药库'", {"Sname"}, {});
  Frm_CheckYK& list = List();
  const Box told = desktop.TakeBox();
  EXPECT_EQ(told.text, "请先在配置系统添加好药库并且关联好收费类型");
  EXPECT_EQ(told.title, "系统提示");
  EXPECT_EQ(told.style, box::kWarning);
  list.UserClick(list.Command1);
  EXPECT_EQ(desktop.TakeBox().text, "请选择您要进入的药库");
  EXPECT_TRUE(list.IsShown());
}

TEST_F(StorehouseTest, LeavingWithoutAChoiceEndsTheProcessSilently) {
  desktop.modals.push_back([](Form& form) {
    auto& list = dynamic_cast<Frm_CheckYK&>(form);
    list.UserClick(list.Command2);
  });
  EXPECT_THROW(Enter("张三", "1234"), ProcessEnded);
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_TRUE(desktop.Ended());
}

}  // namespace
}  // namespace luming
