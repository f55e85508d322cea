#include "masterdata/catalogue_columns.h"
#include "masterdata/drug_catalogue.h"
#include "masterdata/drug_choice.h"
#include "masterdata/drug_editor.h"
#include "masterdata/producer_choice.h"
#include "screen/grid.h"
#include "screen/tree.h"
#include "support/store_test.h"

namespace luming {
namespace {

using namespace std::string_literals;

/// The catalogue of the three drugs of the store, in the order of their pinyin, and the total row.
class CatalogueTest : public StoreTest {
 protected:
  Frm_YPML& Open() {
    auto& form = app.forms.Get<Frm_YPML>(app);
    form.Show();
    return form;
  }
};

TEST_F(CatalogueTest, AStorehouseWithoutChargeItemsBeginsWithTheInjections) {
  Run("Delete YFYK_LinkItem");
  Frm_YPML& form = Open();
  std::vector<std::string> keys;
  for (const TreeNode& node : form.TreeView1.Nodes()) keys.push_back(node.key);
  EXPECT_EQ(keys, (std::vector<std::string>{"Master", "keyZJ", "keyFZJ"}));
  EXPECT_EQ(form.TreeView1.Selected(), 1);
  SentLike("select * from YF_YPML WHERE  Right(");
  EXPECT_EQ(form.fpSpread1.MaxRows(), 0);
  EXPECT_EQ(form.TxtInfo.Caption(), "");
  form.Del_Row(form.fpSpread1);
  EXPECT_EQ(desktop.TakeBox().text, "已经没有记录可以删除了!");
}

TEST_F(CatalogueTest, StockAndPricesAreEditedByRightTheCodeAndTheTotalsNever) {
  Frm_YPML& form = Open();
  Grid& grid = form.fpSpread1;
  ASSERT_EQ(grid.MaxRows(), 4);
  const auto editable = [&](int row) {
    std::vector<int> columns;
    for (int col = 1; col <= grid.MaxCols(); ++col) {
      if (grid.CanEdit(row, col)) columns.push_back(col);
    }
    return columns;
  };
  using namespace catalogue;
  const auto all = editable(1);
  EXPECT_EQ(all.size(), 40U) << "all that are saved";
  app.CurUser.YPGL_EDITKC = false;
  app.CurUser.YPGL_EDITJG = false;
  std::vector<int> refused;
  for (const int col : all) {
    if (!grid.CanEdit(1, col)) refused.push_back(col);
  }
  EXPECT_EQ(refused, (std::vector<int>{kYKKCL, kPFJ, kLSJ, kCLLSJ}));
  EXPECT_EQ(editable(4), std::vector<int>());
}

TEST_F(CatalogueTest, ASplitPriceFollowsAPriceThatIsSavedFromItsCell) {
  Frm_YPML& form = Open();
  Grid& grid = form.fpSpread1;
  const auto edit_price = [&](const char* price) {
    form.UserFocus(grid);
    grid.UserActivate(1, catalogue::kLSJ);
    ASSERT_TRUE(grid.UserEdit(1, catalogue::kLSJ, price));
  };
  edit_price("20");
  TakeSent();
  desktop.answers = {Answer::kYes};
  form.UserClick(form.Command1);
  EXPECT_EQ(TakeSent().size(), 1U) << "the changed row and nothing else";
  EXPECT_EQ(Query("select LSJ,CLLSJ from YF_YPML where YPBM='100001'"), "20\t2");
  edit_price("24.44");
  desktop.answers = {Answer::kYes};
  form.UserClose();
  EXPECT_EQ(Query("select LSJ,CLLSJ from YF_YPML where YPBM='100001'"), "24.44\t2.44");
}

TEST_F(CatalogueTest, PrintsAndExportsTheListWithItsTotals) {
  Frm_YPML& form = Open();
  form.UserClick(form.Command4);
  ASSERT_EQ(printing.previewed.size(), 1U);
  const PrintJob& job = printing.previewed.front();
  EXPECT_EQ(job.title, "药品目录表");
  EXPECT_EQ(job.grid.leading, 2) << "code and name on every page";
  EXPECT_EQ(job.grid.counted_rows, 3);
  ASSERT_EQ(job.grid.rows.size(), 4U);
  EXPECT_TRUE(job.grid.rows.back().front().text.starts_with("合计：3条记录,"));
  desktop.files = {"list.xls"};
  form.UserClick(form.Command5);
  ASSERT_EQ(workbooks.saved.size(), 1U);
  EXPECT_EQ(workbooks.saved.front().sheet.name, "药品目录列表");
  EXPECT_EQ(workbooks.saved.front().sheet.columns.size(), 45U);
}

TEST_F(CatalogueTest, TheHistoryIsOfferedForTheActiveDrug) {
  CommandTable table = MainCommands();
  std::vector<std::string> asked;
  for (Command& command : table.commands) {
    if (command.id != 203) continue;
    command.action = [&](AppContext& of) {
      const auto* list = of.forms.FindAs<Frm_YPML>();
      asked.push_back(list->fpSpread1.Text(list->fpSpread1.ActiveRow(), catalogue::kYPBM));
    };
  }
  AppContext own({desktop, devices, printing, workbooks, clock}, directory.Path(), {}, table);
  own.KFMC = app.KFMC;
  own.CurUser = app.CurUser;
  own.Cn = app.Cn;
  auto& form = own.forms.Get<Frm_YPML>(own);
  form.Show();
  desktop.pop_ups = {203, std::nullopt};
  form.fpSpread1.UserRightClick(2, 5);
  form.UserClick(form.Command8);
  EXPECT_EQ(asked, std::vector<std::string>{"100002"});
  EXPECT_TRUE(desktop.pop_ups.empty());
  form.fpSpread1.UserRightClick(4, 1);
  form.fpSpread1.SetMaxRows(0);
  form.UserClick(form.Command8);
  EXPECT_EQ(asked.size(), 1U) << "neither the totals nor an empty list offer one";
}

TEST_F(CatalogueTest, WidthsThatTheOperatorSetComeBack) {
  Frm_YPML& form = Open();
  form.fpSpread1.UserColumnWidth(catalogue::kYPMC, 31);
  form.Unload();
  Frm_YPML& again = Open();
  EXPECT_EQ(again.fpSpread1.ColumnWidth(catalogue::kYPMC), 31);
  EXPECT_TRUE(again.fpSpread1.WidthIsOperators(catalogue::kYPMC));
  EXPECT_FALSE(again.fpSpread1.WidthIsOperators(catalogue::kSPMC));
  EXPECT_EQ(ReadBytes(directory / "ColumnWidths.ini"), "[Frm_YPML.fpSpread1]\r\n2=31\r\n");
  again.Unload();
  WriteBytes(directory / "ColumnWidths.ini", "[Frm_YPML.fpSpread1]\n2=-5\n3=many\n4=99999999999999999999\n");
  Frm_YPML& senseless = Open();
  for (const int col : {catalogue::kYPMC, catalogue::kSPMC, catalogue::kGG}) {
    EXPECT_EQ(senseless.fpSpread1.ColumnWidth(col), 0) << col;
  }
  senseless.Unload();
  WriteBytes(directory / "ColumnWidths.ini", "\0\xFF[Frm_YPML.fpSpread1\n2=31]\xD6\n[[=\n2"s);
  EXPECT_EQ(Open().fpSpread1.ColumnWidth(catalogue::kYPMC), 0) << "so is a damaged file";
}

TEST_F(CatalogueTest, TheEditorWritesLockedFieldsAsTheyShow) {
  app.CurUser.YPGL_EDITKC = false;
  app.CurUser.YPGL_EDITJG = false;
  ShowDrug(app, eK_YPJBXX::kChanging, "100001");
  auto* editor = app.forms.FindAs<eK_YPJBXX>();
  // The one charge item that is not offered shows all the same.
  EXPECT_EQ(editor->SFXM.Text(), "西药费");
  editor->UserClick(editor->Com_Save);
  EXPECT_EQ(desktop.TakeBox().text, "修改成功");
  EXPECT_EQ(Query("select LSJ,CLLSJ,YKKCL,SFXM from YF_YPML where YPBM='100001'"), "15.5\t1.55\t0\t西药费");

  ShowDrug(app, eK_YPJBXX::kChanging, "100001");
  AddDrug(app);
  editor = app.forms.FindAs<eK_YPJBXX>();
  EXPECT_TRUE(editor->YPBM.Enabled()) << "a new drug begins with a screen of its own";
  EXPECT_EQ(editor->YPMC.Text(), "");
  EXPECT_EQ(editor->Caption(), "药品基本信息");
}

TEST_F(CatalogueTest, TheListOfProducersStandsWhereTheOperatorPutIt) {
  Run("Insert Into YPGL_CDWF(CDMC,PYDM,WBDM,CDQC) Values('望川制药','WCZY','YKRA','望川制药有限公司')");
  WriteBytes(directory / "LUMN.ini", "[窗体位置]\r\nICD10X=120\r\nICD10Y=-40\r\n");
  AddDrug(app);
  auto* editor = app.forms.FindAs<eK_YPJBXX>();
  editor->UserFocus(editor->SCCJ);
  editor->SCCJ.UserText("w");
  auto* list = app.forms.FindAs<Frm_Check>();
  ASSERT_TRUE(list && list->IsShown() && list->Place());
  EXPECT_EQ(list->Place()->left, 120);
  EXPECT_EQ(list->Place()->top, -40);
  EXPECT_EQ(editor->ActiveControl(), &editor->SCCJ) << "typing goes on";
  list->SetPlace({7, 8});
  list->fpSpread1.UserClickCell(1, 3);
  EXPECT_EQ(editor->SCCJ.Text(), "望川制药");
  EXPECT_FALSE(list->IsShown());
  editor->SCCJ.UserText("w");
  EXPECT_TRUE(list->IsShown());
  editor->SCCJ.UserText("wx");
  EXPECT_FALSE(list->IsShown());
  EXPECT_EQ(list->fpSpread1.MaxRows(), 0);
  editor->Unload();
  EXPECT_EQ(app.forms.FindAs<Frm_Check>(), nullptr);
  EXPECT_EQ(ReadBytes(directory / "LUMN.ini"), "[窗体位置]\r\nICD10X=7\r\nICD10Y=8\r\n");
}

TEST_F(CatalogueTest, AChoiceForAFormThatHasClosedGoesNowhere) {
  AddDrug(app);
  auto* editor = app.forms.FindAs<eK_YPJBXX>();
  ChooseDrug(app, *editor);
  editor->Unload();
  auto* list = app.forms.FindAs<ek_PMXZ>();
  list->picker.PM.UserText("A");
  list->fpSpread1.UserDoubleClick(1, 1);
  EXPECT_TRUE(list->IsUnloaded());
  EXPECT_EQ(app.forms.FindAs<eK_YPJBXX>(), nullptr);
}

}  // namespace
}  // namespace luming
