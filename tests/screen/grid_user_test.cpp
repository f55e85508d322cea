#include "screen/grid.h"
#include "screen/text_box.h"
#include "support/screen_test.h"

namespace luming {
namespace {

using Log = std::vector<std::string>;

std::string At(int row, int col) {
  return std::to_string(row) + "," + std::to_string(col);
}

class EditForm : public Form {
 public:
  explicit EditForm(Forms& registry) : Form(registry, "EditForm", "edit", WindowKind::kChild) {
    grid.SetMaxRows(30);
    grid.change.Connect([this](int row, int col) { log.push_back("change " + At(row, col)); });
    grid.click.Connect([this](int row, int col) { log.push_back("click " + At(row, col)); });
    grid.double_click.Connect([this](int row, int col) { log.push_back("double " + At(row, col)); });
    grid.right_click.Connect([this](int row, int col) { log.push_back("right " + At(row, col)); });
    grid.before_edit.Connect([this](Grid::CellRef cell, bool& refuse) { refuse = cell.col == refused_col; });
    grid.leave_cell.Connect([this](Grid::CellRef from, Grid::CellRef to, bool& stay) {
      log.push_back("leave " + At(from.row, from.col) + " for " + At(to.row, to.col));
      stay = stays;
    });
    grid.row_focus.Connect([this](int row) {
      log.push_back("row " + At(row, grid.ActiveRow()));
      if (closes) Unload();
    });
  }
  Layout Arrange() const override { return Column({field, grid}); }
  Log TakeLog() { return std::exchange(log, {}); }

  TextBox field{this, "field"};
  Grid grid{this, "grid", {"a", GridColumn("b").Hidden(), "c", "d"}};
  int refused_col = 4;
  bool stays = false;
  bool closes = false;
  Log log;
};

class GridUserTest : public ScreenTest {
 protected:
  GridUserTest() { form.Show(); }
  std::string Press(int code, bool ctrl = false) {
    form.UserKey({.code = code, .ctrl = ctrl});
    return At(grid.ActiveRow(), grid.ActiveCol());
  }
  EditForm form{forms};
  Grid& grid = form.grid;
};

TEST_F(GridUserTest, EditsGoThroughTheRules) {
  EXPECT_TRUE(grid.UserEdit(1, 1, "x"));
  EXPECT_TRUE(grid.UserEdit(1, 1, "x"));
  EXPECT_EQ(form.TakeLog(), (Log{"change 1,1"})) << "the same text is no change";
  EXPECT_FALSE(grid.UserEdit(1, 4, "x")) << "refused by the screen";
  grid.SetLocked(2, 1, 1, true);
  EXPECT_FALSE(grid.UserEdit(2, 1, "x"));
  grid.SetFormula(3, 1, "SUM(A1:A2)");
  EXPECT_FALSE(grid.UserEdit(3, 1, "x"));
  EXPECT_EQ(grid.Formula(3, 1), "SUM(A1:A2)");
  grid.SetKind(4, 1, CellKind::kNumber);
  grid.UserEdit(4, 1, "x");
  EXPECT_EQ(grid.Text(4, 1), "");
  grid.UserEdit(4, 1, "1.5");
  EXPECT_FALSE(grid.UserEdit(31, 1, "x"));
  grid.SetRowMode(true);
  EXPECT_FALSE(grid.UserEdit(1, 1, "y"));
  grid.SetRowMode(false);
  grid.SetReadOnly(true);
  EXPECT_FALSE(grid.UserEdit(1, 1, "y"));
  grid.SetText(1, 1, "by code");
  EXPECT_EQ(form.TakeLog(), (Log{"change 4,1"}));
}

TEST_F(GridUserTest, AClickTakesTheFocusLeavesTheCellAndTells) {
  grid.UserClickCell(2, 3);
  EXPECT_TRUE(grid.HasFocus());
  grid.UserClickCell(2, 3);
  grid.UserDoubleClick(2, 3);
  grid.UserRightClick(3, 1);
  EXPECT_EQ(form.TakeLog(), (Log{"leave 1,1 for 2,3", "row 2,2", "click 2,3", "click 2,3", "double 2,3",
                                 "leave 2,3 for 3,1", "row 3,3", "right 3,1"}));
  grid.UserClickCell(3, 3);
  EXPECT_EQ(form.TakeLog(), (Log{"leave 3,1 for 3,3", "click 3,3"})) << "the row has stayed";
  grid.SetActiveCell(5, 1);
  EXPECT_EQ(form.TakeLog(), Log{}) << "by code nothing is left";
  form.stays = true;
  grid.UserClickCell(1, 1);
  EXPECT_EQ(form.TakeLog(), (Log{"leave 5,1 for 1,1"})) << "who may not leave cannot click elsewhere";
  EXPECT_EQ(grid.ActiveRow(), 5);
  form.stays = false;
  grid.SetEnabled(false);
  grid.UserClickCell(1, 1);
  grid.UserDoubleClick(1, 1);
  EXPECT_EQ(form.TakeLog(), Log{});
  grid.SetEnabled(true);
  form.closes = true;
  grid.UserClickCell(1, 1);
  EXPECT_EQ(form.TakeLog(), (Log{"leave 5,1 for 1,1", "row 1,1"})) << "a form that has closed hears no click";
}

TEST_F(GridUserTest, KeysMoveTheActiveCellOverHiddenColumns) {
  grid.SetFocus();
  EXPECT_EQ(Press(key::kUp), "1,1");
  EXPECT_EQ(Press(key::kRight), "1,3");
  EXPECT_EQ(Press(key::kDown), "2,3");
  EXPECT_EQ(form.TakeLog(), (Log{"leave 1,1 for 1,3", "leave 1,3 for 2,3", "row 2,2"}));
  EXPECT_EQ(Press(key::kLeft), "2,1");
  EXPECT_EQ(Press(key::kLeft), "2,1");
  EXPECT_EQ(Press(key::kEnd), "2,4");
  EXPECT_EQ(Press(key::kHome), "2,1");
  EXPECT_EQ(Press(key::kPageDown), "22,1");
  EXPECT_EQ(Press(key::kPageDown), "30,1");
  EXPECT_EQ(Press(key::kHome, true), "1,1");
  grid.SetRowMode(true);
  EXPECT_EQ(Press(key::kEnd), "30,1");
  grid.SetMaxRows(0);
  EXPECT_EQ(Press(key::kDown), "0,1");
}

}  // namespace
}  // namespace luming
