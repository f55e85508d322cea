#include "stock/document_numbers.h"

#include "support/store_test.h"

namespace luming {
namespace {

/// What the receipt's script leaves out of the count.
class DocumentNumbersTest : public StoreTest {
 protected:
  void Saved(const std::string& number, const std::string& time) {
    Run("Insert Into YK_YPRK(RKDH,RKRQ) Values('" + number + "','2026-03-01 " + time + "')");
  }
  std::string Next() { return NextDocNo(app, "RKDH", "YK_YPRK", "RKRQ"); }
};

TEST_F(DocumentNumbersTest, TheRowSavedLastCountsNotTheHighestNorTheLatest) {
  Saved("202603010050", "09:00:00");
  Saved("202603010009", "08:00:00");
  EXPECT_EQ(Next(), "202603010010");
}

TEST_F(DocumentNumbersTest, OnlyTheLastFourCharactersCount) {
  Saved("RK-71041", "23:59:59");
  EXPECT_EQ(Next(), "202603011042");
}

}  // namespace
}  // namespace luming
