#include "masterdata/charge_items.h"
#include "masterdata/data_dictionary.h"
#include "masterdata/dictionary_links.h"
#include "screen/button.h"
#include "screen/grid.h"
#include "support/store_test.h"

namespace luming {
namespace {

class DictionaryTest : public StoreTest {
 protected:
  DictionaryTest() {
    Run("Insert into DAGL_ZD (DM,DMMC,ZD_TYPE,Moudelname,XX) Values ('YPDW','大单位',1,'药库',1)");
    Run("Insert into DAGL_ZD (DM,DMMC,ZD_TYPE,Moudelname,XX) Values ('BZDW','包装单位',0,'药库',2)");
    for (const char* unit : {"盒", "瓶"}) {
      Run(std::string("Insert into CS(Controlid,DM,DMMC) Values ('YPDW','','") + unit + "')");
    }
  }

  template <class Screen>
  Screen& Open() {
    auto& form = app.forms.Get<Screen>(app);
    form.Show();
    return form;
  }
};

TEST_F(DictionaryTest, TheModuleFollowsFromTheTitleAndAForeignTitleSeesAll) {
  EXPECT_EQ(ModuleOf("鹿鸣仓管系统"), "药库");
  EXPECT_EQ(ModuleOf("别的系统"), "%");
}

TEST_F(DictionaryTest, WhatIsTypedOutlivesAStoreThatFailsBetweenSavingAndReading) {
  sjzd& form = Open<sjzd>();
  Grid& entries = form.fpSpread2;
  ASSERT_EQ(entries.MaxRows(), 2);
  entries.UserEdit(1, 1, "箱");
  entries.UserEdit(2, 1, "袋");
  Run("Drop Table CS");
  form.UserClick(form.Command8);
  ASSERT_EQ(desktop.TakeBoxTexts().size(), 1U) << "only the first row was tried, and nothing was read anew";
  EXPECT_TRUE(form.HasMarkedEntries());
  EXPECT_EQ(entries.Text(1, 1), "箱");
  EXPECT_EQ(entries.Text(2, 1), "袋");

  form.fpSpread1.UserClickCell(2, 1);
  EXPECT_EQ(desktop.TakeBoxTexts().size(), 2U);
  EXPECT_EQ(form.CurrentCode(), "BZDW");
  EXPECT_EQ(entries.MaxRows(), 0) << "entries of one dictionary never stand under the name of another";
}

TEST_F(DictionaryTest, AListWithoutDictionariesHasNothingToActOn) {
  Run("Delete DAGL_ZD");
  sjzd& form = Open<sjzd>();
  TakeSent();
  for (Button* button : {&form.Command2, &form.Command4, &form.Command5, &form.Command6, &form.Command8}) {
    form.UserClick(*button);
  }
  EXPECT_EQ(desktop.TakeBoxTexts(), std::vector<std::string>{"保存成功"});
  EXPECT_EQ(TakeSent(), std::vector<std::string>());
  EXPECT_EQ(form.fpSpread2.MaxRows(), 0);
  EXPECT_EQ(form.CurrentDictionary.Caption(), "");
  EXPECT_FALSE(form.IsUnloaded());
}

TEST_F(DictionaryTest, ADictionaryWhoseEntriesCannotBeDeletedIsGoneAllTheSame) {
  sjzd& form = Open<sjzd>();
  form.fpSpread1.UserClickCell(2, 1);
  Run("Drop Table CS");
  desktop.answers = {Answer::kYes};
  desktop.TakeBoxTexts();
  form.UserClick(form.Command6);
  EXPECT_EQ(form.fpSpread1.MaxRows(), 1);
  EXPECT_EQ(Query("select DM from DAGL_ZD"), "YPDW");
  for (const std::string& text : desktop.TakeBoxTexts()) EXPECT_NE(text, "删除成功");
}

TEST_F(DictionaryTest, ScreensWhoseParentIsUnknownStandAtTheTop) {
  Run("Insert into ZD_Tabel (ID,PID,Lavel,Sname,Ename) Values (1,0,1,'系统','')");
  Run("Insert into ZD_Tabel (ID,PID,Lavel,Sname,Ename) Values (2,1,2,'药品基本信息','eK_YPJBXX')");
  Run("Insert into ZD_Tabel (ID,PID,Lavel,Sname,Ename) Values (3,77,2,'散落',NULL)");
  Frm_LinkZD& form = Open<Frm_LinkZD>();
  const auto& nodes = form.TreeView1.Nodes();
  ASSERT_EQ(nodes.size(), 3U);
  EXPECT_EQ(nodes[0].parent, -1);
  EXPECT_EQ(nodes[1].parent, 0);
  EXPECT_EQ(nodes[1].key, "eK_YPJBXX");
  EXPECT_EQ(nodes[2].parent, -1);
}

TEST_F(DictionaryTest, AListOfItemsThatWasNotReadCannotReplaceTheTable) {
  Run("Drop Table eK_ChargeItem");
  ek_SFXMGL& form = Open<ek_SFXMGL>();
  EXPECT_FALSE(form.Command3.Enabled());
}

TEST_F(DictionaryTest, AFailedDeleteOfTheItemsInsertsNone) {
  ek_SFXMGL& form = Open<ek_SFXMGL>();
  ASSERT_EQ(form.fpSpread1.MaxRows(), 1);
  Run("Drop Table eK_ChargeItem");
  TakeSent();
  form.UserClick(form.Command3);
  EXPECT_EQ(TakeSent(), std::vector<std::string>{"delete eK_ChargeItem"});
  EXPECT_TRUE(desktop.TakeBox().text.starts_with("错误号：  -2147217865"));
}

}  // namespace
}  // namespace luming
