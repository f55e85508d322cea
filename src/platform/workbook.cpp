#include "platform/workbook.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "util/failure.h"

namespace luming {

namespace {

constexpr std::size_t kMostDigitsOfANumber = 11;  // a spreadsheet shows longer ones in powers of ten

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view WithoutSign(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  for (const std::string_view sign : {std::string_view("￥"), std::string_view("¥")}) {
    if (text.starts_with(sign)) return text.substr(sign.size());
  }
  return text;
}

/// Whether the digits are those of a number as the screens write it: "0", "12", "0.50", ".5".
bool IsPlainNumber(std::string_view digits) {
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::string_view whole = digits.substr(0, point);
  const std::string_view fraction = point < digits.size() ? digits.substr(point + 1) : std::string_view();
  if (whole.empty() && fraction.empty()) return false;
  if (point < digits.size() && fraction.empty()) return false;
  if (whole.size() > 1 && whole.front() == '0') return false;
  if (whole.size() > kMostDigitsOfANumber) return false;
  return std::ranges::all_of(whole, IsDigit) && std::ranges::all_of(fraction, IsDigit);
}

}  // namespace

int Sheet::AddStyle(const SheetStyle& style) {
  const auto found = std::ranges::find(styles, style);
  if (found != styles.end()) return static_cast<int>(found - styles.begin());
  styles.push_back(style);
  return static_cast<int>(styles.size()) - 1;
}

void Workbook::SetCell(std::string_view address, std::string text) {
  const std::optional<CellPlace> place = ParseAddress(address);
  if (!place) throw StandardFailure(failure::kInvalidCall);
  SetCells(place->row, place->col, {{std::move(text)}});
}

std::optional<double> CellNumber(std::string_view text) {
  const std::string_view digits = WithoutSign(text);
  if (!IsPlainNumber(digits)) return std::nullopt;
  double value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return text.starts_with('-') ? -value : value;
}

std::string ColumnLetters(int col) {
  std::string letters;
  for (; col > 0; col = (col - 1) / 26) letters.insert(letters.begin(), static_cast<char>('A' + (col - 1) % 26));
  return letters;
}

std::optional<CellPlace> ParseAddress(std::string_view address) {
  CellPlace place;
  std::size_t letters = 0;
  for (; letters < address.size() && address[letters] >= 'A' && address[letters] <= 'Z'; ++letters) {
    place.col = place.col * 26 + (address[letters] - 'A' + 1);
    if (letters > 2) return std::nullopt;
  }
  const char* const end = address.data() + address.size();
  const auto [stop, error] = std::from_chars(address.data() + letters, end, place.row);
  if (letters == 0 || error != std::errc() || stop != end || place.row < 1) return std::nullopt;
  return place;
}

}  // namespace luming
