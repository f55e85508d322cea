#include "desktop/paged_document.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfDocument>
#include <QPdfWriter>

#include "desktop/qt_text.h"
#include "util/failure.h"
#include "util/whole_file.h"

namespace luming {

namespace {

constexpr double kPointsOfAnInch = 72;

class JobPages : public PagedDocument {
 public:
  explicit JobPages(const PrintJob& job) : job_(job), plan_(PlanPages(job_, Paper{}, metrics_)) {}

  QString Title() const override { return ToQt(job_.title); }
  int Pages() const override { return static_cast<int>(plan_.pages.size()); }
  QSizeF PageSize(int) const override { return {plan_.paper.width, plan_.paper.height}; }
  void Paint(QPainter& painter, int page, double) const override { PaintPage(painter, job_, plan_, page, metrics_); }

  QByteArray Pdf(const std::function<bool(int, int)>& told) const override {
    constexpr int kDotsOfAnInch = 1200;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(Title());
    writer.setResolution(kDotsOfAnInch);
    writer.setPageLayout({QPageSize(PageSize(0), QPageSize::Point), QPageLayout::Portrait, {}});
    QPainter painter(&writer);
    painter.scale(kDotsOfAnInch / kPointsOfAnInch, kDotsOfAnInch / kPointsOfAnInch);
    for (int page = 0; page < Pages(); ++page) {
      if (page > 0) writer.newPage();
      Paint(painter, page, kDotsOfAnInch / kPointsOfAnInch);
      if (told && !told(page + 1, Pages())) return {};
    }
    painter.end();
    return bytes;
  }

 private:
  PrintJob job_;
  FontTextMetrics metrics_;
  PagePlan plan_;
};

class PdfPages : public PagedDocument {
 public:
  PdfPages(QString title, QByteArray bytes) : title_(std::move(title)), bytes_(std::move(bytes)), buffer_(&bytes_) {
    buffer_.open(QIODevice::ReadOnly);
    document_.load(&buffer_);
    if (document_.pageCount() == 0) throw Failure(failure::kFileAccess, "文档没有可以显示的页面。");
  }

  QString Title() const override { return title_; }
  int Pages() const override { return document_.pageCount(); }
  QSizeF PageSize(int page) const override { return document_.pagePointSize(page); }
  void Paint(QPainter& painter, int page, double scale) const override {
    const QSizeF size = PageSize(page);
    const QImage picture = document_.render(page, (size * scale).toSize());
    painter.drawImage(QRectF(QPointF(), size), picture);
  }
  QByteArray Pdf(const std::function<bool(int, int)>&) const override { return bytes_; }

 private:
  QString title_;
  QByteArray bytes_;
  QBuffer buffer_;
  mutable QPdfDocument document_;  ///< reads its pages when they are asked for
};

}  // namespace

std::shared_ptr<const PagedDocument> MakePages(const PrintJob& job) {
  return std::make_shared<JobPages>(job);
}

std::shared_ptr<const PagedDocument> MakePages(const PrintDocument& document) {
  const std::string bytes = ReadWholeFile(document.pdf).value_or("");
  return std::make_shared<PdfPages>(ToQt(document.title), QByteArray::fromStdString(bytes));
}

}  // namespace luming
