#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
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
    fpSpread1.click.Connect([this](int row, int col) { told += "c" + At(row, col); });
    fpSpread1.double_click.Connect([this](int row, int col) { told += "d" + At(row, col); });
    fpSpread1.right_click.Connect([this](int row, int col) { told += "r" + At(row, col); });
    fpSpread1.header_click.Connect([this](int col) { told += "h" + std::to_string(col) + " "; });
  }
  Grid fpSpread1{
      this, "fpSpread1", {"编码", "品名", GridColumn::Locked("金额"), GridColumn::Hidden("备用"), "停用", "单位"}};
  Layout Arrange() const override { return Layout(fpSpread1).Width(90).Height(20); }

  void Changed(int row, int col) {
    ++changes;
    fpSpread1.SetText(row, 3, fpSpread1.Text(row, col) + "0");
  }
  static std::string At(int row, int col) { return std::to_string(row) + "," + std::to_string(col) + " "; }

  int changes = 0;
  std::string told;
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
  void Mouse(QTableView* pane, QEvent::Type type, int row, int col, Qt::MouseButton button = Qt::LeftButton) {
    const QPointF at = pane->visualRect(pane->model()->index(row - 1, col - 1)).center();
    QMouseEvent event(type, at, pane->viewport()->mapToGlobal(at), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(pane->viewport(), &event);
  }
  void Click(QTableView* pane, int row, int col) {
    Mouse(pane, QEvent::MouseButtonPress, row, col);
    Mouse(pane, QEvent::MouseButtonRelease, row, col);
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

TEST_F(GridViewTest, TellsTheMouseAlsoOnFrozenColumns) {
  form.fpSpread1.SetFrozenCols(1);
  form.fpSpread1.SetLocked(-1, -1, -1, true);
  Settle();
  Click(table, 2, 2);
  EXPECT_EQ(form.fpSpread1.ActiveRow(), 2);
  EXPECT_EQ(form.fpSpread1.ActiveCol(), 2);
  Mouse(table, QEvent::MouseButtonDblClick, 2, 2);
  Mouse(table, QEvent::MouseButtonPress, 3, 2, Qt::RightButton);
  auto* frozen = table->findChild<QTableView*>("frozen");
  ASSERT_TRUE(frozen->isVisible());
  Click(frozen, 1, 1);
  emit table->horizontalHeader()->sectionClicked(2);
  EXPECT_EQ(form.told, "c2,2 d2,2 r3,2 c1,1 h3 ");
  EXPECT_EQ(frozen->columnWidth(0), table->columnWidth(0));
}

TEST_F(GridViewTest, ChecksTurnAndListsOpen) {
  form.fpSpread1.SetKind(-1, 5, CellKind::kCheck);
  form.fpSpread1.SetKind(-1, 6, CellKind::kCombo);
  form.fpSpread1.SetComboItems(-1, 6, {"盒", "瓶"});
  Settle();
  Click(table, 1, 5);
  EXPECT_EQ(form.fpSpread1.Text(1, 5), "1");
  Press(table, Qt::Key_Space, " ");
  EXPECT_EQ(form.fpSpread1.Text(1, 5), "0");

  Mouse(table, QEvent::MouseButtonDblClick, 1, 6);
  EXPECT_EQ(table->findChild<QComboBox*>("cellEditor"), nullptr) << "the double click is the screen's own";
  form.fpSpread1.double_click = {};
  Mouse(table, QEvent::MouseButtonDblClick, 1, 6);
  auto* list = table->findChild<QComboBox*>("cellEditor");
  ASSERT_NE(list, nullptr);
  list->setCurrentIndex(1);
  emit list->activated(1);
  EXPECT_EQ(form.fpSpread1.Text(1, 6), "瓶");
}

TEST_F(GridViewTest, SpansCoverTheirCells) {
  form.fpSpread1.SetSpan(3, 1, 1, 3);
  Settle();
  EXPECT_EQ(table->columnSpan(2, 0), 3);
  form.fpSpread1.SetSpan(3, 1, 1, 1);
  Settle();
  EXPECT_EQ(table->columnSpan(2, 0), 1);
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
