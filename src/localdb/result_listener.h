#pragma once

#include <cstdint>
#include <vector>

#include "localdb/catalogue.h"
#include "localdb/errors.h"
#include "platform/database.h"

namespace luming::localdb {

/// Told what the statements of a text give, one by one as they run: for a program that hands the store on to others and
/// needs the types of columns, the counts of changes and the place of an error between them.
class ResultListener {
 public:
  virtual ~ResultListener() = default;

  /// A query's columns and rows; standing on the first row, free to be walked.
  virtual void Rows(const std::vector<Column>& columns, Recordset& rows) = 0;
  /// Not told where the text has switched counts off.
  virtual void Changed(std::int64_t count) = 0;
  /// An error that ended its statement only; the text runs on.
  virtual void Failed(const SqlError& error) = 0;
  /// A procedure that the text itself calls; what is told in between is its own and that of the procedures it calls.
  virtual void ProcedureBegan() = 0;
  virtual void ProcedureEnded(std::int64_t return_value) = 0;
};

}  // namespace luming::localdb
