#pragma once

#include <filesystem>

#include "platform/workbook.h"

namespace luming {

/// The workbook that a storehouse fills in to import its catalogue: a row of heads, then two drugs as samples. Its
/// heads are those that come with an installation in the table DATAGRID_HEAD.
Sheet CatalogueTemplate();

/// Writes it as "药品目录.xls" into the directory "MB" below the application's, unless one is there.
void WriteCatalogueTemplate(Workbooks& workbooks, const std::filesystem::path& app_path);

}  // namespace luming
