#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "localdb/catalogue.h"
#include "localdb/errors.h"
#include "localdb/sqlite.h"
#include "util/clock.h"

namespace luming::localdb {

/// What the functions of one connection share with the session that owns it.
struct FunctionContext {
  const Clock* clock = nullptr;
  const Catalogue* catalogue = nullptr;
  std::string database;
  /// The error that a function met; the engine itself carries only a text.
  std::unique_ptr<SqlError> error;
  /// What ERROR_MESSAGE() and ERROR_NUMBER() tell inside a CATCH block.
  std::string caught_message;
  int caught_number = 0;
};

/// Makes the dialect's functions known to the connection. The context must outlive it.
void RegisterFunctions(sqlite3* store, FunctionContext& context);

/// LIKE with %, _, [] and [^], without regard to case; blanks at the end of the value are ignored.
bool MatchesLike(std::string_view pattern, std::string_view value, char32_t escape = 0);

}  // namespace luming::localdb
