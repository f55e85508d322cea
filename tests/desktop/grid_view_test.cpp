#include <QLineEdit>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>

#include "desktop_fixture.h"
#include "screen/grid.h"

namespace luming {
namespace {

class GridForm : public Form {
 public:
  static constexpr const char* kName = "GridForm";
  explicit GridForm(Forms& forms) : Form(forms, kName, "表格", WindowKind::kDialog) {
    fpSpread1.change.Connect(this, &GridForm::Changed);
  }
  Grid fpSpread1{this, "fpSpread1", {"编码", "品名", GridColumn::Locked("金额"), GridColumn::Hidden("备用")}};
  Layout Arrange() const override { return Layout(fpSpread1).Width(90).Height(20); }

  void Changed(int row, int col) {
    ++changes;
    fpSpread1.SetText(row, 3, fpSpread1.Text(row, col) + "0");
  }
  int changes = 0;
};

class CountingPainter : public QStyledItemDelegate {
 public:
  void paint(QPainter*, const QStyleOptionViewItem&, const QModelIndex& index) const override {
    ++painted;
    lowest = std::max(lowest, index.row());
  }
  mutable int painted = 0;
  mutable int lowest = 0;
};

class GridViewTest : public DesktopTest {
 protected:
  GridViewTest() {
    form.fpSpread1.SetMaxRows(3);
    form.Show();
    form.fpSpread1.SetFocus();
    Settle();
    table = Find<QTableView>("fpSpread1");
  }
  void FillRows(int count) {
    Recordset rows({"YPBM", "YPMC"});
    for (int row = 1; row <= count; ++row) {
      rows.AppendRow({Value(std::int64_t{row}), Value("药品" + std::to_string(row))});
    }
    form.fpSpread1.Fill(std::move(rows), {{"YPBM"}, {"YPMC"}});
  }
  QLineEdit* Editor() const { return table->findChild<QLineEdit*>("cellEditor"); }

  GridForm& form = forms.Get<GridForm>(forms);
  QTableView* table = nullptr;
  CountingPainter painter;  // outlives the table
};

TEST_F(GridViewTest, EditsInPlaceOnceAndHonoursLocks) {
  form.fpSpread1.SetActiveCell(2, 2);
  Type(table, "1");
  ASSERT_NE(Editor(), nullptr) << "typing opens the cell";
  Type(Editor(), "3");
  Press(Editor(), Qt::Key_Return);
  EXPECT_EQ(form.changes, 1);
  EXPECT_EQ(form.fpSpread1.Text(2, 2), "13");
  EXPECT_EQ(form.fpSpread1.Text(2, 3), "130");
  Settle();
  EXPECT_EQ(Editor(), nullptr);

  form.fpSpread1.SetActiveCell(2, 3);
  Type(table, "9");
  EXPECT_EQ(Editor(), nullptr) << "the column is locked";

  form.fpSpread1.SetActiveCell(2, 2);
  Type(table, "7");
  Press(Editor(), Qt::Key_Escape);
  EXPECT_EQ(form.fpSpread1.Text(2, 2), "13");
  EXPECT_EQ(form.changes, 1);
}

TEST_F(GridViewTest, KeysMoveTheActiveCellIntoView) {
  FillRows(500);
  Settle();
  EXPECT_TRUE(table->isColumnHidden(3));
  Press(table, Qt::Key_Down);
  EXPECT_EQ(form.fpSpread1.ActiveRow(), 2);
  Press(table, Qt::Key_End, {}, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(form.fpSpread1.ActiveRow(), 500);
  EXPECT_GT(form.fpSpread1.TopRow(), 400);
  EXPECT_GE(table->rowAt(table->viewport()->height() - 30), 498);

  form.fpSpread1.SetTopRow(11);
  Settle();
  EXPECT_EQ(table->rowAt(0), 10);
  table->verticalScrollBar()->setValue(20);
  EXPECT_EQ(form.fpSpread1.TopRow(), 21);
}

TEST_F(GridViewTest, PaintsOnlyWhatIsSeenOfManyRows) {
  table->setItemDelegate(&painter);
  FillRows(50000);
  Settle();
  EXPECT_GT(painter.painted, 0);
  EXPECT_LT(painter.painted, 1000);
  painter.painted = 0;
  for (int step = 1; step <= 50; ++step) {
    table->verticalScrollBar()->setValue(step * 900);
    table->viewport()->repaint();
  }
  EXPECT_GT(painter.lowest, 44000);
  EXPECT_LT(painter.painted, 20000);
}

TEST_F(GridViewTest, AHandlerThatSetsManyCellsPaintsOnce) {
  FillRows(2000);
  Settle();
  table->setItemDelegate(&painter);
  Settle();
  painter.painted = 0;
  for (int row = 1; row <= 2000; ++row) {
    for (int col = 1; col <= 5; ++col) form.fpSpread1.SetText(row, col, "1");
  }
  EXPECT_EQ(painter.painted, 0) << "nothing is drawn before the handler is through";
  Settle();
  EXPECT_GT(painter.painted, 0);
  EXPECT_LT(painter.painted, 300);
}

}  // namespace
}  // namespace luming
