#include "support/rows_text.h"

#include <utility>
#include <vector>

#include "util/text.h"

namespace luming {

std::string RowsText(Recordset rows) {
  std::vector<std::string> lines;
  for (; !rows.Eof(); rows.MoveNext()) {
    std::vector<std::string> fields;
    for (std::size_t i = 0; i < rows.ColumnCount(); ++i) {
      const Value& value = std::as_const(rows).Field(i);
      fields.push_back(value.IsNull() ? "NULL" : value.Text());
    }
    lines.push_back(Join(fields, "\t"));
  }
  return Join(lines, "\n");
}

}  // namespace luming
