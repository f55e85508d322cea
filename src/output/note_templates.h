#pragma once

#include <filesystem>
#include <string>

#include "platform/workbook.h"

namespace luming {

/// The paper forms that come with an installation. A site may change their looks in any spreadsheet program, as long as
/// the cells that the print routines fill stay where they are.
Sheet IssueNoteTemplate();      ///< "CKD.xls"
Sheet ReceiptNoteTemplate();    ///< "RKD.xls"
Sheet WholesaleNoteTemplate();  ///< "批发打印模板.xls"

/// Writes a workbook into the directory "MB" below the application's, unless one of that name is there.
void WriteTemplate(Workbooks& workbooks, const std::filesystem::path& app_path, const std::string& name,
                   const Sheet& sheet);

/// Writes the three into the directory "MB" below the application's. One that is there already is left as it is.
void WriteNoteTemplates(Workbooks& workbooks, const std::filesystem::path& app_path);

}  // namespace luming
