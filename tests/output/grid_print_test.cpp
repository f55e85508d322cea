#include "output/grid_print.h"

#include "output/grid_routines.h"
#include "screen/grid.h"
#include "support/app_test.h"

namespace luming {
namespace {

class ListForm : public Form {
 public:
  explicit ListForm(Forms& registry) : Form(registry, "ListForm", "药品入库单", WindowKind::kChild) {}
  Layout Arrange() const override { return grid; }

  Grid grid{this, "grid", {"编码", "品名", "数量", "备注"}};
};

class GridPrintTest : public AppTest {
 protected:
  void SetUp() override {
    app.ReportUnit = "鹿鸣医院";
    app.CurUser.GetUserName = "管理员";
    grid.SetMaxRows(2);
    for (int row = 1; row <= 2; ++row) {
      grid.SetText(row, 1, "00" + std::to_string(row));
      grid.SetText(row, 2, "药品" + std::to_string(row));
      grid.SetText(row, 3, std::to_string(row * 10));
    }
  }

  const PrintJob& Previewed() {
    EXPECT_EQ(printing.previewed.size(), 1u);
    return printing.previewed.at(0);
  }

  ListForm form{app.forms};
  Grid& grid = form.grid;
};

TEST_F(GridPrintTest, AnEmptyGridIsToldAndNothingIsPrinted) {
  grid.SetMaxRows(0);
  GridPrint(app, grid, "药品目录表", {.direct = true});
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "鹿鸣仓管系统  未发现可以打印的内容。");
  EXPECT_EQ(box.title, "鹿鸣仓管系统");
  EXPECT_EQ(box.style, box::kWarning);
  EXPECT_TRUE(printing.printed.empty() && printing.previewed.empty());
}

TEST_F(GridPrintTest, TheControlGetsTitleUnitOperatorPeriodAndNineItems) {
  GridPrint(app, grid, "【西药库】出库单据列表",
            {.dateFrom = "2026-03-01",
             .dateTo = "2026-03-31",
             .footLeft = "制表人:管理员",
             .footRight = "打印日期:2026-03-31",
             .headCentre = "出库方式:全部"});
  const PrintJob& job = Previewed();
  EXPECT_EQ(job.number, 45);
  EXPECT_EQ(job.title, "【西药库】出库单据列表");
  EXPECT_EQ(job.unit_name, "鹿鸣医院");
  EXPECT_EQ(job.operator_name, "管理员");
  EXPECT_FALSE(job.option);
  ASSERT_EQ(job.values.size(), 1u);
  EXPECT_EQ(job.values[0].Name, "统计日期");
  EXPECT_EQ(job.values[0].Value, "2026-03-01 到 2026-03-31");

  std::string items;
  for (const PrintItem& item : job.items) {
    items += std::to_string(item.Area) + std::to_string(item.Align) + std::to_string(item.Line) + " " + item.Text +
             "|" + item.FontName + std::to_string(item.FontSize) + (item.Bold ? "b" : "") + "\n";
  }
  EXPECT_EQ(items,
            "021 {报表名}|宋体16b\n002 {空行}|0\n023 {空行}|0\n004 {单位名称}|宋体9\n014 日期：{统计日期}|宋体9\n"
            "101 制表人:管理员|宋体9\n121 {页码}|宋体9\n111 打印日期:2026-03-31|宋体9\n024 出库方式:全部|宋体9\n");
}

TEST_F(GridPrintTest, WithoutAStartTheDateIsDroppedButItsValueStays) {
  GridPrint(app, grid, "列表", {.direct = true, .unitName = "中药库"});
  ASSERT_EQ(printing.printed.size(), 1u);
  EXPECT_TRUE(printing.previewed.empty());
  const PrintJob& job = printing.printed[0];
  EXPECT_EQ(job.items[4].Text, "");
  EXPECT_EQ(job.values[0].Value, " 到 ");
  EXPECT_EQ(job.unit_name, "中药库");
}

TEST_F(GridPrintTest, VisibleColumnsArePrintedAsTheyStand) {
  grid.SetColumnHidden(1, true);
  grid.SetColumnWidth(2, 20);
  grid.SetFrozenCols(2);
  grid.SetAlign(1, 3, Align::kCentre);
  GridSumRow(grid, 2, {3});
  GridPrint(app, grid, "列表");
  const PrintGrid& printed = Previewed().grid;
  EXPECT_EQ(printed.widths, (std::vector<double>{20, 0, 0}));
  EXPECT_EQ(printed.leading, 1);
  EXPECT_EQ(printed.heads[0][0].text, "品名");
  EXPECT_TRUE(printed.heads[0][0].bold);
  EXPECT_EQ(printed.rows[0][1].align, PrintAlign::kCentre);
  EXPECT_EQ(printed.rows[1][1].align, PrintAlign::kRight);
  EXPECT_EQ(printed.rows[2][0].text, "合计：");
  EXPECT_EQ(printed.rows[2][1].text, "30");
  EXPECT_TRUE(printed.rows[2][1].bold);
  EXPECT_EQ(printed.counted_rows, 2) << "the total row is no line";
  EXPECT_TRUE(printed.lines);
}

TEST_F(GridPrintTest, AFootThatBeginsInAHiddenColumnKeepsItsText) {
  grid.SetMaxRows(3);
  grid.SetText(3, 1, "     入库时间：2026-03-01");
  grid.SetSpan(3, 1, 1, 4);
  grid.SetColumnHidden(1, true);
  grid.SetColumnHidden(3, true);
  GridPrint(app, grid, "列表");
  const PrintGrid& printed = Previewed().grid;
  EXPECT_EQ(printed.rows[2][0].text, "     入库时间：2026-03-01");
  EXPECT_EQ(printed.rows[2][0].cols, 2);
  EXPECT_EQ(printed.rows[2][1].cols, 0);
  EXPECT_EQ(printed.counted_rows, 2);
}

TEST_F(GridPrintTest, TwoHeaderRowsAreHeadsWhoseGroupsSpanWhatIsVisible) {
  grid.SetColumns({"品名", GridColumn("药房").Under("调前").Hidden(), GridColumn("药库").Under("调前"),
                   GridColumn("金额").Under("调前"), GridColumn("单价").Under("调后")});
  std::string told;
  for (const std::vector<PrintCell>& heads : PrintedGrid(grid).heads) {
    for (const PrintCell& head : heads) {
      told +=
          head.text + " " + std::to_string(head.rows) + "x" + std::to_string(head.cols) + (head.bold ? "" : "?") + "|";
    }
  }
  EXPECT_EQ(told, "品名 2x1|调前 1x2| 0x0|调后 1x1| 0x0|药库 1x1|金额 1x1|单价 1x1|");
}

TEST_F(GridPrintTest, TheGridsLinesAreHiddenWhileItIsPrintedAlone) {
  GridPrint(app, grid, "列表", {.hideOption = true});
  EXPECT_FALSE(Previewed().grid.lines);
  EXPECT_TRUE(grid.GridLines());
}

}  // namespace
}  // namespace luming
