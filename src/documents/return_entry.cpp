#include "documents/return_entry.h"

#include "documents/entry_dialog.h"
#include "documents/return_columns.h"
#include "frame/gateway.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming {

Frm_YKTYCheck::Frm_YKTYCheck(AppContext& app)
    : Form(app.forms, kName, "请您输入(回车继续)", WindowKind::kDialog),
      TYSL(this, "TYSL", "退药数量", QuantityBox()),
      PH(this, "PH", "批  号", {.style = ComboStyle::kFixed}),
      app_(app) {
  PH.click.Connect(this, &Frm_YKTYCheck::PH_Click);
}

Layout Frm_YKTYCheck::Arrange() const {
  return Column({
      Fields(1, {Layout(PM).Titled("品  名"), Layout(GG).Titled("规  格")}),
      Fields(2, {Layout(DW).Titled("单  位"), Layout(LSJ).Titled("零售价"), TYSL, PH, Layout(XQ).Titled("效  期"),
                 Layout(PFJ).Titled("进  价")}),
      Row({Space(), Command1, Command2}),
  });
}

void Frm_YKTYCheck::Load() {
  try {
    const std::string code = lines->Text(EditRow, supplier_return::kCode);
    ShowDrug(code);
    OfferBatches(code);
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
  }
}

void Frm_YKTYCheck::ShowDrug(const std::string& code) {
  Recordset drug;
  OpenRs(app_, drug, "Select YPMC,GG,DW,LSJ,PFJ,CLB,YKKCL From YF_YPML Where YPBM Like'" + code + "'");
  if (!drug.Eof()) {
    PM.SetCaption(drug.Field("YPMC").TextOrEmpty());
    GG.SetCaption(drug.Field("GG").TextOrEmpty());
    DW.SetCaption(drug.Field("DW").TextOrEmpty());
    LSJ.SetCaption(drug.Field("LSJ").Format("0.0000"));
    YKKCL_ = drug.Field("YKKCL").NumberOr(0);
  }
  CloseRs(drug);
}

/// No batch is chosen at first: a line without one takes from the oldest.
void Frm_YKTYCheck::OfferBatches(const std::string& code) {
  OpenRs(app_, batches_, "Exec YK_GetPH '" + code + "'");
  if (batches_.RecordCount() == 0) return;
  XQ.SetCaption(batches_.Field("XQ").Format("YYYY-MM-DD"));
  PFJ.SetCaption(batches_.Field("PFJ").Format("￥0.0000"));
  for (; !batches_.Eof(); batches_.MoveNext()) PH.AddItem(batches_.Field("PH").TextOrEmpty());
}

void Frm_YKTYCheck::PH_Click() {
  if (PH.ListIndex() < 0) return;
  batches_.MoveFirst();
  for (int row = 0; row < PH.ListIndex(); ++row) batches_.MoveNext();
  XQ.SetCaption(batches_.Field("XQ").Format("YYYY-MM-DD"));
  PFJ.SetCaption(batches_.Field("PFJ").Format("0.00"));
}

void Frm_YKTYCheck::Activated() {
  TYSL.SetFocus();
  TYSL.SelectAll();
}

/// Large units are held against smallest ones on purpose: the dialog stops slips of the hand, not every overdraft.
bool Frm_YKTYCheck::CheckQuantity() {
  const char* wrong = nullptr;
  if (TYSL.Text().empty()) {
    wrong = "退药数量不能为空";
  } else if (CDbl(TYSL.Text()) == 0) {
    wrong = "退药数量不能为0";
  } else if (CDbl(TYSL.Text()) > YKKCL_) {
    wrong = "你输入的数量已超过最大的库存量！";
  }
  if (!wrong) return true;
  app_.desktop.MsgBox({wrong, box::kWarning, "系统提示"});
  TYSL.SetFocus();
  return false;
}

void Frm_YKTYCheck::WriteLine() {
  const auto write = [this](int column, std::string text) { lines->SetText(EditRow, column, std::move(text)); };
  write(supplier_return::kQuantity, TYSL.Text());
  write(supplier_return::kAmount, FormatNumber(CDbl(TYSL.Text()) * NumberOrZero(PFJ.Caption()), "0.00"));
  write(supplier_return::kBatch, PH.Text());
  if (IsDate(XQ.Caption())) write(supplier_return::kExpiry, XQ.Caption());
}

void Frm_YKTYCheck::Command1_Click() {
  try {
    if (!CheckQuantity()) return;
    WriteLine();
    Unload();
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
  }
}

void Frm_YKTYCheck::Command2_Click() {
  lines->CancelLine();
  Unload();
}

}  // namespace luming
