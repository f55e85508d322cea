#pragma once

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QWidget>
#include <functional>
#include <memory>

#include "screen/form.h"

namespace luming {

class Button;
class CheckBox;
class ComboBox;
class DateBox;
class FormWidget;
class Grid;
class Label;
class OptionButton;
class Picture;
class ProgressBar;
class TextBox;
class ToolBar;
class Tree;

/// Draws one control of a form and hands what the operator does there to the model. Its widgets belong to the form's
/// widget; the control is gone once the form has closed, so every way to it leads through WithControl.
class FieldView {
 public:
  FieldView(FormWidget& host, Control& control) : host_(host), control_(&control) {}
  virtual ~FieldView() = default;
  FieldView(const FieldView&) = delete;
  FieldView& operator=(const FieldView&) = delete;

  /// The widget to be laid out. It takes the focus for the control.
  virtual QWidget* Widget() = 0;
  /// Shows the control's present state.
  virtual void Refresh() = 0;
  virtual void TakeFocus() { Widget()->setFocus(Qt::OtherFocusReason); }
  /// Shows at once what Refresh has put off until the handler is through.
  virtual void Settle() {}
  /// The control goes away.
  virtual void Detach() { control_ = nullptr; }

  /// A key that is the view's own business, such as one for an open list: true when it is done with.
  virtual bool KeyAheadOfModel(const QKeyEvent&) { return false; }
  /// Whether the widget itself edits its text with the key, so that the model's own editing must not.
  virtual bool EditsWith(const QKeyEvent&) const { return false; }
  /// A key that the model did not take: false leaves it to the widget's own editing.
  virtual bool KeyAfterModel(const QKeyEvent& event);
  /// Whether the widget may insert what an input method or a key typed.
  virtual bool Accepts(const QString&) { return true; }

  /// Whether the editor gets its caption in front; buttons and the like draw their own.
  virtual bool WantsCaption() const { return true; }
  /// The caption in front, made by the layout; shown while the control is.
  /// @param words instead of the control's own caption; empty for that
  void SetCaptionLabel(QLabel* label, const QString& words);

  Control* control() const { return control_; }

 protected:
  /// Enabled, visible, caption and colours, which all kinds share.
  void RefreshCommon();
  /// Takes the widget out of use with its control, or back.
  virtual void ShowEnabled(bool enabled);
  /// Puts the control's colours on the widget's palette.
  void ApplyColours(QWidget* widget) const;

  FormWidget& host_;

 private:
  void RefreshCaption();

  Control* control_;
  QLabel* caption_ = nullptr;
  QString words_;
};

/// A view of one kind of control, typed.
template <class ControlType>
class TypedView : public FieldView {
 public:
  TypedView(FormWidget& host, ControlType& control) : FieldView(host, control) {}

 protected:
  ControlType* Field() const { return static_cast<ControlType*>(control()); }
};

std::unique_ptr<FieldView> MakeFieldView(FormWidget& host, Control& control);

// One maker for each family of kinds.
std::unique_ptr<FieldView> MakeTextView(FormWidget& host, TextBox& control);
std::unique_ptr<FieldView> MakeComboView(FormWidget& host, ComboBox& control);
std::unique_ptr<FieldView> MakeDateView(FormWidget& host, DateBox& control);
std::unique_ptr<FieldView> MakeLabelView(FormWidget& host, Label& control);
std::unique_ptr<FieldView> MakeCheckView(FormWidget& host, CheckBox& control);
std::unique_ptr<FieldView> MakeOptionView(FormWidget& host, OptionButton& control);
std::unique_ptr<FieldView> MakeButtonView(FormWidget& host, Button& control);
std::unique_ptr<FieldView> MakeToolBarView(FormWidget& host, ToolBar& control);
std::unique_ptr<FieldView> MakePictureView(FormWidget& host, Picture& control);
std::unique_ptr<FieldView> MakeProgressView(FormWidget& host, ProgressBar& control);
std::unique_ptr<FieldView> MakeTreeView(FormWidget& host, Tree& control);
std::unique_ptr<FieldView> MakeGridView(FormWidget& host, Grid& control);

}  // namespace luming
