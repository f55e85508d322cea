#pragma once

#include <vector>

#include "sqlserver/odbc_handle.h"
#include "util/failure.h"

namespace luming::sqlserver {

/// What became of the connection with a failure.
enum class After { kUsable, kLost };

/// A failed statement as the operator is told of it.
struct StatementFailure {
  Failure failure;
  After after;
};

/// @param said all that driver and server said
/// @param dead whether the driver takes the connection for lost
StatementFailure FailureOfStatement(const std::vector<Diagnostic>& said, bool dead);

/// A connection that ended before the rows did: the driver tells that like the end of the rows.
Failure LostConnection();

/// A server that could not be opened.
/// @param server as the operator knows it
Failure FailureOfOpening(const std::vector<Diagnostic>& said, const std::string& server);

}  // namespace luming::sqlserver
