#include "documents/receipt_test.h"

namespace luming {
namespace {

using ReceiptEntryTest = ReceiptTest;

TEST_F(ReceiptEntryTest, TheScreenOpensReadyForAReceipt) {
  EXPECT_EQ(form.Caption(), "药品入库录入");
  EXPECT_EQ(form.sRKDH.Text(), "202603010001");
  EXPECT_EQ(form.FPRQ.Text(), "2026-03-01");
  EXPECT_EQ(form.lFKBZ.Text(), "是");
  EXPECT_EQ(form.sGHDW.Items(), std::vector<std::string>{"云泊医药有限公司"});
  EXPECT_EQ(form.sYSR.Items(), std::vector<std::string>{"方立群"});
  EXPECT_EQ(form.sFHR.Items(), std::vector<std::string>{"吕静仪"});
  EXPECT_EQ(form.fpSpread1.MaxRows(), 0);
  EXPECT_TRUE(form.fpSpread1.ColumnHidden(14));
}

TEST_F(ReceiptEntryTest, WithoutTheRightTheScreenClosesAgain) {
  form.Unload();
  app.CurUser.YPGL_YKJYLR = false;
  auto& refused = app.forms.Get<ek_YK_RKMX>(app);
  refused.Show();
  EXPECT_TRUE(refused.IsUnloaded());
  EXPECT_FALSE(refused.IsShown());
  EXPECT_EQ(desktop.TakeBox().text, "系统提示您：  \r\n\r\n      你没有【药库进药录入】的权限,请您给系统管理员联系。");
}

TEST_F(ReceiptEntryTest, LinesTakeTheirFiguresByUnit) {
  AddLine("100001", "2");
  AddLine("100002", "3");
  AddLine("100003", "4", true);
  EXPECT_EQ(Row(1), "100001|阿莫西林胶囊|0.25g*10粒|盒|望川制药|13.000|15.50|2|12.000000|24.000|A1|2027-12-31|10|");
  EXPECT_EQ(Row(2), "100002|碘伏消毒液|100ml|瓶|林壑药业|6.000|8.00|3|5.250000|15.750|A1|2027-12-31|1|");
  EXPECT_EQ(Row(3), "100003|头孢克肟片|0.1g*6片|片|云岫制药|24.000|5.00|4|20.000000|13.333|A1|2027-12-31|1|3.333");
  EXPECT_EQ(form.fpSpread1.Text(4, 1), "合计：");
  EXPECT_EQ(form.fpSpread1.Number(4, 10), 53.083);
  EXPECT_EQ(form.ActiveControl(), &form.picker.PM);
  EXPECT_EQ(form.picker.PM.SelLength(), CharCount("100003"));
}

TEST_F(ReceiptEntryTest, AnUnsplitDrugOffersNoUnit) {
  Pick("100002", [](ek_RKXZ& dialog) {
    EXPECT_FALSE(dialog.DW.Enabled());
    EXPECT_EQ(dialog.DW.Items(), std::vector<std::string>{"瓶"});
    dialog.UserClick(dialog.Command2);
  });
}

TEST_F(ReceiptEntryTest, TheDialogShowsWhatTheMatchHolds) {
  Pick("100001", [&](ek_RKXZ& dialog) {
    EXPECT_EQ(dialog.Caption(), "请您输入,(回车继续)");
    EXPECT_EQ(dialog.PM.Caption(), "阿莫西林胶囊");
    EXPECT_EQ(dialog.GG.Caption(), "0.25g*10粒");
    EXPECT_EQ(dialog.DW.Items(), (std::vector<std::string>{"盒", "粒"}));
    EXPECT_EQ(dialog.sngSL.Text(), "1");
    EXPECT_EQ(dialog.sngLSJ.Text(), "15.50");
    EXPECT_EQ(dialog.PFJ.Text(), "12.000000");
    EXPECT_EQ(dialog.PLJ.Text(), "13.000");
    EXPECT_EQ(dialog.lYXQ.Text(), "2026-03-01");
    EXPECT_EQ(dialog.ActiveControl(), &dialog.sngSL);
    EXPECT_EQ(dialog.sngSL.SelLength(), 1U);
    dialog.UserClick(dialog.Command2);
  });
}

TEST_F(ReceiptEntryTest, TheAmountFollowsQuantityPriceAndUnit) {
  Pick("100001", [&](ek_RKXZ& dialog) {
    dialog.sngSL.UserText("3");
    EXPECT_EQ(dialog.Label_JE.Caption(), "36.0000");
    dialog.DW.UserChoose(1);
    EXPECT_EQ(dialog.sngLSJ.Text(), "1.550");
    EXPECT_EQ(dialog.Label_JE.Caption(), "3.6000");
    dialog.PFJ.UserText("12.5");
    EXPECT_EQ(dialog.Label_JE.Caption(), "3.7500");
    dialog.sngSL.UserText("3-");
    dialog.sngSL.UserText("1/2");
    EXPECT_EQ(dialog.Label_JE.Caption(), "-3.7500") << "stays while the quantity is no number";
    dialog.sngSL.UserText("");
    EXPECT_EQ(dialog.Label_JE.Caption(), "");
    dialog.DW.UserChoose(0);
    EXPECT_EQ(dialog.sngLSJ.Text(), "15.50");
    dialog.UserClick(dialog.Command2);
  });
}

TEST_F(ReceiptEntryTest, EnterWalksTheDialogAndKeysAreFiltered) {
  Pick("100001", [&](ek_RKXZ& dialog) {
    Type(dialog, "2x.5");
    Press(dialog, key::kEnter);
    EXPECT_EQ(dialog.ActiveControl(), &dialog.sngLSJ);
    Press(dialog, key::kEnter);
    Type(dialog, ".1.2.3");
    EXPECT_EQ(dialog.PFJ.Text(), "1.23");
    Press(dialog, key::kEnter);
    Press(dialog, key::kEnter);
    Type(dialog, "B-7");
    Press(dialog, key::kEnter);
    EXPECT_EQ(dialog.ActiveControl(), &dialog.lYXQ);
    Press(dialog, key::kEnter);
    Press(dialog, key::kEnter);
    EXPECT_TRUE(dialog.IsUnloaded());
  });
  EXPECT_EQ(Row(1), "100001|阿莫西林胶囊|0.25g*10粒|盒|望川制药|13.000|15.50|2.5|1.23|3.075|B-7|2026-03-01|10|");
}

TEST_F(ReceiptEntryTest, TheDialogRefusesWhatALineCannotBe) {
  struct Case {
    const char* quantity;
    const char* batch;
    const char* purchase;
    const char* wholesale;
    const char* list;
  };
  const std::vector<Case> cases = {
      {"", "A", "1", "1", "     1 数量不能为空!\r\n"},
      {"1/2", "A", "1", "1", "     1 数量只能为数字!\r\n"},
      {"1", "", "1", "1", "     1 批号不能为空!\r\n"},
      {"1", "A", "", "", "     1进价不能为空!\r\n     2批发价不能为空!\r\n"},
      {"1", "A", "x", "y", "     1进价只能为数字\r\n     2批发价只能为数字\r\n"},
      {"", "", "", "y",
       "     1 数量不能为空!\r\n     2 批号不能为空!\r\n     3进价不能为空!\r\n     4批发价只能为数字\r\n"},
  };
  Pick("100001", [&](ek_RKXZ& dialog) {
    for (const Case& c : cases) {
      dialog.sngSL.UserText(c.quantity);
      dialog.sPH.UserText(c.batch);
      dialog.PFJ.UserText(c.purchase);
      dialog.PLJ.UserText(c.wholesale);
      dialog.UserClick(dialog.Command1);
      const Box box = desktop.TakeBox();
      EXPECT_EQ(box.text, std::string("系统提示您:\r\n\r\n") + c.list);
      EXPECT_EQ(box.title, "提示");
      EXPECT_EQ(box.style, box::kStop);
      EXPECT_FALSE(dialog.IsUnloaded());
    }
    EXPECT_EQ(dialog.ActiveControl(), &dialog.PLJ) << "the last complaint's field";
    dialog.UserClick(dialog.Command2);
  });
}

TEST_F(ReceiptEntryTest, NegativeQuantitiesNeedTheirRight) {
  app.CurUser.YPGL_FSYP = false;
  Pick("100001", [&](ek_RKXZ& dialog) {
    dialog.sngSL.UserText("-2");
    dialog.sPH.UserText("A");
    dialog.UserClick(dialog.Command1);
    EXPECT_EQ(desktop.TakeBoxTexts(),
              (std::vector<std::string>{"系统提示您：  \r\n\r\n      你没有【输入负数】的权限,请您给系统管理员联系。",
                                        "系统提示您:\r\n\r\n     1 你没有输入负数的权限!\r\n"}));
    EXPECT_FALSE(dialog.IsUnloaded());
    app.CurUser.YPGL_FSYP = true;
    dialog.UserClick(dialog.Command1);
    EXPECT_TRUE(dialog.IsUnloaded());
  });
  EXPECT_EQ(form.fpSpread1.Text(1, 8), "-2");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(ReceiptEntryTest, CancellingTakesTheLineBack) {
  AddLine("100002", "1");
  const std::vector<std::function<void(ek_RKXZ&)>> ways = {
      [](ek_RKXZ& dialog) { dialog.UserClick(dialog.Command2); },
      [this](ek_RKXZ& dialog) { Press(dialog, key::kEsc); },
      [](ek_RKXZ& dialog) { dialog.UserClose(); },
  };
  for (const auto& cancel : ways) {
    Pick("100001", cancel);
    EXPECT_EQ(form.fpSpread1.MaxRows(), 2);
    EXPECT_EQ(form.fpSpread1.Text(1, 1), "100002");
    EXPECT_EQ(form.fpSpread1.Text(2, 1), "合计：");
  }
}

TEST_F(ReceiptEntryTest, ADrugStandsOnceAndItsRefusalTakesTheTotal) {
  AddLine("100001", "1");
  PickWithoutDialog("100001");
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "收费项目< 阿莫西林胶囊 >在第1行已存在!");
  EXPECT_EQ(box.title, "错误");
  EXPECT_EQ(form.fpSpread1.MaxRows(), 1);
  AddLine("100002", "1");
  EXPECT_EQ(form.fpSpread1.Text(3, 1), "合计：");
}

TEST_F(ReceiptEntryTest, DeletingALineLeavesNoTotal) {
  AddLine("100001", "1");
  AddLine("100002", "1");
  form.fpSpread1.SetActiveCell(1, 1);
  form.UserClick(form.Command4);
  EXPECT_EQ(form.fpSpread1.MaxRows(), 1);
  EXPECT_EQ(form.fpSpread1.Text(1, 1), "100002");
  form.UserClick(form.Command4);
  EXPECT_EQ(form.fpSpread1.MaxRows(), 0);
  form.UserClick(form.Command4);
  EXPECT_EQ(desktop.TakeBox().text, "鹿鸣仓管系统  未发现可以删除的内容。");
}

TEST_F(ReceiptEntryTest, TheTotalItselfCanBeDeleted) {
  AddLine("100001", "1");
  form.fpSpread1.SetActiveCell(2, 1);
  form.UserClick(form.Command4);
  EXPECT_EQ(form.fpSpread1.MaxRows(), 1);
  EXPECT_EQ(form.fpSpread1.Text(1, 1), "100001");
}

TEST_F(ReceiptEntryTest, EditsInTheGridReckonWithTheTypedPrice) {
  AddLine("100001", "5", true);
  EXPECT_EQ(form.fpSpread1.Text(1, 10), "6.000");
  EXPECT_TRUE(form.fpSpread1.UserEdit(1, 8, "4"));
  EXPECT_EQ(form.fpSpread1.Text(1, 10), "48.0000") << "the unit plays no part";
  EXPECT_EQ(form.fpSpread1.Number(2, 10), 48);
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_TRUE(form.fpSpread1.UserEdit(1, 9, "13.5"));
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "进货价格大于批发价格。");
  EXPECT_EQ(box.title, "系统信息");
  EXPECT_EQ(form.fpSpread1.Text(1, 9), "13.5");
  EXPECT_EQ(form.fpSpread1.Text(1, 10), "54.0000");
  EXPECT_TRUE(form.fpSpread1.UserEdit(1, 11, "B2"));
  EXPECT_EQ(form.fpSpread1.Text(1, 10), "54.0000");
  EXPECT_FALSE(form.fpSpread1.UserEdit(1, 1, "100002"));
  EXPECT_FALSE(form.fpSpread1.UserEdit(2, 10, "1")) << "the total is locked";
}

TEST_F(ReceiptEntryTest, LongDocumentsKeepTheirLastLinesInView) {
  for (int i = 4; i <= 9; ++i) {
    Run("Insert Into YF_YPML(YPBM,YPMC,DW,CLB,LSJ,PFJ,PLJ,YKKCL,SFXM) Values('10000" + std::to_string(i) +
        "','药','盒',1,1,1,1,0,'西药费')");
  }
  const std::vector<std::pair<std::string, int>> top_rows = {{"100002", 1}, {"100004", 1}, {"100005", 1}, {"100006", 1},
                                                             {"100007", 1}, {"100008", 1}, {"100009", 2}};
  for (const auto& [code, top] : top_rows) {
    AddLine(code, "1");
    EXPECT_EQ(form.fpSpread1.TopRow(), top) << code;
  }
}

TEST_F(ReceiptEntryTest, ANewDrugNeedsItsEditor) {
  const Command* editor = app.commands.Find(201);
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(form.Command6.Enabled(), static_cast<bool>(editor->action));
}

// ---- Parking ----

class ReceiptParkingTest : public ReceiptTest {
 protected:
  void Park() { form.UserClick(form.Command2); }
  void Load() { form.UserClick(form.Command5); }
  void Told(const std::string& text) {
    const Box box = desktop.TakeBox();
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.title, "系统提示");
  }
};

