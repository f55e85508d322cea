#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "localdb/sqlite.h"

namespace luming::localdb {

/// Makes a new, empty store. Throws Failure when the file exists or cannot be written.
void CreateStoreFile(const std::filesystem::path& path);

/// Opens a store that exists, for durable work: write-ahead log, full synchronisation. A file that is missing (4060),
/// no store, of a newer format (948) or damaged (824) is refused and left as it is.
/// @param busy_timeout how long to wait for another program's transaction
StoreHandle OpenStoreFile(const std::filesystem::path& path, const std::string& name,
                          std::chrono::milliseconds busy_timeout);

}  // namespace luming::localdb
