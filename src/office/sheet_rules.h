#pragma once

#include <cstddef>
#include <string>

#include "platform/workbook.h"

namespace luming {

/// Page foot with page numbers, in the codes that both formats share, and the page margins in inches.
inline constexpr const char* kPageNumbers = "&C第 &P 页  共 &N 页";
inline constexpr double kSideMargin = 0.4;
inline constexpr double kEndMargin = 0.6;
inline constexpr double kFootMargin = 0.3;

/// What a file format can hold.
struct SheetLimits {
  std::size_t rows;
  std::size_t cols;
};
inline constexpr SheetLimits kXlsLimits{65536, 256};
inline constexpr SheetLimits kXlsxLimits{1048576, 16384};

/// Failure, telling what to do about it, when the sheet does not fit or a text is longer than a cell can hold.
void DemandFits(const Sheet& sheet, const SheetLimits& limits);

/// A name that a spreadsheet takes: the characters it forbids become their full-width forms, at most 31 units, none of
/// the names kept for itself. Nothing usable gives "Sheet1".
std::string ValidSheetName(const std::string& name);

/// The cell block of "SUM(E2:E7)"; nothing for any other formula.
std::optional<SheetBlock> SummedBlock(std::string_view formula);

/// Days since 1899-12-30, the time as their fraction.
double DateSerial(const DateTime& moment);

}  // namespace luming
