#include "output/grid_routines.h"

#include "screen/grid.h"
#include "support/screen_test.h"

namespace luming {
namespace {

class GridForm : public Form {
 public:
  explicit GridForm(Forms& registry) : Form(registry, "GridForm", "grid", WindowKind::kChild) {}
  Layout Arrange() const override { return grid; }

  Grid grid{this, "grid", {"code", "name", "amount"}};
};

class SpreadMoudTest : public ScreenTest {
 protected:
  void Fill(std::initializer_list<std::vector<std::string>> rows) {
    grid.SetMaxRows(0);
    for (const std::vector<std::string>& row : rows) {
      grid.SetMaxRows(grid.MaxRows() + 1);
      int column = 0;
      for (const std::string& text : row) grid.SetText(grid.MaxRows(), ++column, text);
    }
  }

  GridForm form{forms};
  Grid& grid = form.grid;
};

TEST_F(SpreadMoudTest, TheTotalRowFollowsItsLines) {
  Fill({{"1", "a", "2.5"}, {"2", "b", "4"}});
  GridSumRow(grid, 1, {3});
  ASSERT_EQ(grid.MaxRows(), 3);
  EXPECT_EQ(grid.Text(3, 1), "合计：");
  EXPECT_EQ(grid.Formula(3, 3), "SUM(C1:C2)");
  EXPECT_EQ(grid.Number(3, 3), 6.5);
  EXPECT_TRUE(grid.UserEdit(1, 3, "10"));
  EXPECT_EQ(grid.Number(3, 3), 14);
  for (int column = 1; column <= 3; ++column) {
    EXPECT_TRUE(grid.Bold(3, column) && grid.Locked(3, column)) << column;
    EXPECT_FALSE(grid.Bold(2, column)) << column;
  }
  EXPECT_EQ(grid.CellAlign(3, 1), Align::kCentre);
  EXPECT_TRUE(grid.IsTotalRow(3));
  EXPECT_FALSE(grid.IsTotalRow(2));
}

TEST_F(SpreadMoudTest, ACaptionInAnotherColumnEmptiesTheFirst) {
  Fill({{"1", "a", "2"}});
  GridSumRow(grid, 2, {3});
  EXPECT_EQ(grid.Text(2, 1), "");
  EXPECT_EQ(grid.Text(2, 2), "合计：");
}

TEST_F(SpreadMoudTest, AnEmptyGridGetsNoTotal) {
  GridSumRow(grid, 1, {3});
  EXPECT_EQ(grid.MaxRows(), 0);
}

TEST_F(SpreadMoudTest, RemovingTotalsTakesAllOfThemAndNothingElse) {
  Fill({{"合计：", "", "1"}, {"1", "合计：", "2"}, {"合计：", "", "3"}});
  RemoveTotalRow(1, "合计：", grid);
  ASSERT_EQ(grid.MaxRows(), 1);
  EXPECT_EQ(grid.Text(1, 3), "2");
}

TEST_F(SpreadMoudTest, AFileDialogProposesOnlyNamesThatAFileCanBear) {
  desktop.files = {"/tmp/a.xls", std::nullopt};
  EXPECT_EQ(FileDialog(desktop, {.save = true, .name = "a.xls"}), "/tmp/a.xls");
  EXPECT_EQ(FileDialog(desktop, {.save = true, .name = "a.xls"}), std::nullopt);

  EXPECT_EQ(FileDialog(desktop, {.save = true, .name = std::string(261, 'x')}), std::nullopt);
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "Filename Length Overflow");
  EXPECT_TRUE(box.title.ends_with(" - FileDialog Function"));

  std::string proposed = "?";
  desktop.pump = [this, &proposed] {
    proposed = desktop.OpenFileDialog()->name;
    desktop.AnswerFileDialog(std::nullopt);
  };
  FileDialog(desktop, {.save = true, .name = "a|b.xls"});
  EXPECT_EQ(proposed, "");
}

}  // namespace
}  // namespace luming
