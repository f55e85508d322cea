#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace luming {

/// A line item of a page's header or footer. Texts may hold placeholders: "{报表名}" the title, "{空行}" an empty line,
/// "{单位名称}" the unit name, "{页码}" the page number, "{name}" the PrintValue of that name.
struct PrintItem {
  enum { kHeader = 0, kFooter = 1 };
  enum { kLeft = 0, kRight = 1, kCentre = 2 };

  int Area = kHeader;
  int Align = kLeft;
  int Line = 1;  ///< from 1; items of equal line share it
  std::string Text;
  std::string FontName;  ///< empty: the body's
  int FontSize = 0;      ///< in points; 0: the body's
  bool Bold = false;
};

/// What a placeholder stands for.
struct PrintValue {
  std::string Name;
  std::string Value;
};

enum class PrintAlign { kLeft, kRight, kCentre };

struct PrintCell {
  std::string text;
  PrintAlign align = PrintAlign::kLeft;
  bool bold = false;
  int rows = 1;  ///< the cell spans so many rows and columns; 0: another cell covers it
  int cols = 1;
};

/// What is printed of a grid: its visible columns as they stood.
struct PrintGrid {
  std::vector<double> widths;                 ///< one for each column, in average characters; 0: by its contents
  std::vector<std::vector<PrintCell>> heads;  ///< header rows, repeated on every page
  std::vector<std::vector<PrintCell>> rows;
  int leading = 0;       ///< so many columns stand again on pages that continue the columns
  int counted_rows = 0;  ///< rows without total and foot rows, stated on the last page
  bool lines = true;     ///< lines between the cells
  bool Option = false;   ///< always false
};

/// What the print control is given.
struct PrintJob {
  int number = 0;  ///< its first setting
  std::string unit_name;
  bool option = false;  ///< always false
  std::string operator_name;
  std::string title;
  std::vector<PrintValue> values;
  std::vector<PrintItem> items;
  PrintGrid grid;
};

/// A document that is laid out already.
struct PrintDocument {
  std::string title;
  std::filesystem::path pdf;  ///< read before the call returns
  std::string text;           ///< what stands in it, for scripts
};

/// Printer and preview. Calls return when the pages are laid out; a preview stays open beside the screens. All
/// operations may throw Failure.
class Printing {
 public:
  virtual ~Printing() = default;
  virtual void Print(const PrintJob& job) = 0;
  virtual void Preview(const PrintJob& job) = 0;
  virtual void Print(const PrintDocument& document) = 0;
  virtual void Preview(const PrintDocument& document) = 0;
  /// The pages of the last print or preview as text, each ended by a form feed; empty before the first.
  virtual std::string LastPages() const = 0;
};

}  // namespace luming
