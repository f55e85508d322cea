#pragma once

#include <vector>

#include "office/biff_records.h"
#include "platform/workbook.h"

namespace luming {

/// Writes fonts, number formats and cell formats of the sheet's styles.
void WriteXlsStyles(BiffStream& stream, const std::vector<SheetStyle>& styles);

/// The cell format of a style, as cells refer to it.
unsigned XlsFormatOf(int style);

}  // namespace luming
