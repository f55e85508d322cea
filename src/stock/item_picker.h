#pragma once

#include <optional>
#include <string>
#include <vector>

#include "frame/app_context.h"
#include "platform/statement.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "screen/layout.h"
#include "screen/text_box.h"
#include "stock/picker_settings.h"

namespace luming {

/// The columns of a result list as a grid declares them.
std::vector<GridColumn> PickerGridColumns(const PickerSettings& settings);

enum class PickedBy { kEnter, kDoubleClick };

/// The search pane of a screen: what is typed into PM falls into the result list at every keystroke; Enter or a double
/// click on a match takes it. A group of fields of the form whose member it is.
class ItemPicker {
 public:
  /// @param results the screen's own grid for the results where the settings name no columns, else null; it outlives
  ///        the picker
  ItemPicker(Form* form, AppContext& app, const PickerSettings& settings, Grid* results = nullptr);

  TextBox PM;
  ComboBox SFLB;
  ComboBox CXFS;
  CheckBox KCXS;
  Grid& Results() { return results_; }  ///< fpSpread2, or the screen's own grid
  const Grid& Results() const { return results_; }

  /// Empties the list and shows the operator's search mode; the screen's load calls it.
  void Load();

  /// F2 to F5, and Enter that walks the form; a screen hands its keys over ahead of its controls.
  void FormKeyDown(KeyEvent& event);

  void SearchStart();

  /// Shows the present stock of the drugs in the list; nothing else of it changes. For a document that has moved stock:
  /// what cannot be read stays as it was, without a word.
  void RereadStock();

  /// Code of the active match; empty when there is none.
  std::string ActiveCode() const;

  /// Back to the search text, all of it selected, for the next drug.
  void AwaitNext();

  /// The pane as the screens with a list of their own show it: search line above the list.
  Layout Arrange() const;
  Layout SearchLine() const;

  /// A match was taken. The screen does the rest.
  Event<PickedBy> picked;
  /// Replaces the filling of the list by columns.
  Event<Recordset&> fill;

 private:
  void PM_KeyDown(KeyEvent& event);
  void Results_KeyDown(KeyEvent& event);
  void Results_DoubleClick(int row, int col);
  Statement SearchStatement() const;
  void FillSearchGrid(Recordset& rows);
  void Report(const Failure& failure);

  Form& form_;
  AppContext& app_;
  const PickerSettings& settings_;
  std::optional<Grid> fpSpread2_;
  Grid& results_;
  std::vector<ColumnSource> sources_;
};

}  // namespace luming
