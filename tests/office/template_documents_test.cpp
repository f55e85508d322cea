#include "output/template_documents.h"

#include <algorithm>
#include <fstream>

#include "office/office_workbooks.h"
#include "office/pdf_keeper.h"
#include "output/grid_routines.h"
#include "output/note_templates.h"
#include "screen/grid.h"
#include "support/store_test.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {
namespace {

class QueryForm : public Form {
 public:
  explicit QueryForm(Forms& registry) : Form(registry, "QueryForm", "查询", WindowKind::kChild) {}
  Layout Arrange() const override { return Column({list, detail}); }

  Grid list{this, "list", {"单号", "发票号", "日期或单位", "发票日期", "供货单位"}};
  Grid detail{this, "detail", std::vector<GridColumn>(12, GridColumn(""))};
};

void AddRow(Grid& grid, const std::vector<std::string>& texts) {
  grid.SetMaxRows(grid.MaxRows() + 1);
  int col = 0;
  for (const std::string& text : texts) grid.SetText(grid.MaxRows(), ++col, text);
}

/// The notes over a real store, the real templates and the real office program.
class TemplateDocumentsTest : public StoreTest {
 protected:
  void SetUp() override {
    note_app.Cn = app.Cn;
    note_app.KFMC = "西药库";
    note_app.ReportUnit = "鹿鸣医院";
    WriteNoteTemplates(office, directory.Path());
  }

  void SaveIssueNote(const std::string& number, const std::string& sender, int lines) {
    Run("Insert Into YPSLD(SLDH,SLRQ,BZ,CZY,CKFS,SFTJ,LYDW,YKQRR) Values('" + number +
        "','2026-03-01','','管理员',1,1,'西药房'," + sender + ")");
    for (int line = 1; line <= lines; ++line) {
      Run("Insert Into YPSLMX(SLDH,YPBM,DW,CD,LSJ,SLSL,SFSL,PH,XQ,CLB) Values('" + number +
          "','100001','盒','石药集团',15.5," + std::to_string(line) + "," + std::to_string(line) + ",'0240" +
          std::to_string(100 + line) + "','2027-06-30',10)");
    }
  }

  /// Lines of the document that was printed, from the one that begins so on, at least 16.
  std::vector<std::string> LinesFrom(const std::string& beginning) const {
    std::vector<std::string> lines = Split(keeper.pages, "\n");
    const auto first =
        std::ranges::find_if(lines, [&](const std::string& line) { return line.starts_with(beginning); });
    lines.erase(lines.begin(), first);
    lines.resize(std::max<std::size_t>(lines.size(), 16));  // a document that never came compares as empty lines
    return lines;
  }

  PdfKeeper keeper;
  OfficeWorkbooks office{keeper};
  AppContext note_app{{desktop, devices, keeper, office, clock}, directory.Path(), {}, MainCommands()};
  QueryForm form{note_app.forms};
};

TEST_F(TemplateDocumentsTest, TheIssueNoteHoldsEveryLineTheTotalAndThePeople) {
  SaveIssueNote("202603010001", "'张三'", 40);
  PrintCKD(note_app, true, "202603010001");
  ASSERT_EQ(keeper.destination, "printer") << (desktop.boxes.empty() ? "" : desktop.boxes.back().text);
  EXPECT_TRUE(keeper.pages.starts_with("鹿鸣医院药品出库单\n"));
  EXPECT_NE(keeper.pages.find("\n领用单位：西药房\t\t\t日期：2026-03-01\t药库：西药库\n"), std::string::npos);
  const auto lines = LinesFrom("药品名称\t");
  ASSERT_GE(lines.size(), 43u);
  double sum = 0;
  for (int line = 1; line <= 40; ++line) {
    sum += line * 15.5;
    EXPECT_EQ(lines[static_cast<std::size_t>(line)], "阿莫西林胶囊\t0.25g*10粒\t盒\t石药集团\t" + std::to_string(line) +
                                                         "\t15.50\t" + FormatNumber(line * 15.5, "0.00") + "\t0240" +
                                                         std::to_string(100 + line) + "\t2027-06-30");
  }
  EXPECT_EQ(lines[41], "合计:\t\t\t单号:202603010001\t\t\t" + FormatNumber(sum, "0.00"));
  EXPECT_EQ(lines[42], "发货人：张三\t\t收货人：\t\t\t\t打印日期：2026-03-01");

  EXPECT_GE(keeper.pdf_pages, 2);
  EXPECT_EQ(Split(keeper.pdf_text, "药品名称").size(), static_cast<std::size_t>(keeper.pdf_pages) + 1)
      << "every page has its heads";
  for (const char* text : {"鹿鸣医院药品出库单", "0240140", "合计:", "12710.00", "发货人：张三", "第2页"}) {
    EXPECT_NE(keeper.pdf_text.find(text), std::string::npos) << text;
  }
}

TEST_F(TemplateDocumentsTest, OneLineAndNoSenderLeaveTheLabelAlone) {
  SaveIssueNote("202603010002", "NULL", 1);
  Run("Update YPSLMX Set PH=NULL, XQ=NULL Where SLDH Like'202603010002'");
  PrintCKD(note_app, false, "202603010002");
  ASSERT_EQ(keeper.destination, "preview");
  const auto lines = LinesFrom("药品名称\t");
  EXPECT_EQ(lines[1], "阿莫西林胶囊\t0.25g*10粒\t盒\t石药集团\t1\t15.50\t15.50");
  EXPECT_EQ(lines[2], "合计:\t\t\t单号:202603010002\t\t\t15.50");
  EXPECT_EQ(lines[3], "发货人：\t\t收货人：\t\t\t\t打印日期：2026-03-01");
  EXPECT_FALSE(std::filesystem::exists(directory / "temp.xls")) << "the template itself is opened";
}

TEST_F(TemplateDocumentsTest, AnUnknownIssueNoteIsTold) {
  PrintCKD(note_app, true, "209901010001");
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "请选择您要打印的单据");
  EXPECT_EQ(box.title, "系统提示");
  EXPECT_EQ(box.style, box::kWarning);
  EXPECT_EQ(keeper.destination, "");
}

