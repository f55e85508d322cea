#include "office/sheet_rules.h"

#include <algorithm>
#include <array>

#include "office/biff_records.h"
#include "util/failure.h"
#include "util/text.h"
#include "util/utf16.h"

namespace luming {

namespace {

constexpr std::size_t kMostUnitsOfACell = 32767;
constexpr std::size_t kMostUnitsOfAName = 31;
constexpr const char* kSource = "电子表格";

[[noreturn]] void Refuse(const std::string& why) {
  throw Failure(failure::kOverflow, why, kSource);
}

std::string FullWidth(char32_t c) {
  constexpr std::u32string_view kForbidden = U":\\/?*[]";
  constexpr char32_t kFullWidthShift = 0xFEE0;
  if (c < 0x20 || c == 0x7F) return " ";
  if (kForbidden.find(c) != std::u32string_view::npos) return EncodeUtf8(c + kFullWidthShift);
  return EncodeUtf8(c);
}

}  // namespace

void DemandFits(const Sheet& sheet, const SheetLimits& limits) {
  if (sheet.rows.size() > limits.rows) {
    Refuse("表格有 " + std::to_string(sheet.rows.size()) + " 行，这种格式的工作簿最多 " + std::to_string(limits.rows) +
           " 行。" + (limits.rows == kXlsLimits.rows ? "请把文件名的后缀改为 .xlsx 再导出。" : ""));
  }
  for (std::size_t row = 0; row < sheet.rows.size(); ++row) {
    const std::vector<SheetCell>& cells = sheet.rows[row];
    if (cells.size() > limits.cols) {
      Refuse("表格有 " + std::to_string(cells.size()) + " 列，这种格式的工作簿最多 " + std::to_string(limits.cols) +
             " 列。");
    }
    for (std::size_t col = 0; col < cells.size(); ++col) {
      const auto* text = std::get_if<std::string>(&cells[col].value);
      // A unit takes at least one byte of UTF-8, so most texts need no count.
      if (text && text->size() > kMostUnitsOfACell && ToUtf16(*text).size() > kMostUnitsOfACell) {
        Refuse("第 " + std::to_string(row + 1) + " 行第 " + std::to_string(col + 1) +
               " 列的文字超过工作簿单元格能容纳的 32767 个字符。");
      }
    }
  }
}

std::string ValidSheetName(const std::string& name) {
  std::string valid;
  std::size_t units = 0;
  for (std::size_t position = 0; position < name.size();) {
    const char32_t c = NextCodePoint(name, position);
    units += c < 0x10000 ? 1 : 2;
    if (units > kMostUnitsOfAName) break;
    valid += FullWidth(c);
  }
  valid = Trim(valid);
  if (valid.starts_with('\'')) valid.replace(0, 1, "’");
  if (valid.ends_with('\'')) valid.replace(valid.size() - 1, 1, "’");
  if (valid.empty() || EqualsIgnoreCase(valid, "history")) return "Sheet1";
  return valid;
}

std::optional<SheetBlock> SummedBlock(std::string_view formula) {
  if (formula.size() < 5 || !EqualsIgnoreCase(formula.substr(0, 4), "SUM(") || formula.back() != ')') {
    return std::nullopt;
  }
  const std::string_view inside = formula.substr(4, formula.size() - 5);
  const std::size_t colon = inside.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const auto first = ParseAddress(inside.substr(0, colon));
  const auto last = ParseAddress(inside.substr(colon + 1));
  if (!first || !last || last->row < first->row || last->col < first->col) return std::nullopt;
  return SheetBlock{first->row, first->col, last->row - first->row + 1, last->col - first->col + 1};
}

double DateSerial(const DateTime& moment) {
  using Days = std::chrono::duration<double, std::chrono::days::period>;
  return Days(moment.Point() - DateTime().Point()).count();
}

}  // namespace luming
