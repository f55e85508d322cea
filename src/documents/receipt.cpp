#include "documents/receipt.h"

#include "documents/document_lines.h"
#include "documents/entry_dialog.h"
#include "documents/receipt_columns.h"
#include "documents/receipt_entry.h"
#include "frame/command_table.h"
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

constexpr int kNewDrugCommand = 201;

std::string OrElse(std::string text, const char* fallback) {
  return text.empty() ? fallback : std::move(text);
}

}  // namespace

/// A line as its statements need it: texts as they are sent, figures as they are reckoned with.
struct ReceiptLine {
  std::string YPBM, PM, GG, DW, CD, PLJ, LSJ, RKSL, PFJ, JE, PH, XQ, CLB, SJPFJ;
  double quantity = 0;
  std::int16_t ratio = 1;

  double SmallestUnits() const { return ratio * quantity; }
};

ek_YK_RKMX::ek_YK_RKMX(AppContext& app)
    : Form(app.forms, kName, "药品入库录入", WindowKind::kChild),
      sRKDH(this, "sRKDH", "入库单号", {.cut = limit::kDocumentNumber, .ime = Ime::kOff}),
      sGHDW(this, "sGHDW", "供货单位", NameList(limit::kCompany)),
      sYSR(this, "sYSR", "验收人", NameList(limit::kPerson)),
      sFHR(this, "sFHR", "复核人", NameList(limit::kPerson)),
      sFPH(this, "sFPH", "发票号", {.cut = limit::kInvoice, .ime = Ime::kOff}),
      lFKBZ(this, "lFKBZ", "付款标志", {.style = ComboStyle::kFixed, .items = {"是", "否"}, .selected = 0}),
      picker(this, app, PickerSettingsOf(kName)),
      fpSpread1(this, app, LineGridSettingsOf(kName)),
      app_(app) {
  picker.picked.Connect(this, &ek_YK_RKMX::Picker_Picked);
  fpSpread1.change.Connect(this, &ek_YK_RKMX::fpSpread1_Change);
}

Layout ek_YK_RKMX::Arrange() const {
  return Column({
      Group("入库单", Fields(4, {sRKDH, sGHDW, sYSR, sFHR, sFPH, FPRQ, lFKBZ})),
      SplitDown({picker.Arrange().Stretch(2), Layout(fpSpread1).Stretch(3)}),
      Row({Command1, Command2, Command5, Command4, Command6, Space(), Command3}),
  });
}

void ek_YK_RKMX::Load() {
  if (!app_.CurUser.YPGL_YKJYLR) {
    CheckRight(app_, "YPGL_YKJYLR");
    Unload();
    return;
  }
  const Command* new_drug = app_.commands.Find(kNewDrugCommand);
  Command6.SetEnabled(new_drug && new_drug->action);
  picker.Load();
  GridInit(fpSpread1);
  try {
    LoadCombos(app_, "select * from CS", {{"GHDW", &sGHDW}, {"YP_YSR", &sYSR}, {"YP_FHR", &sFHR}});
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
  }
  sRKDH.SetText(NextNumber());
}

std::string ek_YK_RKMX::NextNumber() {
  return NextDocNo(app_, "RKDH", "YK_YPRK", "RKRQ");
}

void ek_YK_RKMX::PickItem() {
  try {
    const int row = fpSpread1.StartLine(picker);
    if (row == 0) return;
    auto& dialog = app_.forms.Get<ek_RKXZ>(app_);
    FillLine(row, dialog);
    dialog.ShowModal();
    fpSpread1.FinishLine(picker);
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
  }
}

