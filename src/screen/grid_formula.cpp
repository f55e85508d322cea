#include "screen/grid_formula.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "util/number_text.h"
#include "util/text.h"

namespace luming {
namespace {

constexpr int kMaxIndex = 10'000'000;
constexpr int kMaxDecimals = 15;

/// "E7" at the front of the text: column letters, then the row.
bool TakeCell(std::string_view& text, int& row, int& col) {
  std::size_t at = 0;
  col = 0;
  for (; at < text.size() && text[at] >= 'A' && text[at] <= 'Z' && col < kMaxIndex; ++at) {
    col = col * 26 + (text[at] - 'A' + 1);
  }
  if (col == 0) return false;
  const auto [end, error] = std::from_chars(text.data() + at, text.data() + text.size(), row);
  if (error != std::errc{} || row < 1 || row > kMaxIndex) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return true;
}

bool TakeText(std::string_view& text, std::string_view wanted) {
  if (!text.starts_with(wanted)) return false;
  text.remove_prefix(wanted.size());
  return true;
}

int DecimalsOf(std::string_view text, double value) {
  if (text.find_first_of("eE") != std::string_view::npos) text = {};
  const auto point = text.find('.');
  if (point == std::string_view::npos) return value == std::floor(value) ? 0 : kMaxDecimals;
  const auto digits = text.substr(point + 1);
  const auto end = std::find_if(digits.begin(), digits.end(), [](char c) { return c < '0' || c > '9'; });
  return static_cast<int>(std::min<std::ptrdiff_t>(end - digits.begin(), kMaxDecimals));
}

}  // namespace

std::optional<SumRange> ParseSum(std::string_view formula) {
  const std::string plain = UpperAscii(Replace(formula, " ", ""));
  std::string_view rest = plain;
  SumRange range;
  const bool whole = TakeText(rest, "SUM(") && TakeCell(rest, range.first_row, range.first_col) &&
                     TakeText(rest, ":") && TakeCell(rest, range.last_row, range.last_col) && rest == ")";
  if (!whole) return std::nullopt;
  if (range.first_row > range.last_row) std::swap(range.first_row, range.last_row);
  if (range.first_col > range.last_col) std::swap(range.first_col, range.last_col);
  return range;
}

void DecimalSum::Add(std::string_view text) {
  if (text.empty()) return;
  const std::optional<double> value = ParseNumber(text);
  if (!value) return;
  decimals_ = std::max(decimals_, DecimalsOf(text, *value));
  const double total = sum_ + *value;
  lost_ += std::fabs(sum_) >= std::fabs(*value) ? (sum_ - total) + *value : (*value - total) + sum_;
  sum_ = total;
}

std::string DecimalSum::Text() const {
  return NumberText(RoundDecimal(sum_ + lost_, decimals_));
}

}  // namespace luming
