#include "stock/batch_stock.h"

#include "support/store_test.h"
#include "util/text.h"

namespace luming {
namespace {

/// Batches as text, "PH SL day", the day of March 2026; several joined by ", ". The cases that batch_consumption.script
/// leaves out.
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
      {"exactly all of them", "A 3 01, B 4 02", 7, "", ""},
      {"a part of the first", "A 3 01, B 4 02", 2.5, "", "A 0.5, B 4"},
      {"more than the only batch", "A 4 01", 10, "", ""},
      {"over three, the last one in part", "A 1 01, B 2 02, C 4 03", 4, "", "C 3"},
      {"exactly the named batch", "A 3 01, B 20 02", 3, "A", "B 20"},
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

TEST_F(BatchStockTest, AFailureIsShownAndKept) {
  Run("Drop Table YK_CurryPH");
  ConsumeBatch(app, "100001", 1, "A");
  EXPECT_EQ(desktop.TakeBox().title, "系统提示");
}

}  // namespace
}  // namespace luming
