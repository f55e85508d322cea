#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/recordset.h"
#include "util/date_time.h"

namespace luming {

enum class SheetAlign { kGeneral, kLeft, kCentre, kRight };  ///< general: numbers right, the rest left

struct SheetStyle {
  bool bold = false;
  SheetAlign align = SheetAlign::kGeneral;
  bool wrap = false;
  bool ruled = false;     ///< a thin line on all four sides
  int points = 10;        ///< size of the font
  std::string picture{};  ///< number format, "0.00" or "yyyy-mm-dd"; empty: the general one
  bool operator==(const SheetStyle&) const = default;
};

/// A formula that stays live in the file, with the result that readers show without calculating.
struct SheetFormula {
  std::string text;  ///< "SUM(E2:E7)", without the equals sign
  double result = 0;
};

struct SheetCell {
  std::variant<std::monostate, std::string, double, DateTime, SheetFormula> value;  ///< monostate: empty
  int style = 0;                                                                    ///< index in Sheet::styles
};

struct SheetColumn {
  double width = 10;  ///< in average characters
  bool hidden = false;
};

/// Cells that are shown as one; rows and columns from 1.
struct SheetBlock {
  int row = 1;
  int col = 1;
  int rows = 1;
  int cols = 1;
};

/// A workbook of one sheet, to be written to a file.
struct Sheet {
  std::string name;  ///< made valid by the writer; empty: "Sheet1"
  std::vector<SheetColumn> columns;
  std::vector<std::vector<SheetCell>> rows;  ///< a row may be shorter than the others
  std::vector<SheetStyle> styles{SheetStyle{}};
  std::vector<SheetBlock> merged;
  std::map<int, double> row_heights;  ///< row from 1, height in points; the others choose by their font
  int frozen_rows = 0;                ///< stay in view while the rest scrolls
  int repeated_rows = 0;              ///< so many from the first on head every printed page
  bool landscape = false;             ///< paper is A4; all columns are fitted to its width
  bool page_numbers = false;          ///< "第 n 页 共 m 页" at the foot

  int AddStyle(const SheetStyle& style);  ///< its index; an equal one is used again
};

/// Told now and then during long work: steps done, steps in all.
using Progress = std::function<void(int done, int total)>;

/// An open template: its first sheet, in an office program of its own. Closed unsaved when it is destroyed. All
/// operations throw Failure.
class Workbook {
 public:
  virtual ~Workbook() = default;

  /// The text that the cell shows. @param address "A4"
  virtual std::string Cell(std::string_view address) = 0;
  /// Sets cells from (row, col) on, rightwards and downwards: a text that CellNumber reads becomes a number, a leading
  /// single quote keeps the rest as text, any other text stands as it is.
  virtual void SetCells(int row, int col, const std::vector<std::vector<std::string>>& texts) = 0;
  void SetCell(std::string_view address, std::string text);
  /// Inserts empty rows that push `row` down. They take the look of the row they push, without its bold.
  virtual void InsertRows(int row, int count) = 0;
  /// Makes the cells of a row from one column to another into one with a line around.
  virtual void JoinCells(int row, int first_col, int last_col) = 0;

  virtual void PrintOut() = 0;
  virtual void PrintPreview() = 0;
};

/// The sheets of a workbook on disk, each read as a table.
class SheetReader {
 public:
  virtual ~SheetReader() = default;

  /// Names of the sheets of cells in their order, hidden ones included.
  virtual std::vector<std::string> Names() const = 0;
  /// The first row that holds anything names the columns, blanks around a name cut; a column without a name is "F" and
  /// its number, a name that came before gets a number behind. All rows below follow, up to the last that holds
  /// anything. A number under a date format is a date; a formula counts as the result that was saved with it; empty
  /// cells, errors and all cells of a merged block but its first are NULL. Failure when there is no such sheet, or when
  /// it is damaged or too large.
  virtual Recordset Read(std::string_view name) const = 0;
};

/// Reads and writes workbooks.
class Workbooks {
 public:
  virtual ~Workbooks() = default;

  /// Writes a workbook: ".xlsx" when the name ends so, ".xls" by any other name. Failure leaves the old file whole and
  /// no other behind: what the format cannot hold (rows, columns, a text of more than 32,767 characters), a file that
  /// cannot be written.
  virtual void Save(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress) = 0;

  /// Opens a workbook to read its cells: .xls or .xlsx, told by its content and not by its name. Failure, telling why,
  /// when there is no such file, when it is none of these, damaged, too large or under a password.
  virtual std::unique_ptr<SheetReader> Read(const std::filesystem::path& file) = 0;

  /// Opens a template. Failure when the file is missing or damaged, or when there is no office program.
  /// @param title what print and preview call the document
  virtual std::unique_ptr<Workbook> Open(const std::filesystem::path& file, const std::string& title) = 0;
};

/// The number that a cell text stands for when it is written as one: an optional sign, "￥" or none, digits without
/// needless zeros ahead, an optional fraction. Not for codes: "0012" and twelve digits or more stay text.
std::optional<double> CellNumber(std::string_view text);

/// "AB" for 28.
std::string ColumnLetters(int col);

struct CellPlace {
  int row = 0;
  int col = 0;
};
/// "AB12" as row 12, column 28; nothing for any other text.
std::optional<CellPlace> ParseAddress(std::string_view address);

}  // namespace luming
