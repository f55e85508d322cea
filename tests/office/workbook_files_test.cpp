#include <gtest/gtest.h>

#include <fstream>

#include "office/office_workbooks.h"
#include "office/pdf_keeper.h"
#include "office/read_back.h"
#include "support/failure_of.h"
#include "support/temp_directory.h"
#include "util/number_text.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {
namespace {

/// Writing needs neither printer nor office program.
OfficeWorkbooks Written() {
  static PdfKeeper printing;
  return OfficeWorkbooks(printing, {});
}

/// How a reader tells a text of several lines.
std::string Told(std::string text) {
  return Replace(Replace(Replace(text, "\\", "\\\\"), "\n", "\\n"), "\t", "\\t");
}

/// The lines that every reader has to tell of a sheet's cells. `formulas`: whether the reader knows them.
std::vector<std::string> Expected(const Sheet& sheet, bool formulas) {
  std::vector<std::string> lines;
  for (std::size_t row = 0; row < sheet.rows.size(); ++row) {
    for (std::size_t col = 0; col < sheet.rows[row].size(); ++col) {
      const SheetCell& cell = sheet.rows[row][col];
      std::string formula;
      std::string value;
      if (const auto* text = std::get_if<std::string>(&cell.value)) value = "text\t" + Told(*text);
      if (const auto* number = std::get_if<double>(&cell.value)) value = "number\t" + NumberText(*number);
      if (const auto* moment = std::get_if<DateTime>(&cell.value)) {
        char iso[32];
        std::snprintf(iso, sizeof iso, "%04d-%02d-%02d %02d:%02d:%02d", moment->Year(), moment->Month(), moment->Day(),
                      moment->Hour(), moment->Minute(), moment->Second());
        value = std::string("date\t") + iso;
      }
      if (const auto* sum = std::get_if<SheetFormula>(&cell.value)) {
        value = "number\t" + NumberText(sum->result);
        formula = sum->text;
      }
      if (value.empty()) continue;
      const bool bold = sheet.styles[static_cast<std::size_t>(cell.style)].bold;
      lines.push_back("cell\t" + std::to_string(row + 1) + "\t" + std::to_string(col + 1) + "\t" + value + "\t" +
                      (formulas ? formula : "?") + "\t" + (bold ? "1" : "0"));
    }
  }
  return lines;
}

std::vector<std::string> OfKind(const std::vector<std::string>& lines, const std::string& kind) {
  std::vector<std::string> found;
  for (const std::string& line : lines) {
    if (line.starts_with(kind + "\t") || line.starts_with("failed")) found.push_back(line);
  }
  return found;
}

/// Everything a grid may hold: codes, digits beyond a double, several lines, signs of other planes, numbers of many
/// sizes, days and moments, a summed column, hidden and spanned cells.
Sheet VariedSheet() {
  Sheet sheet;
  sheet.name = "药品目录";
  sheet.columns = {{12}, {30}, {8, true}, {10.5}, {12}};
  const int head = sheet.AddStyle({.bold = true, .align = SheetAlign::kCentre, .ruled = true});
  const int price = sheet.AddStyle({.picture = "0.0000"});
  const int day = sheet.AddStyle({.picture = "yyyy-mm-dd"});
  const int total = sheet.AddStyle({.bold = true, .picture = "0.0000"});
  sheet.rows.push_back({{"编码", head}, {"品名", head}, {"隐藏", head}, {"金额", head}, {"效期", head}});
  sheet.rows.push_back({{"001000", 0}, {"阿莫西林\n胶囊", 0}, {"x", 0}, {12.5, price}, {DateTime(2026, 3, 1), day}});
  sheet.rows.push_back({{"202603010001202603010001", 0}, {"𠮷药😀", 0}, {}, {-0.0001, price}, {}});
  sheet.rows.push_back({{"=1+1", 0}, {" 前后空 ", 0}, {}, {1e12, 0}, {DateTime(2028, 2, 29, 12, 30, 15), day}});
  sheet.rows.push_back({{"a\tb\\c&<\">'", 0}, {"é·ｱ", 0}, {}, {0.1, 0}, {DateTime(1999, 12, 31), day}});
  sheet.rows.push_back({{"合计：", total}, {}, {}, {SheetFormula{"SUM(D2:D5)", 1000000000012.5999}, total}, {}});
  sheet.rows.push_back({{"     入库时间：2026-03-01", 0}});
  sheet.merged.push_back({7, 1, 1, 5});
  sheet.row_heights[1] = 20;
  sheet.frozen_rows = 1;
  sheet.repeated_rows = 1;
  return sheet;
}

struct Reader {
  const char* name;
  const char* suffix;
  bool formulas;
};
constexpr Reader kReaders[] = {
    {"xlrd", ".xls", false}, {"office", ".xls", true}, {"openpyxl", ".xlsx", true}, {"office", ".XLSX", true}};

TEST(WorkbookFiles, TwoReadersOfEachFormatFindWhatWasWritten) {
  const TempDirectory directory;
  const Sheet sheet = VariedSheet();
  for (const Reader& reader : kReaders) {
    SCOPED_TRACE(std::string(reader.name) + reader.suffix);
    const auto file = directory / (std::string("导出") + reader.suffix);
    Written().Save(file, sheet, {});
    const std::vector<std::string> lines = ReadBack(reader.name, file);
    EXPECT_EQ(OfKind(lines, "sheet"), std::vector<std::string>{"sheet\t药品目录"});
    EXPECT_EQ(OfKind(lines, "hidden"), std::vector<std::string>{"hidden\t3"});
    EXPECT_EQ(OfKind(lines, "merged"), std::vector<std::string>{"merged\t7\t1\t1\t5"});
    EXPECT_EQ(OfKind(lines, "cell"), Expected(sheet, reader.formulas));
  }
}

TEST(WorkbookFiles, TextsOfAllLengthsCrossTheRecordsOfTheTable) {
  const TempDirectory directory;
  Sheet sheet;
  sheet.columns.resize(2);
  // Lengths that let every part of a text, and the two halves of a sign, meet the end of a record.
  for (std::size_t length = 1; length < 120; ++length) {
    std::string text = std::to_string(length);
    for (std::size_t i = 0; i < length; ++i) text += i % 7 == 3 ? "😀" : "药";
    sheet.rows.push_back({{text, 0}, {text + "x", 0}});
  }
  std::string longest;
  for (int i = 0; i < 32767; ++i) longest += i % 2 ? "长" : "z";
  sheet.rows.push_back({{longest, 0}, {"短", 0}});
  for (const Reader& reader : {kReaders[0], kReaders[2]}) {
    SCOPED_TRACE(std::string(reader.name) + reader.suffix);
    const auto file = directory / (std::string("long") + reader.suffix);
    Written().Save(file, sheet, {});
    EXPECT_TRUE(OfKind(ReadBack(reader.name, file), "cell") == Expected(sheet, reader.formulas));
  }
}

TEST(WorkbookFiles, WhatAFormatCannotHoldIsRefusedAndLeavesNothing) {
  const TempDirectory directory;
  OfficeWorkbooks workbooks = Written();
  const auto refusal = [&](const std::string& name, const Sheet& sheet) {
    return WordsOf([&] { workbooks.Save(directory / name, sheet, {}); });
  };
  Sheet high;
  high.columns.resize(1);
  high.rows.resize(65537, {{1.0, 0}});
  EXPECT_NE(refusal("high.xls", high).find(".xlsx"), std::string::npos);
  EXPECT_EQ(refusal("high.xlsx", high), "");
  high.rows.resize(65536);
  EXPECT_EQ(refusal("just.xls", high), "");

  Sheet wide;
  wide.rows.push_back(std::vector<SheetCell>(257, {1.0, 0}));
  EXPECT_NE(refusal("wide.xls", wide).find("256 列"), std::string::npos);

  Sheet wordy;
  wordy.rows.push_back({{}, {std::string(32768, 'x'), 0}});
  EXPECT_NE(refusal("wordy.xls", wordy).find("第 1 行第 2 列"), std::string::npos);
  EXPECT_NE(refusal("wordy.xlsx", wordy).find("32767"), std::string::npos);

  EXPECT_NE(refusal("no/such/dir.xls", {}).find("没有这个目录"), std::string::npos);
  EXPECT_EQ(NamesIn(directory.Path()), (std::vector<std::string>{"high.xlsx", "just.xls"}));
}

TEST(WorkbookFiles, AnOldFileStaysWholeWhenTheNewOneFails) {
  const TempDirectory directory;
  for (const char* name : {"a.xls", "a.xlsx"}) {
    std::ofstream(directory / name) << "old";
    Sheet wordy;
    wordy.rows.push_back({{std::string(40000, 'x'), 0}});
    EXPECT_THROW(Written().Save(directory / name, wordy, {}), Failure);
    EXPECT_EQ(ReadWholeFile(directory / name), "old");
  }
  EXPECT_EQ(NamesIn(directory.Path()).size(), 2u);
}

TEST(WorkbookFiles, ProgressReachesTheLastRow) {
  const TempDirectory directory;
  Sheet sheet;
  sheet.rows.resize(250, {{"x", 0}});
  for (const char* name : {"p.xls", "p.xlsx"}) {
    int told = 0;
    int last = 0;
    Written().Save(directory / name, sheet, [&](int done, int total) {
      EXPECT_GT(done, last);
      EXPECT_EQ(total, 250);
      last = done;
      ++told;
    });
    EXPECT_EQ(last, 250) << name;
    EXPECT_GT(told, 2) << name;
  }
}

TEST(WorkbookFiles, EmptySheetsOpen) {
  const TempDirectory directory;
  for (const Reader& reader : {kReaders[0], kReaders[2]}) {
    const auto file = directory / (std::string("empty") + reader.suffix);
    Written().Save(file, {}, {});
    EXPECT_EQ(ReadBack(reader.name, file), std::vector<std::string>{"sheet\tSheet1"}) << reader.name;
  }
}

}  // namespace
}  // namespace luming
