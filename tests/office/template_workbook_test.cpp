#include <gtest/gtest.h>
#include <signal.h>

#include <fstream>

#include "office/office_workbooks.h"
#include "office/pdf_keeper.h"
#include "office/read_back.h"
#include "support/failure_of.h"
#include "support/temp_directory.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {
namespace {

/// Office programs that we started and that still run, and files that they or we left behind.
std::string OfficeProcesses() {
  return CommandOutput("pgrep -P " + std::to_string(getpid()) + " soffice.bin || true");
}
std::string ScratchLeftovers() {
  return CommandOutput(
      "find \"$TMPDIR\" -mindepth 1 -name 'luming-*'; find /tmp -maxdepth 1 -name 'OSL_PIPE*_luming-*' || true");
}

class TemplateWorkbooks : public testing::Test {
 protected:
  void SetUp() override { setenv("TMPDIR", directory.Path().c_str(), 1); }
  void TearDown() override { unsetenv("TMPDIR"); }

  std::filesystem::path Template() {
    Sheet sheet;
    sheet.columns.resize(3, {20});
    const int head = sheet.AddStyle({.bold = true, .ruled = true});
    const int line = sheet.AddStyle({.wrap = true, .ruled = true});
    const int price = sheet.AddStyle({.ruled = true, .picture = "0.00"});
    sheet.rows = {{{"标题", 0}},
                  {{"品名", head}, {"价格", head}, {"批号", head}},
                  {{"", line}, {"", price}, {"", line}},
                  {{"签字：", 0}}};
    const std::filesystem::path file = directory / "模板.xls";
    workbooks.Save(file, sheet, {});
    return file;
  }

  std::string Refusal(const std::filesystem::path& file) {
    return WordsOf([&] { workbooks.Open(file, "单据"); });
  }

  TempDirectory directory;
  PdfKeeper printing;
  OfficeWorkbooks workbooks{printing};
};

TEST_F(TemplateWorkbooks, LinesPushTheRestDownAndReachThePdf) {
  const std::filesystem::path file = Template();
  const auto before = ReadWholeFile(file);
  {
    const auto book = workbooks.Open(file, "单据");
    EXPECT_EQ(book->Cell("A1"), "标题");
    EXPECT_EQ(book->Cell("C9"), "");
    book->SetCell("A1", book->Cell("A1") + "：西药库");
    book->InsertRows(3, 2);
    book->SetCells(3, 1, {{"阿莫西林", "12.5", "'001000"}, {"1/2 盐水", "3", "240301"}});
    EXPECT_EQ(book->Cell("B3"), "12.50") << "the look of the pushed row";
    EXPECT_EQ(book->Cell("C3"), "001000");
    EXPECT_EQ(book->Cell("A4"), "1/2 盐水");
    EXPECT_EQ(book->Cell("A6"), "签字：");
    book->JoinCells(5, 1, 3);
    book->PrintPreview();
    EXPECT_EQ(printing.destination, "preview");
    book->PrintOut();
  }
  EXPECT_EQ(printing.destination, "printer");
  EXPECT_EQ(printing.title, "单据");
  EXPECT_EQ(printing.pages,
            "标题：西药库\n品名\t价格\t批号\n阿莫西林\t12.50\t001000\n1/2 盐水\t3.00\t240301\n\n签字：\n");
  EXPECT_EQ(printing.pdf_text, "标题：西药库品名价格批号阿莫西林12.500010001/2盐水3.00240301签字：");
  EXPECT_EQ(printing.pdf_pages, 1);
  EXPECT_TRUE(ReadWholeFile(file) == before) << "the template is closed unsaved";
  EXPECT_EQ(OfficeProcesses(), "");
}

TEST_F(TemplateWorkbooks, LongDocumentsKeepEveryLine) {
  const auto book = workbooks.Open(Template(), "单据");
  constexpr int kLines = 300;
  book->InsertRows(3, kLines);
  std::vector<std::vector<std::string>> lines;
  for (int i = 1; i <= kLines; ++i)
    lines.push_back({"药品" + std::to_string(i) + (i % 9 ? "" : "名称长得一行写不下要折行"), "1", "x"});
  book->SetCells(3, 1, lines);
  book->PrintPreview();
  EXPECT_GT(printing.pdf_pages, 4);
  int heads = 0;
  for (std::size_t at = printing.pdf_text.find("品名价格批号"); at != std::string::npos;
       at = printing.pdf_text.find("品名价格批号", at + 1)) {
    ++heads;
  }
  EXPECT_EQ(heads, printing.pdf_pages) << "the heads stand on each page";
  for (int i = 1; i <= kLines; ++i) {
    ASSERT_NE(printing.pages.find("药品" + std::to_string(i) + (i % 9 ? "\t" : "名")), std::string::npos) << i;
    ASSERT_NE(printing.pdf_text.find("药品" + std::to_string(i)), std::string::npos) << i;
  }
}

TEST_F(TemplateWorkbooks, WhatIsNoTemplateFailsAndLeavesNothing) {
  EXPECT_NE(Refusal(directory / "无.xls").find("没有找到模板文件"), std::string::npos);

  std::ofstream(directory / "垃圾.xls") << "no workbook at all";
  EXPECT_NE(Refusal(directory / "垃圾.xls").find("已损坏"), std::string::npos);

  const auto whole = ReadWholeFile(Template());
  std::ofstream(directory / "半.xls", std::ios::binary) << whole->substr(0, 700);
  EXPECT_NE(Refusal(directory / "半.xls"), "");

  EXPECT_EQ(OfficeProcesses(), "");
  EXPECT_EQ(ScratchLeftovers(), "");
}

TEST_F(TemplateWorkbooks, WithoutAnOfficeProgramTheyFail) {
  const std::filesystem::path file = Template();
  for (const std::filesystem::path& office : {std::filesystem::path(), directory / "nowhere"}) {
    const Failure refused = Caught([&] { OfficeWorkbooks(printing, office).Open(file, "单据"); });
    EXPECT_EQ(refused.number(), 429);
    EXPECT_NE(refused.description().find("LibreOffice"), std::string::npos);
  }
}

TEST_F(TemplateWorkbooks, AnOfficeProgramThatDiesIsAFailureAndTheNextStartWorks) {
  const std::filesystem::path file = Template();
  {
    const auto book = workbooks.Open(file, "单据");
    const std::string process = OfficeProcesses();
    ASSERT_NE(process, "");
    kill(std::stoi(process), SIGKILL);
    EXPECT_THROW(
        {
          for (int i = 0; i < 1000; ++i) book->SetCell("A1", "x");
          book->PrintPreview();
        },
        Failure);
  }
  EXPECT_EQ(OfficeProcesses(), "");
  EXPECT_EQ(ScratchLeftovers(), "");
  EXPECT_EQ(workbooks.Open(file, "单据")->Cell("A1"), "标题");
}

}  // namespace
}  // namespace luming
