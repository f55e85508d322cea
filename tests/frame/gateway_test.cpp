#include "frame/gateway.h"

#include "support/app_test.h"

namespace luming {
namespace {

using Sent = std::vector<std::string>;

class GatewayTest : public AppTest {
 protected:
  GatewayTest() { Connect(); }
};

TEST_F(GatewayTest, ErrorBoxNamesNumberDescriptionAndSource) {
  ShowDbError(app, Failure(-2147217900, "语法错误", "provider"));
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "错误号：  -2147217900\r\n\r\n错误描述：语法错误\r\n\r\n错误来源：provider");
  EXPECT_EQ(box.title, "系统提示");
  EXPECT_EQ(box.style, box::kWarning);
}

TEST_F(GatewayTest, LostConnectionIsOpenedAgainButTheStatementIsNotRepeated) {
  for (const Failure& lost : {LostServer(), StandardFailure(failure::kClosedObject)}) {
    store.Answer("list", {"a"}, {{NumberValue(1)}});
    store.Fail("list", lost);
    Recordset rs;
    OpenRs(app, rs, "list");
    EXPECT_EQ(store.TakeSent(), (Sent{"list", "close", "open Data Source=test;"}));
    EXPECT_FALSE(rs.IsOpen());
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

TEST_F(GatewayTest, ASaveThatAnyFaultStopsIsUndoneAndTold) {
  EXPECT_FALSE(InTransaction(app, [this] {
    ExecSql(app, "Insert T");
    throw std::out_of_range("row 7");
  }));
  EXPECT_EQ(store.TakeSent(), (Sent{"begin", "Insert T", "rollback"}));
  EXPECT_EQ(desktop.TakeBox().text, "错误号：  51\r\n\r\n错误描述：内部错误：row 7\r\n\r\n错误来源：luming");
}

TEST_F(GatewayTest, RefusalNamesTheRightOrSaysItInGeneral) {
  const auto query = [](const std::string& key) {
    return "Select MoudelName From Qx_Temp Where MoudelKey='" + key + "'";
  };
  store.Answer(query("YPGL_YPPD"), {"MoudelName"}, {{TextValue("药品盘点")}});
  store.Answer(query("YPGL_YPTJ"), {"MoudelName"}, {});
  CheckRight(app, "YPGL_YPPD");
  CheckRight(app, "YPGL_YPTJ");
  EXPECT_EQ(desktop.TakeBoxTexts(),
            (Sent{"系统提示您：  \r\n\r\n      你没有【药品盘点】的权限,请您给系统管理员联系。",
                  "系统提示您：  \r\n\r\n      您没有操作该功能的权限,请您给系统管理员联系。"}));
  store.Fail(query("YPGL_YPPD"), LostServer());
  CheckRight(app, "YPGL_YPPD");
  EXPECT_EQ(desktop.TakeBox().text.find("错误号"), 0U);
}

}  // namespace
}  // namespace luming
