#include "office/xls_writer.h"

#include <algorithm>
#include <cmath>

#include "office/biff_records.h"
#include "office/ole_file.h"
#include "office/shared_strings.h"
#include "office/sheet_rules.h"
#include "office/xls_styles.h"

namespace luming {

namespace {

constexpr unsigned kBiff8 = 0x0600;
constexpr unsigned kRowsOfABlock = 32;  // row heads stand ahead of their cells in blocks of so many

void WriteStart(BiffStream& stream, unsigned kind) {
  BiffBytes start;
  start.U16(kBiff8).U16(kind).U16(0x0DBB).U16(0x07CC).U32(0).U32(6);
  stream.Record(0x0809, start);
}

/// Names the rows that head every printed page, which takes a reference from the workbook to its own sheet.
void WriteRepeatedRows(BiffStream& stream, int rows) {
  constexpr unsigned kOwnBook = 0x0401, kBuiltIn = 0x0020, kPrintTitles = 0x07, kArea = 0x3B, kLastColumn = 255;
  if (rows == 0) return;
  stream.Record(0x01AE, BiffBytes().U16(1).U16(kOwnBook));
  stream.Record(0x0017, BiffBytes().U16(1).U16(0).U16(0).U16(0));
  BiffBytes tokens;
  tokens.U8(kArea).U16(0).U16(0).U16(static_cast<unsigned>(rows) - 1).U16(0).U16(kLastColumn);
  BiffBytes name;
  name.U16(kBuiltIn).U8(0).U8(1).U16(static_cast<unsigned>(tokens.bytes().size())).U16(0).U16(1).U32(0);
  name.U8(0).U8(kPrintTitles);
  stream.Record(0x0018, name.bytes() + tokens.bytes());
}

/// The sheet's part of the stream: looks of columns, cells, window.
class SheetWriter {
 public:
  SheetWriter(const Sheet& sheet, SharedStrings& strings, BiffStream& stream, const Progress& progress)
      : sheet_(sheet), strings_(strings), stream_(stream), progress_(progress) {}

  void Write() {
    constexpr unsigned kWorksheet = 0x0010;
    WriteStart(stream_, kWorksheet);
    WritePage();
    WriteColumns();
    WriteRows();
    WriteWindow();
    WriteMerged();
    stream_.Record(0x000A);
  }

 private:
  void WritePage() {
    constexpr unsigned kFitToPage = 0x0100, kUsual = 0x04C1, kA4 = 9, kPortrait = 0x0002;
    stream_.Record(0x0081, BiffBytes().U16(kUsual | kFitToPage));
    if (sheet_.page_numbers) stream_.Record(0x0015, BiffBytes().LongText(kPageNumbers));
    stream_.Record(0x0083, BiffBytes().U16(1));  // centred across the page
    for (const std::uint16_t side : {0x0026, 0x0027}) stream_.Record(side, BiffBytes().Double(kSideMargin));
    for (const std::uint16_t end : {0x0028, 0x0029}) stream_.Record(end, BiffBytes().Double(kEndMargin));
    BiffBytes setup;
    setup.U16(kA4).U16(100).U16(1).U16(1).U16(0).U16(sheet_.landscape ? 0 : kPortrait).U16(600).U16(600);
    setup.Double(kFootMargin).Double(kFootMargin).U16(1);
    stream_.Record(0x00A1, setup);
  }

  void WriteColumns() {
    constexpr double kWidthUnits = 256;
    constexpr double kWidest = 255;
    stream_.Record(0x0055, BiffBytes().U16(8));
    for (unsigned col = 0; col < sheet_.columns.size(); ++col) {
      const double width = std::clamp(sheet_.columns[col].width, 0.0, kWidest) * kWidthUnits;
      BiffBytes column;
      column.U16(col).U16(col).U16(static_cast<unsigned>(std::lround(width)));
      column.U16(XlsFormatOf(0)).U16(sheet_.columns[col].hidden ? 1 : 0).U16(0);
      stream_.Record(0x007D, column);
    }
    BiffBytes extent;
    extent.U32(0).U32(static_cast<std::uint32_t>(sheet_.rows.size()));
    extent.U16(0).U16(static_cast<unsigned>(sheet_.columns.size())).U16(0);
    stream_.Record(0x0200, extent);
  }

  void WriteRows() {
    const auto count = static_cast<unsigned>(sheet_.rows.size());
    for (unsigned first = 0; first < count; first += kRowsOfABlock) {
      const unsigned end = std::min(first + kRowsOfABlock, count);
      for (unsigned row = first; row < end; ++row) WriteRowHead(row);
      for (unsigned row = first; row < end; ++row) WriteCells(row);
      if (progress_) progress_(static_cast<int>(end), static_cast<int>(count));
    }
  }

  void WriteRowHead(unsigned row) {
    constexpr unsigned kDefaultHeight = 0x80FF, kAutomatic = 0x0100, kOwnHeight = 0x0140, kTwipsOfAPoint = 20;
    const auto height = sheet_.row_heights.find(static_cast<int>(row) + 1);
    const bool own = height != sheet_.row_heights.end();
    const unsigned twips = own ? static_cast<unsigned>(std::lround(height->second * kTwipsOfAPoint)) : kDefaultHeight;
    BiffBytes head;
    head.U16(row).U16(0).U16(static_cast<unsigned>(sheet_.rows[row].size())).U16(twips).U32(0);
    head.U16(own ? kOwnHeight : kAutomatic).U16(XlsFormatOf(0));
    stream_.Record(0x0208, head);
  }

