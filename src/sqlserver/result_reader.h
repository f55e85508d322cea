#pragma once

#include "platform/database.h"
#include "sqlserver/odbc_handle.h"

namespace luming::sqlserver {

/// What a text gave: its results with columns, and what was said about the first statement of it that failed.
struct TextResults {
  Recordset first;  ///< the others behind it; closed when none has columns
  bool failed = false;
  std::vector<Diagnostic> said;
};

/// Runs the text and reads everything that comes back, also behind a failed statement: the server goes on with the rest
/// of a text, and what happens to that rest is known only when the end has come.
/// @param statement a fresh one
TextResults RunText(const OdbcHandle& statement, std::string_view sql);

}  // namespace luming::sqlserver
