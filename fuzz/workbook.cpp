#include <cstdint>
#include <string>

#include "demand.h"
#include "office/sheet_reader.h"
#include "util/text.h"

using namespace luming;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const auto workbook = SheetReaderOf(std::string(reinterpret_cast<const char*>(data), size));
    for (const std::string& name : workbook->Names()) {
      Recordset rows = workbook->Read(name);
      if (rows.RecordCount() == 0) continue;
      Demand(rows.ColumnCount() > 0);
      for (const std::string& column : rows.ColumnNames()) Demand(!column.empty() && IsValidUtf8(column));
      for (std::size_t col = 0; col < rows.ColumnCount(); ++col) {
        Demand(IsValidUtf8(std::as_const(rows).Field(col).TextOrEmpty()));
      }
    }
  } catch (const Failure& failure) {
    Demand(!failure.description().empty());
  }
  return 0;
}
