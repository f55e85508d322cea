#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "localdb/engine_functions.h"
#include "localdb/frame.h"
#include "localdb/plan.h"
#include "platform/database.h"

namespace luming::localdb {

/// Runs a text of the engine's own that gives no rows. Throws what the engine's error stands for.
void RunPlain(sqlite3* store, const std::string& sql);
/// The same with texts bound to its parameters; one without data is NULL.
void RunBound(sqlite3* store, const std::string& sql, const std::vector<std::string_view>& values);

/// The one number that a query of the engine's own gives; 0 without a row.
std::int64_t ReadNumber(sqlite3* store, const std::string& sql);

/// Where the values of a plan's parameters come from.
struct Bindings {
  const LexedText& lexed;
  std::size_t first_literal;
  const Frame& frame;
};

/// Binds and steps plans.
class Executor {
 public:
  Executor(sqlite3* store, FunctionContext& functions) : store_(store), functions_(functions) {}

  /// Runs a query and fetches all rows.
  Recordset Query(Plan& plan, const Bindings& bindings);
  /// Runs a query and keeps its last row; nothing without rows. The number of rows goes to `count`.
  std::vector<Datum> LastRow(Plan& plan, const Bindings& bindings, std::int64_t& count);
  /// Runs a change and gives the number of rows changed.
  std::int64_t Change(Plan& plan, const Bindings& bindings);
  /// The value that a parameter takes.
  static Datum ValueOf(const PlanParameter& parameter, const Bindings& bindings, const Clock& clock);

 private:
  void Prepare(Plan& plan);
  void Bind(Plan& plan, const Bindings& bindings);
  void BindOne(sqlite3_stmt* statement, int place, const PlanParameter& parameter, const Bindings& bindings);
  bool Step(sqlite3_stmt* statement);

  sqlite3* store_;
  FunctionContext& functions_;
};

}  // namespace luming::localdb