void ek_YK_RKMX::FillLine(int row, ek_RKXZ& dialog) {
  const Grid& matches = picker.Results();
  const auto found = [&](int column) { return matches.Text(matches.ActiveRow(), column); };
  const auto write = [&](int column, std::string text) { fpSpread1.SetText(row, column, std::move(text)); };
  write(receipt::kName, found(match::kName));
  write(receipt::kSpecification, found(match::kSpecification));
  dialog.PM.SetCaption(found(match::kName));
  dialog.GG.SetCaption(found(match::kSpecification));

  const std::string wholesale = FormatNumberText(found(match::kWholesale), "0.000");
  write(receipt::kWholesalePrice, wholesale);
  dialog.PLJ.SetText(wholesale);

  const std::string ratio = found(match::kRatio);
  const DrugRecord drug{found(match::kLargeUnit), found(match::kSmallestUnit),
                        IsNumeric(ratio) ? CInt(ratio) : std::int16_t{1}};
  dialog.CLB = drug.LargeUnitRatio();
  write(receipt::kUnit, drug.DW);
  write(receipt::kRatio, std::to_string(dialog.CLB));
  OfferUnits(dialog.DW, drug);

  write(receipt::kOrigin, found(match::kOrigin));
  const std::string retail = FormatNumberText(found(match::kRetail), "0.00");
  write(receipt::kRetailPrice, retail);
  dialog.LSJ = NumberOrZero(retail);
  dialog.sngLSJ.SetText(retail);
  dialog.CLLSJ = NumberOrZero(found(match::kSplitRetail));
  write(receipt::kPurchasePrice, FormatNumberText(found(match::kPurchase), "0.000"));
  dialog.PFJ.SetText(found(match::kPurchase));

  dialog.lines = &fpSpread1;
  dialog.EditRow = row;
  dialog.sngSL.SetText("1");
}

/// A warning only: the price stands. The amount follows quantity and price as they are, whatever the line's unit.
void ek_YK_RKMX::fpSpread1_Change(int row, int column) {
  if (fpSpread1.MaxRows() == 0 || (column != receipt::kQuantity && column != receipt::kPurchasePrice)) return;
  const double price = fpSpread1.Number(row, receipt::kPurchasePrice);
  if (fpSpread1.Number(row, receipt::kWholesalePrice) < price) {
    app_.desktop.MsgBox({"进货价格大于批发价格。", box::kInformation, "系统信息"});
  }
  const double amount = fpSpread1.Number(row, receipt::kQuantity) * price;
  fpSpread1.SetText(row, receipt::kAmount, FormatNumber(amount, "0.0000"));
}

void ek_YK_RKMX::Command6_Click() {
  app_.commands.Find(kNewDrugCommand)->action(app_);
}

bool ek_YK_RKMX::CheckRK() {
  constexpr int kIndent = 6;
  constexpr std::size_t kNumberLength = 12;
  NumberedMessages messages(kIndent);
  if (sRKDH.Text().empty()) {
    messages.Add("入库单号不能为空!", sRKDH);
  } else if (CharCount(Trim(sRKDH.Text())) != kNumberLength) {
    messages.Add(" 入库单号必须为12位", sRKDH);
  }
  if (Trim(sGHDW.Text()).empty()) messages.Add(" 供货单位不能为空!", sGHDW);
  if (Trim(sYSR.Text()).empty()) messages.Add(" 验收人不能为空!", sYSR);
  if (Trim(sFHR.Text()).empty()) messages.Add(" 复核人不能为空!", sFHR);
  if (fpSpread1.MaxRows() == 0) messages.Add(" 入库项目明细不能为空!", picker.PM);
  return messages.Pass(app_.desktop);
}

void ek_YK_RKMX::Command1_Click() {
  if (!CheckRK() || !ConfirmSave(app_.desktop, fpSpread1)) return;
  fpSpread1.RemoveTotal();
  Save_YPRK();
}

void ek_YK_RKMX::Save_YPRK() {
  std::string next;
  const bool saved = InTransaction(app_, [&] {
    const std::string number = NextNumber();
    InsertHead(number);
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      const ReceiptLine line = ReadLine(row);
      InsertLine(number, line);
      ReceiveLine(number, line);
    }
    next = NextNumber();
  });
  if (!saved) return;
  sRKDH.SetText(next);
  sFPH.SetText("");
  sGHDW.SetText("");
  fpSpread1.SetMaxRows(0);
  app_.desktop.MsgBox({"入库添加成功!", box::kInformation, "信息"});
}

