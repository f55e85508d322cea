#include "desktop/preview_window.h"

#include <QAction>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <array>

#include "desktop/paged_document.h"

namespace luming {

namespace {

constexpr int kWholePage = 0;
constexpr int kPageWidth = -1;
constexpr std::array kZooms = {50, 75, 100, 125, 150, 200, 300};
constexpr int kRim = 16;  // of the desk around the page

}  // namespace

/// The page as it lies on the desk.
class PageSheet final : public QWidget {
 public:
  explicit PageSheet(const PreviewWindow& window) : window_(window) {}

  std::shared_ptr<const PagedDocument> document;

  void Settle() {
    if (!document) return;
    const QSizeF paper = document->PageSize(window_.Page()) * window_.Scale();
    resize(paper.toSize() + QSize(2 * kRim, 2 * kRim));
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    if (!document) return;
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    const QSizeF paper = document->PageSize(window_.Page()) * window_.Scale();
    const QRectF page(QPointF(kRim, kRim), paper);
    painter.fillRect(page.translated(3, 3), QColor(0, 0, 0, 60));
    painter.fillRect(page, Qt::white);
    painter.translate(page.topLeft());
    painter.scale(window_.Scale(), window_.Scale());
    document->Paint(painter, window_.Page(), window_.Scale() * devicePixelRatioF());
  }

