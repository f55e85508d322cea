#include "platform/tracing_connection.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "support/document_columns.h"
#include "wire/wire_receipt_test.h"

namespace luming {
namespace {

/// What a return to the supplier costs on a slow network: every statement and every step of the transaction is one
/// round trip.
class ReturnTripsTest : public WireReceiptTest {
 protected:
  ReturnTripsTest() {
    store->Execute(
        "Update YF_YPML Set YKKCL=1000 Where YPBM='100001' "
        "Insert Into YK_CurryPH(RKDH,YPBM,PH,SL,PFJ,PLJ,RKRQ) Values('0','100001','B',1000,1,1,'2026-02-01')");
    auto open = std::make_unique<ServerConnection>();
    open->Open(AddressOf(server));
    app.Cn = std::make_shared<TracingConnection>(std::move(open), [this](const TracedStatement&) { ++trips; });
    screen.EnsureLoaded();
  }

  int TripsOf(int count) {
    auto& grid = screen.Field<Grid>("fpSpread1");
    grid.SetMaxRows(count);
    for (int row = 1; row <= count; ++row) {
      grid.SetText(row, supplier_return::kCode, "100001");
      grid.SetText(row, supplier_return::kQuantity, "1");
      grid.SetText(row, supplier_return::kBatch, "B");
      grid.SetText(row, supplier_return::kRatio, "1");
    }
    screen.Field<ComboBox>("sGHDW").SetText("云泊医药有限公司");
    screen.Field<ComboBox>("sFHR").SetText("吕静仪");
    desktop.answers.push_back(Answer::kYes);
    trips = 0;
    screen.UserClick(screen.Field<Button>("Command1"));
    EXPECT_EQ(grid.MaxRows(), 0) << "the return was not saved";
    return trips;
  }

  int trips = 0;
  Form& screen = TheReturnToSupplier(app);
};

TEST_F(ReturnTripsTest, AReturnCostsAFewForItselfAndSevenForEachLine) {
  TripsOf(1);  // the day's first number is found in another way
  const int one = TripsOf(1);
  EXPECT_LE(one, 15);
  EXPECT_LE(TripsOf(20), one + 19 * 7);
  EXPECT_LE(TripsOf(100), one + 99 * 7);
  EXPECT_EQ(store->Execute("Select YKKCL From YF_YPML Where YPBM='100001'").Field(0).Number(), 1000 - 122);
}

}  // namespace
}  // namespace luming
