#include "output/grid_command.h"

#include "screen/grid.h"
#include "support/app_test.h"

namespace luming {
namespace {

class ListForm : public Form {
 public:
  static constexpr const char* kName = "ListForm";
  explicit ListForm(Forms& registry) : Form(registry, kName, "药品入库录入", WindowKind::kChild) {}
  Layout Arrange() const override { return grid; }

  Grid grid{this, "grid", {"编码", "品名"}};
};

/// Any grid can be printed and exported, whatever its screen has buttons for.
class GridCommandTest : public AppTest {
 protected:
  GridCommandTest() {
    app.KFMC = "西药库";
    app.forms.grid_command = [this](Grid& grid, GridCommand command) { RunGridCommand(app, grid, command); };
    form.grid.SetMaxRows(1);
    form.grid.SetText(1, 1, "100001");
    form.Show();
    form.UserFocus(form.grid);
  }
  void Press(char letter) {
    KeyEvent event{.code = letter, .ctrl = true};
    form.UserKey(event);
  }

  ListForm& form = app.forms.Get<ListForm>(app.forms);
};

TEST_F(GridCommandTest, KeysPreviewAndExportUnderTheFormsCaption) {
  Press('P');
  ASSERT_EQ(printing.previewed.size(), 1u);
  EXPECT_EQ(printing.previewed[0].title, "【西药库】药品入库录入");
  EXPECT_EQ(printing.previewed[0].grid.rows.at(0).at(0).text, "100001");
  desktop.files.push_back("list.xls");
  Press('E');
  ASSERT_EQ(workbooks.saved.size(), 1u);
  EXPECT_EQ(workbooks.saved[0].sheet.name, "药品入库录入");
  form.grid.SetMaxRows(0);
  Press('P');
  EXPECT_EQ(printing.previewed.size(), 1u) << "nothing to print";
}

TEST_F(GridCommandTest, ARightClickOffersThemUnlessTheScreenHasItsOwn) {
  desktop.pop_ups = {static_cast<int>(GridCommand::kPreview), std::nullopt};
  form.grid.UserRightClick(1, 1);
  EXPECT_EQ(printing.previewed.size(), 1u);
  form.grid.UserRightClick(1, 1);
  EXPECT_EQ(printing.previewed.size(), 1u) << "dismissed";
  int told = 0;
  form.grid.right_click.Connect([&](int, int) { ++told; });
  form.grid.UserRightClick(1, 1);
  EXPECT_EQ(told, 1);
}

TEST_F(GridCommandTest, AFailureIsShownInTheCommonBox) {
  workbooks.refuses = true;
  desktop.files.push_back("list.xls");
  Press('E');
  EXPECT_NE(desktop.TakeBox().text.find("错误描述：磁盘已满"), std::string::npos);
}

}  // namespace
}  // namespace luming
