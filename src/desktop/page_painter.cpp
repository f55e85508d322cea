#include "desktop/page_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "desktop/qt_text.h"
#include "util/text.h"

namespace luming {

namespace {

/// Fonts have whole pixel sizes, so text is measured and painted with twenty of them to a point: it then takes the same
/// room at every zoom and resolution.
constexpr double kUnitsOfAPoint = 20;
constexpr double kThin = 0.5;

QFont FontOf(const PrintFont& font) {
  QFont made;
  made.setFamilies({ToQt(font.name), "SimSun", "Noto Serif CJK SC", "WenQuanYi Micro Hei", "Noto Sans CJK SC"});
  made.setPixelSize(static_cast<int>(std::lround(font.points * kUnitsOfAPoint)));
  made.setBold(font.bold);
  made.setHintingPreference(QFont::PreferNoHinting);
  made.setKerning(false);
  return made;
}

bool IsIdeograph(char32_t c) {
  return c >= 0x4E00 && c <= 0x9FFF;
}

int Flags(PrintAlign align) {
  const int across = align == PrintAlign::kRight    ? Qt::AlignRight
                     : align == PrintAlign::kCentre ? Qt::AlignHCenter
                                                    : Qt::AlignLeft;
  return across | Qt::AlignTop | Qt::TextSingleLine | Qt::TextDontClip;
}

class PagePainter {
 public:
  PagePainter(QPainter& painter, const PrintJob& job, const PagePlan& plan, const PlannedPage& page,
              const FontTextMetrics& metrics)
      : painter_(painter), job_(job), plan_(plan), page_(page), metrics_(metrics) {}

  void Paint() {
    painter_.setPen(QPen(Qt::black, kThin));
    painter_.setBrush(Qt::NoBrush);
    const double left = plan_.paper.margin;
    const double width = plan_.paper.width - 2 * left;
    for (const ItemLine& line : page_.items) {
      for (const ItemLine::Part& part : line.parts) {
        Text(QRectF(left, line.y, width, line.height), part.text, part.align, part.font);
      }
    }
    for (std::size_t piece = 0; piece < page_.rows.size(); ++piece) {
      for (std::size_t column = 0; column < page_.columns.size(); ++column) PaintCell(piece, column);
    }
    if (!page_.count_note.empty()) {
      const double height = metrics_.LineHeight(plan_.body);
      Text(QRectF(left, page_.note_y, width, height), page_.count_note, PrintAlign::kLeft, plan_.body);
    }
  }

 private:
  void Text(const QRectF& box, const std::string& text, PrintAlign align, const PrintFont& font) {
    painter_.save();
    painter_.scale(1 / kUnitsOfAPoint, 1 / kUnitsOfAPoint);
    painter_.setFont(FontOf(font));
    painter_.drawText(QRectF(box.topLeft() * kUnitsOfAPoint, box.size() * kUnitsOfAPoint), Flags(align), ToQt(text));
    painter_.restore();
  }

  void PaintCell(std::size_t piece, std::size_t column) {
    const RowPiece& row = page_.rows[piece];
    const PrintCell& cell = CellAt(job_.grid, row, page_.columns[column].col);
    if (cell.cols == 0) return;
    const CellBox place = BoxOf(job_.grid, page_, piece, column);
    const QRectF box(place.x, place.y, place.width, place.height);
    if (job_.grid.lines) {
      painter_.drawRect(box);
    } else if (row.is_head) {
      painter_.drawLine(box.bottomLeft(), box.bottomRight());
    }
    if (!cell.text.empty()) PaintLines(row, cell, box);
  }

  void PaintLines(const RowPiece& row, const PrintCell& cell, const QRectF& box) {
    const PrintFont font{plan_.body.name, plan_.body.points, cell.bold};
    const double width = box.width() - 2 * plan_.padding;
    const std::vector<std::string> lines = WrapText(cell.text, width, font, metrics_);
    const double height = metrics_.LineHeight(plan_.body);
    const int first = row.first_line;
    const int room = std::max(1, static_cast<int>((box.height() - 2 * plan_.padding) / height + 0.01));
    const int shown = std::min(static_cast<int>(lines.size()) - first, room);
    const bool parted = first > 0 || shown < static_cast<int>(lines.size());
    double y = parted ? box.top() + plan_.padding : box.center().y() - shown * height / 2;
    for (int line = first; line < first + shown; ++line) {
      Text(QRectF(box.left() + plan_.padding, y, width, height), lines[static_cast<std::size_t>(line)], cell.align,
           font);
      y += height;
    }
  }

  QPainter& painter_;
  const PrintJob& job_;
  const PagePlan& plan_;
  const PlannedPage& page_;
  const FontTextMetrics& metrics_;
};

}  // namespace

FontTextMetrics::Measured& FontTextMetrics::Of(const PrintFont& font) const {
  if (last_ && font == last_font_) return *last_;
  Measured& measured = fonts_[{font.name, font.points, font.bold}];
  if (measured.line_height == 0) {
    const QFontMetricsF metrics(FontOf(font));
    measured.line_height = metrics.height() / kUnitsOfAPoint;
    measured.ideograph = metrics.horizontalAdvance("药") / kUnitsOfAPoint;
  }
  last_font_ = font;
  last_ = &measured;
  return measured;
}

double FontTextMetrics::Advance(char32_t character, const PrintFont& font) const {
  Measured& measured = Of(font);
  if (IsIdeograph(character)) return measured.ideograph;
  const auto [place, is_new] = measured.advances.emplace(character, 0);
  if (is_new) {
    const QFontMetricsF metrics(FontOf(font));
    place->second = metrics.horizontalAdvance(ToQt(EncodeUtf8(character))) / kUnitsOfAPoint;
  }
  return place->second;
}

double FontTextMetrics::LineHeight(const PrintFont& font) const {
  return Of(font).line_height;
}

void PaintPage(QPainter& painter, const PrintJob& job, const PagePlan& plan, int page, const FontTextMetrics& metrics) {
  PagePainter(painter, job, plan, plan.pages[static_cast<std::size_t>(page)], metrics).Paint();
}

}  // namespace luming
