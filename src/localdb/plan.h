#pragma once

#include <string>
#include <vector>

#include "localdb/catalogue.h"
#include "localdb/conversion.h"
#include "localdb/sqlite.h"

namespace luming::localdb {

/// What a LIKE pattern is, which decides how it is looked for.
enum class LikeClass : std::uint8_t {
  kPlain,    ///< no wildcard: a key
  kStart,    ///< text and one % behind it: a range of an index
  kPrefix,   ///< text and more than that behind it: a range, of which each row is tested
  kGeneral,  ///< row by row
};

/// A value that is bound each time the plan runs.
struct PlanParameter {
  enum class Source : std::uint8_t { kLiteral, kVariable, kNow };
  Source source = Source::kLiteral;
  std::size_t literal = 0;  ///< counted from the first literal of the statement
  std::string variable;
  bool negative = false;
  bool converts = false;  ///< to `type`; else bound as it is
  SqlType type;
  Overlong overlong = Overlong::kCut;
};

/// What must hold of a literal or variable for the plan to fit.
struct PlanGuard {
  enum class Kind : std::uint8_t { kNumberType, kLike, kText };
  Kind kind = Kind::kNumberType;
  bool of_variable = false;
  std::size_t literal = 0;
  std::string variable;
  SqlType type;
  LikeClass like = LikeClass::kGeneral;
  std::string text;
};

/// One statement of the dialect in the engine's words, ready to run with other literals.
struct Plan {
  std::string sql;
  std::vector<PlanParameter> parameters;
  std::vector<PlanGuard> guards;
  std::vector<Column> outputs;         ///< of a query
  std::vector<std::string> variables;  ///< one for each output when the query assigns variables
  bool is_query = false;
  bool sets_identity = false;  ///< inserts into a table with an identity column
  std::string identity_table;  ///< whose identity column is given a value; empty: none
  bool uses_system_tables = false;
  std::vector<std::string> temporaries;  ///< engine names of the temporary tables in it
  StatementHandle statement;
};

LikeClass ClassifyPattern(std::string_view pattern);

}  // namespace luming::localdb
