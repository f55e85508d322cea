// Labels, text boxes and date boxes.

#include <QCalendarWidget>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTimer>
#include <algorithm>

#include "desktop/field_view.h"
#include "desktop/form_widget.h"
#include "desktop/key_codes.h"
#include "desktop/metrics.h"
#include "desktop/qt_text.h"
#include "screen/date_box.h"
#include "screen/label.h"
#include "screen/text_box.h"

namespace luming {
namespace {

class LabelView final : public TypedView<Label> {
 public:
  LabelView(FormWidget& host, Label& control) : TypedView(host, control), label_(new QLabel(&host)) {
    label_->setTextInteractionFlags(Qt::NoTextInteraction);
  }
  QWidget* Widget() override { return label_; }
  bool WantsCaption() const override { return false; }
  void Refresh() override {
    QString text = ToQt(Field()->Caption());
    label_->setWordWrap(text.contains('\n') || text.size() > kWrapFrom);
    label_->setText(text);
    const int margin = Field()->BackColour() == Control::kNoColour ? 0 : metrics::kTextMargin;
    label_->setMargin(margin);
    label_->setMinimumHeight(label_->fontMetrics().lineSpacing() + 2 * margin);
    RefreshCommon();
  }

 private:
  static constexpr int kWrapFrom = 36;  // characters of a text that is a sentence, not a heading
  QLabel* label_;
};

/// A text box of one line.
class LineView final : public TypedView<TextBox> {
 public:
  LineView(FormWidget& host, TextBox& control) : TypedView(host, control), edit_(new QLineEdit(&host)) {
    const TextOptions& options = control.Options();
    edit_->setTextMargins(metrics::kTextMargin, 0, metrics::kTextMargin, 0);
    if (options.masked) edit_->setEchoMode(QLineEdit::Password);
    edit_->setAttribute(Qt::WA_InputMethodEnabled, options.ime != Ime::kOff && !options.masked);
    QObject::connect(edit_, &QLineEdit::textEdited, edit_, [this](const QString& text) { Edited(text); });
    QObject::connect(edit_, &QLineEdit::selectionChanged, edit_, [this] { TellSelection(); });
    QObject::connect(edit_, &QLineEdit::cursorPositionChanged, edit_, [this] { TellSelection(); });
  }
  QWidget* Widget() override { return edit_; }

  void Refresh() override {
    if (editing_) return;
    const QSignalBlocker quiet(edit_);
    const QString text = ToQt(Field()->Text());
    if (edit_->text() != text) edit_->setText(text);
    edit_->setReadOnly(Field()->ReadOnly());
    ShowSelection();
    RefreshCommon();
  }

  bool Accepts(const QString& typed) override {
    const QList<uint> characters = typed.toUcs4();
    return std::ranges::all_of(characters, [this](uint character) { return Field()->Accepts(character); });
  }
  bool EditsWith(const QKeyEvent& event) const override { return IsEditingKey(event.key()); }
  bool KeyAfterModel(const QKeyEvent& event) override {
    return event.key() == Qt::Key_Up || event.key() == Qt::Key_Down || event.key() == Qt::Key_Tab ||
           event.key() == Qt::Key_Backtab;
  }

 private:
  void ShowSelection() {
    const QString text = edit_->text();
    const int start = UnitsBefore(text, Field()->SelStart());
    const int end = UnitsBefore(text, Field()->SelStart() + Field()->SelLength());
    const int shown_start = edit_->hasSelectedText() ? edit_->selectionStart() : edit_->cursorPosition();
    const int shown_end = edit_->hasSelectedText() ? edit_->selectionEnd() : edit_->cursorPosition();
    if (start == shown_start && end == shown_end) return;
    if (start == end) {
      edit_->setCursorPosition(start);
    } else {
      edit_->setSelection(start, end - start);
    }
  }

  void TellSelection() {
    if (editing_ || !Field()) return;
    const QString text = edit_->text();
    const int start = edit_->hasSelectedText() ? edit_->selectionStart() : edit_->cursorPosition();
    const int end = edit_->hasSelectedText() ? edit_->selectionEnd() : start;
    const std::size_t first = CharactersBefore(text, start);
    host_.Enter([&](Form&) { Field()->SetSelection(first, CharactersBefore(text, end) - first); });
  }

  void Edited(const QString& text) {
    host_.Enter([&](Form&) {
      const std::size_t cursor = CharactersBefore(text, edit_->cursorPosition());
      editing_ = true;  // the widget is ahead of the model until both hold the new text
      Field()->UserText(FromQt(text));
      if (Field() && Field()->Text() == FromQt(text)) Field()->SetSelection(cursor, 0);
      editing_ = false;
    });
    editing_ = false;
    if (Field()) Refresh();
  }

