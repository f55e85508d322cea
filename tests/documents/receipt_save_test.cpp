#include "documents/receipt_test.h"

namespace luming {
namespace {

class ReceiptSaveTest : public ReceiptTest {
 protected:
  std::string Catalogue(const std::string& code) {
    return Query("Select PFJ,PLJ,YKKCL From YF_YPML Where YPBM='" + code + "'");
  }
  std::string Count(const std::string& table) { return Query("Select COUNT(*) From " + table); }
  void ExpectNothingSaved() {
    for (const char* table : {"YK_YPRK", "YK_YPRKMX", "YK_CurryPH", "YPCRK"}) EXPECT_EQ(Count(table), "0") << table;
    EXPECT_EQ(Catalogue("100001"), "12\t13\t0");
    EXPECT_EQ(Catalogue("100002"), "5.25\t6\t7");
  }
};

TEST_F(ReceiptSaveTest, OneSaveWritesAllFacesOfTheStock) {
  AddLine("100001", "2");
  AddLine("100003", "4", true);
  FillHead();
  form.lFKBZ.UserChoose(1);
  Save();
  EXPECT_EQ(desktop.TakeBoxTexts(), (std::vector<std::string>{"你确定要执行此操作吗？请检查。", "入库添加成功!"}));

  EXPECT_EQ(
      Query("Select KFMC,RKDH,RKRQ,FPH,FPRQ,GHDW,FKBZ,YSR,FHR,DJR From YK_YPRK"),
      "西药库\t202603010001\t2026/3/1 10:00:00\t25659688\t2026/2/27\t云泊医药有限公司\t0\t方立群\t吕静仪\t管理员");
  EXPECT_EQ(
      Query("Select RKDH,YPBM,PM,GG,DW,CD,PLJ,RKSL,PFJ,JE,PH,XQ,CLB,LSJ,SJPFJ From YK_YPRKMX Order by id"),
      "202603010001\t100001\t阿莫西林胶囊\t0.25g*10粒\t盒\t望川制药\t13\t2\t12\t24\tA1\t2027/12/31\t10\t15.5\t12\n"
      "202603010001\t100003\t头孢克肟片\t0.1g*6片\t片\t云岫制药\t24\t4\t20\t13.333\tA1\t2027/12/31\t1\t5\t3.333");
  EXPECT_EQ(Query("Select RKDH,YPBM,PH,XQ,SL,PFJ,PLJ,RKRQ From YK_CurryPH Order by ID"),
            "202603010001\t100001\tA1\t2027/12/31\t20\t12\t13\t2026/3/1\n"
            "202603010001\t100003\tA1\t2027/12/31\t4\t3.333\t24\t2026/3/1");
  EXPECT_EQ(Query("Select YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY From YPCRK Order by id"),
            "100001\t2\t10\t20\t盒\t0\t入库记录\t2026/3/1 10:00:00\t西药库\t入库单号：202603010001\t管理员\n"
            "100003\t4\t1\t4\t片\t0\t入库记录\t2026/3/1 10:00:00\t西药库\t入库单号：202603010001\t管理员");
  EXPECT_EQ(Catalogue("100001"), "1.2\t13\t20") << "the large unit's price divided by the ratio";
  EXPECT_EQ(Catalogue("100003"), "20\t24\t4") << "the typed price of a line in the smallest unit";

  EXPECT_EQ(form.fpSpread1.MaxRows(), 0);
  EXPECT_EQ(form.sRKDH.Text(), "202603010002");
  EXPECT_EQ(form.sFPH.Text() + form.sGHDW.Text(), "");
  EXPECT_EQ(form.sYSR.Text() + form.sFHR.Text(), "方立群吕静仪");
}

TEST_F(ReceiptSaveTest, StatementsGoOutInTheirOrderAndWords) {
  AddLine("100001", "4", true);
  form.fpSpread1.UserEdit(1, 12, "2027/6/30");
  FillHead();
  TakeSent();
  Save();
  const std::string number =
      "select top 1 RKDH From YK_YPRK Where RKRQ Between '2026-03-01 00:00:00' and '2026-03-01 23:59:59' order by id "
      "desc";
  const std::vector<std::string> sent = TakeSent();
  ASSERT_EQ(sent.size(), 11U);
  EXPECT_EQ(sent[1], number);
  EXPECT_EQ(sent[2],
            "Insert into YK_YPRK(KFMC,RKDH,RKRQ,FPH,FPRQ,GHDW,FKBZ,YSR,FHR,DJR) Values('西药库','202603010001',"
            "'2026-03-01 10:00:00','25659688','2026-02-27','云泊医药有限公司',1,'方立群','吕静仪','管理员')");
  EXPECT_EQ(sent[3],
            "Insert Into YK_YPRKMX(RKDH,YPBM,PM,GG,DW,CD,PLJ,RKSL,PFJ,JE,PH,XQ,CLB,LSJ,SJPFJ)Values('202603010001',"
            "'100001','阿莫西林胶囊','0.25g*10粒','粒','望川制药',13.000,4,12.000000,4.800,'A1','2027/6/30',1,1.55,"
            "1.200)");
  EXPECT_EQ(sent[4], "Select id From YK_CurryPH Where YPBM Like'100001' And PH Like'A1'");
  EXPECT_EQ(sent[5],
            "Insert Into YK_CurryPH(RKDH,YPBM,PH,XQ,SL,PFJ,PLJ,RKRQ)Values('202603010001','100001','A1','2027/6/30',4,"
            "1.200,13.000,'2026-03-01')");
  EXPECT_EQ(sent[6], "Update YF_YPML SET PFJ=12.000,PLJ=13.000,YKKCL=YKKCL+4 Where YPBM Like'100001'");
  EXPECT_EQ(sent[7],
            "Insert into YPCRK (YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY) Values('100001',4,1,4,'粒',0,'入库记录',"
            "'2026/3/1 10:00:00','西药库','入库单号：202603010001','管理员')");
  EXPECT_EQ(sent[8], number);
  EXPECT_EQ(sent[9], number) << "the next number is taken ahead of the commit";
}

TEST_F(ReceiptSaveTest, AnExistingBatchOnlyGrows) {
  AddLine("100001", "2");
  FillHead();
  Save();
  Pick("100001", [](ek_RKXZ& dialog) {
    dialog.PFJ.UserText("99");
    dialog.sPH.UserText("A1");
    dialog.lYXQ.SetValue(DateTime(2030, 1, 1));
    dialog.UserClick(dialog.Command1);
  });
  FillHead();
  Save();
  EXPECT_EQ(Query("Select RKDH,SL,PFJ,XQ From YK_CurryPH"), "202603010001\t30\t12\t2027/12/31");
  EXPECT_EQ(Catalogue("100001"), "9.9\t13\t30");
}

TEST_F(ReceiptSaveTest, EmptyAndForeignCellsAreNormalised) {
  struct Case {
    int column;
    const char* text;
    const char* field;
    const char* saved;
  };
  const std::vector<Case> cases = {
      {6, "", "PLJ", "0"},  {7, "", "LSJ", "0"},        {9, "", "PFJ", "0"},    {10, "", "JE", "0"},
      {13, "", "CLB", "1"}, {12, "soon", "XQ", "NULL"}, {12, "", "XQ", "NULL"}, {12, "2027.1.5", "XQ", "2027/1/5"},
  };
  for (const Case& c : cases) {
    AddLine("100001", "2");
    ASSERT_TRUE(form.fpSpread1.UserEdit(1, c.column, c.text)) << c.field;
    FillHead();
    Save();
    EXPECT_EQ(Query(std::string("Select top 1 ") + c.field + " From YK_YPRKMX Order by id desc"), c.saved) << c.field;
  }
  EXPECT_EQ(desktop.boxes.size(), 2 * cases.size());
}

TEST_F(ReceiptSaveTest, AnUnreadableUnitPriceIsSavedAsZero) {
  AddLine("100001", "2", true);
  form.fpSpread1.SetText(1, 14, "?");
  FillHead();
  Save();
  EXPECT_EQ(Query("Select SJPFJ From YK_YPRKMX"), "0");
}

TEST_F(ReceiptSaveTest, ANegativeReceiptTakesStockBack) {
  AddLine("100002", "-9");
  FillHead();
  Save();
  EXPECT_EQ(Catalogue("100002"), "5.25\t6\t-2");
  EXPECT_EQ(Query("Select SL From YK_CurryPH"), "-9");
  EXPECT_EQ(Query("Select SL,KCL,LB From YPCRK"), "-9\t-9\t0");
}

TEST_F(ReceiptSaveTest, AFailureInTheMiddleUndoesEverythingAndKeepsTheScreen) {
  AddLine("100001", "2");
  AddLine("100002", "3");
  ASSERT_TRUE(form.fpSpread1.UserEdit(2, 11, "B'2"));
  FillHead();
  Save();
  const std::vector<std::string> texts = desktop.TakeBoxTexts();
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_TRUE(texts[1].starts_with("错误号：  -2147217900\r\n\r\n错误描述：")) << texts[1];
  ExpectNothingSaved();
  EXPECT_EQ(form.fpSpread1.MaxRows(), 2);
  EXPECT_EQ(form.fpSpread1.Text(1, 8), "2");
  EXPECT_EQ(form.sGHDW.Text(), "云泊医药有限公司");
  EXPECT_EQ(form.sRKDH.Text(), "202603010001");

  ASSERT_TRUE(form.fpSpread1.UserEdit(2, 11, "B2"));
  Save();
  EXPECT_EQ(Count("YK_YPRKMX"), "2");
}

TEST_F(ReceiptSaveTest, ALostTableUndoesTheHead) {
  Run("Drop Table YK_CurryPH");
  AddLine("100001", "2");
  FillHead();
  Save();
  EXPECT_EQ(desktop.boxes.size(), 3U) << "question, the look-up's failure, the save's";
  EXPECT_EQ(Count("YK_YPRK") + Count("YK_YPRKMX"), "00");
}

TEST_F(ReceiptSaveTest, AFailingLogDoesNotHoldTheReceiptUp) {
  Run("Drop Table YPCRK");
  AddLine("100001", "2");
  FillHead();
  Save();
  EXPECT_EQ(desktop.boxes.back().text, "入库添加成功!");
  EXPECT_EQ(desktop.boxes.size(), 3U);
  EXPECT_EQ(Catalogue("100001"), "1.2\t13\t20");
}

TEST_F(ReceiptSaveTest, NothingIsSavedWithoutTheOperatorsYes) {
  AddLine("100001", "2");
  FillHead();
  TakeSent();
  desktop.answers.push_back(Answer::kNo);
  form.UserClick(form.Command1);
  EXPECT_TRUE(TakeSent().empty());
  EXPECT_EQ(form.fpSpread1.Text(2, 1), "合计：");
}

TEST_F(ReceiptSaveTest, TheHeadIsTestedFirst) {
  form.sRKDH.UserText("");
  form.UserClick(form.Command1);
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text,
            "系统提示您:\r\n\r\n      1入库单号不能为空!\r\n      2 供货单位不能为空!\r\n      3 验收人不能为空!\r\n"
            "      4 复核人不能为空!\r\n      5 入库项目明细不能为空!\r\n");
  EXPECT_EQ(box.title, "提示");
  EXPECT_EQ(box.style, box::kStop);

