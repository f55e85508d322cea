#include "desktop/grid_heads.h"

#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

#include "desktop/qt_text.h"

namespace luming {

void ShowToolTip(const QHelpEvent& event, QWidget& widget, const QRect& place, const QString& text) {
  // Only a rich text is broken into lines where it is longer than the screen is wide.
  const QString words = text.isEmpty() ? text : "<p style='white-space:pre-wrap'>" + text.toHtmlEscaped() + "</p>";
  QToolTip::showText(event.globalPos(), words, &widget, place);
}

GridHeads::GridHeads(GridTable& table, QWidget* parent) : QHeaderView(Qt::Horizontal, parent), table_(table) {
  setSectionsClickable(true);
  setHighlightSections(false);
  setMinimumSectionSize(24);
  setTextElideMode(Qt::ElideRight);
  // Qt paints anew what stands right of a dragged edge; the head of a group begins further left.
  connect(this, &QHeaderView::sectionResized, viewport(), qOverload<>(&QWidget::update));
}

void GridHeads::Settle() {
  const int rows = table_.grid()->HeaderRows();
  if (rows != std::exchange(rows_, rows)) emit geometriesChanged();
  viewport()->update();
}

QSize GridHeads::sizeHint() const {
  const QSize size = QHeaderView::sizeHint();
  return {size.width(), size.height() * rows_};
}

/// A head that has no room for its caption tells it to whoever points at it.
bool GridHeads::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QHeaderView::viewportEvent(event);
  const auto& help = *static_cast<QHelpEvent*>(event);
  const int section = logicalIndexAt(help.pos());
  if (section < 0 || !table_.grid()) return true;
  const bool clipped = sectionSizeFromContents(section).width() > sectionSize(section);
  const QRect place(sectionViewportPosition(section), 0, sectionSize(section), height());
  ShowToolTip(help, *viewport(), place, clipped ? CellText(*table_.grid(), 0, section + 1) : QString());
  return true;
}

bool GridHeads::SharesHead(int section, int other) const {
  const Grid& grid = *table_.grid();
  if (other < 0 || other >= count() || grid.HeadGroup(section + 1) != grid.HeadGroup(other + 1)) return false;
  return (section < grid.FrozenCols()) == (other < grid.FrozenCols());
}

QRect GridHeads::GroupRect(const QRect& upper, int section) const {
  int first = section;
  while (SharesHead(section, first - 1)) --first;
  int last = section;
  while (SharesHead(section, last + 1)) ++last;
  int width = 0;
  for (int each = first; each <= last; ++each) width += sectionSize(each);
  return {sectionViewportPosition(first), upper.top(), width, upper.height()};
}

void GridHeads::paintSection(QPainter* painter, const QRect& rect, int section) const {
  const QString group = table_.grid() ? ToQt(table_.grid()->HeadGroup(section + 1)) : QString();
  if (group.isEmpty()) return QHeaderView::paintSection(painter, rect, section);
  const int middle = rect.height() / 2;
  QHeaderView::paintSection(painter, rect.adjusted(0, middle, 0, 0), section);
  QStyleOptionHeader option;
  initStyleOption(&option);
  option.rect = GroupRect(rect.adjusted(0, 0, 0, middle - rect.height()), section);
  option.section = section;
  option.text = group;
  option.textAlignment = Qt::AlignCenter;
  option.position = QStyleOptionHeader::Middle;
  style()->drawControl(QStyle::CE_Header, &option, painter, this);
}

}  // namespace luming
