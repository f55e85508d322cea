#include "output/grid_to_excel.h"

#include "output/grid_routines.h"
#include "screen/grid.h"
#include "support/app_test.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming {
namespace {

class ExportForm : public Form {
 public:
  explicit ExportForm(Forms& registry) : Form(registry, "ExportForm", "药品入库录入", WindowKind::kChild) {}
  Layout Arrange() const override { return grid; }

  Grid grid{
      this, "grid", {GridColumn("编码").Code(), "品名", "数量", "单价", GridColumn("批号").Code(), "单据", "金额"}};
};

/// What a sheet's cell holds, with its number format.
std::string Told(const Sheet& sheet, int row, int col) {
  const SheetCell& cell = sheet.rows.at(static_cast<std::size_t>(row - 1)).at(static_cast<std::size_t>(col - 1));
  const std::string picture = sheet.styles[static_cast<std::size_t>(cell.style)].picture;
  const std::string suffix = picture.empty() ? "" : " as " + picture;
  if (const auto* text = std::get_if<std::string>(&cell.value)) return "\"" + *text + "\"" + suffix;
  if (const auto* number = std::get_if<double>(&cell.value)) return NumberText(*number) + suffix;
  if (const auto* sum = std::get_if<SheetFormula>(&cell.value)) {
    return "=" + sum->text + " is " + NumberText(sum->result) + suffix;
  }
  if (const auto* day = std::get_if<DateTime>(&cell.value)) return FormatDate(*day, "yyyy-mm-dd") + suffix;
  return "";
}

class GridToExcelTest : public AppTest {
 protected:
  void Fill(std::initializer_list<std::vector<std::string>> rows) {
    for (const std::vector<std::string>& row : rows) {
      grid.SetMaxRows(grid.MaxRows() + 1);
      int column = 0;
      for (const std::string& text : row) grid.SetText(grid.MaxRows(), ++column, text);
    }
  }
  std::string GridText() const {
    std::string text;
    for (int row = 0; row <= grid.MaxRows(); ++row) {
      for (int col = 1; col <= grid.MaxCols(); ++col) text += grid.Text(row, col) + "/" + grid.Formula(row, col) + "\t";
      text += "\n";
    }
    return text;
  }
  const Sheet& Exported() {
    EXPECT_EQ(workbooks.saved.size(), 1u);
    return workbooks.saved.at(0).sheet;
  }

  ExportForm form{app.forms};
  Grid& grid = form.grid;
};

TEST_F(GridToExcelTest, ANameIsProposedAndCancellingChangesNothing) {
  Fill({{"1"}});
  desktop.files = {std::nullopt, std::nullopt};
  GridToExcel(app, grid);
  form.SetCaption("入库/退药 <查询>");
  GridToExcel(app, grid);
  EXPECT_TRUE(workbooks.saved.empty());
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_EQ(desktop.file_dialogs.at(0).filter, "*.xls|*.xls|*.xlsx|*.xlsx");
  EXPECT_EQ(desktop.file_dialogs.at(0).directory, app.AppPath);
  EXPECT_EQ(desktop.file_dialogs.at(1).name, "入库_退药 _查询_ 2026-03-01.xls");
}

TEST_F(GridToExcelTest, CellsKeepTheirKindsAndTheGridStaysAsItWas) {
  Fill({{"001000", "阿莫西林", "12", "￥12.5000", "240301", "202603010001", "150.00"},
        {"001001", "1/2 盐水", "", "￥3.0000", "B240302", "202603010002", "9.5"}});
  GridSumRow(grid, 1, {3, 7});
  const std::string before = GridText();
  desktop.files.push_back("/store/导出");
  GridToExcel(app, grid, "药品目录");

  const Sheet& sheet = Exported();
  EXPECT_EQ(workbooks.saved[0].file, "/store/导出") << "the name is used as typed";
  EXPECT_EQ(sheet.name, "药品目录");
  const std::vector<std::vector<std::string>> wanted = {
      {"\"编码\"", "\"品名\"", "\"数量\"", "\"单价\"", "\"批号\"", "\"单据\"", "\"金额\""},
      {"\"001000\"", "\"阿莫西林\"", "12 as 0", "12.5 as ￥0.0000", "\"240301\"", "\"202603010001\"", "150 as 0.00"},
      {"\"001001\"", "\"1/2 盐水\"", "", "3 as ￥0.0000", "\"B240302\"", "\"202603010002\"", "9.5 as 0.0"},
      {"\"合计：\"", "", "=SUM(C2:C3) is 12 as 0", "", "", "", "=SUM(G2:G3) is 159.5 as 0.00"}};
  ASSERT_EQ(sheet.rows.size(), wanted.size());
  for (std::size_t row = 0; row < wanted.size(); ++row) {
    for (std::size_t col = 0; col < wanted[row].size(); ++col) {
      EXPECT_EQ(Told(sheet, static_cast<int>(row) + 1, static_cast<int>(col) + 1), wanted[row][col]);
    }
  }
  for (const std::size_t bold_row : {0u, 3u}) {
    EXPECT_TRUE(sheet.styles[static_cast<std::size_t>(sheet.rows[bold_row][6].style)].bold);
  }
  EXPECT_EQ(GridText(), before);
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "文件导出成功！    ");
  EXPECT_EQ(box.title, "提示");
  EXPECT_EQ(box.style, box::kInformation);
}

