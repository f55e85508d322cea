#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QPointer>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>

#include "desktop/cell_editor.h"
#include "desktop/field_view.h"
#include "desktop/form_widget.h"
#include "desktop/frozen_pane.h"
#include "desktop/grid_columns.h"
#include "desktop/grid_pane.h"
#include "desktop/grid_table.h"
#include "desktop/key_codes.h"
#include "desktop/qt_text.h"
#include "screen/grid.h"

namespace luming {
namespace {

/// Ties a grid of the model to its table on the screen. However many cells a handler sets, the table settles once,
/// when the handler is through.
class GridFieldView final : public TypedView<Grid> {
 public:
  GridFieldView(FormWidget& host, Grid& control)
      : TypedView(host, control),
        table_(control),
        pane_(new GridPane(table_, &host)),
        columns_(*pane_),
        frozen_(table_, *pane_),
        editor_(pane_, [this](GridPane::Place at, const QString& text) { Edit(at, text); }) {
    settle_.setSingleShot(true);
    settle_.setInterval(0);
    QObject::connect(&settle_, &QTimer::timeout, pane_, [this] { Settle(); });
    edit_later_.setSingleShot(true);
    edit_later_.setInterval(QApplication::doubleClickInterval());
    QObject::connect(&edit_later_, &QTimer::timeout, pane_, [this] {
      if (Field() && pane_->isVisible()) StartEdit(edit_place_, {});
    });
    ConnectMouse(*pane_);
    ConnectMouse(frozen_.pane());
    pane_->on_resize = [this] { Resized(); };
    QObject::connect(pane_->horizontalHeader(), &QHeaderView::sectionClicked, pane_,
                     [this](int section) { host_.Enter([&](Form&) { Field()->UserHeaderClick(section + 1); }); });
    QObject::connect(pane_->horizontalHeader(), &QHeaderView::sectionResized, pane_,
                     [this](int section, int, int width) {
                       if (columns_.IsApplying() || !Field()) return;
                       columns_.Dragged(section + 1, width);
                       host_.Enter([&](Form&) { Field()->UserColumnWidth(section + 1, columns_.CharactersIn(width)); });
                       frozen_.Follow(*Field());
                     });
    QObject::connect(pane_->verticalScrollBar(), &QScrollBar::valueChanged, pane_, [this](int top) { Scrolled(top); });
    // Figures are typed down their column.
    editor_.on_enter = [this](GridPane::Place at) {
      if (!Field() || !Field()->Entry(at.row + 1, at.col)) return;
      host_.Enter([&](Form&) { Field()->UserActivate(at.row + 1, at.col); });
    };
    editor_.on_key = [this](const QKeyEvent& event) { host_.HandleKey(this, event); };
  }

  QWidget* Widget() override { return pane_; }
  bool WantsCaption() const override { return false; }

  void Refresh() override {
    RefreshCommon();
    if (!settle_.isActive()) settle_.start();
  }

  void Settle() override {
    settle_.stop();
    if (!Field()) return;
    const Grid& grid = *Field();
    table_.Settle();
    if (grid.ColumnSets() != std::exchange(column_sets_, grid.ColumnSets())) columns_.Restart(grid.MaxCols());
    pane_->SettleHeads();
    columns_.Measure(grid);
    columns_.Apply(grid);
    SettleScrollBars(grid);
    ShowTopRow();
    ShowSpans();
    ShowActiveCell();
    frozen_.Follow(grid);
    pane_->viewport()->update();
  }

  void Detach() override {
    settle_.stop();
    edit_later_.stop();
    editor_.Cancel();
    table_.Detach();
    TypedView::Detach();
  }

  bool KeyAfterModel(const QKeyEvent& event) override {
    if (event.matches(QKeySequence::Copy)) {
      QApplication::clipboard()->setText(ToQt(Field()->Text(Field()->ActiveRow(), Field()->ActiveCol())));
      return true;
    }
    const GridPane::Place at{Field()->ActiveRow(), Field()->ActiveCol()};
    const char32_t typed = TypedCharacter(event);
    const CellEntry* entry = Field()->Entry(at.row, at.col);
    const bool passes = typed != 0 && (!entry || Passes(entry->keys, typed, {}));
    if (event.key() == Qt::Key_Space || passes) StartEdit(at, event.key() == Qt::Key_Space ? QString() : event.text());
    return true;
  }

 private:
  /// What is out of use can still be scrolled through and read; the model refuses the rest.
  void ShowEnabled(bool enabled) override { pane_->setFocusPolicy(enabled ? Qt::StrongFocus : Qt::NoFocus); }

