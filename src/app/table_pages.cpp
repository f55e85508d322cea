#include "app/table_pages.h"

#include "util/text.h"

namespace luming {

std::string TableShape::ColumnList() const {
  return "[" + Join(columns, "],[") + "]";
}

TableShape ReadShape(Connection& store, const std::string& table) {
  TableShape shape{table, {}, {}};
  Recordset rows = store.Execute(
      "Select c.name,c.is_identity From sys.columns c Join sys.tables t On t.object_id=c.object_id Where t.name='" +
      Replace(table, "'", "''") + "' Order by c.column_id");
  for (; !rows.Eof(); rows.MoveNext()) {
    shape.columns.push_back(rows.Field(0).Text());
    if (rows.Field(1).Bool()) shape.identity = shape.columns.back();
  }
  return shape;
}

std::string TablePages::NextSql() const {
  const std::string columns = shape_.ColumnList();
  const std::string table = "[" + shape_.name + "]";
  if (!shape_.identity.empty()) {
    const std::string behind = last_identity_.empty() ? "" : " Where [" + shape_.identity + "]>" + last_identity_;
    return "Select Top " + std::to_string(kRows) + " " + columns + " From " + table + behind + " Order by [" +
           shape_.identity + "]";
  }
  return "Select " + columns + " From (Select " + columns + ",ROW_NUMBER() Over (Order by " + columns +
         ") As luming_row From " + table + ") X Where luming_row Between " + std::to_string(read_ + 1) + " And " +
         std::to_string(read_ + kRows) + " Order by luming_row";
}

Recordset TablePages::Next() {
  Recordset page = store_.Execute(NextSql());
  read_ += page.RecordCount();
  if (shape_.identity.empty() || page.RecordCount() == 0) return page;
  for (; !page.Eof(); page.MoveNext()) last_identity_ = page.Field(shape_.identity).Text();
  page.MoveFirst();
  return page;
}

}  // namespace luming
