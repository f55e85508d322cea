#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/database.h"

namespace luming {

/// A table's columns, as the database has them.
struct TableShape {
  std::string name;
  std::vector<std::string> columns;
  std::string identity;  ///< the column that the database numbers; empty without one

  /// "[a],[b],[c]"
  std::string ColumnList() const;
};

TableShape ReadShape(Connection& store, const std::string& table);

/// The rows of a table in pages, each read when it is asked for: by the identity column, else in the order of all
/// columns.
class TablePages {
 public:
  static constexpr int kRows = 2000;

  /// @param store, shape outlive the pages
  TablePages(Connection& store, const TableShape& shape) : store_(store), shape_(shape) {}

  /// The next rows; none behind the last.
  Recordset Next();

 private:
  std::string NextSql() const;

  Connection& store_;
  const TableShape& shape_;
  std::int64_t read_ = 0;
  std::string last_identity_;
};

}  // namespace luming
