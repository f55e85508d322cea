#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QToolTip>

#include "desktop_fixture.h"
#include "screen/button.h"
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
  Grid fpSpread1{this,
                 "fpSpread1",
                 {"编码", "品名", GridColumn("金额").Locked(), GridColumn("备用").Hidden(), "停用", "单位",
                  GridColumn("单价").Typed({.keys = KeyFilter::kPrice, .figure = true})}};
  Button Command1{this, "Command1", "保存(&S)", &GridForm::Save};
  Layout Arrange() const override { return Column({Layout(fpSpread1).Width(90).Height(20), Command1}); }

  void Changed(int row, int col) {
    ++changes;
    fpSpread1.SetText(row, 3, fpSpread1.Text(row, col) + "0");
  }
  void Save() { saved = fpSpread1.Text(1, 2); }
  static std::string At(int row, int col) { return std::to_string(row) + "," + std::to_string(col) + " "; }

  int changes = 0;
  std::string told;
  std::string saved;
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

TEST_F(GridViewTest, OutOfUseItIsScrolledThroughAndTakesNothingElse) {
  FillRows(200);
  form.fpSpread1.SetEnabled(false);
  Settle();
  table->verticalScrollBar()->setValue(100);
  EXPECT_EQ(form.fpSpread1.TopRow(), 101);
  EXPECT_TRUE(table->verticalScrollBar()->isEnabled());
  Click(table, 105, 2);
  Mouse(table, QEvent::MouseButtonDblClick, 105, 2);
  EXPECT_EQ(form.told, "");
  EXPECT_EQ(form.fpSpread1.ActiveRow(), 1);
  form.fpSpread1.SetEnabled(true);
  Settle();
  EXPECT_EQ(table->focusPolicy(), Qt::StrongFocus);
}

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

  Settle();
  form.fpSpread1.SetActiveCell(2, 7);
  Type(table, ".");
  EXPECT_EQ(Editor(), nullptr) << "no price begins so";
  Type(table, "1");
  Type(Editor(), "x.5.");
  Press(Editor(), Qt::Key_Return);
  EXPECT_EQ(form.fpSpread1.Text(2, 7), "1.5");
  EXPECT_EQ(form.fpSpread1.ActiveRow(), 3) << "Enter goes down a column that is there to be typed in";
  Settle();

  form.fpSpread1.SetActiveCell(1, 2);
  Type(table, "8");
  Press(Editor(), Qt::Key_Z, "z", Qt::AltModifier);
  EXPECT_EQ(Editor()->text(), "8") << "a letter that no caption has";
  Press(Editor(), Qt::Key_S, "s", Qt::AltModifier);
  EXPECT_EQ(form.saved, "8") << "a letter that a button has finds the cell written";
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

TEST_F(GridViewTest, ALastRowThatJustCameIsBroughtIntoView) {
  for (const int frozen : {0, 2}) {
    form.fpSpread1.SetFrozenCols(frozen);
    FillRows(14);
    Settle();
    FillRows(60);
    form.fpSpread1.SetActiveCell(60, 1);
    Settle();
    const QRect cell = table->visualRect(table->model()->index(59, 1));
    EXPECT_TRUE(table->viewport()->rect().contains(cell)) << "with frozen columns " << frozen;
    form.fpSpread1.SetActiveCell(1, 1);
    Settle();
    EXPECT_EQ(table->verticalScrollBar()->value(), 0);
  }
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
  emit frozen->horizontalHeader()->sectionClicked(0);
  EXPECT_EQ(form.told, "c2,2 d2,2 r3,2 c1,1 h3 h1 ");
  EXPECT_EQ(frozen->columnWidth(0), table->columnWidth(0));
  EXPECT_FALSE(form.fpSpread1.WidthIsOperators(1));
  const int wider = frozen->columnWidth(0) + 40;
  const QHeaderView* heads = frozen->horizontalHeader();
  const QPoint edge(heads->sectionViewportPosition(0) + heads->sectionSize(0) - 2, heads->height() / 2);
  QTest::mousePress(heads->viewport(), Qt::LeftButton, Qt::NoModifier, edge);
  QTest::mouseMove(heads->viewport(), edge + QPoint(20, 0));
  QTest::mouseMove(heads->viewport(), edge + QPoint(40, 0));
  QTest::mouseRelease(heads->viewport(), Qt::LeftButton, Qt::NoModifier, edge + QPoint(40, 0));
  EXPECT_EQ(frozen->columnWidth(0), wider);
  EXPECT_EQ(table->columnWidth(0), wider);
  EXPECT_TRUE(form.fpSpread1.WidthIsOperators(1));
  Settle();
  EXPECT_EQ(table->columnWidth(0), wider);
}

