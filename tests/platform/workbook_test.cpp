#include "platform/workbook.h"

#include <gtest/gtest.h>

#include "util/failure.h"

namespace luming {
namespace {

TEST(WorkbookCells, NumbersAreToldFromCodes) {
  const std::pair<const char*, double> numbers[] = {
      {"0", 0},           {"12", 12},          {"-3.50", -3.5},   {"0.0000", 0},
      {".5", 0.5},        {"￥12.5000", 12.5}, {"-¥0.05", -0.05}, {"99999999999", 99999999999.0},
      {"240301", 240301},
  };
  for (const auto& [text, value] : numbers) {
    ASSERT_TRUE(CellNumber(text).has_value()) << text;
    EXPECT_DOUBLE_EQ(*CellNumber(text), value) << text;
  }
  for (const char* text :
       {"",   "-",   ".",   "￥",   "001000",       "00",         "1.",  "1e5", "1,000.00", " 1",    "1 ",
        "+1", "--1", "1/2", "0x10", "202603010001", "2026-03-01", "inf", "nan", "12片",     "1.2.3", "１２"}) {
    EXPECT_FALSE(CellNumber(text).has_value()) << text;
  }
}

TEST(WorkbookCells, AddressesAndLettersGoBothWays) {
  const std::pair<int, const char*> letters[] = {{1, "A"},   {26, "Z"},   {27, "AA"},  {52, "AZ"},
                                                 {53, "BA"}, {256, "IV"}, {702, "ZZ"}, {703, "AAA"}};
  for (const auto& [col, text] : letters) {
    EXPECT_EQ(ColumnLetters(col), text);
    const auto place = ParseAddress(std::string(text) + "17");
    ASSERT_TRUE(place.has_value()) << text;
    EXPECT_EQ(place->col, col);
    EXPECT_EQ(place->row, 17);
  }
  for (const char* bad : {"", "A", "17", "a1", "A0", "A-1", "A1B", "ABCD1", "A99999999999", "$A$1"}) {
    EXPECT_FALSE(ParseAddress(bad).has_value()) << bad;
  }
}

TEST(WorkbookCells, EqualStylesAreKeptOnce) {
  Sheet sheet;
  EXPECT_EQ(sheet.AddStyle({}), 0);
  const int bold = sheet.AddStyle({.bold = true});
  EXPECT_EQ(sheet.AddStyle({.bold = true, .picture = "0.00"}), bold + 1);
  EXPECT_EQ(sheet.AddStyle({.bold = true}), bold);
  EXPECT_EQ(sheet.styles.size(), 3u);
}

}  // namespace
}  // namespace luming
