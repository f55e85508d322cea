#include "desktop/calm_style.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "desktop/glyphs.h"
#include "desktop/metrics.h"
#include "desktop/themes.h"

namespace luming {
namespace {

constexpr int kArrowRoom = 22;
constexpr int kSide = 6;

void DrawField(QPainter& painter, const QStyleOption& option, const QColor& back) {
  const Theme& theme = CurrentTheme();
  const bool enabled = option.state.testFlag(QStyle::State_Enabled);
  const bool focus = enabled && option.state.testFlag(QStyle::State_HasFocus);
  const qreal pen = focus ? 2.0 : 1.0;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(focus ? theme.accent : enabled ? theme.field_line : theme.line, pen));
  painter.setBrush(back);
  const qreal inset = pen / 2;
  painter.drawRoundedRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset), 3, 3);
  painter.restore();
}

void DrawArrow(QPainter& painter, const QRect& room, bool enabled) {
  const QPointF centre = QRectF(room).center();
  QPainterPath path(centre + QPointF(-3.5, -1.75));
  path.lineTo(centre + QPointF(0, 1.75));
  path.lineTo(centre + QPointF(3.5, -1.75));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(enabled ? CurrentTheme().text : CurrentTheme().line, 1.4, Qt::SolidLine, Qt::RoundCap));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(path);
  painter.restore();
}

void DrawClose(QPainter& painter, const QStyleOption& option) {
  const Theme& theme = CurrentTheme();
  const bool hover = option.state.testFlag(QStyle::State_MouseOver);
  const QPointF centre = QRectF(option.rect).center();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (hover) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.accent_pale);
    painter.drawRoundedRect(option.rect, 3, 3);
  }
  painter.setPen(QPen(hover ? theme.text : theme.muted, 1.3, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(centre + QPointF(-3.5, -3.5), centre + QPointF(3.5, 3.5));
  painter.drawLine(centre + QPointF(3.5, -3.5), centre + QPointF(-3.5, 3.5));
  painter.restore();
}

QColor FieldBack(const QStyleOption& option) {
  return option.palette.color(option.state.testFlag(QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled,
                              QPalette::Base);
}

}  // namespace

CalmStyle::CalmStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

void CalmStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  if (element == PE_FrameFocusRect) return;  // the frames tell the focus
  if (element == PE_IndicatorTabClose) return DrawClose(*painter, *option);
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  if (element != PE_PanelLineEdit || !frame) return QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (frame->lineWidth <= 0) return;  // the line within a combo box: its box draws the field
  const bool own_back = widget && widget->testAttribute(Qt::WA_SetPalette);
  const bool read_only = option->state.testFlag(State_ReadOnly) && !own_back;
  DrawField(*painter, *option, read_only ? CurrentTheme().window : FieldBack(*option));
}

void CalmStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
  const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
  if (control != CC_ComboBox || !combo) return QProxyStyle::drawComplexControl(control, option, painter, widget);
  DrawField(*painter, *option, FieldBack(*option));
  DrawArrow(*painter, subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget),
            option->state.testFlag(State_Enabled));
}

QRect CalmStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
  if (control == CC_ComboBox) {
    const QRect whole = option->rect;
    if (part == SC_ComboBoxArrow) return whole.adjusted(whole.width() - kArrowRoom, 0, 0, 0);
    if (part == SC_ComboBoxEditField) return whole.adjusted(kSide - 2, 2, -kArrowRoom, -2);
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize CalmStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  if (type == CT_LineEdit || type == CT_ComboBox || type == CT_SpinBox) {
    size.setHeight(std::max(metrics::kEditorHeight, contents.height() + 8));
  }
  return size;
}

QIcon CalmStyle::standardIcon(StandardPixmap standard, const QStyleOption* option, const QWidget* widget) const {
  switch (standard) {
    case SP_TitleBarMenuButton:
      return glyphs::OfProgram();
    case SP_ArrowLeft:
    case SP_ArrowBack:
      return glyphs::Arrow(glyphs::Direction::kLeft);
    case SP_ArrowRight:
    case SP_ArrowForward:
      return glyphs::Arrow(glyphs::Direction::kRight);
    case SP_FileDialogToParent:
      return glyphs::Arrow(glyphs::Direction::kUp);
    default:
      return QProxyStyle::standardIcon(standard, option, widget);
  }
}

int CalmStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_SmallIconSize:
      return 16;
    case PM_ToolBarIconSize:
      return 20;
    case PM_TabCloseIndicatorWidth:
    case PM_TabCloseIndicatorHeight:
      return 16;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int CalmStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
  switch (hint) {
    case SH_UnderlineShortcut:
      return 1;
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_EtchDisabledText:
      return 0;
    case SH_LineEdit_PasswordCharacter:
      return '*';
    default:
      return QProxyStyle::styleHint(hint, option, widget, returned);
  }
}

}  // namespace luming
