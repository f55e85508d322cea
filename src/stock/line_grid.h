#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "frame/app_context.h"
#include "screen/grid.h"
#include "stock/item_picker.h"

namespace luming {

/// What the delete button of a document does about the total row once the line is gone.
enum class AfterDelete {
  kNothing,
  kSumThenRemoveTotals,  ///< leaves no total until the next line is picked
  kRemoveTotalsThenSum,  ///< leaves a fresh total
};

/// Where the line grid scrolls to after a line was added.
enum class ScrollTo { kLastFive, kLastRow };

enum class Duplicates { kRefused, kReportedOnly };

/// What one document's line grid does in its own way. Columns are numbered from 1.
struct LineHabits {
  std::vector<int> summed;    ///< columns of the total row after a line was picked; empty: no total row
  std::vector<int> resummed;  ///< columns of the total row after a deletion
  AfterDelete after_delete;
  ScrollTo scroll;
  Duplicates duplicates;
  const char* parked_file;  ///< name behind the storehouse's; null: the document cannot be parked
};

/// What an operator is told who enters a name a second time. @param row where it stands
Box StandsAlready(const std::string& name, int row);

/// The lines of a document, which are nothing but the rows of this grid: column 1 holds the drug code, column 2 the
/// name, and the last row may be the total, which every routine that reads the lines removes first.
class LineGrid : public Grid {
 public:
  /// @param habits outlive the grid
  LineGrid(Form* form, AppContext& app, std::vector<GridColumn> columns, const LineHabits& habits);

  /// Appends an empty line and makes its first cell the active one.
  void NewGridRow();

  /// Looks for a line of that drug, whatever its batch, and names it in a box.
  void CheckDupItem(const std::string& code, bool& duplicate);

  /// What taking a match begins with: the total goes, and a line with the match's code is appended unless the document
  /// has one. @return its row; 0 when nothing is to be taken
  int StartLine(const ItemPicker& picker);
  /// What it ends with once the entry dialog is closed: back to the search, last lines in view, the total returns.
  void FinishLine(ItemPicker& picker);
  /// The entry dialog was cancelled: the appended line goes.
  void CancelLine();

  void RemoveTotal();
  void AddTotal();

  /// The button "删除选择行(&D)"; the active row may be the total.
  void DeleteChosenRow();

  /// The buttons "药品暂存" and "加载暂存药品": the rows alone, without the head of the document. Failures are shown.
  void Park();
  void LoadParked();
  /// One file for each storehouse on each workstation.
  std::filesystem::path TempSaveFile() const;

 private:
  void Tell(const std::string& text, int icon);

  AppContext& app_;
  const LineHabits& habits_;
};

}  // namespace luming
