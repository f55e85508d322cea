#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>

#include "documents/line_columns.h"
#include "platform/statement.h"
#include "screen/grid.h"

namespace luming {

/// The statement that inserts one line of a document. Which values it sends, and in which order, its own words say:
/// each name between their brackets is that of a column's `saved_as`, or of a value that the save gives for each line.
/// A name that is neither does not compile.
///
///     constexpr LineInsert kInsert("Insert Into YK_YPRKMX(RKDH,YPBM,…)Values(", kColumns, {"RKDH"});
class LineInsert {
 public:
  template <std::size_t Count>
  consteval LineInsert(const char* words, const LineColumn (&columns)[Count],
                       std::initializer_list<std::string_view> given)
      : words_(words), columns_(columns) {
    std::string_view names(words);
    names = names.substr(names.find('(') + 1);
    names = names.substr(0, names.find(')'));
    for (std::size_t comma = 0; comma != names.npos; names.remove_prefix(comma == names.npos ? 0 : comma + 1)) {
      comma = names.find(',');
      const std::string_view name = names.substr(0, comma);
      const int source = SourceOf(name, columns_, given);
      if (source == 0) throw "neither a column is saved under this name nor a value given";
      sources_[count_++] = source;
    }
  }

  /// @param given in the order in which the insert declares their names
  Statement operator()(const Grid& lines, int row, std::initializer_list<Statement> given) const;

 private:
  static constexpr std::size_t kMostValues = 24;

  /// The number of a column, or less than 0: of a given value, the first of which is -1.
  static consteval int SourceOf(std::string_view name, LineColumns columns,
                                std::initializer_list<std::string_view> given) {
    int number = 0;
    for (const std::string_view value : given) {
      --number;
      if (value == name) return number;
    }
    for (const LineColumn& column : columns) {
      if (column.saved_as && column.saved_as == name) return column.column;
    }
    return 0;
  }

  const char* words_;
  LineColumns columns_;
  std::array<int, kMostValues> sources_{};
  std::size_t count_ = 0;
};

}  // namespace luming
