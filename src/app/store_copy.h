#pragma once

#include <functional>
#include <string>

#include "app/store_files.h"
#include "platform/database.h"

namespace luming {

/// Told line by line what has been done.
using CopyReport = std::function<void(const std::string& line)>;

/// Copies every row of this system's tables, identity values kept, and then reads both sides again and compares them.
/// Rows are held in pages of some thousands. The target gets all or nothing: it is one transaction there. Nobody should
/// work in the source meanwhile; what changes under way is found by the comparison.
/// @param target an empty database, whose tables are made, or one with this system's tables and not a single row
/// Failure when the target is not such a one, when the two have different columns, or when a row cannot be kept as it
/// is
void CopyStore(Connection& source, Connection& target, const StoreFiles& files, const CopyReport& report);

}  // namespace luming