TEST_F(TemplateDocumentsTest, TheReceiptNoteComesFromTheGridsOfItsQuery) {
  AddRow(form.list, {"202603010007", "F1", "2026-3-1 10:00:00", "2026-03-01", "华北制药股份有限公司"});
  Grid& detail = form.detail;
  for (int line = 1; line <= 5; ++line) {
    AddRow(detail, {"药品" + std::to_string(line), "0.25g", "盒", "石药", "10", "1.50", "15.00", "2.00", "20.00",
                    "5.00", "00240" + std::to_string(line), "2027-6-30"});
  }
  GridSumRow(detail, 1, {7, 9, 10});
  AddRow(detail, {"     入库时间：2026-03-01    制单人：张三     复核人：李四"});
  detail.SetSpan(detail.MaxRows(), 1, 1, 12);

  PrintRKD(note_app, false, form.list, detail);
  ASSERT_EQ(keeper.destination, "preview") << (desktop.boxes.empty() ? "" : desktop.boxes.back().text);
  EXPECT_TRUE(keeper.pages.starts_with("药品入库单  № 202603010007\n"));
  EXPECT_NE(keeper.pages.find("\n供货单位：华北制药股份有限公司\t\t\t入库日期：2026-03-01\n"), std::string::npos);
  const auto lines = LinesFrom("品名\t");
  for (std::size_t line = 1; line <= 5; ++line) {
    EXPECT_EQ(lines[line], "药品" + std::to_string(line) +
                               "\t0.25g\t盒\t石药\t10\t1.50\t15.00\t2.00\t20.00\t5.00\t00240" + std::to_string(line) +
                               "\t2027-06-30");
  }
  EXPECT_EQ(lines[6], "合计：\t\t\t\t\t\t75.00\t\t100.00\t25.00");
  EXPECT_EQ(lines[7], "     入库时间：2026-03-01    制单人：张三     复核人：李四");
  EXPECT_EQ(lines[8], "验收人签字：\t\t\t仓库主管签字：\t\t\t\t财务签字：");
  EXPECT_NE(keeper.pdf_text.find("制单人：张三"), std::string::npos);
}

