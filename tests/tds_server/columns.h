#pragma once

#include <cstddef>
#include <vector>

#include "localdb/catalogue.h"
#include "platform/database.h"
#include "tds_server/wire.h"

namespace luming::tds {

/// How the rows of one result go over the wire.
class RowFormat {
 public:
  RowFormat(const std::vector<localdb::Column>& columns, Recordset& rows);

  void WriteColumns(Writer& out) const;
  /// The row that the recordset stands on.
  void WriteRow(Writer& out, Recordset& rows) const;

 private:
  /// The protocol's type, and the measures that a column of it is told with.
  struct WireColumn {
    const localdb::Column* column;
    unsigned type;
    std::size_t length;  ///< most bytes of a value
    bool unlimited;      ///< a text in chunks
  };

  WireColumn Choose(const localdb::Column& column, std::size_t index, Recordset& rows) const;
  void WriteType(Writer& out, const WireColumn& column) const;
  void WriteValue(Writer& out, const WireColumn& column, const Value& value) const;
  void WriteText(Writer& out, const WireColumn& column, const Value& value) const;

  std::vector<WireColumn> columns_;
};

/// Language and rules of comparison that texts are told with: Chinese, code page 936, case ignored.
void WriteCollation(Writer& out);

}  // namespace luming::tds
