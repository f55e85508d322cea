#include "office/sheet_reader.h"

#include <gtest/gtest.h>

#include <functional>

#include "office/biff_records.h"
#include "office/ole_file.h"
#include "support/failure_of.h"
#include "util/text.h"
#include "util/utf16.h"
#include "util/whole_file.h"

namespace luming {
namespace {

constexpr const char* kSheet = "药品目录";

/// Made by programs of others.
const std::filesystem::path kWorkbooks = LUMING_WORKBOOKS;

std::string Shown(const Value& value) {
  if (value.IsNull()) return "-";
  const char* kind = std::holds_alternative<DateTime>(value.data())      ? "@"
                     : std::holds_alternative<std::string>(value.data()) ? "\""
                                                                         : "";
  return kind + value.Text();
}

std::vector<std::string> Lines(Recordset rows, std::size_t most = 100) {
  std::vector<std::string> lines{Join(rows.ColumnNames(), "|")};
  for (; !rows.Eof() && lines.size() <= most; rows.MoveNext()) {
    std::vector<std::string> cells;
    for (std::size_t i = 0; i < rows.ColumnCount(); ++i) cells.push_back(Shown(std::as_const(rows).Field(i)));
    lines.push_back(Join(cells, "|"));
  }
  return lines;
}

/// What the operator is told of a file that cannot be read; "" when it can.
std::string Refusal(std::string bytes) {
  const Failure refused = Caught([&] {
    const auto reader = SheetReaderOf(std::move(bytes));
    for (const std::string& name : reader->Names()) reader->Read(name);
  });
  EXPECT_TRUE(refused.number() == 0 || refused.source() == "电子表格") << refused.source();
  return refused.description();
}

TEST(SheetReaderTest, EveryKindOfCellComesThroughFromBothFormats) {
  const std::string longest(32767, 'x');
  const std::vector<std::string> expected = {
      "编码|品 名|规格|F4|品 名1|零售价|效期|合计|标志|错误",
      "\"001|\"阿莫西林 胶囊|\"0.25g*10粒|1|\"重|15.5|@2026/3/1|31|True|-",
      "2|\"𠮷药😀|\"1/2|2|-|-0.0001|@2026/3/1 8:05:00|\"文字|False|-",
      "-|-|-|-|-|-|-|-|-|-",
      "\"003|\"多行\n文字|1000000000000|0.1|\"'引号|123456789012|@8:05:00|@1900/1/15 12:00:00|-|-",
      "\" 前后 |\"a&<b>|\"\r|0.333333333333333|\"" + longest + "|46082.5|@1900/2/28|31|-|-",
      "\"合并|-|-|-|-|-|-|-|-|-"};
  for (const char* name : {"varied.xls", "varied.xlsx"}) {
    SCOPED_TRACE(name);
    const auto reader = OpenSheetReader(kWorkbooks / name);
    EXPECT_EQ(reader->Names(), (std::vector<std::string>{kSheet, "隐藏", "空表"}));
    std::vector<std::string> lines = Lines(reader->Read(kSheet), 6);
    EXPECT_EQ(lines, expected);
    Recordset rows = reader->Read(kSheet);
    ASSERT_EQ(rows.RecordCount(), 1196) << "a cell with nothing but a look counts for nothing";
    for (int row = 4; row < 11; ++row) rows.MoveNext();
    for (int row = 11; row < 1200; ++row, rows.MoveNext()) {
      std::string text;
      for (int i = 0; i < row % 61; ++i) text += "长";
      ASSERT_EQ(rows.Field(1).Text(), text + std::string(static_cast<std::size_t>(row % 7), 'w') + std::to_string(row));
    }
    EXPECT_EQ(Lines(reader->Read("隐藏")), std::vector<std::string>{"只有表头"});
    EXPECT_EQ(reader->Read("空表").ColumnCount(), 0U);
    EXPECT_THROW(reader->Read("没有"), Failure);
  }
}

TEST(SheetReaderTest, AFormulaWithoutASavedResultIsNothing) {
  const auto reader = OpenSheetReader(kWorkbooks / "unsaved_results.xlsx");
  EXPECT_EQ(reader->Names(), (std::vector<std::string>{kSheet, "隐藏", "空表"})) << "a chart is no sheet of cells";
  const Recordset rows = reader->Read(kSheet);
  EXPECT_EQ(rows.Field("零售价").Text(), "15.5");
  EXPECT_TRUE(rows.Field("合计").IsNull());
}

TEST(SheetReaderTest, DaysCountFrom1904WhereTheWorkbookSaysSo) {
  for (const char* name : {"since_1904.xls", "since_1904.xlsx"}) {
    EXPECT_EQ(Lines(OpenSheetReader(kWorkbooks / name)->Read(kSheet)).back(), "@2026/3/1") << name;
  }
}

TEST(SheetReaderTest, ContentDecidesAndNotTheName) {
  EXPECT_EQ(Lines(OpenSheetReader(kWorkbooks / "newer.XLS")->Read(kSheet)),
            Lines(OpenSheetReader(kWorkbooks / "many.xls")->Read(kSheet)));
}

/// A workbook of one sheet from records of cells.
struct HandMade {
  unsigned version = 0x0600;
  BiffStream globals;
  BiffStream cells;

