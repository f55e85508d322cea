#include "stock/batch_stock.h"

#include "support/failure_of.h"
#include "support/store_test.h"
#include "util/text.h"

namespace luming {
namespace {

/// Batches as text, "PH SL day", the day of March 2026; several joined by ", ".
class BatchStockTest : public StoreTest {
 protected:
  void Put(const std::string& code, const std::string& batches) {
    for (const std::string& batch : Split(batches, ", ")) {
      if (batch.empty()) continue;
      const std::vector<std::string> part = Split(batch, " ");
      Run("Insert Into YK_CurryPH(RKDH,YPBM,PH,XQ,SL,PFJ,PLJ,RKRQ) Values('R','" + code + "','" + part[0] + "',Null," +
          part[1] + ",0,0,'2026-03-" + part[2] + "')");
    }
  }
  std::string Held(const std::string& code) {
    const std::string rows = Query("Select PH,SL From YK_CurryPH Where YPBM='" + code + "' Order by RKRQ,ID");
    return Replace(Replace(rows, "\t", " "), "\n", ", ");
  }
};

TEST_F(BatchStockTest, ConsumptionTakesTheOldestOrTheNamedBatch) {
  struct Case {
    const char* what;
    const char* before;
    double quantity;
    const char* batch;
    const char* after;
  };
  const std::vector<Case> cases = {
      {"over two batches, the oldest first", "A 3 01, B 4 02", 5, "", "B 2"},
      {"the day decides, not the order of the rows", "B 4 02, A 3 01", 5, "", "B 2"},
      {"exactly the first batch", "A 3 01, B 4 02", 3, "", "B 4"},
      {"exactly all of them", "A 3 01, B 4 02", 7, "", ""},
      {"a part of the first", "A 3 01, B 4 02", 2.5, "", "A 0.5, B 4"},
      {"over three, the last one in part", "A 1 01, B 2 02, C 4 03", 4, "", "C 3"},
      {"more than the only batch", "A 4 01", 10, "", ""},
      {"more than all of them", "A 3 01, B 4 02", 10, "", ""},
      {"from nothing", "", 10, "", ""},
      {"a part of the named batch", "A 3 01, B 20 02", 5, "B", "A 3, B 15"},
      {"exactly the named batch", "A 3 01, B 20 02", 3, "A", "B 20"},
      {"a named batch that is gone", "A 3 01, B 20 02", 5, "C", "A 3, B 20"},
      {"more than the named batch takes the others with it", "A 3 01, B 20 02", 5, "A", ""},
      {"a name is a pattern", "AX 3 01, B 20 02", 2, "A_", "AX 1, B 20"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Run("Delete YK_CurryPH");
    Put("100001", c.before);
    Put("100002", "Z 9 01");
    ConsumeBatch(app, "100001", c.quantity, c.batch);
    EXPECT_EQ(Held("100001"), c.after);
    EXPECT_EQ(Held("100002"), "Z 9");
    EXPECT_TRUE(desktop.TakeBoxTexts().empty());
  }
}

TEST_F(BatchStockTest, EveryCallSweepsEmptyBatchesOfAllDrugs) {
  Put("100002", "Z 0 01, Y -2 02, X 1 03");
  ConsumeBatch(app, "100001", 1, "");
  EXPECT_EQ(Held("100002"), "X 1");
}

TEST_F(BatchStockTest, AShortNamedBatchSendsTheseStatements) {
  Put("100001", "A 3 01, B 20 02");
  const std::string id = Query("Select ID From YK_CurryPH Where PH='A'");
  TakeSent();
  ConsumeBatch(app, "100001", 4.25, "A");
  EXPECT_EQ(TakeSent(),
            (std::vector<std::string>{
                "Delete YK_CurryPH Where sl<=0",
                "Select ID,SL From YK_CurryPH Where YPBM Like'100001' AND PH Like'A' Order by RKRQ",
                "Update YK_CurryPH Set SL=0 Where ID=" + id, "Delete YK_CurryPH Where YPBM Like'100001'",
                "Delete YK_CurryPH Where SL=0", "Select ID,SL From YK_CurryPH Where YPBM Like'100001' Order by RKRQ"}));
}

TEST_F(BatchStockTest, TheLastBatchIsReducedByTheRemainderAndSwept) {
  Put("100001", "A 3 01, B 4 02");
  TakeSent();
  ConsumeBatch(app, "100001", 4.25, "");
  const std::string id = Query("Select ID From YK_CurryPH Where PH='B'");
  const std::vector<std::string> sent = TakeSent();
  ASSERT_GE(sent.size(), 2U);
  EXPECT_EQ(sent[sent.size() - 2], "Update YK_CurryPH Set SL=SL-1.25 Where ID=" + id);
  EXPECT_EQ(sent.back(), "Delete YK_CurryPH Where sl<=0");
}

TEST_F(BatchStockTest, AFailureIsShownAndKept) {
  Run("Drop Table YK_CurryPH");
  ConsumeBatch(app, "100001", 1, "A");
  EXPECT_EQ(desktop.TakeBox().title, "系统提示");
}

}  // namespace
}  // namespace luming
