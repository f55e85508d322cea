// Check boxes, options, buttons, tool bars and pictures.

#include <QCheckBox>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QToolButton>

#include "desktop/field_view.h"
#include "desktop/form_widget.h"
#include "desktop/glyphs.h"
#include "desktop/metrics.h"
#include "desktop/qt_text.h"

namespace luming {
namespace {

/// What a click does is the model's; the widget shows what came of it.
template <class ControlType, class WidgetType>
class ClickedView : public TypedView<ControlType> {
 public:
  ClickedView(FormWidget& host, ControlType& control)
      : TypedView<ControlType>(host, control), widget_(new WidgetType(&host)) {
    QObject::connect(widget_, &QAbstractButton::clicked, widget_, [this] {
      this->host_.Enter([this](Form& form) { form.UserClick(*this->Field()); });
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
    QObject::connect(widget, &QToolButton::clicked, widget,
                     [this, button_key = button.key] { host_.Enter([&](Form&) { Field()->UserPress(button_key); }); });
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
  void Load(const QString& file) {
    picture_ = file.isEmpty() ? QPixmap() : QPixmap(file);
    updateGeometry();
    update();
  }
  bool HasPicture() const { return !picture_.isNull(); }
  QSize sizeHint() const override {
    return picture_.isNull() ? QSize(0, 0) : picture_.deviceIndependentSize().toSize();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    if (picture_.isNull()) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QSizeF size = picture_.deviceIndependentSize().scaled(rect().size(), Qt::KeepAspectRatio);
    QRectF place({}, size);
    place.moveCenter(QRectF(rect()).center());
    painter.drawPixmap(place, picture_, QRectF(picture_.rect()));
  }
  void mouseReleaseEvent(QMouseEvent*) override { on_click(); }

 private:
  QPixmap picture_;
};

class PictureView final : public TypedView<Picture> {
 public:
  PictureView(FormWidget& host, Picture& control) : TypedView(host, control), widget_(new PictureWidget(&host)) {
    widget_->on_click = [this] { host_.Enter([this](Form& form) { form.UserClick(*Field()); }); };
  }
  QWidget* Widget() override { return widget_; }
  bool WantsCaption() const override { return false; }
  void Refresh() override {
    if (shown_ != Field()->File()) {
      shown_ = Field()->File();
      widget_->Load(ToQt(shown_.string()));
    }
    RefreshCommon();
    if (!widget_->HasPicture()) widget_->hide();  // without its picture it takes no room
  }

 private:
  PictureWidget* widget_;
  std::filesystem::path shown_;
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
std::unique_ptr<FieldView> MakePictureView(FormWidget& host, Picture& control) {
  return std::make_unique<PictureView>(host, control);
}

}  // namespace luming
