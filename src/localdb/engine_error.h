#pragma once

#include <string>

#include "localdb/catalogue.h"
#include "localdb/errors.h"
#include "localdb/sqlite.h"

namespace luming::localdb {

/// Steps a statement. Whatever it fails by, EngineError can tell afterwards.
int StepEngine(sqlite3_stmt* statement);

/// The error that the engine's present error code stands for. The store's file is called damaged only when it was read
/// and found so; of everything else that befalls it the error says what the system said.
/// @param file the store's file where the engine cannot name it, having failed to open it
SqlError EngineError(sqlite3* store, const Catalogue* catalogue = nullptr, std::string file = {});

}  // namespace luming::localdb
