#include "office/office_workbooks.h"

#include "office/xls_writer.h"
#include "office/xlsx_writer.h"
#include "util/failure.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

void OfficeWorkbooks::Save(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress) {
  const bool is_xlsx = LowerAscii(file.filename().string()).ends_with(".xlsx");
  ReplaceFile(file, is_xlsx ? XlsxBytes(sheet, progress) : XlsBytes(sheet, progress));
}

std::unique_ptr<Workbook> OfficeWorkbooks::Open(const std::filesystem::path&, const std::string&) {
  throw StandardFailure(failure::kFileNotFound);
}

}  // namespace luming
