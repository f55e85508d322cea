#include "frame/gateway.h"

#include "frame/connection_dialog.h"
#include "support/app_test.h"

namespace luming {
namespace {

using ::testing::Test;
using Sent = std::vector<std::string>;

class GatewayTest : public AppTest {
 protected:
  GatewayTest() { Connect(); }

  void ExpectClosed(Recordset& rs) {
    try {
      rs.RecordCount();
      ADD_FAILURE() << "the recordset is open";
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), failure::kClosedObject);
    }
  }
};

TEST_F(GatewayTest, ErrorBoxNamesNumberDescriptionAndSource) {
  ShowDbError(app, Failure(-2147217900, "语法错误", "provider"));
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "错误号：  -2147217900\r\n\r\n错误描述：语法错误\r\n\r\n错误来源：provider");
  EXPECT_EQ(box.title, "系统提示");
  EXPECT_EQ(box.style, box::kWarning);
}

TEST_F(GatewayTest, BrokenStatementShowsTheBoxAndLeavesAClosedRecordset) {
  store.Answer("good", {"a"}, {{NumberValue(1)}});
  Recordset rs;
  OpenRs(app, rs, "good");
  EXPECT_EQ(rs.RecordCount(), 1);

  store.Fail("broken", Failure(failure::kSyntax, "语法错误"));
  OpenRs(app, rs, "broken");
  ExpectClosed(rs);
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_EQ(store.TakeSent(), (Sent{"good", "broken"}));
}

TEST_F(GatewayTest, LostConnectionIsOpenedAgainButTheStatementIsNotRepeated) {
  for (const Failure& lost : {LostServer(), StandardFailure(failure::kClosedObject)}) {
    store.Answer("list", {"a"}, {{NumberValue(1)}});
    store.Fail("list", lost);
    Recordset rs;
    OpenRs(app, rs, "list");
    EXPECT_EQ(store.TakeSent(), (Sent{"list", "close", "open Data Source=test;"}));
    ExpectClosed(rs);
    EXPECT_EQ(desktop.TakeBox().text.find("错误号：  " + std::to_string(lost.number())), 0U);
    OpenRs(app, rs, "list");
    EXPECT_EQ(rs.RecordCount(), 1);
    store.TakeSent();
  }
}

TEST_F(GatewayTest, ClosedConnectionIsOpenedAheadOfAStatement) {
  app.Cn->Close();
  store.TakeSent();
  EXPECT_TRUE(ExecSql(app, "Delete T"));
  EXPECT_EQ(store.TakeSent(), (Sent{"open Data Source=test;", "Delete T"}));
}

TEST_F(GatewayTest, ServerThatStaysAwayBringsTheDialogAndItsRetryStartsAgain) {
  store.Fail("list", LostServer());
  store.FailOpen(Failure(failure::kGeneralProvider, "服务器不存在"));
  PrepareLogin();
  desktop.modals.push_back([](Form& form) {
    auto& dialog = dynamic_cast<LinkDatabaseErr&>(form);
    EXPECT_EQ(dialog.ErrInfoShow.Caption(), "服务器不存在");
    dialog.UserClick(dialog.ButRec);
  });
  Connection* const before = app.Cn.get();
  Recordset rs;
  OpenRs(app, rs, "list");
  EXPECT_NE(app.Cn.get(), before);
  EXPECT_TRUE(app.Cn->IsOpen());
  ExpectClosed(rs);
  EXPECT_TRUE(app.forms.Find("password")->IsShown());
}

TEST_F(GatewayTest, FailedWriteShowsTheBoxAndReportsFalse) {
  store.Fail("Delete T", Failure(failure::kKeyViolation, "冲突"));
  EXPECT_FALSE(ExecSql(app, "Delete T"));
  EXPECT_EQ(desktop.boxes.size(), 1U);
  EXPECT_TRUE(ExecSql(app, "Delete T"));
}

