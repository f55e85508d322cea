#include "app/store_maker.h"
#include "platform/tracing_connection.h"
#include "support/receipt_desk.h"
#include "wire_test.h"

namespace luming {
namespace {

/// Each statement is one round trip to the server, and so is each step of a transaction: their number, and not the
/// statements' own work, is what an operator waits for on a slow network.
class RoundTripsTest : public WireTest {
 protected:
  RoundTripsTest() {
    MakeApplicationDirectory({place / "demo", LUMING_DATABASE_DIR, true, {}}, clock);
    std::filesystem::copy_file(place / "demo/lumndata.db", directory / "lumndata.db",
                               std::filesystem::copy_options::overwrite_existing);
  }

  TempDirectory place;
};

TEST_F(RoundTripsTest, AReceiptCostsAFewForItselfAndFiveForEachLine) {
  int trips = 0;
  auto open = std::make_unique<ServerConnection>();
  open->Open(Address());
  ReceiptDesk desk(place / "demo",
                   std::make_shared<TracingConnection>(std::move(open), [&trips](const TracedStatement&) { ++trips; }),
                   clock);
  const auto save = [&](int first, int lines) {
    desk.Write(desk.LinesOf(first, lines, "P1"), "FP1");
    trips = 0;
    desk.screen().Save_YPRK();
    EXPECT_EQ(desk.screen().fpSpread1.MaxRows(), 0) << "the receipt was not saved";
    return trips;
  };
  save(0, 1);  // the day's first number is found in another way
  const int one = save(1, 1);
  EXPECT_LE(one, 12);
  EXPECT_LE(save(10, 20), one + 19 * 5);
  EXPECT_LE(save(100, 100), one + 99 * 5);
  Connect();
  EXPECT_EQ(First("Select Count(*) From YK_YPRKMX Where PH='P1'"), "122");
}

}  // namespace
}  // namespace luming