  void WriteCells(unsigned row) {
    for (unsigned col = 0; col < sheet_.rows[row].size(); ++col) {
      const SheetCell& cell = sheet_.rows[row][col];
      BiffBytes body;
      body.U16(row).U16(col).U16(XlsFormatOf(cell.style));
      if (const auto* text = std::get_if<std::string>(&cell.value)) {
        stream_.Record(0x00FD, body.U32(strings_.Add(*text)));
      } else if (const auto* number = std::get_if<double>(&cell.value)) {
        stream_.Record(0x0203, body.Double(*number));
      } else if (const auto* moment = std::get_if<DateTime>(&cell.value)) {
        stream_.Record(0x0203, body.Double(DateSerial(*moment)));
      } else if (const auto* formula = std::get_if<SheetFormula>(&cell.value)) {
        WriteFormula(body, *formula);
      } else if (cell.style != 0) {
        stream_.Record(0x0201, body);
      }
    }
  }

  /// A formula that is no sum of a block stands as its result.
  void WriteFormula(BiffBytes& body, const SheetFormula& formula) {
    constexpr unsigned kArea = 0x25, kAttribute = 0x19, kSum = 0x10, kRelative = 0xC000;
    const auto block = SummedBlock(formula.text);
    body.Double(formula.result);
    if (!block || block->row + block->rows - 1 > static_cast<int>(kXlsLimits.rows) ||
        block->col + block->cols - 1 > static_cast<int>(kXlsLimits.cols)) {
      stream_.Record(0x0203, body);
      return;
    }
    const auto first_row = static_cast<unsigned>(block->row - 1);
    const auto first_col = static_cast<unsigned>(block->col - 1);
    BiffBytes tokens;
    tokens.U8(kArea).U16(first_row).U16(first_row + static_cast<unsigned>(block->rows) - 1);
    tokens.U16(first_col | kRelative).U16((first_col + static_cast<unsigned>(block->cols) - 1) | kRelative);
    tokens.U8(kAttribute).U8(kSum).U16(0);
    body.U16(0).U32(0).U16(static_cast<unsigned>(tokens.bytes().size()));
    stream_.Record(0x0006, body.bytes() + tokens.bytes());
  }

  void WriteWindow() {
    constexpr unsigned kUsual = 0x06B6, kFrozen = 0x0108, kLowerPane = 2;
    const auto frozen = static_cast<unsigned>(sheet_.frozen_rows);
    BiffBytes window;
    window.U16(kUsual | (frozen ? kFrozen : 0)).U16(0).U16(0).U32(kColourOfLines).U16(0).U16(0).U32(0);
    stream_.Record(0x023E, window);
    if (frozen) stream_.Record(0x0041, BiffBytes().U16(0).U16(frozen).U16(frozen).U16(0).U16(kLowerPane));
  }

  void WriteMerged() {
    constexpr std::size_t kBlocksOfARecord = 1027;
    for (std::size_t first = 0; first < sheet_.merged.size(); first += kBlocksOfARecord) {
      const std::size_t count = std::min(kBlocksOfARecord, sheet_.merged.size() - first);
      BiffBytes blocks;
      blocks.U16(static_cast<unsigned>(count));
      for (std::size_t i = first; i < first + count; ++i) {
        const SheetBlock& block = sheet_.merged[i];
        blocks.U16(static_cast<unsigned>(block.row - 1)).U16(static_cast<unsigned>(block.row + block.rows - 2));
        blocks.U16(static_cast<unsigned>(block.col - 1)).U16(static_cast<unsigned>(block.col + block.cols - 2));
      }
      stream_.Record(0x00E5, blocks);
    }
  }

  static constexpr std::uint32_t kColourOfLines = 0x40;

  const Sheet& sheet_;
  SharedStrings& strings_;
  BiffStream& stream_;
  const Progress& progress_;
};

}  // namespace

std::string XlsBytes(const Sheet& sheet, const Progress& progress) {
  DemandFits(sheet, kXlsLimits);
  SharedStrings strings;
  BiffStream cells;
  SheetWriter(sheet, strings, cells, progress).Write();

  constexpr unsigned kGlobals = 0x0005, kUtf16 = 1200, kOneWindow = 0x0038, kChina = 86;
  BiffStream stream;
  WriteStart(stream, kGlobals);
  stream.Record(0x0042, BiffBytes().U16(kUtf16));
  stream.Record(0x003D,
                BiffBytes().U16(0).U16(0).U16(0x4000).U16(0x2000).U16(kOneWindow).U16(0).U16(0).U16(1).U16(600));
  stream.Record(0x0022, BiffBytes().U16(0));  // days count from 1900
  WriteXlsStyles(stream, sheet.styles);
  const std::size_t place_of_offset = stream.Position() + 4;
  stream.Record(0x0085, BiffBytes().U32(0).U16(0).ShortText(ValidSheetName(sheet.name)));
  stream.Record(0x008C, BiffBytes().U16(kChina).U16(kChina));
  WriteRepeatedRows(stream, sheet.repeated_rows);
  strings.Write(stream);
  stream.Record(0x000A);
  stream.Patch(place_of_offset, static_cast<std::uint32_t>(stream.Position()));
  return OleFileWith("Workbook", stream.Take() + cells.Take());
}

}  // namespace luming