TEST_F(GatewayTest, ExistsTestSendsItsWordsAndHasNoTrap) {
  store.Answer("Select top 1 DM From DAGL_ZD Where DM  Like'A'", {"DM"}, {{TextValue("A")}});
  store.Answer("Select top 1 DM From DAGL_ZD Where DM  Like''", {"DM"}, {});
  EXPECT_TRUE(GetField(app, "DAGL_ZD", "DM", "A"));
  EXPECT_FALSE(GetField(app, "DAGL_ZD", "DM", ""));
  store.Fail("Select top 1 DM From DAGL_ZD Where DM  Like'A'", LostServer());
  EXPECT_THROW(GetField(app, "DAGL_ZD", "DM", "A"), Failure);
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(GatewayTest, StockOfADrug) {
  const std::string as_text = "Select ykkcl From YF_YPML Where YPBM Like'10001'";
  const std::string as_test = "Select ykkcl from yf_ypml Where YPBM Like'10001'";
  store.Answer(as_text, {"ykkcl"}, {});
  EXPECT_EQ(GetWarehouseStock(app, "10001"), "0");
  store.Answer(as_text, {"ykkcl"}, {{Value(12.5)}});
  EXPECT_EQ(GetWarehouseStock(app, "10001"), "12.5");

  store.Answer(as_test, {"ykkcl"}, {{NumberValue(10)}});
  EXPECT_FALSE(ExceedsWarehouseStock(app, "10001", 10));
  EXPECT_TRUE(ExceedsWarehouseStock(app, "10001", 10.001));
  EXPECT_TRUE(desktop.boxes.empty());

  store.Answer(as_test, {"ykkcl"}, {});
  EXPECT_FALSE(ExceedsWarehouseStock(app, "10001", 10));
  EXPECT_EQ(desktop.boxes.size(), 1U) << "the missing row falls into the trap";
}

TEST_F(GatewayTest, SaveCommitsOrRollsBackAsAWhole) {
  EXPECT_TRUE(InTransaction(app, [&] { app.Cn->Execute("head"); }));
  EXPECT_EQ(store.TakeSent(), (Sent{"begin", "head", "commit"}));

  store.Fail("line", Failure(failure::kDataOverflow, "溢出"));
  EXPECT_FALSE(InTransaction(app, [&] {
    app.Cn->Execute("head");
    app.Cn->Execute("line");
    app.Cn->Execute("stock");
  }));
  EXPECT_EQ(store.TakeSent(), (Sent{"begin", "head", "line", "rollback"}));
  EXPECT_NE(desktop.TakeBox().text.find("溢出"), std::string::npos);
}

TEST_F(GatewayTest, NothingOfASaveStaysWhenItsConnectionWasOpenedAnew) {
  store.Fail("read", LostServer());
  EXPECT_FALSE(InTransaction(app, [&] {
    app.Cn->Execute("head");
    Recordset rs;
    OpenRs(app, rs, "read");
    app.Cn->Execute("line");
  }));
  EXPECT_EQ(store.TakeSent(),
            (Sent{"begin", "head", "read", "close", "open Data Source=test;", "begin", "line", "rollback"}));
  EXPECT_EQ(desktop.boxes.size(), 2U) << "the lost connection, then the lost save";

  desktop.boxes.clear();
  EXPECT_TRUE(InTransaction(app, [&] { app.Cn->Execute("head"); })) << "the next save is a fresh one";
}

TEST_F(GatewayTest, RefusalNamesTheRightOrSaysItInGeneral) {
  const auto query = [](const std::string& key) {
    return "Select MoudelName From Qx_Temp Where MoudelKey='" + key + "'";
  };
  store.Answer(query("YPGL_YPPD"), {"MoudelName"}, {{TextValue("药品盘点")}});
  store.Answer(query(""), {"MoudelName"}, {});
  CheckRight(app, "YPGL_YPPD");
  CheckRight(app, "");
  EXPECT_EQ(desktop.TakeBoxTexts(),
            (Sent{"系统提示您：  \r\n\r\n      你没有【药品盘点】的权限,请您给系统管理员联系。",
                  "系统提示您：  \r\n\r\n      您没有操作该功能的权限,请您给系统管理员联系。"}));
  store.Fail(query("YPGL_YPPD"), LostServer());
  CheckRight(app, "YPGL_YPPD");
  EXPECT_EQ(desktop.TakeBox().text.find("错误号"), 0U);
}

}  // namespace
}  // namespace luming