  QLineEdit* edit_;
  bool editing_ = false;
};

/// A text box of several lines. One that only shows, such as a log of thousands of lines, is not drawn anew for each.
class MemoView final : public TypedView<TextBox> {
 public:
  MemoView(FormWidget& host, TextBox& control) : TypedView(host, control), edit_(new QPlainTextEdit(&host)) {
    edit_->setTabChangesFocus(true);
    settle_.setSingleShot(true);
    settle_.setInterval(kPauseInMilliseconds);
    QObject::connect(&settle_, &QTimer::timeout, edit_, [this] { Settle(); });
    QObject::connect(edit_, &QPlainTextEdit::textChanged, edit_, [this] {
      host_.Enter([this](Form&) {
        shown_ = FromQt(edit_->toPlainText());
        Field()->UserText(shown_);
      });
    });
  }
  QWidget* Widget() override { return edit_; }
  void Refresh() override {
    edit_->setReadOnly(Field()->ReadOnly());
    RefreshCommon();
    if (!Field()->ReadOnly()) return Settle();
    if (!settle_.isActive()) settle_.start();
  }
  void Detach() override {
    settle_.stop();
    TypedView::Detach();
  }
  void Settle() override {
    settle_.stop();
    if (!Field() || Field()->Text() == shown_) return;
    const QSignalBlocker quiet(edit_);
    const std::string& text = Field()->Text();
    if (!shown_.empty() && text.starts_with(shown_)) {
      QTextCursor end(edit_->document());
      end.movePosition(QTextCursor::End);
      end.insertText(ToQt(text.substr(shown_.size())));
    } else {
      edit_->setPlainText(ToQt(text));
    }
    if (Field()->ReadOnly()) edit_->verticalScrollBar()->setValue(edit_->verticalScrollBar()->maximum());
    shown_ = text;
  }
  bool EditsWith(const QKeyEvent& event) const override {
    return IsEditingKey(event.key()) || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  }
  bool KeyAfterModel(const QKeyEvent&) override { return false; }

 private:
  static constexpr int kPauseInMilliseconds = 60;
  QPlainTextEdit* edit_;
  QTimer settle_;
  std::string shown_;  ///< the model's text, as it was last
};

constexpr QSize kCalendarSize{290, 240};

class DateView final : public TypedView<DateBox> {
 public:
  DateView(FormWidget& host, DateBox& control) : TypedView(host, control), edit_(new QDateEdit(&host)) {
    edit_->setDisplayFormat("yyyy-MM-dd");
    edit_->setCalendarPopup(true);
    edit_->setMinimumHeight(metrics::kEditorHeight);
    edit_->calendarWidget()->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    edit_->calendarWidget()->setGridVisible(false);
    edit_->calendarWidget()->setMinimumSize(kCalendarSize);
    edit_->setAttribute(Qt::WA_InputMethodEnabled, false);
    QObject::connect(edit_, &QDateEdit::dateChanged, edit_, [this](const QDate& date) {
      host_.Enter([&](Form&) {
        const DateTime old = Field()->Value();
        Field()->SetValue(
            DateTime(date.year(), date.month(), date.day(), old.Hour(), old.Minute(), old.Second(), old.Millisecond()));
      });
    });
  }
  QWidget* Widget() override { return edit_; }
  void Refresh() override {
    const DateTime& value = Field()->Value();
    const QDate date(value.Year(), value.Month(), value.Day());
    if (edit_->date() != date) {
      const QSignalBlocker quiet(edit_);
      edit_->setDate(date);
    }
    edit_->setReadOnly(Field()->ReadOnly());
    RefreshCommon();
  }
  /// Whoever comes to a date types it from the year on, wherever in it the last visit ended.
  void TakeFocus() override {
    const bool had_focus = edit_->hasFocus();
    TypedView::TakeFocus();
    if (!had_focus) edit_->setSelectedSection(QDateTimeEdit::YearSection);
  }
  bool KeyAheadOfModel(const QKeyEvent& event) override {
    const char32_t typed = TypedCharacter(event);
    // A "1" may be the beginning of a "12" until any other key tells that it is not; that key's handler needs the date.
    if (typed == 0 && !IsEditingKey(event.key())) edit_->interpretText();
    if (typed == U'-' || typed == U'/' || typed == U'.') return GoOn();
    filled_ = typed >= U'0' && typed <= U'9' ? edit_->currentSectionIndex() : kNone;
    return false;
  }
  bool KeyAfterModel(const QKeyEvent& event) override {
    return event.key() != Qt::Key_Left && event.key() != Qt::Key_Right && FieldView::KeyAfterModel(event);
  }

 private:
  static constexpr int kNone = -1;

  /// To the next of year, month and day, unless the last digit has led there already: the widget goes on by itself from
  /// one that is full, and would go on once more.
  bool GoOn() {
    const bool went_on = filled_ != kNone && edit_->currentSectionIndex() != filled_;
    filled_ = kNone;
    if (went_on || edit_->isReadOnly()) return true;
    const int next = edit_->currentSectionIndex() + 1;
    if (next < edit_->sectionCount()) edit_->setSelectedSection(edit_->sectionAt(next));
    return true;
  }

  QDateEdit* edit_;
  int filled_ = kNone;  // the section of the digit typed last
};

}  // namespace

std::unique_ptr<FieldView> MakeLabelView(FormWidget& host, Label& control) {
  return std::make_unique<LabelView>(host, control);
}

std::unique_ptr<FieldView> MakeTextView(FormWidget& host, TextBox& control) {
  if (control.Options().multi_line) return std::make_unique<MemoView>(host, control);
  return std::make_unique<LineView>(host, control);
}

std::unique_ptr<FieldView> MakeDateView(FormWidget& host, DateBox& control) {
  return std::make_unique<DateView>(host, control);
}

}  // namespace luming