  FillHead();
  AddLine("100001", "1");
  const std::vector<std::pair<std::function<void()>, std::string>> cases = {
      {[&] { form.sRKDH.UserText("2026030110000"); }, "      1 入库单号必须为12位\r\n"},
      {[&] {
         form.sRKDH.UserText("202603010001");
         form.sFHR.UserText("");
       },
       "      1 复核人不能为空!\r\n"},
      {[&] {
         form.sFHR.UserText("吕静仪");
         form.sGHDW.UserText(" ");
       },
       "      1 供货单位不能为空!\r\n"},
  };
  for (const auto& [spoil, list] : cases) {
    spoil();
    form.UserClick(form.Command1);
    EXPECT_EQ(desktop.TakeBox().text, "系统提示您:\r\n\r\n" + list);
  }
  EXPECT_EQ(form.ActiveControl(), &form.sGHDW);
  EXPECT_EQ(Count("YK_YPRK"), "0");
}

TEST_F(ReceiptSaveTest, TheNumberInTheBoxIsOnlyShown) {
  Run("Insert Into YK_YPRK(RKDH,RKRQ) Values('202603010041','2026-03-01 09:59:00')");
  form.sRKDH.UserText("209912319999");
  AddLine("100001", "1");
  FillHead();
  Save();
  EXPECT_EQ(Query("Select top 1 RKDH From YK_YPRK Order by id desc"), "202603010042");
  EXPECT_EQ(form.sRKDH.Text(), "202603010043");
}

TEST_F(ReceiptSaveTest, TheDayOfTenThousandReceiptsEndsAtTheHeadsTest) {
  Run("Insert Into YK_YPRK(RKDH,RKRQ) Values('202603019998','2026-03-01 09:59:00')");
  AddLine("100001", "1");
  FillHead();
  Save();
  EXPECT_EQ(form.sRKDH.Text(), "2026030110000");
  AddLine("100001", "1");
  FillHead();
  desktop.TakeBoxTexts();
  form.UserClick(form.Command1);
  EXPECT_EQ(desktop.TakeBox().text, "系统提示您:\r\n\r\n      1 入库单号必须为12位\r\n");
}

}  // namespace
}  // namespace luming
