#pragma once

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "platform/desktop.h"
#include "screen/control.h"
#include "screen/grid_column.h"

namespace luming {

/// What the operator may do with any grid, whatever its screen has buttons for.
enum class GridCommand { kPreview = 1, kExport };
enum class CellKind { kText, kNumber, kStatic, kCheck, kCombo, kDate };
enum class Align { kDefault, kLeft, kRight, kCentre };  ///< default: as the column holds

/// A spreadsheet: rows and columns from 1, row 0 is the header, row -1 the upper one of two header rows. Cells hold
/// text; a formula cell shows the text of its present result. Rows are the document: what the operator sees is what the
/// screen reads back.
class Grid : public Control {
 public:
  Grid(Form* form, std::string name, std::vector<GridColumn> columns = {});
  ~Grid() override;

  int MaxRows() const;
  void SetMaxRows(int rows);  ///< cuts or appends empty rows at the end
  /// Replaces all columns and empties the grid of rows. A column that has the same head as the one that stood there
  /// keeps the width that the operator gave that.
  void SetColumns(std::vector<GridColumn> columns);
  int ColumnSets() const;  ///< how often the heads have become others: a view measures them anew
  int MaxCols() const;

  int HeaderRows() const;  ///< 2 as soon as a column has a group
  std::string HeadGroup(int col) const;
  /// Words over all heads, as if every column stood in one group; empty takes them away. For grids without groups.
  void SetHeading(const std::string& words);
  /// Text of a cell. In the upper header row it is the group's, or the caption of a column that has none and spans both
  /// rows. Outside the grid: empty.
  std::string Text(int row, int col) const;
  void SetText(int row, int col, std::string text);  ///< by code: no event. Outside the grid: nothing
  double Number(int row, int col) const;             ///< the number the cell's text begins with, else 0

  /// "SUM(E1:E7)": live, follows every later edit; rows inserted or deleted above do not shift it. Empty removes it,
  /// and so does a text set into the cell. Failure for any other formula.
  void SetFormula(int row, int col, std::string formula);
  std::string Formula(int row, int col) const;

  // Looks. A row or column of -1 means all of them. The cell's own goes before its row's, its row's before its
  // column's, that before the whole grid's; setting a wider one forgets the narrower ones within it.
  void SetKind(int row, int col, CellKind kind);
  CellKind Kind(int row, int col) const;
  using Control::Kind;
  void SetComboItems(int row, int col, std::vector<std::string> items);
  std::vector<std::string> ComboItems(int row, int col) const;
  void SetBold(int row, int first_col, int last_col, bool bold);
  bool Bold(int row, int col) const;
  void SetLocked(int row, int first_col, int last_col, bool locked);
  bool Locked(int row, int col) const;
  void SetAlign(int row, int col, Align align);
  Align CellAlign(int row, int col) const;  ///< resolved: never kDefault
  void SetColours(int row, int first_col, int last_col, Colour text, Colour back);
  Colour CellTextColour(int row, int col) const;
  Colour CellBackColour(int row, int col) const;
  void SetSpan(int row, int col, int rows, int cols);
  /// Rows and columns the cell at (row, col) covers; {0, 0} when another cell covers it.
  std::pair<int, int> Span(int row, int col) const;

  Holds ColumnHolds(int col) const;
  /// What a cell takes that is there to be typed in; null for any other.
  const CellEntry* Entry(int row, int col) const;
  void SetColumnHidden(int col, bool hidden);
  bool ColumnHidden(int col) const;
  void SetColumnWidth(int col, int characters);
  int ColumnWidth(int col) const;
  /// The width is the operator's own: it holds whatever caption and contents need.
  bool WidthIsOperators(int col) const;
  void SetFrozenCols(int cols);  ///< stay in view while the rest scrolls
  int FrozenCols() const;
  void SetGridLines(bool on);  ///< whether lines stand between the cells when the grid is printed
  bool GridLines() const;
  void SetGridColours(Colour back, Colour grey_area, Colour locked_text);
  Colour GridBack() const;
  Colour GreyArea() const;
  Colour LockedText() const;

  void InsertRows(int row, int count);  ///< moves the rest down; as many rows fall off the end
  void DeleteRows(int row, int count);  ///< moves the rest up and appends as many empty rows, as a spreadsheet does
  void SwapRows(int first, int second);
  void SortRows(int col, bool ascending);  ///< by number where both are numbers, else as text; total rows stay last
  /// A row of totals is no line of the operator's. The mark moves with the row.
  void SetTotalRow(int row, bool total);
  bool IsTotalRow(int row) const;