TEST_F(GridViewTest, WhatHasNoRoomIsToldToWhoeverPointsAtIt) {
  const std::string name = "注射用<头孢>哌酮钠舒巴坦钠(进口分装)2.25g*10支/盒";
  form.fpSpread1.SetText(1, 2, name);
  form.fpSpread1.SetText(1, 3, "短");
  form.fpSpread1.UserColumnWidth(2, 6);
  form.fpSpread1.UserColumnWidth(1, 1);
  Settle();
  const auto tip_of = [](QWidget* widget, QPoint at) {
    QHelpEvent help(QEvent::ToolTip, at, widget->mapToGlobal(at));
    QCoreApplication::sendEvent(widget, &help);
    return QToolTip::text();
  };
  const auto cell = [&](int col) { return table->visualRect(table->model()->index(0, col - 1)).center(); };
  QHeaderView* heads = table->horizontalHeader();
  const auto head = [&](int section) { return QPoint(heads->sectionViewportPosition(section) + 2, 4); };
  EXPECT_EQ(tip_of(table->viewport(), cell(3)), "");
  EXPECT_EQ(tip_of(heads->viewport(), head(2)), "");
  EXPECT_TRUE(tip_of(table->viewport(), cell(2)).contains("注射用&lt;头孢&gt;哌酮钠舒巴坦钠(进口分装)2.25g*10支/盒"));
  EXPECT_TRUE(tip_of(heads->viewport(), head(0)).contains("编码"));
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

  Settle();
  Click(table, 1, 6);
  Press(table, Qt::Key_B, "b");
  list = table->findChild<QComboBox*>("cellEditor");
  ASSERT_NE(list, nullptr) << "a text of one's own is typed over the entry";
  EXPECT_EQ(list->currentText(), "b");
  Press(list->lineEdit(), Qt::Key_X, "x");
  Press(list->lineEdit(), Qt::Key_Return, "\r");
  EXPECT_EQ(form.fpSpread1.Text(1, 6), "bx");
}

TEST_F(GridViewTest, SpansCoverTheirCells) {
  form.fpSpread1.SetSpan(3, 1, 1, 3);
  Settle();
  EXPECT_EQ(table->columnSpan(2, 0), 3);
  form.fpSpread1.SetSpan(3, 1, 1, 1);
  Settle();
  EXPECT_EQ(table->columnSpan(2, 0), 1);
}

TEST_F(GridViewTest, ColumnsOfAGroupStandUnderOneHead) {
  const int height = table->horizontalHeader()->height();
  form.fpSpread1.SetColumns({"品名", GridColumn("药房", 12).Under("调前"), GridColumn("药库", 12).Under("调前"),
                             GridColumn("单价", 12).Under("调后")});
  form.fpSpread1.SetFrozenCols(1);
  Settle();
  QHeaderView* heads = table->horizontalHeader();
  EXPECT_EQ(heads->height(), 2 * height);
  EXPECT_EQ(Find<QTableView>("frozen")->horizontalHeader()->height(), 2 * height);
  const QImage picture = heads->grab().toImage();
  const auto parted_behind = [&](int section, int row) {
    const int edge = heads->sectionViewportPosition(section) + heads->sectionSize(section) - 1;
    return picture.pixel(edge, row) != picture.pixel(edge - 3, row);
  };
  EXPECT_FALSE(parted_behind(1, 4)) << "one head above both";
  EXPECT_TRUE(parted_behind(1, height + 4));
  EXPECT_TRUE(parted_behind(2, 4)) << "the next group's head";
  form.fpSpread1.SetColumns({"品名", "药房"});
  Settle();
  EXPECT_EQ(heads->height(), height);
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

/// A grid as a page of cells.
class PageForm : public Form {
 public:
  static constexpr const char* kName = "PageForm";
  explicit PageForm(Forms& forms) : Form(forms, kName, "日历", WindowKind::kDialog) {
    page.SetPageLines(2);
    page.SetMaxRows(6);
    for (int row = 1; row <= 6; ++row) page.SetText(row, 1, std::to_string(row) + "\n初" + std::to_string(row));
  }
  Grid page{this, "page", {"日", "一", "二"}};
  Layout Arrange() const override { return Column({page}); }
};

TEST_F(GridViewTest, APageShowsAllItsRowsWithoutNumbersAndMarksOneCell) {
  auto& calendar = forms.Get<PageForm>(forms);
  calendar.Show();
  calendar.page.SetFocus();
  Settle();
  auto* view = Find<QTableView>("page");
  EXPECT_FALSE(view->verticalHeader()->isVisible());
  EXPECT_LE(view->rowViewportPosition(5) + view->rowHeight(5), view->viewport()->height());
  EXPECT_GE(view->rowHeight(0), 2 * view->fontMetrics().lineSpacing());
  EXPECT_FALSE(view->verticalScrollBar()->isVisible());

  const auto neighbour = [&] { return view->grab(QRect(view->columnViewportPosition(1), 60, 20, 20)).toImage(); };
  calendar.page.SetActiveCell(1, 1);
  Settle();
  const QImage beside_active = neighbour();
  calendar.page.SetActiveCell(6, 3);
  Settle();
  EXPECT_EQ(beside_active, neighbour()) << "the rest of the active row looks as ever";
}

}  // namespace
}  // namespace luming
