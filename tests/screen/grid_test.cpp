#include "screen/grid.h"

#include "support/screen_test.h"
#include "util/failure.h"

namespace luming {
namespace {

using Texts = std::vector<std::string>;

class GridForm : public Form {
 public:
  explicit GridForm(Forms& registry) : Form(registry, "GridForm", "grid", WindowKind::kChild) {}
  Layout Arrange() const override { return Column({grid}); }
  Grid grid{this,
            "grid",
            {"编码", GridColumn("品名").Locked(), GridColumn("数量", 8).Figure(), GridColumn("内码").Hidden(), "金额"}};
};

class GridTest : public ScreenTest {
 protected:
  void Put(const std::vector<Texts>& rows) {
    grid.SetMaxRows(0);
    grid.SetMaxRows(static_cast<int>(rows.size()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
      for (std::size_t col = 0; col < rows[row].size(); ++col) {
        grid.SetText(static_cast<int>(row) + 1, static_cast<int>(col) + 1, rows[row][col]);
      }
    }
  }
  Texts ColumnTexts(int col) const {
    Texts texts;
    for (int row = 1; row <= grid.MaxRows(); ++row) texts.push_back(grid.Text(row, col));
    return texts;
  }
  GridForm form{forms};
  Grid& grid = form.grid;
};

class CountingView : public FormView {
 public:
  void ControlChanged(Control&) override { ++changes; }
  void FocusChanged(Control*) override {}
  void LookChanged() override {}
  int changes = 0;
};

TEST_F(GridTest, CellsOutsideAreEmptyAndTakeNothing) {
  Put({{"a"}});
  grid.SetText(2, 1, "x");
  grid.SetText(1, 6, "x");
  grid.SetText(-1, 1, "x");
  grid.SetFormula(0, 1, "SUM(A1:A1)");
  EXPECT_EQ(grid.Text(2, 1) + grid.Text(1, 6) + grid.Text(1, 0) + grid.Text(-1, 1) + grid.Formula(9, 9), "");
  EXPECT_EQ(grid.Text(0, 5), "金额");
  grid.SetMaxRows(-3);
  EXPECT_EQ(grid.MaxRows(), 0);
}

TEST_F(GridTest, NumberIsWhatTheTextBeginsWith) {
  Put({{"12.5盒", "￥3", "", "-4"}});
  EXPECT_EQ(grid.Number(1, 1), 12.5);
  EXPECT_EQ(grid.Number(1, 2), 0);
  EXPECT_EQ(grid.Number(1, 3), 0);
  EXPECT_EQ(grid.Number(1, 4), -4);
}

TEST_F(GridTest, RowsFallOffTheEndOrAreAppendedSoTheCountStays) {
  Put({{"1"}, {"2"}, {"3"}, {"4"}});
  grid.InsertRows(2, 1);
  EXPECT_EQ(ColumnTexts(1), (Texts{"1", "", "2", "3"}));
  grid.DeleteRows(1, 2);
  EXPECT_EQ(ColumnTexts(1), (Texts{"2", "3", "", ""}));
  grid.DeleteRows(3, 99);
  grid.InsertRows(4, 99);
  grid.DeleteRows(0, 1);
  grid.InsertRows(5, 1);
  EXPECT_EQ(ColumnTexts(1), (Texts{"2", "3", "", ""}));
  grid.SwapRows(1, 2);
  EXPECT_EQ(ColumnTexts(1), (Texts{"3", "2", "", ""}));
}

TEST_F(GridTest, ActiveCellStaysInside) {
  EXPECT_EQ(grid.ActiveRow(), 0);
  grid.SetMaxRows(3);
  EXPECT_EQ(grid.ActiveRow(), 1);
  EXPECT_EQ(grid.ActiveCol(), 1);
  grid.SetActiveCell(9, 9);
  EXPECT_EQ(grid.ActiveRow(), 3);
  EXPECT_EQ(grid.ActiveCol(), 5);
  grid.DeleteRows(3, 1);
  EXPECT_EQ(grid.ActiveRow(), 3) << "deleting keeps the count";
  grid.SetTopRow(3);
  grid.SetMaxRows(2);
  EXPECT_EQ(grid.ActiveRow(), 2);
  EXPECT_EQ(grid.TopRow(), 2);
  grid.SetTopRow(0);
  EXPECT_EQ(grid.TopRow(), 1);
  grid.SetMaxRows(0);
  EXPECT_EQ(grid.ActiveRow(), 0);
}

TEST_F(GridTest, SumsFollowEveryLaterEdit) {
  Put({{"", "", "1", "", "0.1"}, {"", "", "2", "", "0.2"}, {"合计："}});
  grid.SetFormula(3, 3, "SUM(C1:C2)");
  grid.SetFormula(3, 5, "sum( e1 : e2 )");
  EXPECT_EQ(grid.Text(3, 3), "3");
  EXPECT_EQ(grid.Text(3, 5), "0.3") << "no binary remainder";
  grid.SetText(1, 3, "10");
  grid.UserEdit(2, 3, "20");
  EXPECT_EQ(grid.Text(3, 3), "30");
  grid.SetText(1, 3, "一");
  EXPECT_EQ(grid.Text(3, 3), "20") << "what is no number counts as nothing";
  grid.SwapRows(1, 3);
  EXPECT_EQ(grid.Formula(1, 3), "SUM(C1:C2)") << "goes with its row, the range stays";
  EXPECT_EQ(grid.Text(1, 3), "20");
  grid.SetText(1, 3, "text");
  EXPECT_EQ(grid.Formula(1, 3), "");
  EXPECT_THROW(grid.SetFormula(1, 1, "AVG(A1:A2)"), Failure);
}

TEST_F(GridTest, SumsAreThoseOfABookkeeper) {
  struct Case {
    Texts parts;
    const char* sum;
  };
  const Case cases[] = {
      {{"1000000.1", "-1000000"}, "0.1"}, {{"1e3", "0.25"}, "1000.25"},
      {{"￥12.50", "1,000.5"}, "1013"},   {{"", "x", "-"}, "0"},
      {{"0.005", "0.005"}, "0.01"},       {{"99999999999.99", "0.01"}, "100000000000"},
      {{"1.10", "2.20", "-3.30"}, "0"},
  };
  for (const Case& each : cases) {
    Put({{"", "", "", ""}});
    grid.SetMaxRows(4);
    for (std::size_t i = 0; i < each.parts.size(); ++i) grid.SetText(static_cast<int>(i) + 1, 1, each.parts[i]);
    grid.SetFormula(4, 1, "SUM(A1:A3)");
    EXPECT_EQ(grid.Text(4, 1), each.sum) << each.parts[0];
  }
}

TEST_F(GridTest, SumsOfManyRowsKeepEveryCent) {
  grid.SetMaxRows(50'001);
  for (int row = 1; row <= 50'000; ++row) grid.SetText(row, 5, "0.1");
  grid.SetFormula(50'001, 5, "SUM(E1:E50000)");
  EXPECT_EQ(grid.Text(50'001, 5), "5000");
}

TEST_F(GridTest, FormulasInACircleEnd) {
  grid.SetMaxRows(200);
  grid.SetFormula(1, 1, "SUM(A1:B2)");
  grid.SetFormula(1, 2, "SUM(A1:A2)");
  grid.SetText(2, 1, "5");
  EXPECT_NE(grid.Text(1, 1), "");
  for (int row = 1; row < 200; ++row) {
    const std::string next = std::to_string(row + 1);
    grid.SetFormula(row, 5, "SUM(E" + next + ":E" + next + ")");
  }
  EXPECT_NE(grid.Text(1, 5), "");
}

TEST_F(GridTest, LooksOfTheCellGoBeforeThoseOfRowColumnAndGrid) {
  grid.SetMaxRows(3);
  EXPECT_TRUE(grid.Locked(1, 2)) << "as declared";
  grid.SetLocked(-1, -1, -1, true);
  grid.SetLocked(-1, 3, 3, false);
  EXPECT_TRUE(grid.Locked(2, 1));
  EXPECT_FALSE(grid.Locked(2, 3));
  grid.SetLocked(2, 1, 5, true);
  EXPECT_TRUE(grid.Locked(2, 3));
  grid.SetLocked(2, 3, 3, false);
  EXPECT_FALSE(grid.Locked(2, 3));
  EXPECT_TRUE(grid.Locked(2, 4));
  grid.DeleteRows(1, 1);
  EXPECT_FALSE(grid.Locked(1, 3)) << "looks move with their row";
  EXPECT_TRUE(grid.Locked(1, 5));
  grid.SetLocked(-1, -1, -1, false);
  EXPECT_FALSE(grid.Locked(1, 5)) << "a wider setting forgets the narrower ones";
  EXPECT_FALSE(grid.Locked(1, 2));

  grid.SetBold(3, 1, 2, true);
  grid.SetColours(3, 2, 2, 0xFF0000, 0x00FF00);
  grid.SetKind(-1, 5, CellKind::kCombo);
  grid.SetComboItems(-1, 5, {"x", "y"});
  EXPECT_TRUE(grid.Bold(3, 2));
  EXPECT_FALSE(grid.Bold(3, 3));
  EXPECT_EQ(grid.CellTextColour(3, 2), 0xFF0000U);
  EXPECT_EQ(grid.CellBackColour(3, 1), Control::kNoColour);
  EXPECT_EQ(grid.ComboItems(2, 5), (Texts{"x", "y"}));
  EXPECT_EQ(grid.ComboItems(2, 1), Texts{});
  EXPECT_EQ(grid.Kind(0, 5), CellKind::kText) << "the header has only looks of its own";
}

TEST_F(GridTest, AlignmentIsDeclaredOrFollowsTheContents) {
  Put({{"000123", "1.5", "x", "", "12.00"}, {"202603010001", "-7", "", "", "药"}});
  struct Case {
    int row, col;
    Align align;
  };
  for (const auto& [row, col, align] :
       {Case{1, 1, Align::kLeft}, Case{1, 2, Align::kRight}, Case{1, 3, Align::kRight}, Case{1, 5, Align::kRight},
        Case{2, 1, Align::kLeft}, Case{2, 2, Align::kRight}, Case{2, 5, Align::kLeft}, Case{0, 1, Align::kCentre}}) {
    EXPECT_EQ(grid.CellAlign(row, col), align) << row << "," << col;
  }
}

TEST_F(GridTest, NewColumnsEmptyTheGridAndKeepTheOperatorsWidthsUnderTheirCaptions) {
  Put({{"a", "b"}});
  grid.UserColumnWidth(1, 33);
  grid.UserColumnWidth(2, 44);
  grid.SetColumns({GridColumn("编码", 9).Code(), GridColumn("效期", 11).Date()});
  EXPECT_EQ(grid.MaxRows(), 0);
  EXPECT_EQ(grid.MaxCols(), 2);
  EXPECT_EQ(grid.ColumnWidth(1), 33);
  EXPECT_EQ(grid.ColumnWidth(2), 11);
  Put({{"12", "2026-03-01"}});
  EXPECT_EQ(grid.CellAlign(1, 1), Align::kLeft);
  EXPECT_EQ(grid.CellAlign(1, 2), Align::kCentre);
  EXPECT_FALSE(grid.Locked(1, 2)) << "the column that stood here was locked";
}

TEST_F(GridTest, NeighboursInAGroupShareTheUpperHead) {
  EXPECT_EQ(grid.HeaderRows(), 1);
  EXPECT_EQ(grid.Span(-1, 1), std::pair(0, 0));
  grid.SetColumns({"品名", GridColumn("单价").Under("调前"), GridColumn("金额").Under("调前"),
                   GridColumn("单价").Under("调后"), "备注"});
  EXPECT_EQ(grid.HeaderRows(), 2);
  Texts upper, lower;
  std::vector<std::pair<int, int>> spans;
  for (int col = 1; col <= grid.MaxCols(); ++col) {
    upper.push_back(grid.Text(-1, col));
    lower.push_back(grid.Text(0, col));
    spans.push_back(grid.Span(-1, col));
  }
  EXPECT_EQ(upper, (Texts{"品名", "调前", "调前", "调后", "备注"}));
  EXPECT_EQ(lower, (Texts{"品名", "单价", "金额", "单价", "备注"}));
  EXPECT_EQ(spans, (std::vector<std::pair<int, int>>{{2, 1}, {1, 2}, {0, 0}, {1, 1}, {2, 1}}));
  EXPECT_EQ(grid.Span(0, 1), std::pair(0, 0)) << "covered by the upper row";
  EXPECT_EQ(grid.Span(0, 3), std::pair(1, 1));
  EXPECT_EQ(grid.Text(-2, 1) + grid.Text(-1, 6), "");
}

TEST_F(GridTest, SpansCoverTheirNeighboursAndMoveWithTheirRow) {
  grid.SetMaxRows(4);
  grid.SetSpan(2, 1, 2, 3);
  EXPECT_EQ(grid.Span(2, 1), std::pair(2, 3));
  EXPECT_EQ(grid.Span(3, 3), std::pair(0, 0));
  EXPECT_EQ(grid.Span(3, 4), std::pair(1, 1));
  EXPECT_EQ(grid.Span(4, 1), std::pair(1, 1));
  grid.DeleteRows(1, 1);
  EXPECT_EQ(grid.Span(1, 1), std::pair(2, 3));
  grid.SetSpan(1, 1, 1, 1);
  EXPECT_EQ(grid.Span(2, 1), std::pair(1, 1));
}

TEST_F(GridTest, SortingComparesNumbersAsNumbersAndLeavesTheTotalLast) {
  Put({{"10", "", "2"}, {"9", "", "10"}, {"阿", "", ""}, {"b", "", "1"}, {"合计："}});
  grid.SetFormula(5, 3, "SUM(C1:C4)");
  grid.SetTotalRow(5, true);
  grid.SortRows(1, true);
  EXPECT_EQ(ColumnTexts(1), (Texts{"9", "10", "b", "阿", "合计："}));
  grid.SortRows(3, false);
  EXPECT_EQ(ColumnTexts(3), (Texts{"", "10", "2", "1", "13"}));
  grid.SwapRows(1, 5);
  EXPECT_TRUE(grid.IsTotalRow(1));
  EXPECT_FALSE(grid.IsTotalRow(5));
  Put({{"周"}, {"阿"}, {"王"}, {"李"}});
  grid.SortRows(1, true);
  EXPECT_EQ(ColumnTexts(1), (Texts{"阿", "李", "王", "周"}));
}

TEST_F(GridTest, FillTakesTheRecordsInTheOrderOfTheSources) {
  Recordset rows({"YPBM", "LSJ", "YPMC", "XQ"});
  rows.AppendRow({Value("001"), Value(1.2345), Value("阿莫西林胶囊(较长的名称)"), Value(DateTime(2026, 3, 1))});
  rows.AppendRow({Value("002"), Value(), Value(), Value()});
  Put({{"old"}, {"old"}, {"old"}});
  grid.SetLocked(1, 1, 1, true);
  CountingView view;
  form.SetView(&view);
  grid.Fill(std::move(rows), {{"ypbm"}, {"YPMC"}, {"LSJ", "0.000"}, {"XQ", "yyyy-mm-dd"}, {"LSJ"}});
  EXPECT_EQ(view.changes, 1);
  form.SetView(nullptr);
  EXPECT_EQ(grid.MaxRows(), 2);
  EXPECT_EQ(ColumnTexts(1), (Texts{"001", "002"}));
  EXPECT_EQ(ColumnTexts(2), (Texts{"阿莫西林胶囊(较长的名称)", ""}));
  EXPECT_EQ(ColumnTexts(3), (Texts{"1.235", ""}));
  EXPECT_EQ(ColumnTexts(4), (Texts{"2026-03-01", ""}));
  EXPECT_EQ(ColumnTexts(5), (Texts{"1.2345", ""}));
  EXPECT_FALSE(grid.Locked(1, 1)) << "looks of the old rows are gone";

  EXPECT_THROW(grid.Fill(Recordset({"YPBM"}), {{"nothing"}}), Failure);
  EXPECT_EQ(grid.MaxRows(), 2) << "a failed fill leaves the rows";
  grid.Fill(Recordset({"YPBM"}), {{"YPBM"}});
  EXPECT_EQ(grid.MaxRows(), 0);
  EXPECT_EQ(grid.ActiveRow(), 0);
}

TEST_F(GridTest, FillTakesTheRecordsetsOwnColumnsUnlessTheyStandAlready) {
  const auto found = [](const char* second) {
    Recordset rows({"编码", second, second});
    rows.AppendRow({Value("12"), Value(), Value(1.5)});
    return rows;
  };
  grid.Fill(found("数量"));
  EXPECT_EQ(grid.MaxCols(), 3);
  EXPECT_EQ(grid.Text(0, 3), "数量");
  EXPECT_EQ(grid.Text(1, 1) + "|" + grid.Text(1, 2) + "|" + grid.Text(1, 3), "12||1.5");
  EXPECT_EQ(grid.ColumnHolds(1), Holds::kAnything);
  grid.SetColumns({GridColumn("编码").Code(), "数量", "数量"});
  grid.Fill(found("数量"));
  EXPECT_EQ(grid.CellAlign(1, 1), Align::kLeft);
  grid.Fill(found("库存"));
  EXPECT_EQ(grid.CellAlign(1, 1), Align::kRight);
  EXPECT_THROW(grid.Fill(Recordset()), Failure);
  EXPECT_EQ(grid.Text(0, 2), "库存") << "what failed changes nothing";
}

TEST_F(GridTest, WithReDrawOffTheViewHearsNothing) {
  CountingView view;
  form.SetView(&view);
  grid.SetReDraw(false);
  view.changes = 0;
  Put({{"a"}, {"b"}});
  EXPECT_EQ(view.changes, 0);
  grid.SetReDraw(true);
  EXPECT_EQ(view.changes, 1);
  form.SetView(nullptr);
}

}  // namespace
}  // namespace luming
