#include "documents/return_to_supplier.h"

#include "documents/document_lines.h"
#include "documents/entry_dialog.h"
#include "documents/return_columns.h"
#include "documents/return_entry.h"
#include "frame/gateway.h"
#include "masterdata/dictionary_lists.h"
#include "output/grid_routines.h"
#include "screen/messages.h"
#include "stock/batch_stock.h"
#include "stock/document_numbers.h"
#include "stock/movement_log.h"
#include "util/date_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

/// A money cell as it is sent: two places, 0 when it is empty.
std::string MoneySent(const std::string& cell) {
  return cell.empty() ? "0" : FormatNumberText(cell, "0.00");
}

}  // namespace

/// A line as its statements need it: texts as they are sent, figures as they are reckoned with.
struct ReturnLine {
  std::string YPBM, YPMC, GG, DW, CD, TKSL, PFJ, JE, PH, XQ, CLB;
  double quantity = 0;
  std::int16_t ratio = 1;

  double SmallestUnits() const { return quantity * ratio; }
};

Frm_YKTY::Frm_YKTY(AppContext& app)
    : Form(app.forms, kName, "药库退药", WindowKind::kChild),
      sRKDH(this, "sRKDH", "单号", {.cut = limit::kDocumentNumber, .ime = Ime::kOff}),
      sGHDW(this, "sGHDW", "供货单位", NameList(limit::kCompany)),
      ZDR(this, "ZDR", "制单人", NameList(limit::kPerson)),
      sFHR(this, "sFHR", "复核人", NameList(limit::kPerson)),
      picker(this, app, PickerSettingsOf(kName)),
      fpSpread1(this, app, LineGridSettingsOf(kName)),
      app_(app) {
  picker.picked.Connect(this, &Frm_YKTY::Picker_Picked);
}

Layout Frm_YKTY::Arrange() const {
  return Column({
      Group("退药单", Fields(3, {sRKDH, RQ, sGHDW, ZDR, sFHR, BZ})),
      SplitDown({picker.Arrange().Stretch(2), Layout(fpSpread1).Stretch(3)}),
      Row({Command1, Command4, Space(), Command3}),
  });
}

void Frm_YKTY::Load() {
  picker.Load();
  GridInit(fpSpread1);
  try {
    LoadCombos(app_, "select * from CS", {{"YP_FHR", &sFHR}, {"GHDW", &sGHDW}});
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
  }
  ZDR.SetText(app_.CurUser.GetUserName);
  sRKDH.SetText(NextNumber());
}

std::string Frm_YKTY::NextNumber() {
  return NextDocNo(app_, "TYDH", "YK_TYDJ", "TYRQ");
}

void Frm_YKTY::PickItem() {
  try {
    const int row = fpSpread1.StartLine(picker);
    if (row == 0) return;
    FillLine(row);
    auto& dialog = app_.forms.Get<Frm_YKTYCheck>(app_);
    dialog.lines = &fpSpread1;
    dialog.EditRow = row;
    dialog.ShowModal();
    fpSpread1.FinishLine(picker);
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
  }
}

void Frm_YKTY::FillLine(int row) {
  const Grid& matches = picker.Results();
  const auto take = [&](int column, int from) {
    fpSpread1.SetText(row, column, matches.Text(matches.ActiveRow(), from));
  };
  take(supplier_return::kName, match::kName);
  take(supplier_return::kSpecification, match::kSpecification);
  take(supplier_return::kUnit, match::kLargeUnit);
  take(supplier_return::kOrigin, match::kOrigin);
  take(supplier_return::kPurchasePrice, match::kPurchase);
  take(supplier_return::kRatio, match::kRatio);
}

bool Frm_YKTY::CheckTY() {
  constexpr int kIndent = 6;
  NumberedMessages messages(kIndent);
  if (Trim(sGHDW.Text()).empty()) messages.Add(" 供货单位不能为空!", sGHDW);
  if (Trim(sFHR.Text()).empty()) messages.Add(" 复核人不能为空!", sFHR);
  if (fpSpread1.MaxRows() == 0) messages.Add(" 项目明细不能为空!", picker.PM);
  return messages.Pass(app_.desktop);
}