 private:
  const PreviewWindow& window_;
};

PreviewWindow::PreviewWindow() : QWidget(nullptr, Qt::Window) {
  setObjectName("preview");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* bar = new QToolBar(this);
  BuildToolBar(*bar);
  column->addWidget(bar);
  area_ = new QScrollArea(this);
  area_->setAlignment(Qt::AlignCenter);
  area_->setFrameShape(QFrame::NoFrame);
  area_->setBackgroundRole(QPalette::Mid);
  sheet_ = new PageSheet(*this);
  area_->setWidget(sheet_);
  area_->viewport()->installEventFilter(this);
  area_->setFocusPolicy(Qt::NoFocus);
  column->addWidget(area_, 1);
  setFocusPolicy(Qt::StrongFocus);
  resize(1000, 760);
}

void PreviewWindow::BuildToolBar(QToolBar& bar) {
  const auto add = [&](const QString& caption, const QKeySequence& keys, auto action) {
    QAction* made = bar.addAction(caption);
    made->setShortcut(keys);
    connect(made, &QAction::triggered, this, action);
    return made;
  };
  add("打印(&P)", QKeySequence("Ctrl+P"), [this] {
    if (document_ && on_print) on_print(*document_);
  });
  add("存为 PDF(&S)", QKeySequence("Ctrl+S"), [this] {
    if (document_ && on_pdf) on_pdf(*document_);
  });
  bar.addSeparator();
  back_ = add("上一页", {}, [this] { TurnTo(page_ - 1); });
  forth_ = add("下一页", {}, [this] { TurnTo(page_ + 1); });
  page_box_ = new QSpinBox(&bar);
  page_box_->setButtonSymbols(QAbstractSpinBox::NoButtons);
  page_box_->setPrefix("第 ");
  page_box_->setSuffix(" 页");
  page_box_->setAlignment(Qt::AlignCenter);
  page_box_->setKeyboardTracking(false);
  connect(page_box_, &QSpinBox::valueChanged, this, [this](int page) { TurnTo(page - 1); });
  bar.addWidget(page_box_);
  count_ = new QLabel(&bar);
  count_->setContentsMargins(6, 0, 12, 0);
  bar.addWidget(count_);
  bar.addSeparator();
  zoom_box_ = new QComboBox(&bar);
  zoom_box_->addItem("整页", kWholePage);
  zoom_box_->addItem("页宽", kPageWidth);
  for (const int zoom : kZooms) zoom_box_->addItem(QString::number(zoom) + "%", zoom);
  connect(zoom_box_, &QComboBox::activated, this, [this](int) { SetZoom(zoom_box_->currentData().toInt()); });
  bar.addWidget(zoom_box_);
  add("放大", QKeySequence("Ctrl++"), [this] { StepZoom(1); });
  add("缩小", QKeySequence("Ctrl+-"), [this] { StepZoom(-1); });
  bar.addSeparator();
  add("关闭(&Q)", QKeySequence(Qt::Key_Escape), [this] { close(); });
}

void PreviewWindow::SetDocument(std::shared_ptr<const PagedDocument> document) {
  document_ = std::move(document);
  sheet_->document = document_;
  setWindowTitle("打印预览 - " + document_->Title());
  page_ = 0;
  const QSignalBlocker quiet(page_box_);
  page_box_->setRange(1, document_->Pages());
  count_->setText("共 " + QString::number(document_->Pages()) + " 页");
  Settle();
  setFocus();
}

void PreviewWindow::TurnTo(int page) {
  if (!document_) return;
  page_ = std::clamp(page, 0, document_->Pages() - 1);
  area_->verticalScrollBar()->setValue(0);
  Settle();
}

void PreviewWindow::SetZoom(int percent) {
  zoom_ = percent;
  Settle();
}

double PreviewWindow::Scale() const {
  if (!document_) return 1;
  if (zoom_ > 0) return zoom_ / 100.0 * logicalDpiX() / 72.0;
  const QSizeF paper = document_->PageSize(page_);
  const QSize room = area_->maximumViewportSize() - QSize(2 * kRim + 2, 2 * kRim + 2);
  if (zoom_ == kPageWidth)
    return std::max(0.1, (room.width() - area_->verticalScrollBar()->sizeHint().width()) / paper.width());
  return std::max(0.1, std::min(room.width() / paper.width(), room.height() / paper.height()));
}

void PreviewWindow::StepZoom(int steps) {
  const int now = static_cast<int>(Scale() * 72.0 / logicalDpiX() * 100 + 0.5);
  if (steps > 0) {
    const auto next = std::ranges::upper_bound(kZooms, now);
    SetZoom(next == kZooms.end() ? kZooms.back() : *next);
  } else {
    const auto here = std::ranges::lower_bound(kZooms, now);
    SetZoom(here == kZooms.begin() ? kZooms.front() : *(here - 1));
  }
}

void PreviewWindow::Settle() {
  if (!document_) return;
  const QSignalBlocker quiet(page_box_);
  page_box_->setValue(page_ + 1);
  back_->setEnabled(page_ > 0);
  forth_->setEnabled(page_ + 1 < document_->Pages());
  zoom_box_->setCurrentIndex(zoom_box_->findData(zoom_));
  sheet_->Settle();
}

void PreviewWindow::keyPressEvent(QKeyEvent* event) {
  QScrollBar* bar = area_->verticalScrollBar();
  switch (event->key()) {
    case Qt::Key_PageDown:
    case Qt::Key_Right:
      return TurnTo(page_ + 1);
    case Qt::Key_PageUp:
    case Qt::Key_Left:
      return TurnTo(page_ - 1);
    case Qt::Key_Home:
      return TurnTo(0);
    case Qt::Key_End:
      return TurnTo(document_ ? document_->Pages() - 1 : 0);
    case Qt::Key_Down:
      return bar->setValue(bar->value() + bar->singleStep() * 3);
    case Qt::Key_Up:
      return bar->setValue(bar->value() - bar->singleStep() * 3);
    default:
      QWidget::keyPressEvent(event);
  }
}

void PreviewWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Settle();
}

/// The wheel zooms with Ctrl and turns the page where there is nothing to scroll.
bool PreviewWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel) {
    auto* wheel = static_cast<QWheelEvent*>(event);
    const int steps = wheel->angleDelta().y() > 0 ? 1 : -1;
    if (wheel->modifiers() & Qt::ControlModifier) {
      StepZoom(steps);
      return true;
    }
    if (area_->verticalScrollBar()->maximum() == 0) {
      TurnTo(page_ - steps);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace luming
