// Check boxes, options, buttons, tool bars, pictures and progress bars.

#include <QCheckBox>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QToolButton>
#include <algorithm>

#include "desktop/field_view.h"
#include "desktop/form_widget.h"
#include "desktop/glyphs.h"
#include "desktop/metrics.h"
#include "desktop/qt_text.h"
#include "desktop/themes.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/option_button.h"
#include "screen/picture.h"
#include "screen/progress_bar.h"
#include "screen/tool_bar.h"

namespace luming {
namespace {

/// What a click does is the model's; the widget shows what came of it.
template <class ControlType, class WidgetType>
class ClickedView : public TypedView<ControlType> {
 public:
  ClickedView(FormWidget& host, ControlType& control)
      : TypedView<ControlType>(host, control), widget_(new WidgetType(&host)) {
    QObject::connect(widget_, &QAbstractButton::clicked, widget_, [this] {
      this->host_.Enter([this](Form& form) { form.UserClick(*this->Field()); }, Work::kLong);
      if (this->Field()) this->Refresh();
    });
  }
  QWidget* Widget() override { return widget_; }
  bool WantsCaption() const override { return false; }

 protected:
  WidgetType* widget_;
};

class CheckView final : public ClickedView<CheckBox, QCheckBox> {
 public:
  using ClickedView::ClickedView;
  void Refresh() override {
    const QSignalBlocker quiet(widget_);
    widget_->setText(ToQt(Field()->Caption()));
    widget_->setChecked(Field()->Checked());
    RefreshCommon();
  }
};

class OptionView final : public ClickedView<OptionButton, QRadioButton> {
 public:
  OptionView(FormWidget& host, OptionButton& control) : ClickedView(host, control) { widget_->setAutoExclusive(false); }
  void Refresh() override {
    const QSignalBlocker quiet(widget_);
    widget_->setText(ToQt(Field()->Caption()));
    widget_->setChecked(Field()->Chosen());
    RefreshCommon();
  }
};

class ButtonView final : public ClickedView<Button, QPushButton> {
 public:
  ButtonView(FormWidget& host, Button& control) : ClickedView(host, control) {
    widget_->setProperty("role", control.Role() == ButtonRole::kDefault ? "default" : "plain");
    widget_->setAutoDefault(false);
  }
  void Refresh() override {
    widget_->setText(ToQt(Field()->Caption()));
    widget_->setMinimumWidth(std::max(metrics::kButtonWidth, widget_->sizeHint().width()));
    RefreshCommon();
  }
};

class ToolBarView final : public TypedView<ToolBar> {
 public:
  ToolBarView(FormWidget& host, ToolBar& control) : TypedView(host, control), bar_(new QWidget(&host)) {
    bar_->setProperty("look", "toolBar");
    auto* box = new QHBoxLayout(bar_);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(2);
    for (const ToolButton& button : control.Buttons()) {
      if (button.starts_group && box->count() > 0) box->addSpacing(metrics::kGap * 2);
      box->addWidget(MakeButton(button));
    }
    box->addStretch(1);
  }
  QWidget* Widget() override { return bar_; }
  bool WantsCaption() const override { return false; }
  void Refresh() override {
    for (std::size_t at = 0; at < buttons_.size(); ++at) buttons_[at]->setEnabled(Field()->Buttons()[at].enabled);
    RefreshCommon();
  }

 private:
  QToolButton* MakeButton(const ToolButton& button) {
    auto* widget = new QToolButton(bar_);
    widget->setText(ToQt(button.caption));
    widget->setIcon(glyphs::ForCaption(button.caption));
    widget->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    widget->setAutoRaise(true);
    widget->setFocusPolicy(Qt::NoFocus);
    QObject::connect(widget, &QToolButton::clicked, widget, [this, button_key = button.key] {
      host_.Enter([&](Form&) { Field()->UserPress(button_key); }, Work::kLong);
    });
    buttons_.push_back(widget);
    return widget;
  }