  std::string Stream() {
    const BiffBytes sheet_start = BiffBytes().U16(version).U16(0x0010).U32(0).U32(0).U32(0);
    BiffStream stream;
    stream.Record(0x0809, BiffBytes().U16(version).U16(0x0005).U32(0).U32(0).U32(0));
    const std::size_t place = stream.Position() + 4;
    BiffBytes sheet;
    sheet.U32(0).U16(0);
    if (version == 0x0600) {
      sheet.ShortText("S");
    } else {
      sheet.U8(1).U8('S');
    }
    stream.Record(0x0085, sheet);
    std::string bytes = stream.Take() + globals.Take();
    BiffStream end;
    end.Record(0x000A);
    const std::string tail = end.Take();
    bytes += tail;
    const auto position = static_cast<std::uint32_t>(bytes.size());
    bytes.replace(place, 4, BiffBytes().U32(position).bytes());
    BiffStream start;
    start.Record(0x0809, sheet_start);
    return bytes + start.Take() + cells.Take() + tail;
  }
};

std::vector<std::string> Read(const std::string& stream) {
  return Lines(SheetReaderOf(OleFileWith("Workbook", stream))->Read("S"));
}

BiffBytes At(unsigned row, unsigned col) {
  return BiffBytes().U16(row).U16(col).U16(0);
}

TEST(SheetReaderTest, RecordsThatOtherProgramsWriteAreKnown) {
  HandMade book;
  // Two texts; the first goes on in the next record, there in two bytes a character, and has looks and a pronunciation
  // behind it.
  book.globals.Record(0x00FC, BiffBytes().U32(2).U32(2).U16(4).U8(8 | 4).U16(1).U32(6).U8('a').U8('b'));
  BiffBytes more;
  more.U8(1).U16(0x836F).U16(0x54C1).U32(0).U32(0).U16(0).U16(1).U8(0).U8('z');
  book.globals.Record(0x003C, more);
  book.cells.Record(0x00FD, At(0, 0).U32(0));
  book.cells.Record(0x00FD, At(0, 1).U32(1));
  book.cells.Record(0x00D6, At(1, 0).U16(2).U8(0).U8('r').U8('t').U32(0));
  book.cells.Record(0x0204, At(1, 1).LongText("标签"));
  // Whole, a hundredth of a whole, the upper half of a double; several in one record.
  book.cells.Record(0x027E, At(2, 0).U32(static_cast<std::uint32_t>(-7) << 2 | 2));
  book.cells.Record(0x00BD, BiffBytes().U16(3).U16(0).U16(0).U32(12345 << 2 | 3).U16(0).U32(0x3FF80000).U16(1));
  // A chart within the sheet has cells of its own.
  book.cells.Record(0x0809, BiffBytes().U16(0x0600).U16(0x0020).U32(0).U32(0).U32(0));
  book.cells.Record(0x0203, At(9, 9).Double(9));
  book.cells.Record(0x000A);
  // Formulas: a flag, an error, an empty text, a text with a shared formula between.
  book.cells.Record(0x0006, At(4, 0).U32(1 | 1 << 16).U32(0xFFFF0000).U32(0).U32(0));
  book.cells.Record(0x0006, At(4, 1).U32(2 | 7 << 16).U32(0xFFFF0000).U32(0).U32(0));
  book.cells.Record(0x0006, At(5, 0).U32(3).U32(0xFFFF0000).U32(0).U32(0));
  book.cells.Record(0x0006, At(5, 1).U32(0).U32(0xFFFF0000).U32(0).U32(0));
  book.cells.Record(0x04BC, BiffBytes().U32(0));
  book.cells.Record(0x0207, BiffBytes().LongText("结果"));
  EXPECT_EQ(Read(book.Stream()),
            (std::vector<std::string>{"ab药品|z", "\"rt|\"标签", "-7|-", "123.45|1.5", "True|-", "-|\"结果"}));
}

TEST(SheetReaderTest, TheFormatAheadOfUnicodeIsReadInTheChineseCodePage) {
  HandMade book;
  book.version = 0x0500;
  book.globals.Record(0x041E, BiffBytes().U16(200).U8(4).U8('y').U8('/').U8('m').U8('d'));
  book.globals.Record(0x00E0, BiffBytes().U16(0).U16(200).U32(0));
  book.cells.Record(0x0204, At(0, 0).U16(4).U8(0xD2).U8(0xA9).U8(0xC6).U8(0xB7));
  book.cells.Record(0x0203, At(1, 0).Double(46082));
  EXPECT_EQ(Lines(SheetReaderOf(OleFileWith("Book", book.Stream()))->Read("S")),
            (std::vector<std::string>{"药品", "@2026/3/1"}));
}

TEST(SheetReaderTest, WhatIsNoReadableWorkbookIsToldApart) {
  const auto file = [](const char* name) { return ReadWholeFile(kWorkbooks / name).value(); };
  EXPECT_NE(Refusal("").find("空的"), std::string::npos);
  EXPECT_NE(Refusal(file("junk.xls")).find("不是 Excel 工作簿"), std::string::npos);
  EXPECT_NE(Refusal(OleFileWith("WordDocument", "x")).find("不是 Excel 工作簿"), std::string::npos);
  EXPECT_NE(Refusal(OleFileWith("EncryptedPackage", "x")).find("密码"), std::string::npos);
  HandMade locked;
  locked.globals.Record(0x002F, BiffBytes().U16(1).U32(0));
  EXPECT_NE(Refusal(OleFileWith("Workbook", locked.Stream())).find("密码"), std::string::npos);
  HandMade old;
  old.version = 0x0400;
  EXPECT_NE(Refusal(OleFileWith("Book", old.Stream())).find("Excel 5.0 以前"), std::string::npos);
  EXPECT_NE(Refusal(std::string("\x09\x02\x06\0\0\0\x10\0\0\0\x0A\0\0\0", 14)).find("Excel 5.0 以前"),
            std::string::npos);
  EXPECT_NE(Refusal(file("cut.xls")).find("损坏"), std::string::npos);
  HandMade far;
  far.cells.Record(0x0203, At(0, 0).Double(1));
  far.cells.Record(0x0203, At(65535, 255).Double(1));
  EXPECT_NE(Refusal(OleFileWith("Workbook", far.Stream())).find("太大"), std::string::npos);
  EXPECT_EQ(FailureOf([] { OpenSheetReader("/no/such/file.xls"); }), failure::kFileNotFound);
}

TEST(SheetReaderTest, DamageAnywhereEndsInARefusalOrInCells) {
  for (const char* name : {"catalogue.xls", "since_1904.xlsx"}) {
    const std::string whole = ReadWholeFile(kWorkbooks / name).value();
    int refused = 0;
    for (std::size_t at = 0; at < whole.size(); at += 61) {
      std::string flipped = whole;
      flipped[at] = static_cast<char>(flipped[at] ^ 0xFF);
      refused += !Refusal(flipped).empty();
      refused += !Refusal(whole.substr(0, at)).empty();
    }
    EXPECT_GT(refused, static_cast<int>(whole.size() / 61)) << name;
  }
}

}  // namespace
}  // namespace luming
