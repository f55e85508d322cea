#include "desktop/grid_pane.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "desktop/grid_heads.h"
#include "desktop/metrics.h"
#include "desktop/qt_text.h"
#include "desktop/themes.h"

namespace luming {
namespace {

/// Paints one cell straight from the grid.
class CellPainter final : public QStyledItemDelegate {
 public:
  explicit CellPainter(GridPane& pane) : QStyledItemDelegate(&pane), pane_(pane) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const Grid* grid = pane_.grid();
    if (!grid) return;
    const int row = index.row() + 1;
    const int col = index.column() + 1;
    const Look look = LookOf(*grid, row, col);
    painter->save();
    painter->fillRect(option.rect, look.back);
    if (grid->Kind(row, col) == CellKind::kCheck) {
      DrawCheck(*painter, option, index.data().toString());
    } else if (grid->PageLines() > 0) {
      DrawLines(*painter, option, look, ToQt(grid->Text(row, col)).split('\n'));
    } else {
      DrawText(*painter, RoomOf(option.rect, row, col), option.font, look, index.data().toString(),
               grid->CellAlign(row, col));
    }
    if (look.marked) DrawMark(*painter, option.rect);
    painter->restore();
  }

  /// The whole of a text that its cell has no room for.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override {
    if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
    ShowToolTip(*event, *view->viewport(), option.rect, IsClipped(*view, option, index) ? WholeText(index) : QString());
    return true;
  }

 private:
  struct Look {
    QColor text;
    QColor back;
    bool bold = false;
    bool marked = false;
    bool own_text = false;  ///< the cell has a text colour of its own
  };

  Look LookOf(const Grid& grid, int row, int col) const {
    const Theme& theme = CurrentTheme();
    const bool page = grid.PageLines() > 0;
    const bool active_row = row == grid.ActiveRow() && (!page || col == grid.ActiveCol());
    Look look{theme.text, row % 2 == 0 && !page ? theme.stripe : theme.base, grid.Bold(row, col), false};
    if (grid.GridBack() != Control::kNoColour && row % 2 == 1) look.back = QColor::fromRgb(grid.GridBack());
    if (grid.Entry(row, col)) look.back = theme.typed;
    if (look.bold) look.back = theme.total;
    if (const Colour back = grid.CellBackColour(row, col); back != Control::kNoColour)
      look.back = QColor::fromRgb(back);
    if (const Colour text = grid.CellTextColour(row, col); text != Control::kNoColour)
      look.text = QColor::fromRgb(text);
    look.own_text = grid.CellTextColour(row, col) != Control::kNoColour;
    if (active_row && grid.RowMode()) {
      look.back = pane_.HasKeyboard() ? theme.accent : theme.accent_pale;
      if (pane_.HasKeyboard()) look.text = theme.accent_text;
    } else if (active_row && pane_.HasKeyboard()) {
      if (!page) look.back = theme.accent_faint;
      look.marked = col == grid.ActiveCol();
    } else if (active_row && !page) {
      look.back = theme.accent_faint;
    }
    if (!grid.Enabled()) look.text = theme.muted;
    return look;
  }

  QString WholeText(const QModelIndex& index) const {
    return ToQt(pane_.grid()->Text(index.row() + 1, index.column() + 1)).remove('\r');
  }

  bool IsClipped(const QAbstractItemView& view, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const Grid* grid = pane_.grid();
    if (!grid || !index.isValid() || grid->PageLines() > 0) return false;
    if (grid->Kind(index.row() + 1, index.column() + 1) == CellKind::kCheck) return false;
    QFont font = option.font;
    font.setBold(grid->Bold(index.row() + 1, index.column() + 1));
    const QRect seen = option.rect.intersected(view.viewport()->rect());
    return QFontMetrics(font).horizontalAdvance(index.data().toString()) > seen.width() - 2 * kPadding;
  }

  /// A cell that spans the edge of the frozen columns is painted by both panes, and by both from the same place on, so
  /// that its text reads on across the edge.
  QRect RoomOf(const QRect& cell, int row, int col) const {
    const int frozen = pane_.grid()->FrozenCols();
    if (col > frozen || col + pane_.grid()->Span(row, col).second - 1 <= frozen) return cell;
    const auto* outer = dynamic_cast<const GridPane*>(pane_.parentWidget());
    QRect room = cell;
    room.setLeft(0);
    room.setWidth((outer ? outer : &pane_)->viewport()->width());
    return room;
  }

