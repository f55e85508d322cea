#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "support/document_columns.h"
#include "support/receipt_test.h"

namespace luming {
namespace {

/// What no operator sees: in which order a document is written, and which row of the lines is in view.
class SaveOrderTest : public ReceiptTest {
 protected:
  /// Each statement that was sent up to the end of its second word.
  std::vector<std::string> SentInOrder() {
    std::vector<std::string> order;
    for (const std::string& sql : TakeSent()) {
      const std::size_t table = sql.find_first_of("( ", sql.find(' ') == std::string::npos ? 0 : sql.find(' ') + 1);
      const std::size_t name = sql.find_first_of("( ", table == std::string::npos ? sql.size() : table + 1);
      order.push_back(sql.substr(0, name));
    }
    return order;
  }
};

TEST_F(SaveOrderTest, AReceiptGoesToItsBatchAheadOfTheCounterAndTakesTheNextNumberAheadOfTheCommit) {
  AddLine("100001", "2");
  FillHead();
  TakeSent();
  Save();
  EXPECT_EQ(SentInOrder(), (std::vector<std::string>{
                               "BEGIN TRANSACTION", "select top 1", "Insert into YK_YPRK", "Insert Into YK_YPRKMX",
                               "Select id From", "Insert Into YK_CurryPH", "Update YF_YPML SET", "Insert into YPCRK",
                               "select top 1", "select top 1", "COMMIT TRANSACTION", "Select YPBM,YKKCL From"}));
}

TEST_F(SaveOrderTest, AReturnIsTakenOffTheCounterAheadOfItsBatch) {
  Run("Insert Into YK_CurryPH(RKDH,YPBM,PH,SL,PFJ,PLJ,RKRQ) Values('0','100002','B',5,1,1,'2026-02-01')");
  Form& screen = kReturnToSupplier.form(app);
  screen.Show();
  screen.Field<ComboBox>("sGHDW").UserText("云泊医药有限公司");
  screen.Field<ComboBox>("sFHR").UserText("吕静仪");
  auto& returned = screen.Field<Grid>("fpSpread1");
  returned.SetMaxRows(1);
  returned.SetText(1, supplier_return::kCode, "100002");
  returned.SetText(1, supplier_return::kQuantity, "2");
  returned.SetText(1, supplier_return::kBatch, "B");
  TakeSent();
  desktop.answers.push_back(Answer::kYes);
  screen.UserClick(screen.Field<Button>("Command1"));
  EXPECT_EQ(SentInOrder(), (std::vector<std::string>{
                               "Select top 1", "BEGIN TRANSACTION", "select top 1", "Insert Into YK_TYDJ",
                               "Insert into YK_TYDJMX", "Update YF_YPML Set", "Insert into YPCRK",
                               "Delete YK_CurryPH Where", "Select ID,SL From", "Update YK_CurryPH Set",
                               "Delete YK_CurryPH Where", "COMMIT TRANSACTION", "select top 1", "select top 1"}));
}

TEST_F(SaveOrderTest, LongDocumentsKeepTheirLastLinesInView) {
  for (int i = 4; i <= 9; ++i) {
    Run("Insert Into YF_YPML(YPBM,YPMC,DW,CLB,LSJ,PFJ,PLJ,YKKCL,SFXM) Values('10000" + std::to_string(i) +
        "','药','盒',1,1,1,1,0,'西药费')");
  }
  const std::vector<std::pair<std::string, int>> top_rows = {{"100002", 1}, {"100004", 1}, {"100005", 1}, {"100006", 1},
                                                             {"100007", 1}, {"100008", 1}, {"100009", 2}};
  for (const auto& [code, top] : top_rows) {
    AddLine(code, "1");
    EXPECT_EQ(lines.TopRow(), top) << code;
  }
}

TEST_F(SaveOrderTest, ADamagedParkedDocumentIsToldAndChangesNothing) {
  AddLine("100001", "1");
  WriteBytes(directory / "西药库RYYP.Dat", "not a document");
  desktop.answers.push_back(Answer::kYes);
  form.UserClick(form.Field<Button>("Command5"));
  EXPECT_TRUE(desktop.boxes.back().text.starts_with("错误号：  "));
  EXPECT_EQ(lines.Text(1, 1), "100001");
}

}  // namespace
}  // namespace luming
