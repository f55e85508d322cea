#include "documents/receipt_entry.h"

#include "documents/entry_dialog.h"
#include "documents/receipt_columns.h"
#include "screen/messages.h"
#include "util/date_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

void CheckPrice(NumberedMessages& messages, TextBox& price, const char* empty, const char* not_numeric) {
  if (price.Text().empty()) {
    messages.Add(empty, price);
  } else if (!IsNumeric(price.Text())) {
    messages.Add(not_numeric, price);
  }
}

}  // namespace

ek_RKXZ::ek_RKXZ(AppContext& app)
    : Form(app.forms, kName, "请您输入,(回车继续)", WindowKind::kDialog),
      DW(this, "DW", "单  位", {.style = ComboStyle::kFixed}),
      sngSL(this, "sngSL", "数  量", QuantityBox()),
      sngLSJ(this, "sngLSJ", "零售价", PriceBox()),
      PFJ(this, "PFJ", "进货价格(大单位）", PriceBox()),
      PLJ(this, "PLJ", "批发价", PriceBox()),
      sPH(this, "sPH", "药品批号", EntryBox(limit::kBatch)),
      app_(app) {
  DW.click.Connect(this, &ek_RKXZ::DW_Click);
  sngSL.change.Connect(this, &ek_RKXZ::ShowAmount);
  PFJ.change.Connect(this, &ek_RKXZ::ShowAmount);
}

Layout ek_RKXZ::Arrange() const {
  return Column({
      Fields(1, {Layout(PM).Titled("品  名"), Layout(GG).Titled("规  格")}),
      Fields(2, {DW, sngSL, sngLSJ, PFJ, PLJ, sPH, lYXQ, Layout(Label_JE).Titled("进货金额")}),
      Row({Space(), Command1, Command2}),
  });
}

void ek_RKXZ::Activated() {
  sngSL.SetFocus();
  sngSL.SelectAll();
}

/// Closing the window must not leave a line without a quantity behind.
void ek_RKXZ::ClosedByFrame() {
  Command2_Click();
}

void ek_RKXZ::FormKeyDown(KeyEvent& event) {
  SendTab(*this, event.code);
}

void ek_RKXZ::DW_Click() {
  sngLSJ.SetText(LargeUnitChosen(DW) ? FormatNumber(LSJ, "0.00") : FormatNumber(CLLSJ, "0.000"));
  ShowAmount();
}

double ek_RKXZ::UnitPrice() const {
  const double price = NumberOrZero(PFJ.Text());
  return CLB >= 2 && !LargeUnitChosen(DW) ? price / CLB : price;
}

void ek_RKXZ::ShowAmount() {
  if (Trim(sngSL.Text()).empty()) {
    Label_JE.SetCaption("");
  } else if (IsNumeric(sngSL.Text())) {
    Label_JE.SetCaption(FormatNumber(UnitPrice() * CDbl(sngSL.Text()), "0.0000"));
  }
}

bool ek_RKXZ::CheckLine() {
  NumberedMessages messages;
  if (sngSL.Text().empty()) {
    messages.Add(" 数量不能为空!", sngSL);
  } else if (!IsNumeric(sngSL.Text())) {
    messages.Add(" 数量只能为数字!", sngSL);
  } else if (CDbl(sngSL.Text()) < 0 && !app_.CurUser.YPGL_FSYP) {
    CheckRight(app_, "YPGL_FSYP");
    messages.Add(" 你没有输入负数的权限!", sngSL);
  }
  if (sPH.Text().empty()) messages.Add(" 批号不能为空!", sPH);
  CheckPrice(messages, PFJ, "进价不能为空!", "进价只能为数字");
  CheckPrice(messages, PLJ, "批发价不能为空!", "批发价只能为数字");
  return messages.Pass(app_.desktop);
}

void ek_RKXZ::WriteLine() {
  const double quantity = CDbl(sngSL.Text());
  const double price = CDbl(PFJ.Text());
  const auto write = [this](int column, std::string text) { lines->SetText(EditRow, column, std::move(text)); };
  write(receipt::kUnit, DW.Text());
  write(receipt::kQuantity, sngSL.Text());
  write(receipt::kPurchasePrice, PFJ.Text());
  write(receipt::kWholesalePrice, FormatNumberText(PLJ.Text(), "0.000"));
  write(receipt::kRetailPrice, FormatNumberText(sngLSJ.Text(), "0.00"));
  write(receipt::kAmount, FormatNumber(quantity * price, "0.000"));
  write(receipt::kBatch, sPH.Text());
  write(receipt::kExpiry, FormatDate(lYXQ.Value(), "yyyy-mm-dd"));
  if (DW.Items().size() < 2 || LargeUnitChosen(DW)) return;
  write(receipt::kRatio, "1");
  if (CLB <= 1) return;
  write(receipt::kAmount, FormatNumber(quantity * price / CLB, "0.000"));
  write(receipt::kUnitPurchasePrice, FormatNumber(price / CLB, "0.000"));
}

void ek_RKXZ::Command1_Click() {
  if (!CheckLine()) return;
  WriteLine();
  Unload();
}

void ek_RKXZ::Command2_Click() {
  lines->CancelLine();
  Unload();
}

}  // namespace luming
