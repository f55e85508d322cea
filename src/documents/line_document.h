#pragma once

#include <optional>
#include <string>
#include <vector>

#include "documents/line_columns.h"
#include "documents/line_habits.h"
#include "frame/app_context.h"
#include "frame/user_rights.h"
#include "masterdata/dictionary_lists.h"
#include "screen/button.h"
#include "screen/form.h"
#include "stock/item_picker.h"
#include "stock/line_grid.h"
#include "stock/stock_move.h"

namespace luming {

/// What one kind of document is.
struct DocumentKind {
  const char* name;
  const char* caption;
  std::optional<RightKey> right = {};  ///< to open it; nothing: open to every operator
  const char* lists;                   ///< statement that reads the dictionaries of its lists; null: it has none
  const PickerSettings& picker;
  LineColumns columns;
  const LineHabits& habits;
  const char* close = "Command3";  ///< name of the button that closes it
  WindowKind window = WindowKind::kChild;
};

/// Where the lines of a document hold what moves the stock.
struct MovedColumns {
  int unit;
  int quantity;
  int batch;
  int expiry;
  int ratio;
};

/// A document with lines: the search pane, the grid of the lines, and how a match becomes a line. What a screen's own
/// save button asks, tests and in which order is its own; it runs in InTransaction.
class LineDocument : public Form {
 public:
  ItemPicker picker;
  LineGrid fpSpread1;
  Button Command4{this, "Command4", "删除选择行(&D)", &LineDocument::Command4_Click};
  Button close;

  /// Takes the active match to a new line and lets the screen complete it.
  void PickItem();

 protected:
  /// @param kind outlives the form
  LineDocument(AppContext& app, const DocumentKind& kind);

  /// Right, search pane, lists, number. A screen that adds to it looks whether it was unloaded.
  void Load() override;
  void FormKeyDown(KeyEvent& event) override { picker.FormKeyDown(event); }

  virtual std::vector<DictionaryList> Lists() { return {}; }
  /// Puts the next number into its box; nothing where documents have no numbers.
  virtual void ShowNumber() {}
  /// The line has the cells that come from the match; the rest is asked for in the screen's dialog.
  virtual void EnterLine(int row) = 0;
  virtual void Picker_Picked(PickedBy) { PickItem(); }
  virtual void Command4_Click() { fpSpread1.DeleteChosenRow(); }

  /// What every successful save ends with: no lines, the stock in the search list as it is now, and the words.
  void Finished(const char* words);

  /// Head above the search pane above the lines, the buttons below in that order, ahead of the closing one.
  Layout Arranged(Layout head, std::vector<Layout> buttons) const;
  /// A cell of the active match.
  std::string Match(int column) const;
  /// The line as the stock counts it; prices and further columns are the screen's to add. Failure for a quantity or a
  /// ratio that is no number.
  MovedLine Moved(int row, const MovedColumns& at) const;

  AppContext& app_;

 private:
  void Close_Click() { Unload(); }
  void CopyMatch(int row);

  const DocumentKind& kind_;
};

}  // namespace luming
