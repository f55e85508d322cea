#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/printing.h"

namespace luming {

// Where everything of a print job stands on paper. The same plan is painted on the screen, the printer and into a PDF,
// and written as text for scripts. All lengths are in points, positions count from the upper left corner of the paper.

struct PrintFont {
  std::string name;
  double points = 9;
  bool bold = false;
  bool operator==(const PrintFont&) const = default;
};

/// How much room text takes.
class TextMetrics {
 public:
  virtual ~TextMetrics() = default;
  virtual double Advance(char32_t character, const PrintFont& font) const = 0;
  virtual double LineHeight(const PrintFont& font) const = 0;
};

/// Metrics without a font: a Chinese character is as wide as it is high, a Latin one half of that.
class PlainMetrics : public TextMetrics {
 public:
  double Advance(char32_t character, const PrintFont& font) const override;
  double LineHeight(const PrintFont& font) const override { return font.points * 1.3; }
};

struct Paper {
  double width = 595;  ///< A4 upright; a plan that needs more width turns it
  double height = 842;
  double margin = 34;
};

/// One line of a header or footer.
struct ItemLine {
  struct Part {
    std::string text;
    PrintAlign align;
    PrintFont font;
  };
  std::vector<Part> parts;  ///< none: an empty line
  double y = 0;
  double height = 0;
};

/// A row of the table or, when it is higher than a page, a piece of one.
struct RowPiece {
  int row = 0;  ///< index in PrintGrid::heads or rows
  bool is_head = false;
  int first_line = 0;  ///< of the wrapped texts
  int lines = 1;
  double y = 0;
  double height = 0;
};

/// A column as it stands on a page.
struct ColumnPlace {
  int col = 0;  ///< index in PrintGrid::widths
  double x = 0;
  double width = 0;
};

struct PlannedPage {
  std::vector<ItemLine> items;  ///< header and footer
  std::vector<ColumnPlace> columns;
  std::vector<RowPiece> rows;
  std::string count_note;  ///< on the last page, under the table: how many rows were printed
  double note_y = 0;
};

struct PagePlan {
  Paper paper;     ///< turned if need be
  PrintFont body;  ///< of the table
  double padding = 2;
  std::vector<PlannedPage> pages;
};

PagePlan PlanPages(const PrintJob& job, const Paper& paper, const TextMetrics& metrics);

/// The text in lines that fit the width: broken at line ends and blanks, within a word only when it is longer than a
/// line. At least one line.
std::vector<std::string> WrapText(std::string_view text, double width, const PrintFont& font,
                                  const TextMetrics& metrics);

/// Width and height of the cell at (row piece, column index of the page) with all that it spans on that page.
struct CellBox {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};
CellBox BoxOf(const PrintGrid& grid, const PlannedPage& page, std::size_t piece, std::size_t column);

/// The cell of a piece's row.
const PrintCell& CellAt(const PrintGrid& grid, const RowPiece& piece, int col);

/// The pages as text: what stands on one line separated by tabs, each page ended by a form feed.
std::string PagesAsText(const PrintJob& job, const PagePlan& plan, const TextMetrics& metrics);

}  // namespace luming
