#include "office/sheet_reader.h"

#include "office/ole_file.h"
#include "office/read_failures.h"
#include "office/xls_reader.h"
#include "office/xlsx_reader.h"
#include "office/zip_file.h"
#include "util/whole_file.h"

namespace luming {

namespace {

constexpr std::size_t kMostBytes = 256 << 20;

constexpr std::string_view kOleMark = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::string_view kZipMark = "PK\x03\x04";

Failure NoWorkbook() {
  return UnreadableWorkbook(
      "文件不是 Excel 工作簿。请在 Excel 或 WPS 中打开，另存为“Excel 97-2003 工作簿(*.xls)”后再试。");
}

std::unique_ptr<SheetReader> ReadOle(std::string_view bytes) {
  std::map<std::string, std::string> streams = OleStreams(bytes, {"Workbook", "Book", "EncryptedPackage"});
  if (streams.contains("EncryptedPackage")) throw LockedWorkbook();
  for (const char* name : {"Workbook", "Book"}) {
    if (streams.contains(name)) return ReadXls(std::move(streams[name]));
  }
  throw NoWorkbook();
}

bool IsBareBiff(std::string_view bytes) {
  return bytes.size() >= 4 && bytes[0] == '\x09' &&
         std::string_view("\x00\x02\x04\x08", 4).find(bytes[1]) != bytes.npos;
}

}  // namespace

std::unique_ptr<SheetReader> SheetReaderOf(std::string bytes) {
  if (bytes.empty()) throw UnreadableWorkbook("文件是空的，没有任何内容。");
  if (bytes.starts_with(kOleMark)) return ReadOle(bytes);
  if (bytes.starts_with(kZipMark)) {
    if (!ZipFile(bytes).Has("_rels/.rels")) throw NoWorkbook();
    return ReadXlsx(std::move(bytes));
  }
  if (IsBareBiff(bytes)) return ReadXls(std::move(bytes));
  throw NoWorkbook();
}

std::unique_ptr<SheetReader> OpenSheetReader(const std::filesystem::path& file) {
  auto bytes = ReadWholeFile(file, kMostBytes);
  if (!bytes) throw StandardFailure(failure::kFileNotFound);
  return SheetReaderOf(std::move(*bytes));
}

}  // namespace luming
