#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace luming {

/// The cells that a formula sums: rows and columns from 1, both ends included.
struct SumRange {
  int first_row = 0;
  int first_col = 0;
  int last_row = 0;
  int last_col = 0;
};

/// "SUM(E1:E7)", blanks and case aside; nothing for any other text.
std::optional<SumRange> ParseSum(std::string_view formula);

/// Adds up cell texts as a bookkeeper does: the sum has no more decimals than the most precise of its parts, and no
/// remainder of binary arithmetic. A text that is no number counts as nothing.
class DecimalSum {
 public:
  void Add(std::string_view text);
  std::string Text() const;  ///< the default text of a number

 private:
  double sum_ = 0;
  double lost_ = 0;  // what the additions so far have rounded away
  int decimals_ = 0;
};

}  // namespace luming
