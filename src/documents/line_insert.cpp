#include "documents/line_insert.h"

namespace luming {

Statement LineInsert::operator()(const Grid& lines, int row, std::initializer_list<Statement> given) const {
  Statement statement(words_);
  for (std::size_t i = 0; i < count_; ++i) {
    if (i > 0) statement += ",";
    if (sources_[i] < 0) {
      statement += given.begin()[-sources_[i] - 1];
    } else {
      const LineColumn& column = columns_[static_cast<std::size_t>(sources_[i]) - 1];
      column.sent(statement, lines.Text(row, column.column), {column.caption, row});
    }
  }
  statement += ")";
  return statement;
}

}  // namespace luming