TEST_F(GridToExcelTest, ANumberAmongTextsStaysTextUnlessItsColumnIsSummed) {
  Fill({{"1", "100", "a"}, {"2", "二百", "5"}});
  grid.SetMaxRows(3);
  grid.SetFormula(3, 3, "SUM(C1:C2)");
  const Sheet sheet = SheetOf(grid, "");
  EXPECT_EQ(Told(sheet, 2, 2), "\"100\"");
  EXPECT_EQ(Told(sheet, 2, 3), "\"a\"");
  EXPECT_EQ(Told(sheet, 3, 3), "5 as 0");
}

TEST_F(GridToExcelTest, AnEmptyGridGivesItsHeaderRow) {
  desktop.files.push_back("/store/空.xls");
  GridToExcel(app, grid);
  ASSERT_EQ(Exported().rows.size(), 1u);
  EXPECT_EQ(Exported().rows[0].size(), 7u);
  EXPECT_EQ(Exported().name, "药品入库录入") << "unnamed sheets bear the form's caption";
  EXPECT_EQ(grid.MaxRows(), 0);
}

TEST_F(GridToExcelTest, HiddenColumnsStayOutAndSpansAndSumsMoveUp) {
  grid.SetColumns(
      {GridColumn("编码").Code(), "品名", "批号", GridColumn("备用").Hidden(), GridColumn("金额").Figure(), "效期"});
  Fill({{"1", "a", "2026-03-01", "x", "10", "2027-12-31"}, {"2", "b", "0301", "y", "不详", "2028-02-29"}});
  GridSumRow(grid, 1, {5});
  Fill({{"     入库时间：2026-03-01"}});
  grid.SetSpan(4, 1, 1, 6);
  grid.SetColumnHidden(1, true);
  grid.SetColumnWidth(2, 33);
  const Sheet sheet = SheetOf(grid, "");
  ASSERT_EQ(sheet.columns.size(), 4u);
  EXPECT_EQ(sheet.columns[0].width, 33);
  std::string cells;
  for (int row = 1; row <= 5; ++row) {
    for (int col = 1; col <= 4; ++col) cells += Told(sheet, row, col) + "|";
    cells += "\n";
  }
  EXPECT_EQ(cells,
            "\"品名\"|\"批号\"|\"金额\"|\"效期\"|\n"
            "\"a\"|\"2026-03-01\"|10 as 0|2027-12-31 as yyyy-mm-dd|\n"
            "\"b\"|\"0301\"|\"不详\"|2028-02-29 as yyyy-mm-dd|\n"
            "||=SUM(C2:C3) is 10 as 0||\n"
            "\"     入库时间：2026-03-01\"||||\n");
  ASSERT_EQ(sheet.merged.size(), 1u);
  EXPECT_EQ(sheet.merged[0].row, 5);
  EXPECT_EQ(sheet.merged[0].col, 1);
  EXPECT_EQ(sheet.merged[0].cols, 4);
}

TEST_F(GridToExcelTest, TwoHeaderRowsStayAboveAndGroupsAreMerged) {
  grid.SetColumns({"品名", GridColumn("药房").Under("数量"), GridColumn("药库").Under("数量")});
  Fill({{"甲", "1", "2"}});
  GridSumRow(grid, 1, {3});
  const Sheet sheet = SheetOf(grid, "");
  EXPECT_EQ(sheet.frozen_rows, 2);
  EXPECT_EQ(sheet.repeated_rows, 2);
  std::string cells;
  for (int row = 1; row <= 4; ++row) {
    for (int col = 1; col <= 3; ++col) cells += Told(sheet, row, col) + "|";
  }
  EXPECT_EQ(cells, R"("品名"|"数量"|||"药房"|"药库"|"甲"|1 as 0|2 as 0|"合计："||=SUM(C3:C3) is 2 as 0|)");
  std::string merged;
  for (const SheetBlock& block : sheet.merged) {
    merged += std::to_string(block.row) + "," + std::to_string(block.col) + " " + std::to_string(block.rows) + "x" +
              std::to_string(block.cols) + "|";
  }
  EXPECT_EQ(merged, "1,1 2x1|1,2 1x2|");
}

TEST_F(GridToExcelTest, AFileThatCannotBeWrittenIsAFailureWithoutABox) {
  workbooks.refuses = true;
  Fill({{"1"}});
  const std::string before = GridText();
  desktop.files.push_back("/full/a.xls");
  EXPECT_THROW(GridToExcel(app, grid), Failure);
  EXPECT_EQ(GridText(), before);
  EXPECT_TRUE(desktop.boxes.empty());
}

}  // namespace
}  // namespace luming
