#include "desktop/glyphs.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <array>
#include <functional>
#include <utility>

#include "desktop/themes.h"
#include "platform/desktop.h"

namespace luming::glyphs {
namespace {

/// Draws in a square of 24 by 24.
using Draw = void (*)(QPainter&);

/// Strokes are drawn anew for every size, so that they stay crisp at any scale.
class StrokeEngine final : public QIconEngine {
 public:
  explicit StrokeEngine(Draw draw) : draw_(draw) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const Theme& theme = CurrentTheme();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / 24.0, rect.height() / 24.0);
    painter->setPen(
        QPen(mode == QIcon::Disabled ? theme.line : theme.accent, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    draw_(*painter);
    painter->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect({}, size), mode, state);
    return picture;
  }
  QIconEngine* clone() const override { return new StrokeEngine(draw_); }

 private:
  Draw draw_;
};

QIcon Make(Draw draw) {
  return QIcon(new StrokeEngine(draw));
}

void Lines(QPainter& painter, std::initializer_list<QPointF> points) {
  painter.drawPolyline(points.begin(), static_cast<int>(points.size()));
}

void Plus(QPainter& painter, QPointF centre, qreal arm) {
  painter.drawLine(centre - QPointF(arm, 0), centre + QPointF(arm, 0));
  painter.drawLine(centre - QPointF(0, arm), centre + QPointF(0, arm));
}

void Capsule(QPainter& painter) {
  painter.save();
  painter.translate(10, 12.5);
  painter.rotate(-45);
  painter.drawRoundedRect(QRectF(-8, -4, 16, 8), 4, 4);
  painter.drawLine(QPointF(0, -4), QPointF(0, 4));
  painter.restore();
}

void Tray(QPainter& painter) {
  Lines(painter, {{3.5, 13}, {3.5, 20.5}, {20.5, 20.5}, {20.5, 13}});
}

void Sheet(QPainter& painter) {
  painter.drawRoundedRect(QRectF(5, 3.5, 14, 17), 1.5, 1.5);
}

void Catalogue(QPainter& painter) {
  Sheet(painter);
  for (const qreal y : {8.0, 12.0, 16.0}) painter.drawLine(QPointF(8.5, y), QPointF(15.5, y));
}
void NewDrug(QPainter& painter) {
  Capsule(painter);
  Plus(painter, {18.5, 18.5}, 3);
}
void Receive(QPainter& painter) {
  Tray(painter);
  painter.drawLine(QPointF(12, 3), QPointF(12, 15.5));
  Lines(painter, {{8, 11.5}, {12, 15.5}, {16, 11.5}});
}
void Issue(QPainter& painter) {
  Tray(painter);
  painter.drawLine(QPointF(12, 3.5), QPointF(12, 16));
  Lines(painter, {{8, 7.5}, {12, 3.5}, {16, 7.5}});
}
void GiveBack(QPainter& painter) {
  Lines(painter, {{8.5, 4}, {4, 8.5}, {8.5, 13}});
  QPainterPath path(QPointF(4, 8.5));
  path.lineTo(14, 8.5);
  path.cubicTo(22, 8.5, 22, 19.5, 14, 19.5);
  path.lineTo(9, 19.5);
  painter.drawPath(path);
}
void Count(QPainter& painter) {
  Sheet(painter);
  Lines(painter, {{8.5, 12.2}, {11, 14.8}, {15.8, 9}});
}
void Scrap(QPainter& painter) {
  painter.drawLine(QPointF(4, 6.5), QPointF(20, 6.5));
  Lines(painter, {{9, 6.5}, {9.8, 3.5}, {14.2, 3.5}, {15, 6.5}});
  Lines(painter, {{6, 6.5}, {7, 20.5}, {17, 20.5}, {18, 6.5}});
  painter.drawLine(QPointF(10.2, 10.5), QPointF(10.5, 16.5));
  painter.drawLine(QPointF(13.8, 10.5), QPointF(13.5, 16.5));
}
void Lock(QPainter& painter) {
  painter.drawRoundedRect(QRectF(5, 10.5, 14, 10), 2, 2);
  QPainterPath bow(QPointF(8, 10.5));
  bow.lineTo(8, 7.5);
  bow.cubicTo(8, 2.2, 16, 2.2, 16, 7.5);
  bow.lineTo(16, 10.5);
  painter.drawPath(bow);
  painter.drawLine(QPointF(12, 14.5), QPointF(12, 16.5));
}
void Keyboard(QPainter& painter) {
  painter.drawRoundedRect(QRectF(2.5, 6, 19, 12), 2, 2);
  for (const qreal x : {6.5, 10.2, 13.8, 17.5}) painter.drawPoint(QPointF(x, 10));
  painter.drawLine(QPointF(8, 14.2), QPointF(16, 14.2));
}
void Leave(QPainter& painter) {
  Lines(painter, {{13, 4}, {5, 4}, {5, 20}, {13, 20}});
  painter.drawLine(QPointF(10, 12), QPointF(20.5, 12));
  Lines(painter, {{16.8, 8.2}, {20.5, 12}, {16.8, 15.8}});
}
void Search(QPainter& painter) {
  painter.drawEllipse(QPointF(10.5, 10.5), 6.2, 6.2);
  painter.drawLine(QPointF(15.2, 15.2), QPointF(20.3, 20.3));
}
void Print(QPainter& painter) {
  Lines(painter, {{7, 9}, {7, 3.5}, {17, 3.5}, {17, 9}});
  Lines(painter, {{7, 17}, {3.5, 17}, {3.5, 9}, {20.5, 9}, {20.5, 17}, {17, 17}});
  painter.drawRect(QRectF(7, 13.5, 10, 7));
}
void Export(QPainter& painter) {
  painter.drawRoundedRect(QRectF(3.5, 4, 17, 16), 1.5, 1.5);
  painter.drawLine(QPointF(3.5, 9.2), QPointF(20.5, 9.2));
  painter.drawLine(QPointF(3.5, 14.6), QPointF(20.5, 14.6));
  painter.drawLine(QPointF(9.5, 4), QPointF(9.5, 20));
}
void Refresh(QPainter& painter) {
  painter.drawArc(QRectF(4.5, 4.5, 15, 15), 40 * 16, 280 * 16);
  Lines(painter, {{18.6, 3.5}, {18.2, 7.6}, {14.2, 7.2}});
}
void Close(QPainter& painter) {
  painter.drawLine(QPointF(6, 6), QPointF(18, 18));
  painter.drawLine(QPointF(18, 6), QPointF(6, 18));
}
void Save(QPainter& painter) {
  Lines(painter, {{4, 4}, {16, 4}, {20, 8}, {20, 20}, {4, 20}, {4, 4}});
  Lines(painter, {{7.5, 20}, {7.5, 13.5}, {16.5, 13.5}, {16.5, 20}});
  Lines(painter, {{8, 4}, {8, 8.5}, {14.5, 8.5}, {14.5, 4}});
}
void Add(QPainter& painter) {
  Plus(painter, {12, 12}, 7.5);
}
void Edit(QPainter& painter) {
  Lines(painter, {{4, 20}, {5.2, 15.2}, {16.5, 4}, {20, 7.5}, {8.8, 18.8}, {4, 20}});
}

void LeftArrow(QPainter& painter) {
  Lines(painter, {{14.5, 6}, {8.5, 12}, {14.5, 18}});
}
void RightArrow(QPainter& painter) {
  Lines(painter, {{9.5, 6}, {15.5, 12}, {9.5, 18}});
}
void UpArrow(QPainter& painter) {
  painter.drawLine(QPointF(12, 5), QPointF(12, 19));
  Lines(painter, {{6.5, 10.5}, {12, 5}, {17.5, 10.5}});
}

void Disc(QPainter& painter, QColor colour) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawEllipse(QPointF(12, 12), 11, 11);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}
void StopMark(QPainter& painter) {
  Disc(painter, QColor(0xC4, 0x3D, 0x3D));
  painter.drawLine(QPointF(8.2, 8.2), QPointF(15.8, 15.8));
  painter.drawLine(QPointF(15.8, 8.2), QPointF(8.2, 15.8));
}
void InformationMark(QPainter& painter) {
  Disc(painter, QColor(0x2C, 0x6F, 0xAE));
  painter.drawPoint(QPointF(12, 7));
  painter.drawLine(QPointF(12, 11), QPointF(12, 17));
}
void QuestionMark(QPainter& painter) {
  Disc(painter, QColor(0x2C, 0x6F, 0xAE));
  QPainterPath path(QPointF(8.8, 9.2));
  path.cubicTo(8.8, 5, 15.2, 5, 15.2, 9.2);
  path.cubicTo(15.2, 11.6, 12, 11.4, 12, 14);
  painter.drawPath(path);
  painter.drawPoint(QPointF(12, 17.6));
}
void WarningMark(QPainter& painter) {
  painter.setPen(QPen(QColor(0xE0, 0x9A, 0x1E), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(QColor(0xE0, 0x9A, 0x1E));
  painter.drawPolygon(QPolygonF({{12, 2.5}, {22, 20.5}, {2, 20.5}}));
  painter.setPen(QPen(Qt::white, 2.2, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(12, 9), QPointF(12, 14));
  painter.drawPoint(QPointF(12, 17.5));
}
void ProgramMark(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(CurrentTheme().accent);
  painter.drawRoundedRect(QRectF(1, 1, 22, 22), 5, 5);
  painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  // Antlers over a capsule.
  Lines(painter, {{12, 12}, {8.5, 9}, {8, 5}});
  Lines(painter, {{8.4, 8}, {5.5, 6.5}});
  Lines(painter, {{12, 12}, {15.5, 9}, {16, 5}});
  Lines(painter, {{15.6, 8}, {18.5, 6.5}});
  painter.drawRoundedRect(QRectF(8.5, 12, 7, 7.5), 3.5, 3.5);
  painter.drawLine(QPointF(8.5, 15.7), QPointF(15.5, 15.7));
}

void EmptyCheck(QPainter& painter) {
  painter.drawRoundedRect(QRectF(3.5, 3.5, 17, 17), 3, 3);
}
void TickedCheck(QPainter& painter) {
  EmptyCheck(painter);
  Lines(painter, {{7.5, 12.5}, {10.7, 15.7}, {16.5, 8.5}});
}
void PartCheck(QPainter& painter) {
  EmptyCheck(painter);
  painter.drawLine(QPointF(8, 12), QPointF(16, 12));
}

}  // namespace

QIcon ForCommand(int command) {
  static constexpr std::array<std::pair<int, Draw>, 14> kDrawings{{
      {201, NewDrug},
      {202, Catalogue},
      {302, Receive},
      {312, Issue},
      {335, GiveBack},
      {338, GiveBack},
      {410, Count},
      {413, Scrap},
      {501, Search},
      {751, Edit},
      {9103, Lock},
      {9104, Leave},
      {9105, Keyboard},
      {6661, Close},
  }};
  for (const auto& [id, draw] : kDrawings) {
    if (id == command) return Make(draw);
  }
  return {};
}

QIcon ForCaption(const std::string& caption) {
  static constexpr std::array<std::pair<const char*, Draw>, 13> kDrawings{{
      {"打印", Print},
      {"导出", Export},
      {"导入", Receive},
      {"刷新", Refresh},
      {"关闭", Close},
      {"退出", Leave},
      {"查询", Search},
      {"查找", Search},
      {"保存", Save},
      {"删除", Scrap},
      {"添加", Add},
      {"新", Add},
      {"修改", Edit},
  }};
  for (const auto& [word, draw] : kDrawings) {
    if (caption.find(word) != std::string::npos) return Make(draw);
  }
  return {};
}

QIcon ForBoxStyle(int style) {
  switch (style & 0xF0) {
    case box::kStop:
      return Make(StopMark);
    case box::kQuestion:
      return Make(QuestionMark);
    case box::kWarning:
      return Make(WarningMark);
    case box::kInformation:
      return Make(InformationMark);
    default:
      return {};
  }
}

QIcon OfNode(const std::string& image) {
  if (image == "None") return Make(EmptyCheck);
  if (image == "Some") return Make(PartCheck);
  if (image == "All") return Make(TickedCheck);
  return {};
}

QIcon Arrow(Direction direction) {
  switch (direction) {
    case Direction::kLeft:
      return Make(LeftArrow);
    case Direction::kRight:
      return Make(RightArrow);
    case Direction::kUp:
      break;
  }
  return Make(UpArrow);
}

QIcon OfProgram() {
  return Make(ProgramMark);
}

}  // namespace luming::glyphs
