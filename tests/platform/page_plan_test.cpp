#include "platform/page_plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "util/text.h"

namespace luming {
namespace {

const PlainMetrics kMetrics;

PrintJob JobOf(int rows, int cols, const std::string& cell = "药品") {
  PrintJob job;
  job.title = "药品目录表";
  job.unit_name = "鹿鸣医院";
  job.values = {{"统计日期", "2026-03-01 到 2026-03-31"}};
  job.items = {{PrintItem::kHeader, PrintItem::kCentre, 1, "{报表名}", "宋体", 16, true},
               {PrintItem::kHeader, PrintItem::kLeft, 2, "{空行}", "", 0, false},
               {PrintItem::kHeader, PrintItem::kLeft, 4, "{单位名称}", "宋体", 9, false},
               {PrintItem::kHeader, PrintItem::kRight, 4, "日期：{统计日期}", "宋体", 9, false},
               {PrintItem::kFooter, PrintItem::kLeft, 1, "制表人:张三", "宋体", 9, false},
               {PrintItem::kFooter, PrintItem::kCentre, 1, "{页码}", "宋体", 9, false},
               {PrintItem::kFooter, PrintItem::kRight, 1, "", "宋体", 9, false}};
  job.grid.widths.assign(static_cast<std::size_t>(cols), 0);
  job.grid.heads.emplace_back();
  for (int col = 1; col <= cols; ++col) job.grid.heads[0].push_back({"列" + std::to_string(col)});
  for (int row = 1; row <= rows; ++row) {
    job.grid.rows.emplace_back();
    for (int col = 1; col <= cols; ++col) job.grid.rows.back().push_back({cell + std::to_string(row)});
  }
  job.grid.counted_rows = rows;
  return job;
}

std::vector<std::string> PagesOf(const PrintJob& job) {
  return Split(PagesAsText(job, PlanPages(job, {}, kMetrics), kMetrics), "\f");
}

/// Nothing stands outside the paper's margins, nothing of the table runs into header or footer.
void ExpectWithinPaper(const PagePlan& plan) {
  for (const PlannedPage& page : plan.pages) {
    ASSERT_FALSE(page.columns.empty());
    EXPECT_GE(page.columns.front().x, plan.paper.margin - 0.1);
    EXPECT_LE(page.columns.back().x + page.columns.back().width, plan.paper.width - plan.paper.margin + 0.1);
    const double foot = page.items.back().y;
    double y = 0;
    for (const RowPiece& row : page.rows) {
      EXPECT_GE(row.y, y - 0.1);
      y = row.y + row.height;
    }
    EXPECT_LE(y, foot + 0.1);
    EXPECT_LE(foot + page.items.back().height, plan.paper.height - plan.paper.margin + 0.1);
  }
}

TEST(PagePlan, SmallTablesStandOnOneUprightPage) {
  const PrintJob job = JobOf(2, 3);
  const PagePlan plan = PlanPages(job, {}, kMetrics);
  ASSERT_EQ(plan.pages.size(), 1u);
  EXPECT_LT(plan.paper.width, plan.paper.height);
  EXPECT_EQ(PagesAsText(job, plan, kMetrics),
            "药品目录表\n\n鹿鸣医院\t日期：2026-03-01 到 2026-03-31\n"
            "列1\t列2\t列3\n药品1\t药品1\t药品1\n药品2\t药品2\t药品2\n共 2 行\n"
            "制表人:张三\t第 1 页 共 1 页\n\f");
  ExpectWithinPaper(plan);
}

TEST(PagePlan, EveryRowStandsOnceUnderHeadsOfItsOwnPage) {
  const PrintJob job = JobOf(3000, 6);
  const PagePlan plan = PlanPages(job, {}, kMetrics);
  ExpectWithinPaper(plan);
  int next = 0;
  for (const PlannedPage& page : plan.pages) {
    ASSERT_TRUE(page.rows.front().is_head);
    for (const RowPiece& row : page.rows) {
      if (row.is_head) continue;
      EXPECT_EQ(row.row, next++);
    }
    EXPECT_EQ(page.count_note.empty(), &page != &plan.pages.back());
  }
  EXPECT_EQ(next, 3000);
  EXPECT_EQ(plan.pages.back().count_note, "共 3000 行");
  const auto pages = PagesOf(job);
  const std::string last =
      "第 " + std::to_string(plan.pages.size()) + " 页 共 " + std::to_string(plan.pages.size()) + " 页";
  EXPECT_NE(pages[plan.pages.size() - 1].find(last), std::string::npos);
  EXPECT_EQ(pages[0].find("共 3000 行"), std::string::npos);
}

TEST(PagePlan, WidePaperIsTurnedThenMadeSmallerThenContinued) {
  const auto plan_of = [](int cols) { return PlanPages(JobOf(3, cols, "一二三四五"), {}, kMetrics); };
  const PagePlan few = plan_of(6);
  EXPECT_LT(few.paper.width, few.paper.height);
  const PagePlan more = plan_of(17);
  EXPECT_GT(more.paper.width, more.paper.height);
  EXPECT_EQ(more.pages.size(), 1u);
  EXPECT_LT(more.body.points, few.body.points);
  EXPECT_GE(more.body.points, 6.4) << "still readable";
  ExpectWithinPaper(more);

  const PagePlan many = plan_of(45);
  EXPECT_GT(many.pages.size(), 1u);
  EXPECT_GE(many.body.points, 6.4);
  ExpectWithinPaper(many);
  std::set<int> seen;
  for (const PlannedPage& page : many.pages) {
    for (const ColumnPlace& column : page.columns) EXPECT_TRUE(seen.insert(column.col).second);
    EXPECT_EQ(page.rows.size(), 4u) << "all rows stand on the pages side by side";
  }
  EXPECT_EQ(seen.size(), 45u);
}

TEST(PagePlan, LeadingColumnsStandOnEachContinuation) {
  PrintJob job = JobOf(3, 45, "一二三四五");
  job.grid.leading = 2;
  for (const PlannedPage& page : PlanPages(job, {}, kMetrics).pages) {
    EXPECT_EQ(page.columns[0].col, 0);
    EXPECT_EQ(page.columns[1].col, 1);
    EXPECT_GT(page.columns.size(), 2u);
  }
}

TEST(PagePlan, LongTextWrapsAndIsAllThere) {
  PrintJob job = JobOf(3, 4);
  std::string words;
  for (int i = 0; i < 60; ++i) words += "word" + std::to_string(i) + " ";
  job.grid.rows[1][2].text = words;
  job.grid.rows[1][0].text = std::string(200, 'x');
  const PagePlan plan = PlanPages(job, {}, kMetrics);
  ExpectWithinPaper(plan);
  const RowPiece& high = plan.pages[0].rows[2];
  EXPECT_GT(high.lines, 5);
  const PrintFont font{plan.body.name, plan.body.points, false};
  const auto& column = plan.pages[0].columns[2];
  EXPECT_LE(WrapText(words, column.width - 2 * plan.padding, font, kMetrics).size(),
            static_cast<std::size_t>(high.lines));
}

TEST(PagePlan, CodesAndDatesAreNotBrokenHoweverNarrowTheGrid) {
  for (const int cols : {5, 11, 13, 16}) {
    PrintJob job = JobOf(1, cols, "2028-04-");
    job.grid.widths.assign(static_cast<std::size_t>(cols), 6);
    const PagePlan plan = PlanPages(job, {}, kMetrics);
    for (const PlannedPage& page : plan.pages) EXPECT_EQ(page.rows.back().lines, 1) << cols;
  }
}

TEST(PagePlan, ARowHigherThanAPageGoesOnOnTheNext) {
  PrintJob job = JobOf(3, 2);
  std::string text;
  for (int i = 0; i < 4000; ++i) text += "甲";
  text += "终";
  job.grid.rows[1][1].text = text;
  const PagePlan plan = PlanPages(job, {}, kMetrics);
  ExpectWithinPaper(plan);
  int lines = 0;
  for (const PlannedPage& page : plan.pages) {
    for (const RowPiece& row : page.rows) {
      if (row.is_head || row.row != 1) continue;
      EXPECT_EQ(row.first_line, lines);
      lines += row.lines;
    }
  }
  const std::string shown = PagesAsText(job, plan, kMetrics);
  std::size_t characters = 0;
  for (std::size_t at = shown.find("甲"); at != std::string::npos; at = shown.find("甲", at + 1)) ++characters;
  EXPECT_EQ(characters, 4000u);
  EXPECT_NE(shown.find("终"), std::string::npos);
}

TEST(PagePlan, SpansTakeTheWidthAndHeightOfWhatTheyCover) {
  PrintJob job = JobOf(3, 4, "阿莫西林胶囊");
  job.grid.rows[2] = {{"     入库时间：2026-03-01    制单人：张三     复核人：李四", PrintAlign::kLeft, false, 1, 4},
                      {"", PrintAlign::kLeft, false, 0, 0},
                      {"", PrintAlign::kLeft, false, 0, 0},
                      {"", PrintAlign::kLeft, false, 0, 0}};
  job.grid.rows[0][0] = {"两行", PrintAlign::kLeft, false, 2, 1};
  job.grid.rows[1][0] = {"", PrintAlign::kLeft, false, 0, 0};
  const PagePlan plan = PlanPages(job, {}, kMetrics);
  const PlannedPage& page = plan.pages[0];
  const CellBox foot = BoxOf(job.grid, page, 3, 0);
  EXPECT_DOUBLE_EQ(foot.width, page.columns.back().x + page.columns.back().width - page.columns.front().x);
  EXPECT_EQ(page.rows[3].lines, 1) << "the foot has the room of all four columns";
  const CellBox two = BoxOf(job.grid, page, 1, 0);
  EXPECT_DOUBLE_EQ(two.height, page.rows[1].height + page.rows[2].height);
  EXPECT_NE(PagesAsText(job, plan, kMetrics).find("     入库时间：2026-03-01    制单人：张三     复核人：李四\t\t\t\n"),
            std::string::npos);
}

TEST(PagePlan, ItemsThatWouldCollideGetLinesOfTheirOwn) {
  PrintJob job = JobOf(1, 2);
  std::string wide;
  for (int i = 0; i < 50; ++i) wide += "宽";
  job.items.push_back({PrintItem::kHeader, PrintItem::kCentre, 4, wide, "宋体", 9, false});
  const std::string page = PagesOf(job)[0];
  EXPECT_NE(page.find("鹿鸣医院\n"), std::string::npos);
  EXPECT_NE(page.find("日期：2026-03-01 到 2026-03-31\n"), std::string::npos);
  EXPECT_NE(page.find(wide + "\n"), std::string::npos);
  ExpectWithinPaper(PlanPages(job, {}, kMetrics));
}

TEST(PagePlan, TextBreaksAtBlanksAndBetweenChineseCharacters) {
  const PrintFont font{"", 10, false};  // a Latin character is 5 wide, a Chinese one 10
  const auto wrap = [&](std::string_view text, double width) { return WrapText(text, width, font, kMetrics); };
  using Lines = std::vector<std::string>;
  EXPECT_EQ(wrap("", 20), Lines{""});
  EXPECT_EQ(wrap("药品名称", 25), (Lines{"药品", "名称"}));
  EXPECT_EQ(wrap("one two three", 40), (Lines{"one two", "three"}));
  EXPECT_EQ(wrap("abcdefghij", 20), (Lines{"abcd", "efgh", "ij"}));
  EXPECT_EQ(wrap("药abc品", 25), (Lines{"药abc", "品"}));
  EXPECT_EQ(wrap("甲\n乙\r\n丙", 100), (Lines{"甲", "乙", "丙"}));
  EXPECT_EQ(wrap("药", 2), Lines{"药"}) << "a character wider than the line still stands";
  std::string all;
  for (const std::string& line : wrap("注射用头孢曲松钠 1.0g*10 支/盒", 33)) all += line;
  EXPECT_EQ(Replace(all, " ", ""), "注射用头孢曲松钠1.0g*10支/盒");
}

}  // namespace
}  // namespace luming