  int ActiveRow() const;  ///< 1 from the start; 0 in an empty grid
  int ActiveCol() const;
  void SetActiveCell(int row, int col);  ///< by code: no leave-cell event
  int TopRow() const;
  void SetTopRow(int row);
  /// The whole active row is shown selected, and cells are not edited in place.
  void SetRowMode(bool on);
  bool RowMode() const;
  /// A page of cells instead of a list: every row so many text lines high, no row numbers, and only the active cell is
  /// marked. To be said before the grid is shown; 0 is a list.
  void SetPageLines(int lines);
  int PageLines() const;
  /// Off: the view waits; on again: it draws once.
  void SetReDraw(bool on);

  /// Replaces all rows: one row for each record from the first on, columns in the order of `sources`, NULL as an empty
  /// cell. Fires nothing. Moves texts out of `rows` when it is an rvalue.
  void Fill(Recordset&& rows, const std::vector<ColumnSource>& sources);
  /// The same, for a recordset that is used again: it keeps its texts and stands behind its last row afterwards.
  void Fill(Recordset& rows, const std::vector<ColumnSource>& sources);
  /// The same with the recordset's own columns, each headed by its name; where the columns have these heads already
  /// they stay as they are.
  void Fill(Recordset&& rows);

  /// Texts and formulas of all cells, hidden ones included, in a file of its own (not the looks). Failure on any error;
  /// the old file stays whole when the write fails.
  void SaveToFile(const std::filesystem::path& file) const;
  /// Replaces all rows. A foreign, cut or damaged file is a Failure and changes nothing.
  void LoadFromFile(const std::filesystem::path& file);

  // What the operator does, called by the view and by scripts.
  void UserActivate(int row, int col);   ///< leave_cell may refuse
  void UserClickCell(int row, int col);  ///< activates, then click
  void UserDoubleClick(int row, int col);
  void UserRightClick(int row, int col);  ///< offers the grid's commands where the screen has no right click of its own
  /// The pop-up of a right click, for a screen that has entries of its own to stand ahead of the grid's commands.
  /// @param own their ids are above those of GridCommand
  /// @return the id of the own entry that was chosen; nothing otherwise
  std::optional<int> OfferCommands(std::vector<MenuEntry> own = {});
  /// Edits in place: false when CanEdit refuses. A text that the cell does not take, since it is no figure or
  /// check_edit refuses it, leaves the cell as it was. Fires change when it differs.
  bool UserEdit(int row, int col, std::string text);
  /// False in row mode and for a locked or formula cell; asks before_edit, too.
  bool CanEdit(int row, int col);
  void UserHeaderClick(int col);
  void UserColumnWidth(int col, int characters);  ///< the edge of the column was dragged
  void UserCommand(GridCommand command);          ///< to Forms::grid_command

  struct CellRef {
    int row = 0;
    int col = 0;
  };
  Event<int, int> change;  ///< row, column: the operator changed the cell's text
  Event<int, int> click;
  Event<int, int> double_click;
  Event<int, int> right_click;
  Event<int> header_click;
  Event<CellRef, bool&> before_edit;  ///< set the flag to refuse
  /// The text that an edit is about to put into the cell; set the flag to refuse it.
  Event<CellRef, const std::string&, bool&> check_edit;
  Event<CellRef, CellRef, bool&> leave_cell;  ///< from, to; set the flag to stay
  Event<int> row_focus;                       ///< the operator, never code, has moved the active cell to another row

  /// Arrows, Page, Home, End move the active cell; Ctrl+P previews, Ctrl+E exports.
  void DefaultKey(KeyEvent& event) override;
  bool CanFocus() const override;

 private:
  struct Cells;
  struct FieldOf;
  std::string UpperHead(int row, int col) const;
  std::pair<int, int> HeadSpan(int row, int col) const;
  template <class Change>
  void ApplyLook(int row, int first_col, int last_col, Change apply);
  int NextVisibleCol(int col, int step) const;
  enum class Texts { kMoved, kCopied };
  static std::vector<FieldOf> FieldsOf(const Recordset& rows, const std::vector<ColumnSource>& sources);
  void FillRows(Recordset& rows, const std::vector<FieldOf>& fields, Texts taken);
  void Redraw();

  std::unique_ptr<Cells> cells_;
};

}  // namespace luming
