#include "desktop/cell_editor.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>

#include "desktop/key_codes.h"
#include "desktop/qt_text.h"

namespace luming {

CellEditor::CellEditor(QObject* owner, std::function<void(GridPane::Place, const QString&)> commit)
    : QObject(owner), commit_(std::move(commit)) {}

void CellEditor::Open(GridPane& pane, GridPane::Place place, const QString& typed) {
  Remove();
  pane_ = &pane;
  place_ = place;
  keys_ = KeyFilter::kAny;
  const Grid& grid = *pane.grid();
  const QModelIndex index = pane.model()->index(place.row - 1, place.col - 1);
  pane.scrollTo(index);
  if (grid.Kind(place.row, place.col) == CellKind::kCombo) {
    OpenList(grid.ComboItems(place.row, place.col), typed.isEmpty() ? ToQt(grid.Text(place.row, place.col)) : typed);
  } else {
    OpenLine(typed.isEmpty() ? ToQt(grid.Text(place.row, place.col)) : typed, !typed.isEmpty());
  }
  field_->setObjectName("cellEditor");
  field_->setGeometry(pane.visualRect(index));
  field_->installEventFilter(this);
  field_->show();
  field_->setFocus(Qt::OtherFocusReason);
  if (list_ && typed.isEmpty()) list_->showPopup();
}

void CellEditor::OpenLine(const QString& text, bool typed) {
  line_ = new QLineEdit(text, pane_->viewport());
  if (!typed) line_->selectAll();
  const Grid& grid = *pane_->grid();
  const CellEntry* entry = grid.Entry(place_.row, place_.col);
  keys_ = entry ? entry->keys : KeyFilter::kAny;
  line_->setAttribute(Qt::WA_InputMethodEnabled,
                      grid.Kind(place_.row, place_.col) != CellKind::kNumber && keys_ == KeyFilter::kAny);
  if (grid.CellAlign(place_.row, place_.col) == Align::kRight) line_->setAlignment(Qt::AlignRight);
  field_ = line_;
}

/// The list helps; any other text may stand in the cell as well.
void CellEditor::OpenList(const std::vector<std::string>& items, const QString& text) {
  list_ = new QComboBox(pane_->viewport());
  list_->setEditable(true);
  list_->setInsertPolicy(QComboBox::NoInsert);
  list_->setCompleter(nullptr);
  for (const std::string& item : items) list_->addItem(ToQt(item));
  list_->setCurrentIndex(list_->findText(text));
  list_->setEditText(text);
  list_->lineEdit()->installEventFilter(this);
  connect(list_, &QComboBox::activated, this, [this] { Commit(); });
  field_ = list_;
}

QString CellEditor::Text() const {
  return line_ ? line_->text() : list_->currentText();
}

void CellEditor::Remove() {
  if (!field_) return;
  QWidget* gone = field_;
  const bool had_focus = gone->hasFocus();
  field_ = nullptr;
  line_ = nullptr;
  list_ = nullptr;
  gone->removeEventFilter(this);
  gone->hide();
  gone->deleteLater();
  if (had_focus) pane_->setFocus(Qt::OtherFocusReason);
}

void CellEditor::Commit() {
  if (!field_) return;
  const QString text = Text();
  Remove();
  commit_(place_, text);
}

void CellEditor::Cancel() {
  Remove();
}

bool CellEditor::eventFilter(QObject* watched, QEvent* event) {
  if (!field_ || (watched != field_ && !(list_ && watched == list_->lineEdit()))) return false;
  if (event->type() == QEvent::KeyPress) return KeyPressed(*static_cast<QKeyEvent*>(event));
  if (event->type() == QEvent::FocusOut) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool opens_list = list_ && list_->view()->isVisible();
    if (!opens_list && reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) Commit();
  }
  return false;
}

bool CellEditor::KeyPressed(const QKeyEvent& event) {
  if (IsMnemonic(event)) {
    on_key(event);  // the caption's control commits when it takes the focus
    return true;
  }
  if (const char32_t typed = TypedCharacter(event); typed != 0) return !Passes(keys_, typed, FromQt(Text()));
  switch (event.key()) {
    case Qt::Key_Escape:
      Cancel();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Commit();
      on_enter(place_);
      return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
      if (list_) return false;
      [[fallthrough]];
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      Commit();
      on_key(event);
      return true;
    default:
      if (event.key() < Qt::Key_F1 || event.key() > Qt::Key_F12) return false;
      Commit();
      on_key(event);
      return true;
  }
}

}  // namespace luming
