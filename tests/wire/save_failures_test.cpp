#include <functional>

#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "support/document_columns.h"
#include "wire/wire_receipt_test.h"

namespace luming {
namespace {

using tds::FaultKind;

constexpr std::string_view kErrorBox = "错误号：  ";
constexpr std::string_view kSaved = "入库添加成功!";
constexpr std::string_view kUnsure = "不能确定本次操作的内容是否已经保存";

/// One receipt of twenty pieces of one drug is on the screen, ready to be saved.
class SaveFailuresTest : public WireReceiptTest {
 protected:
  SaveFailuresTest() {
    Write();
    desktop.TakeBoxTexts();
  }

  void Write() {
    AddLine("100001", "2");
    FillHead();
  }
  int Number(const std::string& sql) { return static_cast<int>(store->Execute(sql).Field(0).NumberOr(0)); }
  int Receipts() { return Number("Select COUNT(*) From YK_YPRK"); }

  /// Each receipt is there with its head, line, batch quantity, counter and row of the log.
  void ExpectWholeReceipts(int count) {
    EXPECT_EQ(Receipts(), count);
    EXPECT_EQ(Number("Select COUNT(*) From YK_YPRKMX"), count);
    EXPECT_EQ(Number("Select SUM(SL) From YK_CurryPH"), 20 * count);
    EXPECT_EQ(Number("Select YKKCL From YF_YPML Where YPBM='100001'"), 20 * count);
    EXPECT_EQ(Number("Select COUNT(*) From YPCRK"), count);
  }
  void ExpectScreenAsItWas() {
    EXPECT_EQ(lines.MaxRows(), 1);
    EXPECT_EQ(form.Field<TextBox>("sRKDH").Text().size(), 12U);
    EXPECT_EQ(form.Field<ComboBox>("sGHDW").Text() + form.Field<TextBox>("sFPH").Text(), "云泊医药有限公司25659688");
  }
  /// The next thing that an operator does finds out that the connection is gone, and opens it again.
  void FindOutTheLoss() {
    form.Field<TextBox>("PM").UserText("");
    form.Field<TextBox>("PM").UserText("1");
    desktop.TakeBoxTexts();
  }
  /// Saves and gives the boxes behind the question.
  std::vector<std::string> SaveAndTakeBoxes() {
    Save();
    std::vector<std::string> boxes = desktop.TakeBoxTexts();
    boxes.erase(boxes.begin());
    return boxes;
  }
};

/// A document that is saved again and again while the server misbehaves.
struct SweptDocument {
  std::string_view saved;  ///< what a save that got through says
  int statements;          ///< that a save sends at least
  std::function<void()> write;
  std::function<std::vector<std::string>()> save;  ///< gives the boxes behind the question
  std::function<int()> count;                      ///< of those in the store
  std::function<void(int)> expect_whole;
  std::function<void()> expect_screen_as_it_was;
};

struct Sweep {
  const char* name;
  FaultKind kind;
};

class SaveSweepTest : public SaveFailuresTest, public testing::WithParamInterface<Sweep> {
 protected:
  /// The fault hits the first statement of the save, then of the next save the second, until a save gets through.
  void SweepThrough(const SweptDocument& document) {
    int documents = 0;
    int hit = 0;
    for (;; ++hit) {
      SCOPED_TRACE(hit);
      server.Misbehave({.kind = GetParam().kind, .skip = hit});
      const std::vector<std::string> boxes = document.save();
      if (server.Behave() > 0) break;
      ASSERT_FALSE(boxes.empty());
      documents += TakeOutcome(document, boxes.back(), documents);
      document.expect_whole(documents);
      ASSERT_EQ(document.save(), std::vector<std::string>{std::string(document.saved)}) << "the server is well again";
      document.expect_whole(++documents);
      document.write();
    }
    EXPECT_GE(hit, document.statements);
    document.expect_whole(documents + 1);
  }

