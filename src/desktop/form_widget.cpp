#include "desktop/form_widget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMoveEvent>
#include <QTimer>
#include <algorithm>

#include "desktop/key_codes.h"
#include "desktop/layout_builder.h"
#include "desktop/qt_text.h"
#include "screen/caption.h"
#include "screen/forms.h"

namespace luming {

FormWidget::FormWidget(Form& form, ModelGuard& guard, QWidget* parent) : QWidget(parent), form_(&form), guard_(guard) {
  setObjectName("form");
  setFocusPolicy(Qt::ClickFocus);
  BuildLayout(*this, form.Arrange());
  form.SetView(this);
  LookChanged();
}

FormWidget::~FormWidget() {
  Detach();
}

void FormWidget::Detach() {
  if (!form_) return;
  form_->SetView(nullptr);
  form_ = nullptr;
  for (auto& [control, view] : views_) view->Detach();
}

void FormWidget::Enter(const std::function<void(Form&)>& entry, Work work) {
  if (!form_) return;
  guard_.Enter(
      [this, &entry] {
        Forms::HandlerScope scope(form_->Registry());
        entry(*form_);
      },
      work);
}

FieldView* FormWidget::ViewOf(const Control& control) {
  if (const auto found = views_.find(&control); found != views_.end()) return found->second.get();
  const auto& controls = form_->Controls();
  const auto own = std::ranges::find(controls, &control);
  if (own == controls.end()) return nullptr;
  auto view = MakeFieldView(*this, **own);
  view->Widget()->setObjectName(ToQt(control.Name()));
  view->Widget()->installEventFilter(this);
  view_of_widget_[view->Widget()] = view.get();
  view->Refresh();
  return views_.emplace(&control, std::move(view)).first->second.get();
}

void FormWidget::Settle() {
  if (!form_) return;
  for (auto& [control, view] : views_) view->Settle();
}

QSize FormWidget::sizeHint() const {
  return QWidget::sizeHint().expandedTo({fontMetrics().averageCharWidth() * 40, fontMetrics().height() * 5});
}

void FormWidget::ControlChanged(Control& control) {
  if (const auto found = views_.find(&control); found != views_.end()) found->second->Refresh();
}

void FormWidget::FocusChanged(Control*) {
  RestoreFocus();
}

void FormWidget::LookChanged() {
  setWindowTitle(ToQt(form_->Caption()));
  const bool coloured = form_->BackColour() != Control::kNoColour;
  QPalette colours;
  if (coloured) colours.setColor(QPalette::Window, QColor::fromRgb(form_->BackColour()));
  setPalette(colours);
  setAutoFillBackground(coloured);
}

void FormWidget::RestoreFocus() {
  if (!form_) return;
  const Control* active = form_->ActiveControl();
  const auto found = active ? views_.find(active) : views_.end();
  if (found != views_.end()) {
    found->second->TakeFocus();
  } else {
    setFocus(Qt::OtherFocusReason);
  }
}

bool FormWidget::eventFilter(QObject* watched, QEvent* event) {
  const auto found = view_of_widget_.find(watched);
  if (found == view_of_widget_.end() || !form_) return QWidget::eventFilter(watched, event);
  FieldView& field = *found->second;
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      if (!HasMnemonic(*static_cast<QKeyEvent*>(event))) break;
      event->accept();  // the form's own letters go ahead of the menu bar's
      return true;
    case QEvent::KeyPress:
      return HandleKey(&field, *static_cast<QKeyEvent*>(event));
    case QEvent::InputMethod: {
      const QString& committed = static_cast<QInputMethodEvent*>(event)->commitString();
      return !committed.isEmpty() && !field.Accepts(committed);
    }
    case QEvent::FocusIn:
      FocusCame(field, static_cast<QFocusEvent*>(event)->reason());
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

bool FormWidget::HandleKey(FieldView* field, const QKeyEvent& event) {
  if (field && field->KeyAheadOfModel(event)) return true;
  bool taken = false;
  KeyEvent pressed = ToKeyEvent(event);
  pressed.widget_edits = field && field->EditsWith(event);
  if (pressed.code != 0) {
    const bool presses = pressed.code == key::kEnter || pressed.alt;
    Enter([&](Form& form) { taken = form.UserKey(pressed); }, presses ? Work::kLong : Work::kBrief);
  }
  if (taken || !form_ || IsMnemonic(event)) return true;
  if (!field) return false;
  if (TypedCharacter(event) != 0 && !field->Accepts(event.text())) return true;
  return field->KeyAfterModel(event);
}

void FormWidget::FocusCame(FieldView& field, Qt::FocusReason reason) {
  if (form_->ActiveControl() == field.control()) return;
  if (reason == Qt::MouseFocusReason) {
    Enter([&](Form& form) { form.UserFocus(*field.control()); });
    return;
  }
  // Qt moves the focus by itself when a field is disabled or hidden; the model decides where it goes, unless another
  // form has taken the keyboard meanwhile.
  QTimer::singleShot(0, this, [this] {
    if (isActiveWindow() && isAncestorOf(QApplication::focusWidget())) RestoreFocus();
  });
}

bool FormWidget::HasMnemonic(const QKeyEvent& event) const {
  const KeyEvent pressed = ToKeyEvent(event);
  if (!pressed.alt || pressed.ctrl || pressed.code == 0) return false;
  return std::ranges::any_of(form_->Controls(), [&](const Control* control) {
    return control->CanFocus() && views_.contains(control) && Mnemonic(control->Caption()) == pressed.code;
  });
}

bool FormWidget::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && form_) {
    RestoreFocus();
    if (isWindow()) Enter([](Form& form) { form.Registry().BroughtToFront(form); });
  }
  if (event->type() == QEvent::ShortcutOverride && form_ && HasMnemonic(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void FormWidget::keyPressEvent(QKeyEvent* event) {
  // A key that a field declined comes up here again; only a key pressed while no field has the focus is news.
  if (!hasFocus() || !HandleKey(nullptr, *event)) QWidget::keyPressEvent(event);
}

void FormWidget::closeEvent(QCloseEvent* event) {
  if (!form_) return;
  event->ignore();  // the model says whether it closes
  Enter([](Form& form) { form.UserClose(); });
}

void FormWidget::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  if (form_ && form_->Kind() == WindowKind::kFloating && isVisible()) form_->SetPlace({x(), y()});
}

}  // namespace luming
