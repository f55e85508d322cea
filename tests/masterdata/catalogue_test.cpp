#include "masterdata/catalogue_columns.h"
#include "masterdata/ek_pmxz.h"
#include "masterdata/ek_ypjbxx.h"
#include "masterdata/frm_ypml.h"
#include "support/store_test.h"

namespace luming {
namespace {

/// The catalogue of the three drugs of the store, in the order of their pinyin, and the total row.
class CatalogueTest : public StoreTest {
 protected:
  Frm_YPML& Open() {
    auto& form = app.forms.Get<Frm_YPML>(app);
    form.Show();
    return form;
  }
};

TEST_F(CatalogueTest, WithoutTheRightTheScreenClosesAgain) {
  app.CurUser.YPGL_CKYPML = false;
  EXPECT_TRUE(Open().IsUnloaded());
  EXPECT_NE(desktop.TakeBox().text.find("权限"), std::string::npos);
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

TEST_F(CatalogueTest, ASaveWithoutTheRightIsRefusedAndKeepsTheMarks) {
  Frm_YPML& form = Open();
  ASSERT_TRUE(form.fpSpread1.UserEdit(1, catalogue::kPZWH, "准字"));
  app.CurUser.YPGL_EditYP = false;
  TakeSent();
  EXPECT_FALSE(form.SaveGrid());
  for (const std::string& sql : TakeSent()) EXPECT_FALSE(sql.starts_with("Update")) << sql;
  EXPECT_EQ(form.fpSpread1.Text(1, catalogue::kChanged), "1");
  desktop.answers = {Answer::kYes};
  EXPECT_FALSE(form.Unload()) << "a save that did not happen closes nothing";
  app.CurUser.YPGL_EditYP = true;
  desktop.answers = {Answer::kYes};
  EXPECT_TRUE(form.Unload());
  EXPECT_EQ(Query("select count(*) from YF_YPML where PZWH='准字'"), "1");
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
  WriteBytes(directory / "ColumnWidths.ini", "[Frm_YPML.fpSpread1]\n2=-5\n3=many\n4=100000\n");
  EXPECT_EQ(Open().fpSpread1.ColumnWidth(catalogue::kGG), 0) << "senseless widths are none";
}

TEST_F(CatalogueTest, AStoppedConnectionIsToldOnceForEachTrap) {
  Frm_YPML& form = Open();
  form.fpSpread1.UserEdit(1, catalogue::kPZWH, "准字");
  Run("Drop Table YF_YPML");
  EXPECT_FALSE(form.SaveGrid());
  EXPECT_TRUE(desktop.TakeBox().text.starts_with("错误号：  -2147217865"));
  EXPECT_EQ(form.fpSpread1.Text(1, catalogue::kPZWH), "准字");
}

TEST_F(CatalogueTest, TheEditorLocksByModeAndRight) {
  app.CurUser.YPGL_EDITKC = false;
  app.CurUser.YPGL_EDITJG = false;
  ShowDrug(app, eK_YPJBXX::kChanging, "100001");
  auto* editor = app.forms.FindAs<eK_YPJBXX>();
  for (const Control* field :
       std::initializer_list<Control*>{&editor->YPBM, &editor->KCL, &editor->LSJ, &editor->CLLSJ, &editor->Command2}) {
    EXPECT_FALSE(field->Enabled()) << field->Name();
  }
  // The one charge item that is not offered shows all the same, and locked prices are written as they show.
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