  static void DrawText(QPainter& painter, const QRect& cell, QFont font, const Look& look, const QString& text,
                       Align align) {
    if (text.isEmpty()) return;
    font.setBold(look.bold);
    painter.setFont(font);
    painter.setPen(look.text);
    const QRect room = cell.adjusted(kPadding, 0, -kPadding, 0);
    const Qt::Alignment side = align == Align::kRight    ? Qt::AlignRight
                               : align == Align::kCentre ? Qt::AlignHCenter
                                                         : Qt::AlignLeft;
    painter.drawText(room, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text, Qt::ElideRight, room.width()));
  }

  /// A cell of several lines: the first one large, the others pale unless the cell has a colour of its own.
  static void DrawLines(QPainter& painter, const QStyleOptionViewItem& option, const Look& look,
                        const QStringList& lines) {
    QFont large = option.font;
    large.setPointSizeF(QFontInfo(option.font).pointSizeF() * kLargeLine);
    const int head = QFontMetrics(large).lineSpacing();
    const int rest = option.fontMetrics.lineSpacing();
    const int count = static_cast<int>(lines.size());
    int top = option.rect.center().y() - (head + rest * (count - 1)) / 2;
    for (int at = 0; at < count; ++at) {
      const int height = at == 0 ? head : rest;
      painter.setFont(at == 0 ? large : option.font);
      painter.setPen(at == 0 || look.own_text ? look.text : CurrentTheme().muted);
      painter.drawText(QRect(option.rect.left(), top, option.rect.width(), height), Qt::AlignCenter, lines[at]);
      top += height;
    }
  }

  /// Neither "1" nor "0" shows as a box that is neither on nor off.
  void DrawCheck(QPainter& painter, const QStyleOptionViewItem& option, const QString& text) const {
    QStyleOptionButton box;
    const QStyle* style = pane_.style();
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth), style->pixelMetric(QStyle::PM_IndicatorHeight));
    box.rect = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, option.rect);
    box.state = QStyle::State_Enabled;
    box.state |= text == "1" ? QStyle::State_On : text == "0" ? QStyle::State_Off : QStyle::State_NoChange;
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter, &pane_);
  }

  static void DrawMark(QPainter& painter, const QRect& cell) {
    painter.setPen(QPen(CurrentTheme().accent, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(cell.adjusted(1, 1, -1, -1));
  }

  static constexpr int kPadding = 5;
  static constexpr qreal kLargeLine = 1.25;
  GridPane& pane_;
};

/// The numbers of the rows. A header of Qt's own measures two hundred of them whenever rows have come or gone; the last
/// number is as wide as any.
class RowNumbers final : public QHeaderView {
 public:
  explicit RowNumbers(QWidget* parent) : QHeaderView(Qt::Vertical, parent) {}

  QSize sizeHint() const override {
    if (count() == 0) return QHeaderView::sizeHint();
    if (count() != measured_) {
      measured_ = count();
      size_ = sectionSizeFromContents(measured_ - 1);
    }
    return size_;
  }

 protected:
  void changeEvent(QEvent* event) override {
    measured_ = 0;  // the look may be another
    QHeaderView::changeEvent(event);
  }

 private:
  mutable int measured_ = 0;
  mutable QSize size_;
};

}  // namespace

GridPane::GridPane(GridTable& table, QWidget* parent)
    : QTableView(parent), table_(table), heads_(new GridHeads(table, this)) {
  setHorizontalHeader(heads_);
  setVerticalHeader(new RowNumbers(this));
  setModel(&table);
  setItemDelegate(new CellPainter(*this));
  setSelectionMode(NoSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollMode(ScrollPerPixel);
  QHeaderView* rows = verticalHeader();
  rows->setSectionResizeMode(QHeaderView::Fixed);
  rows->setMinimumSectionSize(metrics::kRowHeight);
  rows->setDefaultSectionSize(std::max(metrics::kRowHeight, fontMetrics().lineSpacing() + 6));
  if (const int lines = table.grid() ? table.grid()->PageLines() : 0; lines > 0) {
    rows->setDefaultSectionSize(fontMetrics().lineSpacing() * (lines + 1));
    rows->setSectionResizeMode(QHeaderView::Stretch);
    rows->hide();
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  }
  rows->setSectionsClickable(false);
  rows->setHighlightSections(false);
}

void GridPane::SettleHeads() {
  heads_->Settle();
}

bool GridPane::HasKeyboard() const {
  const QWidget* focus = QApplication::focusWidget();
  const auto* outer = dynamic_cast<const GridPane*>(parentWidget());
  return focus && (focus == this || isAncestorOf(focus) || (outer && outer->HasKeyboard()));
}

QSize GridPane::sizeHint() const {
  constexpr int kNarrowest = 40;
  constexpr int kWidest = 120;
  int characters = 0;
  for (int col = 1; grid() && col <= grid()->MaxCols(); ++col) {
    if (grid()->ColumnHidden(col)) continue;
    const int caption = static_cast<int>(grid()->Text(0, col).size());  // bytes: three for two character widths
    characters += std::max({grid()->ColumnWidth(col), caption, 8}) + 2;
  }
  constexpr int kRowsOfList = 9;
  const bool page = grid() && grid()->PageLines() > 0;  // is seen whole
  const int around = page ? horizontalHeader()->sizeHint().height() + 2 * frameWidth() : 0;
  return {metrics::CharactersWidth(*this, std::clamp(characters, kNarrowest, kWidest)),
          verticalHeader()->defaultSectionSize() * (page ? grid()->MaxRows() : kRowsOfList) + around};
}

QSize GridPane::minimumSizeHint() const {
  if (grid() && grid()->PageLines() > 0) return sizeHint();
  return {metrics::CharactersWidth(*this, 20), verticalHeader()->defaultSectionSize() * 4};
}

GridPane::Place GridPane::PlaceAt(const QMouseEvent& event) const {
  const QModelIndex index = indexAt(event.position().toPoint());
  return index.isValid() ? Place{index.row() + 1, index.column() + 1} : Place{};
}

void GridPane::mousePressEvent(QMouseEvent* event) {
  const Place place = PlaceAt(*event);
  pressed_ = place;
  if (place.row == 0) return;
  if (event->button() == Qt::RightButton) return on_right_press(place);
  if (event->button() == Qt::LeftButton) on_press(place);
}

void GridPane::mouseReleaseEvent(QMouseEvent* event) {
  const Place place = PlaceAt(*event);
  const bool same = place.row > 0 && place.row == pressed_.row && place.col == pressed_.col;
  pressed_ = {};
  if (same && event->button() == Qt::LeftButton) on_click(place);
}

void GridPane::mouseDoubleClickEvent(QMouseEvent* event) {
  const Place place = PlaceAt(*event);
  if (place.row > 0 && event->button() == Qt::LeftButton) on_double_click(place);
}

void GridPane::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  if (on_resize) on_resize();
}

void GridPane::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  viewport()->update();
}

void GridPane::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  viewport()->update();
}

}  // namespace luming
