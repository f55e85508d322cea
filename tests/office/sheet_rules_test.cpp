#include "office/sheet_rules.h"

#include <gtest/gtest.h>

namespace luming {
namespace {

TEST(SheetRules, NamesBecomeOnesThatSpreadsheetsTake) {
  const std::pair<std::string, std::string> names[] = {
      {"药品目录", "药品目录"},
      {"", "Sheet1"},
      {"   ", "Sheet1"},
      {"History", "Sheet1"},
      {"a/b\\c:d?e*[f]", "a／b＼c：d？e＊［f］"},
      {"'引号'", "’引号’"},
      {"行\n列", "行 列"},
      {std::string(40, 'x'), std::string(31, 'x')},
      {"𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷", "𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷𠮷"},
  };
  for (const auto& [given, valid] : names) EXPECT_EQ(ValidSheetName(given), valid);
}

TEST(SheetRules, OnlySumsOfABlockAreKnown) {
  const auto block = SummedBlock("SUM(AB2:AC10)");
  ASSERT_TRUE(block.has_value());
  EXPECT_EQ(block->row, 2);
  EXPECT_EQ(block->col, 28);
  EXPECT_EQ(block->rows, 9);
  EXPECT_EQ(block->cols, 2);
  EXPECT_TRUE(SummedBlock("sum(E1:E1)").has_value());
  for (const char* other : {"", "SUM", "SUM(", "SUM()", "SUM(E1)", "SUM(E2:E1)", "SUM(F1:E1)", "SUM(E1:E2)+1", "E1+E2",
                            "AVERAGE(E1:E2)", "SUM(E1:E2:E3)", "SUM(E0:E2)"}) {
    EXPECT_FALSE(SummedBlock(other).has_value()) << other;
  }
}

TEST(SheetRules, DatesCountFromTheSpreadsheetsZero) {
  EXPECT_EQ(DateSerial(DateTime(1900, 3, 1)), 61);
  EXPECT_EQ(DateSerial(DateTime(2026, 3, 1)), 46082);
  EXPECT_DOUBLE_EQ(DateSerial(DateTime(2026, 3, 1, 18, 0, 0)), 46082.75);
}

}  // namespace
}  // namespace luming
