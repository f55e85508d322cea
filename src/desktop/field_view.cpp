#include "desktop/field_view.h"

#include <QAbstractButton>
#include <QPalette>

#include "desktop/form_widget.h"
#include "desktop/qt_text.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/grid.h"
#include "screen/label.h"
#include "screen/option_button.h"
#include "screen/picture.h"
#include "screen/progress_bar.h"
#include "screen/text_box.h"
#include "screen/tool_bar.h"
#include "screen/tree.h"

namespace luming {

bool FieldView::KeyAfterModel(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
      return true;  // the walk through the form is the model's
    default:
      return false;
  }
}

void FieldView::SetCaptionLabel(QLabel* label, const QString& words) {
  caption_ = label;
  words_ = words;
  RefreshCaption();
}

void FieldView::RefreshCaption() {
  if (!caption_) return;
  const QString words = words_.isEmpty() ? ToQt(control_->Caption()) : words_;
  caption_->setText(control_->Required() ? words + "*" : words);
  caption_->setProperty("required", control_->Required());
  caption_->setBuddy(Widget());
  caption_->setVisible(control_->Visible());
  caption_->setEnabled(control_->Enabled());
}

void FieldView::RefreshCommon() {
  QWidget* widget = Widget();
  ShowEnabled(control_->Enabled());
  if (widget->isVisibleTo(widget->parentWidget()) != control_->Visible()) widget->setVisible(control_->Visible());
  ApplyColours(widget);
  RefreshCaption();
}

void FieldView::ShowEnabled(bool enabled) {
  if (Widget()->isEnabled() != enabled) Widget()->setEnabled(enabled);
}

void FieldView::ApplyColours(QWidget* widget) const {
  const Colour text = control_->TextColour();
  const Colour back = control_->BackColour();
  if (text == Control::kNoColour && back == Control::kNoColour && !widget->testAttribute(Qt::WA_SetPalette)) return;
  QPalette palette;
  if (text != Control::kNoColour) {
    palette.setColor(QPalette::Text, QColor::fromRgb(text));
    palette.setColor(QPalette::WindowText, QColor::fromRgb(text));
    palette.setColor(QPalette::ButtonText, QColor::fromRgb(text));
  }
  if (back != Control::kNoColour) {
    // The base of a check box is the box itself, which stays as it is.
    if (!qobject_cast<QAbstractButton*>(widget)) palette.setColor(QPalette::Base, QColor::fromRgb(back));
    palette.setColor(QPalette::Window, QColor::fromRgb(back));
    widget->setAutoFillBackground(true);
  }
  widget->setPalette(palette);
}

std::unique_ptr<FieldView> MakeFieldView(FormWidget& host, Control& control) {
  switch (control.Kind()) {
    case ControlKind::kLabel:
      return MakeLabelView(host, static_cast<Label&>(control));
    case ControlKind::kTextBox:
      return MakeTextView(host, static_cast<TextBox&>(control));
    case ControlKind::kComboBox:
      return MakeComboView(host, static_cast<ComboBox&>(control));
    case ControlKind::kCheckBox:
      return MakeCheckView(host, static_cast<CheckBox&>(control));
    case ControlKind::kOptionButton:
      return MakeOptionView(host, static_cast<OptionButton&>(control));
    case ControlKind::kDateBox:
      return MakeDateView(host, static_cast<DateBox&>(control));
    case ControlKind::kButton:
      return MakeButtonView(host, static_cast<Button&>(control));
    case ControlKind::kGrid:
      return MakeGridView(host, static_cast<Grid&>(control));
    case ControlKind::kTree:
      return MakeTreeView(host, static_cast<Tree&>(control));
    case ControlKind::kToolBar:
      return MakeToolBarView(host, static_cast<ToolBar&>(control));
    case ControlKind::kPicture:
      return MakePictureView(host, static_cast<Picture&>(control));
    case ControlKind::kProgressBar:
      return MakeProgressView(host, static_cast<ProgressBar&>(control));
  }
  return nullptr;
}

}  // namespace luming