void Frm_YKTY::Command1_Click() {
  if (!CheckTY() || !ConfirmSave(app_.desktop, fpSpread1)) return;
  try {
    // The number shown may well stand on a document by now: the save takes its own.
    GetField(app_, "YK_TYDJ", "TYDH", Trim(sRKDH.Text()));
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
    return;
  }
  fpSpread1.RemoveTotal();
  Save_YKTY();
}

void Frm_YKTY::Save_YKTY() {
  const bool saved = InTransaction(app_, [this] {
    const std::string number = NextNumber();
    InsertHead(number);
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      const ReturnLine line = ReadLine(row);
      InsertLine(number, line);
      ReturnGoods(number, line);
    }
  });
  if (!saved) return;
  sRKDH.SetText(NextNumber());
  sGHDW.SetText("");
  fpSpread1.SetMaxRows(0);
  app_.desktop.MsgBox({"退药成功!", box::kInformation, "信息"});
}

void Frm_YKTY::InsertHead(const std::string& number) {
  app_.Cn->Execute("Insert Into YK_TYDJ (KFMC,TYDH,TYRQ,ZDR,FHR,GHDW,BZ)Values('" + app_.KFMC + "','" + number + "','" +
                   FormatDate(RQ.Value(), "yyyy-mm-dd") + "','" + ZDR.Text() + "','" + sFHR.Text() + "','" +
                   sGHDW.Text() + "','" + BZ.Text() + "')");
}

ReturnLine Frm_YKTY::ReadLine(int row) const {
  const auto cell = [&](int column) { return fpSpread1.Text(row, column); };
  ReturnLine line;
  line.YPBM = cell(supplier_return::kCode);
  line.YPMC = cell(supplier_return::kName);
  line.GG = cell(supplier_return::kSpecification);
  line.DW = cell(supplier_return::kUnit);
  line.CD = cell(supplier_return::kOrigin);
  line.TKSL = cell(supplier_return::kQuantity);
  if (line.TKSL.empty()) line.TKSL = "0";
  line.PFJ = MoneySent(cell(supplier_return::kPurchasePrice));
  line.JE = MoneySent(cell(supplier_return::kAmount));
  line.PH = cell(supplier_return::kBatch);
  line.XQ = ExpirySent(cell(supplier_return::kExpiry));
  line.quantity = CDbl(line.TKSL);
  // A drug that was never given a ratio is counted as it is handed out.
  const std::string ratio = cell(supplier_return::kRatio);
  line.ratio = ratio.empty() ? std::int16_t{1} : CInt(ratio);
  line.CLB = std::to_string(line.ratio);
  return line;
}

void Frm_YKTY::InsertLine(const std::string& number, const ReturnLine& line) {
  app_.Cn->Execute("Insert into YK_TYDJMX(TYDH,YPBM,YPMC,GG,DW,CD,TKSL,PFJ,JE,PH,XQ,CLB) Values('" + number + "','" +
                   line.YPBM + "','" + line.YPMC + "','" + line.GG + "','" + line.DW + "','" + line.CD + "'," +
                   line.TKSL + "," + line.PFJ + "," + line.JE + ",'" + line.PH + "'," + line.XQ + "," + line.CLB + ")");
}

/// The stock's three faces.
void Frm_YKTY::ReturnGoods(const std::string& number, const ReturnLine& line) {
  const double returned = line.SmallestUnits();
  app_.Cn->Execute("Update YF_YPML Set YKKCL=YKKCL" + Less(returned) + " Where YPBM Like'" + line.YPBM + "'");
  AddMoveLog(app_, {.YPBM = line.YPBM,
                    .SL = line.quantity,
                    .CLB = line.ratio,
                    .KCL = returned,
                    .DW = line.DW,
                    .in = false,
                    .MS = "退药到供货商",
                    .RQ = DateText(app_.clock.Now()),
                    .KFBM = app_.KFMC,
                    .BZ = "退药单号：" + number});
  ConsumeBatch(app_, line.YPBM, returned, line.PH);
}

}  // namespace luming