void ek_YK_RKMX::InsertHead(const std::string& number) {
  app_.Cn->Execute("Insert into YK_YPRK(KFMC,RKDH,RKRQ,FPH,FPRQ,GHDW,FKBZ,YSR,FHR,DJR) Values('" + app_.KFMC + "','" +
                   number + "','" + FormatDate(app_.clock.Now(), "yyyy-mm-dd hh:mm:ss") + "','" + sFPH.Text() + "','" +
                   FormatDate(FPRQ.Value(), "yyyy-mm-dd") + "','" + sGHDW.Text() + "'," +
                   (lFKBZ.Text() == "是" ? "1" : "0") + ",'" + sYSR.Text() + "','" + sFHR.Text() + "','" +
                   app_.CurUser.GetUserName + "')");
}

ReceiptLine ek_YK_RKMX::ReadLine(int row) const {
  const auto cell = [&](int column) { return fpSpread1.Text(row, column); };
  ReceiptLine line;
  line.YPBM = cell(receipt::kCode);
  line.PM = cell(receipt::kName);
  line.GG = cell(receipt::kSpecification);
  line.DW = cell(receipt::kUnit);
  line.CD = cell(receipt::kOrigin);
  line.PLJ = OrElse(cell(receipt::kWholesalePrice), "0");
  line.LSJ = OrElse(cell(receipt::kRetailPrice), "0");
  line.RKSL = cell(receipt::kQuantity);
  line.PFJ = OrElse(cell(receipt::kPurchasePrice), "0");
  line.JE = OrElse(cell(receipt::kAmount), "0");
  line.PH = cell(receipt::kBatch);
  line.XQ = ExpirySent(cell(receipt::kExpiry));
  line.CLB = OrElse(cell(receipt::kRatio), "1");
  line.SJPFJ = OrElse(cell(receipt::kUnitPurchasePrice), line.PFJ.c_str());
  if (!IsNumeric(line.SJPFJ)) line.SJPFJ = "0";
  line.quantity = CDbl(line.RKSL);
  line.ratio = CInt(line.CLB);
  return line;
}

void ek_YK_RKMX::InsertLine(const std::string& number, const ReceiptLine& line) {
  app_.Cn->Execute("Insert Into YK_YPRKMX(RKDH,YPBM,PM,GG,DW,CD,PLJ,RKSL,PFJ,JE,PH,XQ,CLB,LSJ,SJPFJ)Values('" + number +
                   "','" + line.YPBM + "','" + line.PM + "','" + line.GG + "','" + line.DW + "','" + line.CD + "'," +
                   line.PLJ + "," + line.RKSL + "," + line.PFJ + "," + line.JE + ",'" + line.PH + "'," + line.XQ + "," +
                   line.CLB + "," + line.LSJ + "," + line.SJPFJ + ")");
}

/// The stock's three faces and the catalogue's prices. The catalogue gets the typed price divided by the line's ratio.
void ek_YK_RKMX::ReceiveLine(const std::string& number, const ReceiptLine& line) {
  const DateTime now = app_.clock.Now();
  const double received = line.SmallestUnits();
  AddToBatch(app_,
             {number, line.YPBM, line.PH, line.XQ, received, line.SJPFJ, line.PLJ, FormatDate(now, "YYYY-MM-DD")});
  if (line.ratio == 0) throw StandardFailure(failure::kDivisionByZero);
  app_.Cn->Execute("Update YF_YPML SET PFJ=" + FormatNumber(CDbl(line.PFJ) / line.ratio, "0.000") + ",PLJ=" + line.PLJ +
                   ",YKKCL=YKKCL+" + NumberText(received) + " Where YPBM Like'" + line.YPBM + "'");
  AddMoveLog(app_, {.YPBM = line.YPBM,
                    .SL = line.quantity,
                    .CLB = line.ratio,
                    .KCL = received,
                    .DW = line.DW,
                    .in = true,
                    .MS = "入库记录",
                    .RQ = DateText(now),
                    .KFBM = app_.KFMC,
                    .BZ = "入库单号：" + number});
}

}  // namespace luming
