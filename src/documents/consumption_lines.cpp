#include "documents/consumption_lines.h"

#include "frame/gateway.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming::consumption {

Entry::Entry(AppContext& app, LineGrid& lines, const EntryHabits& habits)
    : EntryDialog(app, lines, habits.name, "请您输入(回车继续)"),
      TYSL(this, "TYSL", "数  量", EntryBox(limit::kFigure, habits.quantity_keys)),
      batch(this, app, habits.batch),
      habits_(habits) {
  DW.click.Connect(this, &Entry::DW_Click);
}

Layout Entry::Arrange() const {
  return Column({
      Fields(1, {Layout(PM).Titled("品  名"), Layout(GG).Titled("规  格")}),
      Fields(2, {DW, TYSL, Layout(LSJ).Titled("零售价"), batch.PH, Layout(batch.XQ).Titled("效  期"),
                 Layout(batch.PFJ).Titled("进  价")}),
      Row({Space(), Command1, Command2}),
  });
}

void Entry::LoadData(const std::string& YPBM) {
  Trapped(app_, [&] {
    Recordset drug;
    OpenRs(app_, drug,
           "Select YPMC,GG,DW,ZXDW,LSJ,CLLSJ,PFJ,CLB,YKKCL From YF_YPML Where YPBM Like" + Quoted(YPBM, "编码"));
    if (!drug.Eof()) ShowDrug(drug);
    CloseRs(drug);
    batch.Offer(YPBM);
  });
}

void Entry::ShowDrug(const Recordset& drug) {
  PM.SetCaption(drug.Field("YPMC").TextOrEmpty());
  GG.SetCaption(drug.Field("GG").TextOrEmpty());
  drug_ = {drug.Field("DW").TextOrEmpty(), drug.Field("ZXDW").TextOrEmpty(), CInt(drug.Field("CLB").NumberOr(0))};
  if (drug_.IsSplit() || !habits_.always_two_units) {
    retail_ = drug.Field("LSJ").NumberOr(0);
    split_retail_ = drug.Field("CLLSJ").NumberOr(0);
  }
  const double stock = drug.Field("YKKCL").NumberOr(0);
  YKKCL_ = habits_.whole_stock ? CLng(stock) : stock;
  OfferUnits(DW, drug_);
  if (habits_.always_two_units && !drug_.IsSplit()) {
    DW.AddItem(drug_.ZXDW);
    DW.SetEnabled(true);
  }
  LSJ.SetCaption(drug.Field("LSJ").Format("0.0000"));
  batch.PFJ.SetCaption(drug.Field("PFJ").Format(habits_.catalogue_price));
}

void Entry::DW_Click() {
  LSJ.SetCaption(FormatNumber(LargeUnitChosen(DW) ? retail_ : split_retail_, "0.0000"));
}

void Entry::FormKeyDown(KeyEvent& event) {
  const bool last = batch.PH.HasFocus() || (TYSL.HasFocus() && !batch.IsOpen());
  if (event.code == key::kEnter && habits_.enter_confirms && last) {
    event.handled = true;
    Command1_Click();
  } else {
    EntryDialog::FormKeyDown(event);
  }
}

void Entry::Command1_Click() {
  Trapped(app_, [this] {
    // The drug's stock is the limit, never that of the batch.
    if (!QuantityPasses(TYSL, {"数量不能为空", "数量不能为0"}, Factor(), YKKCL_)) return;
    WriteLine();
    Unload();
  });
}

void Entry::WriteLine() {
  const double quantity = CDbl(TYSL.Text());
  const std::string purchase = batch.PFJ.Caption();
  Write(kUnit, DW.Text());
  Write(kQuantity, TYSL.Text());
  Write(kRetailPrice, FormatNumberText(LSJ.Caption(), habits_.money));
  Write(kBatch, batch.PH.Text());
  if (IsDate(batch.XQ.Caption())) Write(kExpiry, batch.XQ.Caption());
  Write(kRetailAmount, FormatNumber(quantity * NumberOrZero(LSJ.Caption()), habits_.money));
  Write(kPurchasePrice, FormatNumberText(purchase, "0.0000"));
  Write(kPurchaseAmount, FormatNumber(quantity * NumberOrZero(purchase), habits_.money));
  Write(kRatio, std::to_string(Factor()));
}

}  // namespace luming::consumption
