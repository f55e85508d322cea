#pragma once

#include <filesystem>
#include <string>

#include "app/admin/admin_command.h"

namespace luming {

/// The place of a store as it was typed; a connection string whose user has no password gets the one that is asked for.
std::string WithPassword(const std::string& place, AdminConsole& console);

/// What --data names, else the database files of this program. Failure when there are none.
std::filesystem::path DatabaseFiles(const AdminArguments& arguments);

}  // namespace luming
