#include "desktop/qt_printing.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProgressDialog>

#include "desktop/paged_document.h"
#include "desktop/preview_window.h"
#include "desktop/qt_desktop.h"
#include "desktop/qt_text.h"
#include "util/failure.h"
#include "util/whole_file.h"

namespace luming {

namespace {

constexpr const char* kSource = "打印";

/// Shows how far long work has come once it takes a while, and lets the operator stop it.
class PageProgress {
 public:
  explicit PageProgress(const QString& what) : dialog_(what, "停止", 0, 0) {
    dialog_.setWindowTitle("请稍候");
    dialog_.setWindowModality(Qt::ApplicationModal);
    dialog_.setMinimumDuration(400);
  }
  bool Tell(int done, int total) {
    dialog_.setMaximum(total);
    dialog_.setValue(done);
    return !dialog_.wasCanceled();
  }

 private:
  QProgressDialog dialog_;
};

/// @return false when the operator stopped it
bool PaintAll(QPrinter& printer, const PagedDocument& document) {
  printer.setDocName(document.Title());
  printer.setFullPage(true);
  const QSizeF size = document.PageSize(0);
  printer.setPageSize(
      QPageSize(size.width() > size.height() ? size.transposed() : size, QPageSize::Point, {}, QPageSize::FuzzyMatch));
  printer.setPageOrientation(size.width() > size.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
  QPainter painter;
  if (!painter.begin(&printer))
    throw Failure(failure::kFileAccess, "无法使用打印机：" + FromQt(printer.printerName()), kSource);
  const double scale = printer.resolution() / 72.0;
  painter.scale(scale, scale);
  PageProgress progress("正在打印……");
  const int first = printer.fromPage() > 0 ? printer.fromPage() - 1 : 0;
  const int end = printer.toPage() > 0 ? std::min(printer.toPage(), document.Pages()) : document.Pages();
  for (int page = first; page < end; ++page) {
    if (page > first) printer.newPage();
    document.Paint(painter, page, scale);
    if (progress.Tell(page - first + 1, end - first)) continue;
    printer.abort();
    return false;
  }
  return true;
}

}  // namespace

QtPrinting::QtPrinting(QtDesktop& desktop, Printer printer) : desktop_(desktop), printer_(printer) {}

QtPrinting::~QtPrinting() = default;

void QtPrinting::Print(const PrintJob& job) {
  pages_ = [job] {
    const FontTextMetrics metrics;
    return PagesAsText(job, PlanPages(job, Paper{}, metrics), metrics);
  };
  ToPrinter(*MakePages(job));
}

void QtPrinting::Preview(const PrintJob& job) {
  pages_ = [job] {
    const FontTextMetrics metrics;
    return PagesAsText(job, PlanPages(job, Paper{}, metrics), metrics);
  };
  Show(MakePages(job));
}

void QtPrinting::Print(const PrintDocument& document) {
  pages_ = [text = document.text] { return text + "\f"; };
  ToPrinter(*MakePages(document));
}

void QtPrinting::Preview(const PrintDocument& document) {
  pages_ = [text = document.text] { return text + "\f"; };
  Show(MakePages(document));
}

std::string QtPrinting::LastPages() const {
  return pages_ ? pages_() : std::string();
}

void QtPrinting::Show(std::shared_ptr<const PagedDocument> document) {
  if (!window_) {
    window_ = std::make_unique<PreviewWindow>();
    window_->on_print = [this](const PagedDocument& shown) { desktop_.Enter([&] { ToChosenPrinter(shown); }); };
    window_->on_pdf = [this](const PagedDocument& shown) { desktop_.Enter([&] { SaveAsPdf(shown); }); };
  }
  window_->SetDocument(std::move(document));
  desktop_.ShowBeside(*window_);
}

void QtPrinting::ToPrinter(const PagedDocument& document) {
  if (printer_ == Printer::kNone) return;
  if (QPrinterInfo::availablePrinters().isEmpty()) throw Failure(failure::kFileAccess, "本机没有安装打印机。", kSource);
  QPrinter printer(QPrinterInfo::defaultPrinter(), QPrinter::HighResolution);
  PaintAll(printer, document);
}

void QtPrinting::ToChosenPrinter(const PagedDocument& document) {
  if (printer_ == Printer::kNone) return;
  if (QPrinterInfo::availablePrinters().isEmpty()) throw Failure(failure::kFileAccess, "本机没有安装打印机。", kSource);
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, window_.get());
  dialog.setMinMax(1, document.Pages());
  if (dialog.exec() == QDialog::Accepted) PaintAll(printer, document);
}

void QtPrinting::SaveAsPdf(const PagedDocument& document) {
  FileRequest request;
  request.save = true;
  request.title = "保存为 PDF";
  request.filter = "PDF 文件|*.pdf";
  request.name = FromQt(document.Title()) + ".pdf";
  request.extension = "pdf";
  const std::optional<std::string> file = desktop_.ChooseFile(request);
  if (!file) return;
  PageProgress progress("正在生成 PDF……");
  const QByteArray bytes = document.Pdf([&](int done, int total) { return progress.Tell(done, total); });
  if (!bytes.isEmpty()) ReplaceFile(*file, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace luming
