#include "office/office_workbooks.h"

#include <dlfcn.h>

#include "office/sheet_reader.h"
#include "office/template_workbook.h"
#include "office/xls_writer.h"
#include "office/xlsx_writer.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

namespace {

/// The module stays loaded once it is: the office program's libraries do not like to go.
OpenTemplateFunction* LoadModule() {
  static void* const module = dlopen("luming_uno.so", RTLD_NOW | RTLD_LOCAL);
  void* const found = module ? dlsym(module, kOpenTemplateName) : nullptr;
  return found ? *static_cast<OpenTemplateFunction* const*>(found) : nullptr;
}

}  // namespace

void OfficeWorkbooks::Save(const std::filesystem::path& file, const Sheet& sheet, const Progress& progress) {
  const bool is_xlsx = LowerAscii(file.filename().string()).ends_with(".xlsx");
  ReplaceFile(file, is_xlsx ? XlsxBytes(sheet, progress) : XlsBytes(sheet, progress));
}

std::unique_ptr<SheetReader> OfficeWorkbooks::Read(const std::filesystem::path& file) {
  return OpenSheetReader(file);
}

std::unique_ptr<Workbook> OfficeWorkbooks::Open(const std::filesystem::path& file, const std::string& title) {
  OpenTemplateFunction* const open = office_.empty() ? nullptr : LoadModule();
  if (!open) throw NoOffice();
  return open(office_, file, title, printing_);
}

}  // namespace luming
