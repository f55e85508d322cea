#include "desktop/picture_of_desktop.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>

#include "desktop/themes.h"

namespace luming {
namespace {

constexpr int kTitleHeight = 30;
constexpr int kMargin = 12;
constexpr int kShadow = 8;

bool HasTitle(const QWidget& window) {
  if (window.windowFlags().testFlag(Qt::FramelessWindowHint)) return false;
  switch (window.windowType()) {
    case Qt::Window:
    case Qt::Dialog:
    case Qt::Tool:
      return true;
    default:
      return false;
  }
}

QRect Framed(const QWidget& window) {
  const QRect place(window.mapToGlobal(QPoint(0, 0)), window.size());
  return HasTitle(window) ? place.adjusted(-1, -kTitleHeight, 1, 1) : place;
}

/// The titled windows in their order, then what floats above them all, such as a list that has dropped down.
std::vector<QWidget*> Visible(const std::vector<QPointer<QWidget>>& windows) {
  std::vector<QWidget*> visible;
  for (const QPointer<QWidget>& window : windows) {
    if (window && window->isVisible()) visible.push_back(window);
  }
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const bool floats = window->windowType() == Qt::ToolTip || window->windowType() == Qt::Popup;
    if (floats && window->isVisible()) visible.push_back(window);
  }
  return visible;
}

void DrawFrame(QPainter& painter, const QWidget& window, const QRect& place, bool in_front) {
  const Theme& theme = CurrentTheme();
  for (int spread = kShadow; spread > 0; --spread) {
    painter.setPen(QPen(QColor(0, 0, 0, 5), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place.adjusted(-spread, 2 - spread, spread - 1, 1 + spread), spread, spread);
  }
  painter.setPen(QPen(theme.field_line, 1));
  painter.setBrush(theme.chrome);
  painter.drawRect(place.adjusted(0, 0, -1, -1));
  const QRect title(place.left() + 10, place.top(), place.width() - 20, kTitleHeight);
  window.windowIcon().paint(&painter, QRect(title.left(), title.top() + 7, 16, 16));
  painter.setPen(in_front ? theme.text : theme.muted);
  painter.drawText(title.adjusted(24, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, window.windowTitle());
  painter.setPen(QPen(theme.muted, 1.3));
  const QPointF close(title.right() - 6, title.center().y() + 0.5);
  painter.drawLine(close + QPointF(-4, -4), close + QPointF(4, 4));
  painter.drawLine(close + QPointF(4, -4), close + QPointF(-4, 4));
}

}  // namespace

bool SavePictureOfDesktop(const std::vector<QPointer<QWidget>>& windows, const QString& file) {
  const std::vector<QWidget*> visible = Visible(windows);
  if (visible.empty()) return false;
  QRect room;
  for (const QWidget* window : visible) room |= Framed(*window);
  room.adjust(-kMargin, -kMargin, kMargin, kMargin);
  const qreal scale = visible.front()->devicePixelRatio();
  QImage picture((QSizeF(room.size()) * scale).toSize(), QImage::Format_RGB32);
  picture.setDevicePixelRatio(scale);
  picture.fill(CurrentTheme().chrome_deep.darker(108));
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-room.topLeft());
  const auto front = std::find_if(visible.rbegin(), visible.rend(), [](QWidget* each) { return HasTitle(*each); });
  for (QWidget* window : visible) {
    painter.setFont(QApplication::font());
    if (HasTitle(*window)) DrawFrame(painter, *window, Framed(*window), front != visible.rend() && window == *front);
    painter.drawPixmap(window->mapToGlobal(QPoint(0, 0)), window->grab());
  }
  painter.end();
  return picture.save(file, "PNG");
}

}  // namespace luming
