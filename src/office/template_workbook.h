#pragma once

#include <memory>

#include "platform/printing.h"
#include "platform/workbook.h"

namespace luming {

/// What the module luming_uno offers under the name kOpenTemplateName: opens a template in an office program of its
/// own, which ends with the result. The file itself is only read.
/// @param office directory of the office program
/// @param printing what prints and previews; outlives the result
using OpenTemplateFunction = std::unique_ptr<Workbook>(const std::filesystem::path& office,
                                                       const std::filesystem::path& file, const std::string& title,
                                                       Printing& printing);
inline constexpr const char* kOpenTemplateName = "luming_open_template";

}  // namespace luming
