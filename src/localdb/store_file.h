#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

#include "localdb/sqlite.h"

namespace luming::localdb {

/// Makes a new, empty store. Throws Failure when the file exists or cannot be written.
void CreateStoreFile(const std::filesystem::path& path);

/// How a statement waits for another program's transaction.
struct LockWait {
  std::chrono::milliseconds most;
  std::function<bool()> goes_on = {};  ///< asked all the time; the wait ends early when it says false. May be empty
};

/// Opens a store that exists, for durable work: write-ahead log, full synchronisation. A file that is missing (4060),
/// no store, of a newer format (948), damaged (824) or out of reach (5120) is refused and left as it is.
/// @param wait outlives the store
StoreHandle OpenStoreFile(const std::filesystem::path& path, const std::string& name, const LockWait& wait);

}  // namespace luming::localdb