TEST_F(TemplateDocumentsTest, AWholesaleOfTwoLinesUsesTheTemplatesOwnRows) {
  AddRow(form.list, {"202603010009", "2026-03-01", "城关卫生院"});
  Grid& detail = form.detail;
  AddRow(detail, {"100001", "阿莫西林胶囊", "0.25g", "盒", "2", "13.00", "26.00", "15.50", "31.00", "石药",
                  "2027-06-30", "001"});
  AddRow(detail, {"100003", "头孢克肟片", "50mg", "盒", "1", "24.00", "24.00", "30.00", "30.00", "华北", "", "002"});
  AddRow(detail, {"     批发时间：2026-03-01    制单人:张三"});
  detail.SetSpan(3, 1, 1, 12);
  const auto print = [&] {
    PrintPFD(note_app, true, form.list, detail);
    EXPECT_EQ(keeper.destination, "printer") << (desktop.boxes.empty() ? "" : desktop.boxes.back().text);
  };
  print();
  EXPECT_NE(keeper.pages.find("购货单位：城关卫生院\n"), std::string::npos);
  auto lines = LinesFrom("品名\t");
  EXPECT_EQ(lines[1], "阿莫西林胶囊\t0.25g\t盒\t2\t13.00\t26.00\t15.50\t31.00\t石药\t2027-06-30\t001");
  EXPECT_EQ(lines[2], "头孢克肟片\t50mg\t盒\t1\t24.00\t24.00\t30.00\t30.00\t华北\t\t002");
  EXPECT_EQ(lines[3], "     批发时间：2026-03-01    制单人:张三");
  EXPECT_EQ(lines[4], "发货人签字：\t\t\t收货人签字：\t\t\t\t\t财务签字：");

  // The working copy is written anew each time, whatever lies there.
  std::ofstream(directory / "temp.xls") << "left over";
  detail.DeleteRows(2, 1);
  detail.SetMaxRows(2);
  print();
  lines = LinesFrom("品名\t");
  EXPECT_EQ(lines[2], "     批发时间：2026-03-01    制单人:张三");
}

TEST_F(TemplateDocumentsTest, LongNamesAndLargeAmountsAreReadWhole) {
  const std::string supplier =
      "望川江北医药物流股份有限公司西北分公司第三配送中心药品器械综合经营部（原林壑医药采购供应站）";
  const std::string drug = "注射用重组人粒细胞巨噬细胞集落刺激因子冻干制剂（预充式）";
  // A wrapped text is read line by line among those beside it: where its end stands, all of it does.
  const auto times = [&](const char* end) { return Split(keeper.pdf_text, end).size() - 1; };
  Grid& detail = form.detail;
  for (int line = 1; line <= 2; ++line) {
    AddRow(detail, {drug, "每支150微克，每盒10支附注射用水", "盒", supplier, "99999", "123456.78", "12345678901.22",
                    "234567.89", "23456789012.34", "11111110111.12", "K260412001" + std::to_string(line), "2027-6-30"});
  }
  GridSumRow(detail, 1, {7, 9, 10});
  AddRow(detail, {"     入库时间：2026-03-01    制单人：张三     复核人：李四"});
  detail.SetSpan(detail.MaxRows(), 1, 1, 12);
  AddRow(form.list, {"202603010007", "F1", "2026-3-1 10:00:00", "2026-03-01", supplier});
  PrintRKD(note_app, true, form.list, detail);
  EXPECT_EQ(keeper.pdf_text.find("###"), std::string::npos);
  EXPECT_EQ(times("采购供应站）"), 3u) << keeper.pdf_text;
  EXPECT_EQ(times("冻干制剂（预充式）"), 2u) << keeper.pdf_text;
  EXPECT_EQ(times("12345678901.22") + times("46913578024.68"), 3u) << keeper.pdf_text;

  SaveIssueNote("202603010009", "'张三'", 2);
  Run("Update YF_YPML Set YPMC='" + drug + "' Where YPBM='100001'");
  Run("Update YPSLMX Set LSJ=12345678.9 Where SLDH='202603010009'");
  PrintCKD(note_app, true, "202603010009");
  EXPECT_EQ(keeper.pdf_text.find("###"), std::string::npos);
  EXPECT_EQ(times("冻干制剂（预充式）") + times("37037036.70"), 3u) << keeper.pdf_text;
}

TEST_F(TemplateDocumentsTest, MissingAndDamagedTemplatesShowTheCommonBox) {
  AddRow(form.list, {"1"});
  AddRow(form.detail, {"1"});
  SaveIssueNote("202603010003", "NULL", 1);
  std::filesystem::remove(directory / "MB/RKD.xls");
  std::filesystem::remove(directory / "MB/CKD.xls");
  std::ofstream(directory / "MB/批发打印模板.xls") << "垃圾";
  PrintRKD(note_app, true, form.list, form.detail);
  PrintPFD(note_app, true, form.list, form.detail);
  PrintCKD(note_app, true, "202603010003");
  ASSERT_EQ(desktop.boxes.size(), 3u);
  for (const Box& box : desktop.boxes) EXPECT_EQ(box.title, "系统提示");
  EXPECT_NE(desktop.boxes[0].text.find("没有找到模板文件"), std::string::npos);
  EXPECT_NE(desktop.boxes[1].text.find("已损坏"), std::string::npos);
  EXPECT_NE(desktop.boxes[2].text.find("CKD.xls"), std::string::npos);
  EXPECT_EQ(keeper.destination, "");
}

}  // namespace
}  // namespace luming
