#pragma once

#include <QObject>
#include <functional>

#include "desktop/grid_pane.h"

class QComboBox;
class QLineEdit;

namespace luming {

/// The field that opens over a cell while the operator edits it in place. At most one is open in a grid; it is gone
/// before its text is handed over, since what follows may close the whole form.
class CellEditor final : public QObject {
 public:
  /// @param commit takes the text for the cell
  CellEditor(QObject* owner, std::function<void(GridPane::Place, const QString&)> commit);

  bool IsOpen() const { return field_ != nullptr; }
  /// @param typed what the operator typed to open it; replaces the cell's text. Empty: the text stands, selected.
  void Open(GridPane& pane, GridPane::Place place, const QString& typed);
  void Commit();
  void Cancel();
  /// A key pressed in the field ended the editing and is the grid's from here on.
  std::function<void(const QKeyEvent&)> on_key;
  /// Enter ended the editing of that cell.
  std::function<void(GridPane::Place)> on_enter;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void OpenLine(const QString& text, bool typed);
  void OpenList(const std::vector<std::string>& items, const QString& text);
  QString Text() const;
  void Remove();
  bool KeyPressed(const QKeyEvent& event);

  std::function<void(GridPane::Place, const QString&)> commit_;
  GridPane* pane_ = nullptr;
  GridPane::Place place_;
  QWidget* field_ = nullptr;
  QLineEdit* line_ = nullptr;
  QComboBox* list_ = nullptr;
  KeyFilter keys_ = KeyFilter::kAny;
};

}  // namespace luming
