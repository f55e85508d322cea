#include "documents/document_checks.h"

#include "frame/gateway.h"
#include "stock/stock_move.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

/// Which lines ask for more than the storehouse holds now, a line of text each. Each stock is read afresh.
std::string Shortages(AppContext& app, const Grid& lines, int quantity, int ratio) {
  std::string short_lines;
  for (int row = 1; row <= lines.MaxRows(); ++row) {
    const std::string stock = GetWarehouseStock(app, lines.Text(row, 1));
    const std::string units = lines.Text(row, ratio);
    const double wanted = SmallestUnits(CDbl(lines.Text(row, quantity)), units.empty() ? 1 : CDbl(units));
    if (wanted <= CDbl(stock)) continue;
    short_lines += "第" + std::to_string(row) + "行 【" + lines.Text(row, 2) + "】当前药库最大库存为" + stock + "\r\n";
  }
  return short_lines;
}

}  // namespace

void CheckNumber(NumberedMessages& messages, TextBox& number, const char* when_empty, const char* otherwise) {
  constexpr std::size_t kDigits = 12;
  if (number.Text().empty()) {
    messages.Add(when_empty, number);
  } else if (CharCount(Trim(number.Text())) != kDigits) {
    messages.Add(otherwise, number);
  }
}

bool ConfirmSave(Desktop& desktop) {
  return desktop.MsgBox({"你确定要执行此操作吗？请检查。", box::kQuestion + box::kYesNo, "系统提示"}) == Answer::kYes;
}

bool HasLines(Desktop& desktop, const Grid& lines, const std::string& words) {
  if (lines.MaxRows() > 1 || (lines.MaxRows() == 1 && !lines.IsTotalRow(1))) return true;
  desktop.MsgBox({"系统提示您:\r\n\r\n" + words, box::kStop, "提示"});
  return false;
}

bool StockSuffices(AppContext& app, const Grid& lines, int quantity, int ratio) {
  std::string shortages;
  if (!Trapped(app, [&] { shortages = Shortages(app, lines, quantity, ratio); })) return false;
  if (shortages.empty()) return true;
  app.desktop.MsgBox({shortages, box::kStop, "错误"});
  return false;
}

}  // namespace luming