TEST_F(ReceiptParkingTest, LinesComeBackWithTheirTotal) {
  AddLine("100001", "5", true);
  Park();
  Told("药品暂存成功");
  EXPECT_TRUE(std::filesystem::exists(directory / "西药库RYYP.Dat"));

  form.Unload();
  auto& again = app.forms.Get<ek_YK_RKMX>(app);
  again.Show();
  again.UserClick(again.Command5);
  Told("加载成功");
  ASSERT_EQ(again.fpSpread1.MaxRows(), 2);
  EXPECT_EQ(again.fpSpread1.Text(1, 14), "1.200");
  EXPECT_EQ(again.fpSpread1.Text(2, 1), "合计：");
  EXPECT_TRUE(again.fpSpread1.Locked(2, 10));
  EXPECT_FALSE(again.fpSpread1.Locked(1, 10));
  EXPECT_TRUE(again.fpSpread1.UserEdit(1, 8, "10"));
  EXPECT_EQ(again.fpSpread1.Number(2, 10), 120) << "the sum is live again";
}

TEST_F(ReceiptParkingTest, TheNextPickLeavesOneTotal) {
  AddLine("100001", "1");
  Park();
  desktop.answers.push_back(Answer::kYes);
  Load();
  desktop.TakeBoxTexts();
  AddLine("100002", "1");
  ASSERT_EQ(form.fpSpread1.MaxRows(), 3);
  EXPECT_EQ(form.fpSpread1.Text(3, 1), "合计：");
}

