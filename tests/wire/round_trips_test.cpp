#include <functional>

#include "documents/issue_desk.h"
#include "documents/issue_note.h"
#include "platform/tracing_connection.h"
#include "screen/combo_box.h"
#include "support/document_columns.h"
#include "wire/wire_receipt_test.h"

namespace luming {
namespace {

/// Each statement is one round trip to the server, and so is each step of a transaction: their number, and not the
/// statements' own work, is what an operator waits for on a slow network.
class RoundTripsTest : public WireReceiptTest {
 protected:
  RoundTripsTest() {
    auto open = std::make_unique<ServerConnection>();
    open->Open(AddressOf(server));
    app.Cn = std::make_shared<TracingConnection>(std::move(open), [this](const TracedStatement&) { ++trips; });
  }

  using Texts = std::vector<std::pair<int, std::string>>;  ///< of a line, by column

  /// What saving a document of so many lines costs, each of the drug 100001.
  int TripsOf(Form& screen, int count, const std::function<Texts(int)>& line) {
    auto& grid = screen.Field<Grid>("fpSpread1");
    grid.SetMaxRows(count);
    for (int row = 1; row <= count; ++row) {
      for (const auto& [column, text] : line(row)) grid.SetText(row, column, text);
    }
    desktop.answers.push_back(Answer::kYes);
    trips = 0;
    screen.UserClick(screen.Field<Button>("Command1"));
    EXPECT_EQ(grid.MaxRows(), 0) << "the document was not saved";
    return trips;
  }
  double Stock() { return store->Execute("Select YKKCL From YF_YPML Where YPBM='100001'").Field(0).Number(); }

  int trips = 0;
};

TEST_F(RoundTripsTest, AReceiptCostsAFewForItselfAndFiveForEachLine) {
  const auto save = [this](int count) {
    FillHead();
    return TripsOf(form, count, [count](int row) {
      return Texts{
          {receipt::kCode, "100001"},       {receipt::kUnit, "盒"},
          {receipt::kWholesalePrice, "13"}, {receipt::kRetailPrice, "15"},
          {receipt::kQuantity, "1"},        {receipt::kPurchasePrice, "12"},
          {receipt::kAmount, "12"},         {receipt::kExpiry, "2027-12-31"},
          {receipt::kRatio, "1"},           {receipt::kBatch, std::to_string(count) + "-" + std::to_string(row)}};
    });
  };
  save(1);  // the day's first number is found in another way
  const int one = save(1);
  EXPECT_LE(one, 12);
  EXPECT_LE(save(20), one + 19 * 5);
  EXPECT_LE(save(100), one + 99 * 5);
  EXPECT_EQ(Stock(), 122);
}

TEST_F(RoundTripsTest, AReturnToTheSupplierCostsAFewForItselfAndSevenForEachLine) {
  store->Execute(
      "Update YF_YPML Set YKKCL=1000 Where YPBM='100001' "
      "Insert Into YK_CurryPH(RKDH,YPBM,PH,SL,PFJ,PLJ,RKRQ) Values('0','100001','B',1000,1,1,'2026-02-01')");
  Form& screen = kReturnToSupplier.form(app);
  screen.EnsureLoaded();
  const auto save = [&](int count) {
    screen.Field<ComboBox>("sGHDW").SetText("云泊医药有限公司");
    screen.Field<ComboBox>("sFHR").SetText("吕静仪");
    return TripsOf(screen, count, [](int) {
      return Texts{{supplier_return::kCode, "100001"},
                   {supplier_return::kQuantity, "1"},
                   {supplier_return::kBatch, "B"},
                   {supplier_return::kRatio, "1"}};
    });
  };
  save(1);
  const int one = save(1);
  EXPECT_LE(one, 15);
  EXPECT_LE(save(20), one + 19 * 7);
  EXPECT_LE(save(100), one + 99 * 7);
  EXPECT_EQ(Stock(), 1000 - 122);
}

TEST_F(RoundTripsTest, AnIssueNoteCostsOneForEachLineAndItsConfirmationAsManyForAHundredLinesAsForOne) {
  store->Execute(
      "Update YF_YPML Set YKKCL=1000 Where YPBM='100001' "
      "Insert Into YK_CurryPH(RKDH,YPBM,PH,SL,PFJ,PLJ,RKRQ) Values('0','100001','B',1000,1,1,'2026-02-01')");
  auto& desk = app.forms.Get<Frm_YPCKGL>(app);
  desk.EnsureLoaded();
  const auto save = [&](int count) {
    auto& note = app.forms.Get<Frm_YFYPSL>(app);
    note.Begin(note_way::kAdd);
    note.fpSpread1.SetMaxRows(count);
    for (int row = 1; row <= count; ++row) {
      note.fpSpread1.SetText(row, issue_note::kCode, "100001");
      note.fpSpread1.SetText(row, issue_note::kQuantity, "1");
      note.fpSpread1.SetText(row, issue_note::kRatio, "1");
    }
    desktop.answers.push_back(Answer::kYes);
    trips = 0;
    note.UserClick(note.Command1);
    EXPECT_TRUE(note.IsUnloaded()) << "the note was not saved";
    return trips;
  };
  const auto confirm = [&](const std::string& number) {
    auto& note = app.forms.Get<Frm_YFYPSL>(app);
    note.Begin(note_way::kConfirm);
    note.LoadData(number);
    trips = 0;
    note.UserClick(note.Command2);
    EXPECT_TRUE(note.IsUnloaded()) << "the note was not confirmed";
    return trips;
  };
  save(1);
  const int one = save(1);
  EXPECT_LE(one, 6);
  EXPECT_EQ(save(100), one + 99);
  EXPECT_LE(confirm("202603010002"), 6) << "the question, the head, the move, both lists and the marks";
  EXPECT_LE(confirm("202603010003"), 6);
  EXPECT_EQ(Stock(), 1000 - 101);
}

}  // namespace
}  // namespace luming
