#include "script/headless_printing.h"

#include <gtest/gtest.h>

namespace luming {
namespace {

TEST(HeadlessPrinting, KeepsThePagesOfTheLastJobWhateverItWas) {
  HeadlessPrinting printing;
  EXPECT_EQ(printing.LastPages(), "");

  PrintJob job;
  job.title = "药品目录表";
  job.items = {{PrintItem::kHeader, PrintItem::kCentre, 1, "{报表名}", "宋体", 16, true},
               {PrintItem::kFooter, PrintItem::kCentre, 1, "{页码}", "宋体", 9, false}};
  job.grid.widths = {0, 0};
  job.grid.heads = {{{"编码"}, {"品名"}}};
  job.grid.rows = {{{"001000"}, {"阿莫西林"}}};
  job.grid.counted_rows = 1;
  printing.Preview(job);
  EXPECT_EQ(printing.LastPages(), "药品目录表\n编码\t品名\n001000\t阿莫西林\n共 1 行\n第 1 页 共 1 页\n\f");

  printing.Print(PrintDocument{"药品出库单", "/nowhere.pdf", "合计:\t15.50\n"});
  EXPECT_EQ(printing.LastPages(), "合计:\t15.50\n\f");
}

}  // namespace
}  // namespace luming