TEST_F(ReceiptParkingTest, AsksBeforeItReplacesLines) {
  AddLine("100001", "1");
  Park();
  form.UserClick(form.Command4);
  AddLine("100002", "1");
  desktop.TakeBoxTexts();
  desktop.answers.push_back(Answer::kNo);
  Load();
  EXPECT_EQ(desktop.TakeBox().text, "加载暂存药品会替换目前输入的药品，请确认？");
  EXPECT_EQ(form.fpSpread1.Text(1, 1), "100002");
  desktop.answers.push_back(Answer::kYes);
  Load();
  EXPECT_EQ(form.fpSpread1.Text(1, 1), "100001");
  EXPECT_EQ(desktop.boxes.size(), 2U);
}

TEST_F(ReceiptParkingTest, NothingToParkAndNothingParked) {
  Park();
  Told("没有数据不能暂存");
  Load();
  Told("没有找到暂存内容");
  AddLine("100001", "1");
  Park();
  Told("药品暂存成功");
  app.KFMC = "中药库";
  Load();
  Told("没有找到暂存内容");
}

TEST_F(ReceiptParkingTest, ADamagedFileIsShownAndChangesNothing) {
  AddLine("100001", "1");
  WriteBytes(directory / "西药库RYYP.Dat", "not a document");
  desktop.answers.push_back(Answer::kYes);
  Load();
  EXPECT_TRUE(desktop.boxes.back().text.starts_with("错误号：  "));
  EXPECT_EQ(form.fpSpread1.Text(1, 1), "100001");
}

}  // namespace
}  // namespace luming