  void ConnectMouse(GridPane& pane) {
    pane.on_press = [this](GridPane::Place at) {
      editor_.Commit();
      if (!Field() || !Field()->Enabled()) return;
      pressed_again_ = Field()->ActiveRow() == at.row && Field()->ActiveCol() == at.col;
      host_.Enter([&](Form& form) {
        form.UserFocus(*Field());
        if (Field()) Field()->UserActivate(at.row, at.col);
      });
    };
    pane.on_click = [this](GridPane::Place at) {
      host_.Enter([&](Form&) { Field()->UserClickCell(at.row, at.col); });
      if (!Field()) return;
      if (Field()->Kind(at.row, at.col) == CellKind::kCheck) {
        StartEdit(at, {});
      } else if (pressed_again_ && Field()->double_click.IsConnected()) {
        edit_place_ = at;
        edit_later_.start();
      }
    };
    pane.on_double_click = [this](GridPane::Place at) {
      edit_later_.stop();
      const bool means_something_else = Field() && Field()->double_click.IsConnected();
      host_.Enter([&](Form&) { Field()->UserDoubleClick(at.row, at.col); }, Work::kLong);
      if (means_something_else || !Field() || !pane_->isVisible()) return;
      if (Field()->Kind(at.row, at.col) != CellKind::kCheck) StartEdit(at, {});
    };
    pane.on_right_press = [this](GridPane::Place at) {
      host_.Enter([&](Form&) { Field()->UserRightClick(at.row, at.col); });
    };
  }

  /// Opens the cell for editing where the grid lets it; a check cell turns at once.
  void StartEdit(GridPane::Place at, const QString& typed) {
    bool allowed = false;
    host_.Enter([&](Form&) { allowed = Field()->CanEdit(at.row, at.col); });
    if (!allowed || !Field()) return;
    Settle();
    if (Field()->Kind(at.row, at.col) == CellKind::kCheck) {
      Edit(at, Field()->Text(at.row, at.col) == "1" ? "0" : "1");
    } else {
      editor_.Open(at.col <= Field()->FrozenCols() ? frozen_.pane() : *pane_, at, typed);
    }
  }

  void Edit(GridPane::Place at, const QString& text) {
    host_.Enter([&](Form&) { Field()->UserEdit(at.row, at.col, FromQt(text)); });
  }

  void Resized() {
    if (!Field()) return;
    columns_.Apply(*Field());
    frozen_.Follow(*Field());
    ShowSpans();
  }

  void Scrolled(int top) {
    if (!Field() || showing_top_) return;
    shown_top_ = top + 1;
    host_.Enter([&](Form&) { Field()->SetTopRow(top + 1); });
    ShowSpans();
  }

  /// The scroll bars know the rows, and stand beside them, before one of them is brought into view. Columns that filled
  /// the width give way to a bar that has come.
  void SettleScrollBars(const Grid& grid) {
    const int width = pane_->viewport()->width();
    pane_->doItemsLayout();
    QCoreApplication::sendPostedEvents(pane_, QEvent::MetaCall);
    if (pane_->viewport()->width() == width) return;
    columns_.Apply(grid);
    pane_->doItemsLayout();
  }

  void ShowTopRow() {
    const int top = Field()->TopRow();
    if (top == shown_top_) return;
    shown_top_ = top;
    showing_top_ = true;
    pane_->verticalScrollBar()->setValue(top - 1);
    showing_top_ = false;
  }

  void ShowActiveCell() {
    const GridPane::Place active{Field()->ActiveRow(), Field()->ActiveCol()};
    if (active.row == shown_active_.row && active.col == shown_active_.col) return;
    shown_active_ = active;
    if (active.row == 0) return;
    const int column = Field()->RowMode() ? std::max(0, pane_->columnAt(0)) : active.col - 1;
    pane_->scrollTo(table_.index(active.row - 1, column));
  }

  /// Spans of the rows in view; the rest are looked at when they come.
  void ShowSpans() {
    const int first = pane_->rowAt(0) + 1;
    if (first <= 0) return;
    const int visible = pane_->viewport()->height() / pane_->verticalHeader()->defaultSectionSize() + 1;
    const int last = std::min(first + visible, table_.rowCount());
    for (int row = first; row <= last; ++row) {
      for (int col = 1; col <= table_.columnCount(); ++col) ShowSpan(row, col);
    }
  }

  void ShowSpan(int row, int col) {
    const auto [rows, cols] = Field()->Span(row, col);
    if (rows == 0) return;
    const bool shown = pane_->rowSpan(row - 1, col - 1) != rows || pane_->columnSpan(row - 1, col - 1) != cols;
    if (!shown) return;
    pane_->setSpan(row - 1, col - 1, rows, cols);
    const int frozen = Field()->FrozenCols();
    if (col <= frozen) frozen_.pane().setSpan(row - 1, col - 1, rows, std::min(cols, frozen - col + 1));
  }

  GridTable table_;
  GridPane* pane_;
  GridColumns columns_;
  FrozenPane frozen_;
  CellEditor editor_;
  QTimer settle_;
  // Where a double click is the screen's own, a second click on the active cell opens it for editing.
  QTimer edit_later_;
  GridPane::Place edit_place_;
  bool pressed_again_ = false;
  int column_sets_ = 0;
  int shown_top_ = 1;
  bool showing_top_ = false;
  GridPane::Place shown_active_;
};

}  // namespace

std::unique_ptr<FieldView> MakeGridView(FormWidget& host, Grid& control) {
  return std::make_unique<GridFieldView>(host, control);
}

}  // namespace luming
