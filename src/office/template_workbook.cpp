#include "office/template_workbook.h"

#include <cmath>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangeMovement.hpp>
#include <com/sun/star/sheet/XPrintAreas.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/TableBorder2.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XText.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <map>
#include <utility>
#include <vector>

#include "office/find_office.h"
#include "office/uno_office.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

/// The office program's name for the format that the bytes begin like; empty for no workbook at all, which it would
/// open as a sheet of nonsense.
std::string FilterFor(const std::string& bytes) {
  if (bytes.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1")) return "MS Excel 97";
  if (bytes.starts_with("PK\x03\x04")) return "Calc MS Excel 2007 XML";
  return "";
}

/// What a cell holds for a text: see Workbook::SetCells.
css::uno::Any Held(const std::string& text) {
  if (text.starts_with('\'')) return css::uno::Any(ToUno(std::string_view(text).substr(1)));
  if (const auto number = CellNumber(text)) return css::uno::Any(*number);
  return css::uno::Any(ToUno(text));
}

/// Runs work on the office program; whatever it throws becomes a failure.
template <class Work>
auto Asking(const Work& work) {
  try {
    return work();
  } catch (const css::uno::Exception& refusal) {
    const std::string why = FromUno(refusal.Message);
    throw OfficeRefused("办公软件没有完成操作" + (why.empty() ? "。" : "：" + why));
  }
}

class TemplateWorkbook : public Workbook {
 public:
  TemplateWorkbook(const std::filesystem::path& office, const std::string& bytes, std::string title, Printing& printing)
      : title_(std::move(title)), printing_(printing), office_(office) {
    const std::filesystem::path copy = office_.scratch() / "template.xls";
    ReplaceFile(copy, bytes);
    Asking([&] {
      document_ = office_.Load(copy, FilterFor(bytes));
      const Reference<css::sheet::XSpreadsheetDocument> book(document_, css::uno::UNO_QUERY);
      if (!book.is()) throw OfficeRefused("模板文件已损坏，无法打开。");
      const Reference<css::container::XIndexAccess> sheets(book->getSheets(), UNO_QUERY_THROW);
      sheet_.set(sheets->getByIndex(0), UNO_QUERY_THROW);
    });
  }
  ~TemplateWorkbook() override {
    try {
      const Reference<css::util::XCloseable> closeable(document_, css::uno::UNO_QUERY);
      if (closeable.is()) closeable->close(true);
    } catch (const css::uno::Exception&) {
      // The program is gone, and the document with it.
    }
  }

  std::string Cell(std::string_view address) override {
    const auto place = ParseAddress(address);
    if (!place) throw StandardFailure(failure::kInvalidCall);
    return Asking([&] { return Shown(place->row, place->col); });
  }

  void SetCells(int row, int col, const std::vector<std::vector<std::string>>& texts) override {
    if (texts.empty() || texts.front().empty()) return;
    Asking([&] {
      css::uno::Sequence<css::uno::Sequence<css::uno::Any>> block(static_cast<sal_Int32>(texts.size()));
      const std::size_t width = texts.front().size();
      for (std::size_t i = 0; i < texts.size(); ++i) {
        css::uno::Sequence<css::uno::Any> line(static_cast<sal_Int32>(width));
        for (std::size_t j = 0; j < width && j < texts[i].size(); ++j) {
          line[static_cast<sal_Int32>(j)] = Held(texts[i][j]);
        }
        block[static_cast<sal_Int32>(i)] = line;
      }
      const int last_row = row + static_cast<int>(texts.size()) - 1;
      const int last_col = col + static_cast<int>(width) - 1;
      const Reference<css::sheet::XCellRangeData> data(Range(row, col, last_row, last_col), UNO_QUERY_THROW);
      data->setDataArray(block);
      if (texts.size() == 1 && width == 1) {
        single_cells_.push_back({row, col});
      } else {
        for (int line = row; line <= last_row; ++line) lines_.try_emplace(line, HeightOf(line));
      }
      for (std::size_t i = 0; i < width; ++i) {
        if (AllFigures(texts, i)) ShrinkFigures(row, last_row, col + static_cast<int>(i));
      }
    });
  }

  void InsertRows(int row, int count) override {
    if (count <= 0) return;
    Asking([&] {
      const Reference<css::table::XColumnRowRange> whole(sheet_, UNO_QUERY_THROW);
      const Reference<css::table::XTableRows> rows = whole->getRows();
      rows->insertByIndex(row - 1, count);
      const int cols = UsedColumns();
      CopyLook(row + count, row, count, cols);
      const Reference<css::table::XCellRange> block = Range(row, 1, row + count - 1, cols);
      const Reference<css::sheet::XSheetOperation> content(block, UNO_QUERY_THROW);
      content->clearContents(css::sheet::CellFlags::VALUE | css::sheet::CellFlags::STRING |
                             css::sheet::CellFlags::DATETIME | css::sheet::CellFlags::FORMULA);
      const Reference<css::beans::XPropertySet> look(block, UNO_QUERY_THROW);
      for (const char* weight : {"CharWeight", "CharWeightAsian"}) {
        look->setPropertyValue(rtl::OUString::createFromAscii(weight), css::uno::Any(css::awt::FontWeight::NORMAL));
      }
      PushDown(row, count);
      const sal_Int32 height = HeightOf(row + count);
      for (int i = 0; i < count; ++i) lines_[row + i] = height;
      RepeatOnEachPage(row - 1);
    });
  }

  void JoinCells(int row, int first_col, int last_col) override {
    Asking([&] {
      const Reference<css::table::XCellRange> range = Range(row, first_col, row, last_col);
      const Reference<css::util::XMergeable> mergeable(range, UNO_QUERY_THROW);
      mergeable->merge(true);
      css::table::BorderLine2 line;
      line.OuterLineWidth = line.LineWidth = kThinLine;
      css::table::TableBorder2 border;
      border.TopLine = border.BottomLine = border.LeftLine = border.RightLine = line;
      border.IsTopLineValid = border.IsBottomLineValid = border.IsLeftLineValid = border.IsRightLineValid = true;
      const Reference<css::beans::XPropertySet> look(range, UNO_QUERY_THROW);
      look->setPropertyValue("TableBorder2", css::uno::Any(border));
      single_cells_.push_back({row, first_col});
    });
  }

  void PrintOut() override { printing_.Print(LaidOut()); }
  void PrintPreview() override { printing_.Preview(LaidOut()); }

 private:
  static constexpr sal_Int16 kThinLine = 18;  // hundredths of a millimetre

  std::string Shown(int row, int col) {
    const Reference<css::text::XText> text(sheet_->getCellByPosition(col - 1, row - 1), UNO_QUERY_THROW);
    return FromUno(text->getString());
  }

  Reference<css::table::XCellRange> Range(int row, int col, int last_row, int last_col) {
    return sheet_->getCellRangeByPosition(col - 1, row - 1, last_col - 1, last_row - 1);
  }

  css::table::CellRangeAddress Used() {
    const Reference<css::sheet::XUsedAreaCursor> cursor(sheet_->createCursor(), UNO_QUERY_THROW);
    cursor->gotoEndOfUsedArea(false);
    return Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)->getRangeAddress();
  }
  int UsedColumns() { return Used().EndColumn + 1; }

  /// Copies a row over `count` rows from `first` on.
  void CopyLook(int from, int first, int count, int cols) {
    const Reference<css::sheet::XCellRangeMovement> movement(sheet_, UNO_QUERY_THROW);
    const Reference<css::sheet::XCellRangeAddressable> row(Range(from, 1, from, cols), UNO_QUERY_THROW);
    const css::table::CellRangeAddress source = row->getRangeAddress();
    for (int i = 0; i < count; ++i) {
      movement->copyRange(css::table::CellAddress(source.Sheet, 0, first - 1 + i), source);
    }
  }

  /// The heads above the lines stand on each page of a long document.
  void RepeatOnEachPage(int row) {
    if (row < 1) return;
    const Reference<css::sheet::XPrintAreas> areas(sheet_, UNO_QUERY_THROW);
    const Reference<css::sheet::XCellRangeAddressable> heads(Range(row, 1, row, 1), UNO_QUERY_THROW);
    areas->setTitleRows(heads->getRangeAddress());
    areas->setPrintTitleRows(true);
  }

  Reference<css::beans::XPropertySet> RowLook(int row) {
    const Reference<css::table::XColumnRowRange> range(Range(row, 1, row, 1), UNO_QUERY_THROW);
    return {range->getRows()->getByIndex(0), UNO_QUERY_THROW};
  }
  sal_Int32 HeightOf(int row) {
    sal_Int32 height = 0;
    RowLook(row)->getPropertyValue("Height") >>= height;
    return height;
  }

  void SetHeight(int row, sal_Int32 height) { RowLook(row)->setPropertyValue("Height", css::uno::Any(height)); }

  /// What is known of rows from `row` on goes down with them.
  void PushDown(int row, int count) {
    std::map<int, sal_Int32> moved;
    for (const auto& [line, least_height] : lines_) moved[line >= row ? line + count : line] = least_height;
    lines_ = std::move(moved);
    for (CellPlace& cell : single_cells_) {
      if (cell.row >= row) cell.row += count;
    }
  }

  static bool AllFigures(const std::vector<std::vector<std::string>>& texts, std::size_t col) {
    bool any = false;
    for (const std::vector<std::string>& line : texts) {
      if (col >= line.size() || line[col].empty()) continue;
      const std::string_view text = line[col];
      if (!CellNumber(text.starts_with('\'') ? text.substr(1) : text)) return false;
      any = true;
    }
    return any;
  }

  /// A figure too wide for its column would show as "###", or in two lines where it is kept as a text.
  void ShrinkFigures(int row, int last_row, int col) {
    const Reference<css::beans::XPropertySet> look(Range(row, col, last_row, col), UNO_QUERY_THROW);
    look->setPropertyValue("IsTextWrapped", css::uno::Any(false));
    look->setPropertyValue("ShrinkToFit", css::uno::Any(true));
  }

  /// Rows grow with what was written into them and are never lower than they were, inserted ones than the row that they
  /// pushed down. The office program does not reckon with cells that were joined: those are measured here.
  void FitHeights() {
    for (const auto& [row, least_height] : lines_) {
      RowLook(row)->setPropertyValue("OptimalHeight", css::uno::Any(true));
      if (HeightOf(row) < least_height) SetHeight(row, least_height);
    }
    for (const CellPlace& cell : single_cells_) FitHeight(cell);
  }

  void FitHeight(const CellPlace& cell) {
    constexpr double kPoint = 2540.0 / 72;  // hundredths of a millimetre
    constexpr double kLine = 1.35;          // of the font's size
    const Reference<css::beans::XPropertySet> look(Range(cell.row, cell.col, cell.row, cell.col), UNO_QUERY_THROW);
    float points = 0;
    look->getPropertyValue("CharHeight") >>= points;
    const double text = WidthIn(Shown(cell.row, cell.col), points * kPoint);
    const double lines = std::ceil(text / std::max(1.0, WidthOfCell(cell)));
    const auto height = static_cast<sal_Int32>((lines + 0.4) * points * kLine * kPoint);
    if (lines <= 1 || CellNumber(Shown(cell.row, cell.col))) return;
    look->setPropertyValue("IsTextWrapped", css::uno::Any(true));
    if (HeightOf(cell.row) < height) SetHeight(cell.row, height);
  }

  /// @param size of the font: a character of two columns is as wide
  static double WidthIn(std::string_view text, double size) {
    double width = 0;
    for (std::size_t at = 0; at < text.size();) width += NextCodePoint(text, at) < 0x2E80 ? size * 0.6 : size;
    return width;
  }

  /// What is left for the text of a cell, all columns that were joined to it included.
  double WidthOfCell(const CellPlace& cell) {
    constexpr double kMargins = 120;
    const Reference<css::sheet::XSheetCellRange> range(Range(cell.row, cell.col, cell.row, cell.col), UNO_QUERY_THROW);
    const Reference<css::sheet::XSheetCellCursor> cursor = sheet_->createCursorByRange(range);
    cursor->collapseToMergedArea();
    const Reference<css::table::XColumnRowRange> joined(cursor, UNO_QUERY_THROW);
    const Reference<css::table::XTableColumns> columns = joined->getColumns();
    double width = -kMargins;
    for (sal_Int32 i = 0; i < columns->getCount(); ++i) {
      sal_Int32 column = 0;
      Reference<css::beans::XPropertySet>(columns->getByIndex(i), UNO_QUERY_THROW)->getPropertyValue("Width") >>=
          column;
      width += column;
    }
    return width;
  }

  std::string AllText() {
    const css::table::CellRangeAddress used = Used();
    std::string text;
    for (int row = 1; row <= used.EndRow + 1; ++row) {
      std::string line;
      for (int col = 1; col <= used.EndColumn + 1; ++col) line += (col > 1 ? "\t" : "") + Shown(row, col);
      line.erase(line.find_last_not_of('\t') + 1);
      text += line + "\n";
    }
    return text;
  }

  PrintDocument LaidOut() {
    return Asking([&] {
      FitHeights();
      const std::filesystem::path pdf = office_.scratch() / "document.pdf";
      css::uno::Sequence<css::beans::PropertyValue> options(1);
      options[0].Name = "FilterName";
      options[0].Value <<= rtl::OUString("calc_pdf_Export");
      const Reference<css::frame::XStorable> storable(document_, UNO_QUERY_THROW);
      storable->storeToURL(FileUrl(pdf), options);
      return PrintDocument{title_, pdf, AllText()};
    });
  }

  std::string title_;
  Printing& printing_;
  UnoOffice office_;
  Reference<css::lang::XComponent> document_;
  Reference<css::sheet::XSpreadsheet> sheet_;
  std::map<int, sal_Int32> lines_;       ///< rows of the table that were written or inserted, and their least height
  std::vector<CellPlace> single_cells_;  ///< written on their own
};

std::unique_ptr<Workbook> OpenTemplate(const std::filesystem::path& office, const std::filesystem::path& file,
                                       const std::string& title, Printing& printing) {
  const std::optional<std::string> bytes = ReadWholeFile(file);
  if (!bytes) throw Failure(failure::kFileNotFound, "没有找到模板文件：" + file.string(), "办公软件");
  if (FilterFor(*bytes).empty()) throw OfficeRefused("模板文件已损坏，无法打开：" + file.string());
  return Asking([&] { return std::make_unique<TemplateWorkbook>(office, *bytes, title, printing); });
}

}  // namespace

extern "C" {
extern luming::OpenTemplateFunction* const luming_open_template;
luming::OpenTemplateFunction* const luming_open_template = &OpenTemplate;
}

}  // namespace luming