  QWidget* bar_;
  std::vector<QToolButton*> buttons_;
};

/// Scales its picture into the room there is, keeping the proportions.
class PictureWidget final : public QWidget {
 public:
  using QWidget::QWidget;
  std::function<void()> on_click;
  std::function<void()> on_mouse;
  /// @param emblem what is drawn when there is no such file; may be null
  void Load(const QString& file, const QIcon& emblem) {
    picture_ = file.isEmpty() ? QPixmap() : QPixmap(file);
    emblem_ = emblem;
    updateGeometry();
    update();
  }
  void SetBorder(bool on) {
    border_ = on;
    update();
  }
  bool HasPicture() const { return !picture_.isNull() || !emblem_.isNull(); }
  QSize sizeHint() const override {
    if (!picture_.isNull()) return picture_.deviceIndependentSize().toSize();
    return emblem_.isNull() ? QSize(0, 0) : kEmblemSize;
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    if (border_) {
      painter.setPen(CurrentTheme().field_line);
      painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    if (picture_.isNull()) return PaintEmblem(painter);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QSizeF size = picture_.deviceIndependentSize().scaled(rect().size(), Qt::KeepAspectRatio);
    QRectF place({}, size);
    place.moveCenter(QRectF(rect()).center());
    painter.drawPixmap(place, picture_, QRectF(picture_.rect()));
  }
  void mouseReleaseEvent(QMouseEvent*) override { on_click(); }
  void enterEvent(QEnterEvent*) override { on_mouse(); }

 private:
  void PaintEmblem(QPainter& painter) {
    if (emblem_.isNull()) return;
    const int side = std::min(width(), height());
    QRect place(0, 0, side, side);
    place.moveCenter(rect().center());
    emblem_.paint(&painter, place);
  }

  static constexpr QSize kEmblemSize{48, 48};
  QPixmap picture_;
  QIcon emblem_;
  bool border_ = false;
};

QIcon EmblemOf(Emblem emblem) {
  constexpr int kLockCommand = 9103;
  switch (emblem) {
    case Emblem::kProgram:
      return glyphs::OfProgram();
    case Emblem::kLock:
      return glyphs::ForCommand(kLockCommand);
    case Emblem::kNone:
      break;
  }
  return {};
}

class PictureView final : public TypedView<Picture> {
 public:
  PictureView(FormWidget& host, Picture& control) : TypedView(host, control), widget_(new PictureWidget(&host)) {
    widget_->on_click = [this] { host_.Enter([this](Form& form) { form.UserClick(*Field()); }); };
    widget_->on_mouse = [this] { host_.Enter([this](Form&) { Field()->UserMouseMove(); }); };
    widget_->Load({}, EmblemOf(control.Shown()));
  }
  QWidget* Widget() override { return widget_; }
  bool WantsCaption() const override { return false; }
  void Refresh() override {
    if (shown_ != Field()->File()) {
      shown_ = Field()->File();
      widget_->Load(ToQt(shown_.string()), EmblemOf(Field()->Shown()));
    }
    widget_->SetBorder(Field()->BorderStyle() == 1);
    RefreshCommon();
    if (!widget_->HasPicture()) widget_->hide();  // without its picture it takes no room
  }

 private:
  PictureWidget* widget_;
  std::filesystem::path shown_;
};

class ProgressView final : public TypedView<ProgressBar> {
 public:
  ProgressView(FormWidget& host, ProgressBar& control) : TypedView(host, control), bar_(new QProgressBar(&host)) {
    bar_->setRange(0, kSteps);
    bar_->setTextVisible(false);
    bar_->setFixedHeight(kHeight);
  }
  QWidget* Widget() override { return bar_; }
  bool WantsCaption() const override { return false; }
  void Refresh() override {
    bar_->setValue(static_cast<int>(Field()->Share() * kSteps));
    RefreshCommon();
  }

 private:
  static constexpr int kSteps = 1000;
  static constexpr int kHeight = 14;
  QProgressBar* bar_;
};

}  // namespace

std::unique_ptr<FieldView> MakeCheckView(FormWidget& host, CheckBox& control) {
  return std::make_unique<CheckView>(host, control);
}
std::unique_ptr<FieldView> MakeOptionView(FormWidget& host, OptionButton& control) {
  return std::make_unique<OptionView>(host, control);
}
std::unique_ptr<FieldView> MakeButtonView(FormWidget& host, Button& control) {
  return std::make_unique<ButtonView>(host, control);
}
std::unique_ptr<FieldView> MakeToolBarView(FormWidget& host, ToolBar& control) {
  return std::make_unique<ToolBarView>(host, control);
}
std::unique_ptr<FieldView> MakeProgressView(FormWidget& host, ProgressBar& control) {
  return std::make_unique<ProgressView>(host, control);
}

std::unique_ptr<FieldView> MakePictureView(FormWidget& host, Picture& control) {
  return std::make_unique<PictureView>(host, control);
}

}  // namespace luming
