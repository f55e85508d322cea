#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "desktop/field_view.h"
#include "desktop/model_guard.h"
#include "screen/form.h"

namespace luming {

/// Draws a form: a view for each control that its arrangement names. Keys go to the model first; what it does not take
/// is left to the widget. A window of its own or the content of a workspace tab.
class FormWidget : public QWidget, public FormView {
 public:
  /// Builds the widgets and becomes the form's view.
  FormWidget(Form& form, ModelGuard& guard, QWidget* parent = nullptr);
  ~FormWidget() override;

  /// Null once the form has closed.
  Form* form() const { return form_; }
  /// The form goes away: no event reaches it from here on.
  void Detach();
  /// Runs an entry into the model, unless the form is gone.
  void Enter(const std::function<void(Form&)>& entry, Work work = Work::kBrief);
  /// Gives the keyboard to the widget of the form's active control.
  void RestoreFocus();
  /// Shows at once what the views have put off.
  void Settle();
  /// A key pressed at the field. @return true when it needs nothing further
  bool HandleKey(FieldView* field, const QKeyEvent& event);

  /// The view of a control; made at the first call, null for a control of another form.
  FieldView* ViewOf(const Control& control);
  QSize sizeHint() const override;

  void ControlChanged(Control& control) override;
  void FocusChanged(Control* control) override;
  void LookChanged() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void moveEvent(QMoveEvent* event) override;

 private:
  bool HasMnemonic(const QKeyEvent& event) const;
  void FocusCame(FieldView& field, Qt::FocusReason reason);

  Form* form_;
  ModelGuard& guard_;
  std::unordered_map<const Control*, std::unique_ptr<FieldView>> views_;
  std::unordered_map<const QObject*, FieldView*> view_of_widget_;
};

}  // namespace luming
