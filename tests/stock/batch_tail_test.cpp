#include "stock/batch_stock.h"
#include "support/app_test.h"

namespace luming {
namespace {

/// What no store of one's own shows: batches that another workstation adds while a short named batch is being voided.
class BatchTailTest : public AppTest {
 protected:
  BatchTailTest() {
    Connect();
    const auto row = [](int id, double quantity) { return FakeStore::Row{NumberValue(id), Value(quantity)}; };
    store.Answer("Select ID,SL From YK_CurryPH Where YPBM Like'1' AND PH Like'A' Order by RKRQ", {"ID", "SL"},
                 {row(7, 3)});
    store.Answer("Select ID,SL From YK_CurryPH Where YPBM Like'1' Order by RKRQ", {"ID", "SL"},
                 {row(8, 4), row(9, 20)});
  }
};

TEST_F(BatchTailTest, TheWholeQuantityComesOutOfThemWithoutASweep) {
  ConsumeBatch(app, "1", 5, "A");
  EXPECT_EQ(store.TakeSent(),
            (std::vector<std::string>{
                "Delete YK_CurryPH Where sl<=0",
                "Select ID,SL From YK_CurryPH Where YPBM Like'1' AND PH Like'A' Order by RKRQ",
                "Update YK_CurryPH Set SL=0 Where ID=7", "Delete YK_CurryPH Where YPBM Like'1'",
                "Delete YK_CurryPH Where SL=0", "Select ID,SL From YK_CurryPH Where YPBM Like'1' Order by RKRQ",
                "Update YK_CurryPH Set SL=0 Where ID=8", "Update YK_CurryPH Set SL=SL-1 Where ID=9"}));
}

}  // namespace
}  // namespace luming
