#include "stock/document_numbers.h"
#include "stock/movement_log.h"
#include "support/store_test.h"

namespace luming {
namespace {

class DocumentNumbersTest : public StoreTest {
 protected:
  void Saved(const std::string& number, const std::string& day) {
    Run("Insert Into YK_YPRK(RKDH,RKRQ) Values('" + number + "','" + day + "')");
  }
  std::string Next() { return NextDocNo(app, "RKDH", "YK_YPRK", "RKRQ"); }
};

TEST_F(DocumentNumbersTest, CountsOnFromTheLastNumberOfTheDay) {
  const std::vector<std::pair<std::string, std::string>> after = {
      {"202603010001", "202603010002"},  {"202603010009", "202603010010"},
      {"202603010099", "202603010100"},  {"202603010999", "202603011000"},
      {"202603019999", "2026030110000"}, {"RK-0041", "202603010042"},  // only the last four characters count
  };
  EXPECT_EQ(Next(), "202603010001");
  for (const auto& [last, next] : after) {
    Saved(last, "2026-03-01 23:59:59");
    EXPECT_EQ(Next(), next);
  }
}

TEST_F(DocumentNumbersTest, OtherDaysDoNotCount) {
  Saved("202602280007", "2026-02-28 23:59:59");
  Saved("202603020003", "2026-03-02");
  EXPECT_EQ(Next(), "202603010001");
  clock.Set(DateTime(2026, 3, 2, 0, 0, 1));
  EXPECT_EQ(Next(), "202603020004");
}

TEST_F(DocumentNumbersTest, TheRowSavedLastCountsNotTheHighest) {
  Saved("202603010050", "2026-03-01 09:00:00");
  Saved("202603010004", "2026-03-01 08:00:00");
  EXPECT_EQ(Next(), "202603010005");
}

TEST_F(DocumentNumbersTest, AForeignNumberIsShownAsAFailure) {
  Saved("20260301ABCD", "2026-03-01");
  EXPECT_EQ(Next(), "");
  EXPECT_EQ(desktop.TakeBox().text, "错误号：  13\r\n\r\n错误描述：类型不匹配\r\n\r\n错误来源：luming");
}

TEST_F(DocumentNumbersTest, ReadsTheDayTwiceInTheSameWords) {
  Saved("202603010001", "2026-03-01");
  TakeSent();
  Next();
  const std::string sql =
      "select top 1 RKDH From YK_YPRK Where RKRQ Between '2026-03-01 00:00:00' and '2026-03-01 23:59:59' order by id "
      "desc";
  EXPECT_EQ(TakeSent(), (std::vector<std::string>{sql, sql}));
}

using MovementLogTest = StoreTest;

TEST_F(MovementLogTest, RowsTellDirectionQuantityAndDocument) {
  EXPECT_TRUE(AddMoveLog(
      app, {"100001", 2, 10, 20, "盒", true, "入库记录", "2026/3/1 10:00:00", "西药库", "入库单号：202603010001"}));
  EXPECT_TRUE(
      AddMoveLog(app, {"100001", -2.5, 1, -2.5, "粒", false, "药库领药到 内科", "2026/3/1", "西药库", "领药单号：1"}));
  EXPECT_EQ(Query("Select YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY From YPCRK Order by id"),
            "100001\t2\t10\t20\t盒\t0\t入库记录\t2026/3/1 10:00:00\t西药库\t入库单号：202603010001\t管理员\n"
            "100001\t-2.5\t1\t-2.5\t粒\t1\t药库领药到 内科\t2026/3/1\t西药库\t领药单号：1\t管理员");
}

TEST_F(MovementLogTest, ABrokenRowIsShownAndReported) {
  EXPECT_FALSE(AddMoveLog(app, {.YPBM = "100001", .MS = "it's", .RQ = "2026/3/1"}));
  EXPECT_EQ(desktop.TakeBox().title, "系统提示");
  EXPECT_EQ(Query("Select id From YPCRK"), "");
}

TEST_F(MovementLogTest, ActionsWithoutADocumentHaveTheirOwnLog) {
  EXPECT_TRUE(AddServerLog(app, "西药库", "用户: 管理员将未盘点药品库存设置为0"));
  EXPECT_EQ(Query("Select RQ,LX,INFO,CZY From UploadToServerLog"),
            "2026/3/1 10:00:00\t西药库\t用户: 管理员将未盘点药品库存设置为0\t管理员");
  Run("Drop Table UploadToServerLog");
  EXPECT_FALSE(AddServerLog(app, "西药库", "x"));
  EXPECT_EQ(desktop.TakeBox().title, "系统提示");
}

}  // namespace
}  // namespace luming
