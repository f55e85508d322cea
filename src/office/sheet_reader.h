#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/workbook.h"

namespace luming {

/// Opens a workbook to read its cells, see Workbooks::Read.
std::unique_ptr<SheetReader> OpenSheetReader(const std::filesystem::path& file);

/// The same of a file's bytes.
std::unique_ptr<SheetReader> SheetReaderOf(std::string bytes);

}  // namespace luming
