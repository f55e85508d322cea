#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QMouseEvent>
#include <QScreen>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QStyledItemDelegate>
#include <QWheelEvent>
#include <algorithm>

#include "desktop/field_view.h"
#include "desktop/form_widget.h"
#include "desktop/key_codes.h"
#include "desktop/metrics.h"
#include "desktop/qt_text.h"
#include "screen/combo_box.h"

namespace luming {
namespace {

/// Gives the entries of a list the height of a grid's rows.
class EntryPainter final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width(), std::max(size.height(), metrics::kRowHeight)};
  }
};

/// The list that drops down. It never takes the keyboard: typing goes on in the field while it is open.
class DropList final : public QListView {
 public:
  explicit DropList(QWidget* field) : QListView(field), field_(field) {
    setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setObjectName("dropList");
    setFocusPolicy(Qt::NoFocus);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setMouseTracking(true);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setModel(&entries_);
    setItemDelegate(new EntryPainter(this));
  }

  void Open(const std::vector<std::string>& items) {
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(items.size()));
    for (const std::string& item : items) texts << ToQt(item);
    entries_.setStringList(texts);
    const int rows = std::clamp(static_cast<int>(texts.size()), 1, kMostRows);
    const int height = rows * sizeHintForRow(0) + 2 * frameWidth();
    const int width = std::max(field_->width(), sizeHintForColumn(0) + 4 * metrics::kFrame);
    QPoint place = field_->mapToGlobal(QPoint(0, field_->height()));
    const QRect room = field_->screen()->availableGeometry();
    if (place.y() + height > room.bottom()) place.setY(field_->mapToGlobal(QPoint(0, 0)).y() - height);
    setGeometry(place.x(), place.y(), width, height);
    show();
  }

  void Highlight(int index) { setCurrentIndex(index >= 0 ? entries_.index(index) : QModelIndex()); }

 private:
  static constexpr int kMostRows = 12;
  QWidget* field_;
  QStringListModel entries_;
};

/// A combo box whose list is the model's: opening it only asks the model to.
class ComboField final : public QComboBox {
 public:
  explicit ComboField(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
  }
  std::function<void()> on_toggle;
  void showPopup() override { on_toggle(); }
  void hidePopup() override {}

 protected:
  void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

class ComboView final : public QObject, public TypedView<ComboBox> {
 public:
  ComboView(FormWidget& host, ComboBox& control)
      : TypedView(host, control), field_(new ComboField(&host)), list_(new DropList(field_)) {
    const bool fixed = control.Style() == ComboStyle::kFixed;
    field_->lineEdit()->setReadOnly(fixed);
    field_->setAttribute(Qt::WA_InputMethodEnabled, !fixed && control.Options().ime != Ime::kOff);
    field_->lineEdit()->installEventFilter(this);
    field_->on_toggle = [this] { Toggle(); };
    connect(field_->lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) { Edited(text); });
    connect(list_, &QListView::pressed, this,
            [this](const QModelIndex& entry) { host_.Enter([&](Form&) { Field()->UserChoose(entry.row()); }); });
    connect(list_, &QListView::entered, this, [this](const QModelIndex& entry) { list_->setCurrentIndex(entry); });
    qApp->installEventFilter(this);
  }
  QWidget* Widget() override { return field_; }

  void Refresh() override {
    if (editing_) return;
    const QSignalBlocker quiet(field_);
    const QString text = ToQt(Field()->Text());
    QLineEdit* edit = field_->lineEdit();
    if (edit->text() != text) edit->setText(text);
    if (Field()->Style() == ComboStyle::kFree) edit->setReadOnly(Field()->ReadOnly());
    if (Field()->TextSelected() && field_->hasFocus()) edit->selectAll();
    RefreshCommon();
    ShowList();
  }

  void TakeFocus() override {
    FieldView::TakeFocus();
    ShowList();
  }

  void Detach() override {
    list_->hide();
    FieldView::Detach();
  }

  bool EditsWith(const QKeyEvent& event) const override {
    return IsEditingKey(event.key()) && control()->Kind() == ControlKind::kComboBox &&
           !field_->lineEdit()->isReadOnly();
  }
  bool KeyAheadOfModel(const QKeyEvent& event) override {
    if (!Field()->ListIsOpen()) return false;
    const bool chooses = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Tab;
    if (event.key() != Qt::Key_Escape && !chooses) return false;
    host_.Enter([this](Form&) { Field()->CloseList(); });
    return !chooses;  // Enter goes on to walk
  }
  bool KeyAfterModel(const QKeyEvent& event) override {
    const char32_t typed = TypedCharacter(event);
    if (typed != 0 && Field()->Style() == ComboStyle::kFixed) {
      host_.Enter([&](Form& form) { form.UserType(typed); });
      return true;
    }
    const bool edits = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right || event.key() == Qt::Key_Space;
    return !edits && FieldView::KeyAfterModel(event);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!Field()) return false;
    switch (event->type()) {
      case QEvent::MouseButtonPress:
        return MousePressed(watched);
      case QEvent::WindowDeactivate:
      case QEvent::Move:
        if (watched == field_->window()) Close();
        return false;
      default:
        return false;
    }
  }

 private:
  bool MousePressed(QObject* watched) {
    if (watched == field_->lineEdit() && Field()->Style() == ComboStyle::kFixed && field_->isEnabled()) {
      field_->setFocus(Qt::MouseFocusReason);
      Toggle();
      return true;
    }
    const auto* widget = dynamic_cast<QWidget*>(watched);
    const bool elsewhere = widget && widget != field_ && widget->window() != list_ && !field_->isAncestorOf(widget);
    if (elsewhere) Close();
    return false;
  }

  void Toggle() {
    host_.Enter([this](Form&) {
      if (Field()->ListIsOpen()) return Field()->CloseList();
      if (!Field()->ReadOnly()) Field()->OpenList();
    });
  }

  void Close() {
    if (!Field()->ListIsOpen()) return;
    host_.Enter([this](Form&) { Field()->CloseList(); });
  }

  void ShowList() {
    const bool wanted = Field()->ListIsOpen() && field_->isVisible() && !Field()->Items().empty();
    if (wanted && !list_->isVisible()) list_->Open(Field()->Items());
    if (!wanted && list_->isVisible()) list_->hide();
    if (wanted) list_->Highlight(Field()->ListIndex());
  }

  void Edited(const QString& text) {
    editing_ = true;
    host_.Enter([&](Form&) { Field()->UserText(FromQt(text)); });
    editing_ = false;
    if (Field()) Refresh();
  }

  ComboField* field_;
  DropList* list_;
  bool editing_ = false;
};

}  // namespace

std::unique_ptr<FieldView> MakeComboView(FormWidget& host, ComboBox& control) {
  return std::make_unique<ComboView>(host, control);
}

}  // namespace luming
