#include <QAction>
#include <QImage>
#include <QPainter>
#include <QPdfDocument>
#include <fstream>

#include "desktop/paged_document.h"
#include "desktop/preview_window.h"
#include "desktop/qt_printing.h"
#include "desktop_fixture.h"
#include "support/temp_directory.h"
#include "util/failure.h"

namespace luming {
namespace {

PrintJob JobOf(int rows, int cols) {
  PrintJob job;
  job.title = "药品目录表";
  job.unit_name = "鹿鸣医院";
  job.items = {{PrintItem::kHeader, PrintItem::kCentre, 1, "{报表名}", "宋体", 16, true},
               {PrintItem::kHeader, PrintItem::kLeft, 4, "{单位名称}", "宋体", 9, false},
               {PrintItem::kFooter, PrintItem::kCentre, 1, "{页码}", "宋体", 9, false}};
  job.grid.widths.assign(static_cast<std::size_t>(cols), 0);
  job.grid.heads.emplace_back();
  for (int col = 1; col <= cols; ++col) job.grid.heads[0].push_back({"列" + std::to_string(col)});
  for (int row = 1; row <= rows; ++row) {
    job.grid.rows.emplace_back();
    for (int col = 1; col <= cols; ++col) {
      job.grid.rows.back().push_back({"药品" + std::to_string(row) + "/" + std::to_string(col)});
    }
  }
  job.grid.counted_rows = rows;
  return job;
}

/// Text of a PDF without blanks and line ends, which its reader sets by its own lights.
std::string TextOf(const QByteArray& pdf, const TempDirectory& directory, int* pages = nullptr) {
  WriteBytes(directory / "read.pdf", {pdf.constData(), static_cast<std::size_t>(pdf.size())});
  QPdfDocument document;
  document.load(QString::fromStdString((directory / "read.pdf").string()));
  if (pages) *pages = document.pageCount();
  std::string text;
  for (int page = 0; page < document.pageCount(); ++page) {
    for (const QChar c : document.getAllText(page).text()) {
      if (!c.isSpace()) text += QString(c).toStdString();
    }
  }
  return text;
}

/// How many pixels of a page are not white.
int InkOf(const PagedDocument& document, int page) {
  QImage picture(document.PageSize(page).toSize(), QImage::Format_RGB32);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  document.Paint(painter, page, 1);
  painter.end();
  int ink = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ink += picture.pixel(x, y) != 0xFFFFFFFF;
  }
  return ink;
}

class PrintPreview : public DesktopTest {
 protected:
  void Trigger(const QString& caption) {
    for (QAction* action : printing.Window()->findChildren<QAction*>()) {
      if (action->text() == caption) return action->trigger();
    }
    ADD_FAILURE() << caption.toStdString();
  }

  TempDirectory directory;
  QtPrinting printing{desktop, QtPrinting::Printer::kNone};
};

TEST_F(PrintPreview, PagesTurnAndZoomWithinTheirBounds) {
  printing.Preview(JobOf(200, 5));
  Settle();
  PreviewWindow& window = *printing.Window();
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(window.windowTitle(), "打印预览 - 药品目录表");
  Press(&window, Qt::Key_PageUp);
  EXPECT_EQ(window.Page(), 0);
  Press(&window, Qt::Key_PageDown);
  EXPECT_EQ(window.Page(), 1);
  Press(&window, Qt::Key_End);
  const int last = window.Page();
  EXPECT_GT(last, 2);
  Press(&window, Qt::Key_PageDown);
  EXPECT_EQ(window.Page(), last);
  window.SetZoom(100);
  const double whole = window.Scale();
  Trigger("放大");
  EXPECT_GT(window.Scale(), whole);
  Trigger("缩小");
  Trigger("缩小");
  EXPECT_LT(window.Scale(), whole);
  EXPECT_FALSE(window.grab().isNull());
}

TEST_F(PrintPreview, TheNextJobTakesTheWindowAndEscLeavesIt) {
  printing.Preview(JobOf(200, 5));
  printing.Window()->TurnTo(3);
  PreviewWindow* const window = printing.Window();
  printing.Preview(JobOf(1, 5));
  EXPECT_EQ(printing.Window(), window);
  EXPECT_EQ(window->Page(), 0);
  Trigger("关闭(&Q)");
  Settle();
  EXPECT_FALSE(window->isVisible());
  printing.Preview(JobOf(2, 5));
  EXPECT_TRUE(window->isVisible());
}

TEST_F(PrintPreview, ThePdfHoldsEveryCellOfAWideAndLongList) {
  const PrintJob job = JobOf(120, 45);
  const auto document = MakePages(job);
  int pages = 0;
  const std::string text = TextOf(document->Pdf({}), directory, &pages);
  EXPECT_EQ(pages, document->Pages());
  EXPECT_GT(pages, 8);
  for (const auto& row : job.grid.rows) {
    for (const PrintCell& cell : row) ASSERT_NE(text.find(cell.text), std::string::npos) << cell.text;
  }
  EXPECT_NE(text.find("共120行"), std::string::npos);
  const std::string last = std::to_string(pages);
  EXPECT_NE(text.find("第" + last + "页共" + last + "页"), std::string::npos);
  for (int page = 0; page < pages; ++page) EXPECT_GT(InkOf(*document, page), 2000) << page;
}

TEST_F(PrintPreview, SavesWhatItShowsAndStopsWhenTold) {
  printing.Preview(JobOf(5, 3));
  const auto file = directory / "目录.pdf";
  Meanwhile([&] { desktop.AnswerFileDialog(file.string()); });
  Trigger("存为 PDF(&S)");
  const std::string saved = ReadBytes(file);
  EXPECT_NE(TextOf(QByteArray::fromStdString(saved), directory).find("药品5/3"), std::string::npos);

  int told = 0;
  const auto document = MakePages(JobOf(500, 3));
  EXPECT_TRUE(document->Pdf([&](int done, int) { return (told = done) < 3; }).isEmpty());
  EXPECT_EQ(told, 3);
}

TEST_F(PrintPreview, LaidOutDocumentsAreShownFromTheirFile) {
  const auto pdf = directory / "单据.pdf";
  const QByteArray bytes = MakePages(JobOf(80, 4))->Pdf({});
  WriteBytes(pdf, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
  const PrintDocument document{"药品出库单", pdf, "药品1/1\n"};
  const auto pages = MakePages(document);
  EXPECT_EQ(pages->Pages(), MakePages(JobOf(80, 4))->Pages());
  EXPECT_GT(InkOf(*pages, 0), 2000);
  printing.Preview(document);
  std::filesystem::remove(pdf);
  EXPECT_EQ(printing.Window()->windowTitle(), "打印预览 - 药品出库单");
  EXPECT_FALSE(printing.Window()->grab().isNull()) << "the file may be gone once the preview shows";
  EXPECT_EQ(printing.LastPages(), "药品1/1\n\f");

  std::ofstream(directory / "垃圾.pdf") << "no PDF";
  EXPECT_THROW(printing.Preview(PrintDocument{"单据", directory / "垃圾.pdf", ""}), Failure);
}

TEST_F(PrintPreview, LastPagesAreThoseThatWereLaidOut) {
  EXPECT_EQ(printing.LastPages(), "");
  printing.Print(JobOf(2, 2));
  EXPECT_EQ(printing.LastPages(),
            "药品目录表\n鹿鸣医院\n列1\t列2\n药品1/1\t药品1/2\n药品2/1\t药品2/2\n共 2 行\n第 1 页 共 1 页\n\f");
}

}  // namespace
}  // namespace luming
