#pragma once

#include <filesystem>
#include <string>

#include "util/failure.h"

namespace luming {

/// Directory of the installed office program; empty when there is none that opens sheets.
std::filesystem::path FindOffice();

/// There is no office program, or none that can be used.
Failure NoOffice(const std::string& why = {});

/// The office program did not do what it was asked.
Failure OfficeRefused(const std::string& what);

}  // namespace luming