 private:
  /// How many documents the save has left in the store: only the answer to its last statement leaves room for doubt.
  int TakeOutcome(const SweptDocument& document, const std::string& told, int before) {
    if (told == document.saved) {
      FindOutTheLoss();
      document.write();
      return 1;
    }
    EXPECT_TRUE(told.starts_with(kErrorBox)) << told;
    document.expect_screen_as_it_was();
    const int left = document.count() - before;
    EXPECT_LE(left, told.find(kUnsure) != std::string::npos ? 1 : 0) << told;
    return left;
  }
};

TEST_P(SaveSweepTest, ReceiptsAreSavedWholeOrNotAtAll) {
  SweepThrough({.saved = kSaved,
                .statements = 11,
                .write = [this] { Write(); },
                .save = [this] { return SaveAndTakeBoxes(); },
                .count = [this] { return Receipts(); },
                .expect_whole = [this](int count) { ExpectWholeReceipts(count); },
                .expect_screen_as_it_was = [this] { ExpectScreenAsItWas(); }});
}

TEST_P(SaveSweepTest, ReturnsToTheSupplierAreSavedWholeOrNotAtAll) {
  store->Execute(
      "Update YF_YPML Set YKKCL=1000 Where YPBM='100001' "
      "Insert Into YK_CurryPH(RKDH,YPBM,PH,SL,PFJ,PLJ,RKRQ) Values('0','100001','B',1000,1,1,'2026-02-01')");
  Form& screen = kReturnToSupplier.form(app);
  screen.EnsureLoaded();
  auto& returned = screen.Field<Grid>("fpSpread1");
  const auto write = [&] {
    screen.Field<ComboBox>("sGHDW").SetText("云泊医药有限公司");
    screen.Field<ComboBox>("sFHR").SetText("吕静仪");
    returned.SetMaxRows(1);
    returned.SetText(1, supplier_return::kCode, "100001");
    returned.SetText(1, supplier_return::kQuantity, "2");
    returned.SetText(1, supplier_return::kBatch, "B");
    returned.SetText(1, supplier_return::kRatio, "1");
  };
  write();
  SweepThrough({.saved = "退药成功!",
                .statements = 10,
                .write = write,
                .save =
                    [&] {
                      desktop.answers.push_back(Answer::kYes);
                      screen.UserClick(screen.Field<Button>("Command1"));
                      std::vector<std::string> boxes = desktop.TakeBoxTexts();
                      boxes.erase(boxes.begin());
                      desktop.answers.clear();
                      return boxes;
                    },
                .count = [this] { return Number("Select COUNT(*) From YK_TYDJ"); },
                .expect_whole =
                    [this](int count) {
                      EXPECT_EQ(Number("Select COUNT(*) From YK_TYDJ"), count);
                      EXPECT_EQ(Number("Select COUNT(*) From YK_TYDJMX"), count);
                      EXPECT_EQ(Number("Select COUNT(*) From YPCRK"), count);
                      EXPECT_EQ(Number("Select YKKCL From YF_YPML Where YPBM='100001'"), 1000 - 2 * count);
                      EXPECT_EQ(Number("Select SUM(SL) From YK_CurryPH"), 1000 - 2 * count);
                    },
                .expect_screen_as_it_was =
                    [&] {
                      EXPECT_EQ(returned.MaxRows(), 1);
                      EXPECT_EQ(screen.Field<ComboBox>("sGHDW").Text(), "云泊医药有限公司");
                    }});
}

INSTANTIATE_TEST_SUITE_P(Wire, SaveSweepTest,
                         testing::Values(Sweep{"CutBefore", FaultKind::kCutBefore},
                                         Sweep{"CutDuring", FaultKind::kCutDuring},
                                         Sweep{"CutAfter", FaultKind::kCutAfter}, Sweep{"Garbage", FaultKind::kGarbage},
                                         Sweep{"Deadlock", FaultKind::kDeadlock}),
                         [](const auto& sweep) { return std::string(sweep.param.name); });

TEST_F(SaveFailuresTest, AStatementThatTakesTooLongUndoesTheSave) {
  BecomeImpatient();
  for (const char* statement : {"Insert into YK_YPRK(", "Update YF_YPML", "COMMIT"}) {
    server.Misbehave({.kind = FaultKind::kSlow, .statement = statement, .delay = std::chrono::minutes(1)});
    const std::vector<std::string> boxes = SaveAndTakeBoxes();
    ASSERT_EQ(boxes.size(), 1U) << statement;
    EXPECT_EQ(boxes[0].find("错误号：  -2147217871\r\n\r\n错误描述：数据库服务器没有在规定的时间内答复，操作已取消。"),
              0U)
        << boxes[0];
    ExpectWholeReceipts(0);
    ExpectScreenAsItWas();
  }
  EXPECT_EQ(SaveAndTakeBoxes().back(), kSaved);
  ExpectWholeReceipts(1);
}

TEST_F(SaveFailuresTest, WhatIsGivenUpMayHaveBeenDone) {
  BecomeImpatient();
  server.Misbehave({.kind = FaultKind::kLate, .statement = "BEGIN", .delay = std::chrono::minutes(1)});
  EXPECT_EQ(SaveAndTakeBoxes().size(), 1U);
  ExpectWholeReceipts(0);
  store->BeginTrans();  // fails where the transaction that was given up still stands
  store->RollbackTrans();
  server.Misbehave({.kind = FaultKind::kLate, .statement = "COMMIT", .delay = std::chrono::minutes(1)});
  EXPECT_EQ(SaveAndTakeBoxes(), std::vector<std::string>{std::string(kSaved)}) << "the server knows that it is kept";
  ExpectWholeReceipts(1);
}

TEST_F(SaveFailuresTest, ARollbackThatIsGivenUpLeavesNothingOpen) {
  BecomeImpatient();
  server.Misbehave({.kind = FaultKind::kError, .statement = "Insert Into YK_YPRKMX", .number = 8152});
  server.Misbehave({.kind = FaultKind::kSlow, .statement = "ROLLBACK", .delay = std::chrono::minutes(1)});
  EXPECT_EQ(SaveAndTakeBoxes().size(), 1U);
  ExpectWholeReceipts(0);
  ExpectScreenAsItWas();
  store->BeginTrans();
  store->RollbackTrans();
  EXPECT_EQ(SaveAndTakeBoxes().back(), kSaved);
  ExpectWholeReceipts(1);
}

TEST_F(SaveFailuresTest, AServerThatFallsSilentIsLeft) {
  BecomeImpatient();
  server.Misbehave({.kind = FaultKind::kSilent, .statement = "Insert Into YK_YPRKMX"});
  const std::vector<std::string> boxes = SaveAndTakeBoxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_NE(boxes[0].find("数据库服务器没有在规定的时间内答复，连接已中断，操作没有完成。"), std::string::npos)
      << boxes[0];
  ExpectScreenAsItWas();
  EXPECT_EQ(SaveAndTakeBoxes().back(), kSaved) << "the server has dropped what the lost client had begun";
  ExpectWholeReceipts(1);
}

TEST_F(SaveFailuresTest, AnotherClientsTransactionIsWaitedForAndThenTold) {
  BecomeImpatient();
  const auto save_meanwhile = [this](const char* told) {
    store->BeginTrans();
    const std::vector<std::string> boxes = SaveAndTakeBoxes();
    store->RollbackTrans();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_NE(boxes[0].find(told), std::string::npos) << boxes[0];
    ExpectWholeReceipts(0);
    ExpectScreenAsItWas();
  };
  save_meanwhile("数据库服务器没有在规定的时间内答复，操作已取消。");
  tds::TdsServer impatient(directory.Path(), clock, {.busy_timeout = std::chrono::milliseconds(100)});
  app.Cn->Close();
  app.ConnStr = AddressOf(impatient);
  save_meanwhile("正被另一个程序使用，请稍后重试。");
  EXPECT_EQ(SaveAndTakeBoxes().back(), kSaved);
  ExpectWholeReceipts(1);
}

TEST_F(SaveFailuresTest, ANumberThatCannotBeReadStaysEmpty) {
  server.Misbehave({.kind = FaultKind::kError, .statement = "select top 1 RKDH", .number = 8115});
  EXPECT_EQ(SaveAndTakeBoxes().back(), kSaved);
  ExpectWholeReceipts(1);
  EXPECT_EQ(Query("Select RKDH From YK_YPRK"), "");
}

}  // namespace
}  // namespace luming
