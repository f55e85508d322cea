#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "frame/local_files.h"
#include "platform/database.h"
#include "util/clock.h"

namespace luming {

/// Whether a store is named by its connection string; else it is an application directory.
bool IsConnectionString(const std::string& place);

/// Opens the store that a person at the console names: by a connection string, or by an application directory, whose
/// connection file tells the rest. Failure when it cannot be opened; a directory without such a file is left as it is.
/// @param clock outlives the connection
std::shared_ptr<Connection> OpenStore(const std::string& place, const Clock& clock);

/// Makes the application directory's program connect so from now on. Failure when the fields do not fit the file or
/// would not read as they are; the file is as before then.
void WriteConnectionFile(const std::filesystem::path& home, const ConnectionFields& fields);

/// The place as it may be shown: a connection string without its password.
std::string ShownPlace(const std::string& place);

}  // namespace luming
