#include <cstdint>
#include <string>

#include "documents/document_checks.h"
#include "documents/entry_dialog.h"
#include "documents/entry_fields.h"
#include "documents/line_document.h"
#include "documents/line_insert.h"
#include "documents/screens.h"
#include "frame/gateway.h"
#include "masterdata/drug_record.h"
#include "masterdata/screens.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/label.h"
#include "screen/text_box.h"
#include "stock/document_numbers.h"
#include "util/date_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

namespace col {
enum Column {
  kCode = 1,
  kName,
  kSpecification,
  kUnit,
  kOrigin,
  kWholesalePrice,
  kRetailPrice,
  kQuantity,
  kPurchasePrice,  ///< of the large unit, whichever unit the line has
  kAmount,
  kBatch,
  kExpiry,
  kRatio,
  kUnitPurchasePrice,  ///< of the line's unit; hidden, and empty for a line in the large unit
};
}  // namespace col

// clang-format off
constexpr LineColumn kColumns[] = {
  // column                  caption     from the match               saved as
  {col::kCode,               "编码",     {},                          "YPBM", sent::Text,       Cell::kLocked, Holds::kCode},
  {col::kName,               "品名",     {match::kName},              "PM",   sent::Text},
  {col::kSpecification,      "规格",     {match::kSpecification},     "GG",   sent::Text},
  {col::kUnit,               "单位",     {match::kLargeUnit},         "DW",   sent::Text},
  {col::kOrigin,             "产地",     {match::kOrigin},            "CD",   sent::Text},
  {col::kWholesalePrice,     "批发价格", {match::kWholesale, "0.000"}, "PLJ",  sent::FigureOr0},
  {col::kRetailPrice,        "零售价格", {match::kRetail, "0.00"},    "LSJ",  sent::FigureOr0},
  {col::kQuantity,           "入库数量", {},                          "RKSL", sent::Figure,     Cell::kQuantity},
  {col::kPurchasePrice,      "进货价格", {match::kPurchase, "0.000"}, "PFJ",  sent::FigureOr0,  Cell::kPrice},
  {col::kAmount,             "进货金额", {},                          "JE",   sent::FigureOr0},
  {col::kBatch,              "批号",     {},                          "PH",   sent::Text,       Cell::kBatch, Holds::kCode},
  {col::kExpiry,             "效期",     {},                          "XQ",   sent::DayOrNull,  Cell::kDay},
  {col::kRatio,              "拆零比",   {},                          "CLB",  sent::Ratio},
  {col::kUnitPurchasePrice,  "",         {},                          nullptr, nullptr,         Cell::kHidden},
};
// clang-format on
static_assert(InOrder(kColumns));

constexpr LineInsert kInsert("Insert Into YK_YPRKMX(RKDH,YPBM,PM,GG,DW,CD,PLJ,RKSL,PFJ,JE,PH,XQ,CLB,LSJ,SJPFJ)Values(",
                             kColumns, {"RKDH", "SJPFJ"});

constexpr MovedColumns kMoved = {col::kUnit, col::kQuantity, col::kBatch, col::kExpiry, col::kRatio};

const StockMove kMove = {.in = true,
                         .kind = "入库记录",
                         .reference = "入库单号：",
                         .update = "Update YF_YPML SET ",
                         .counter = "YKKCL",
                         .batches = BatchEffect::kAdded,
                         .batch_insert = "Insert Into"};

/// A negative quantity corrects an earlier receipt, for those who have the right; the others are told.
bool MayTakeBack(AppContext& app) {
  if (!app.CurUser.YPGL_FSYP) CheckRight(app, "YPGL_FSYP");
  return app.CurUser.YPGL_FSYP;
}

void CheckPrice(NumberedMessages& messages, TextBox& price, const char* when_empty, const char* when_no_number) {
  if (price.Text().empty()) {
    messages.Add(when_empty, price);
  } else if (!IsNumeric(price.Text())) {
    messages.Add(when_no_number, price);
  }
}

/// Entry dialog of the receipt: quantity, unit, prices, batch and expiry of one line.
class ek_RKXZ : public EntryDialog {
 public:
  static constexpr const char* kName = "ek_RKXZ";
  ek_RKXZ(AppContext& app, LineGrid& lines) : EntryDialog(app, lines, kName, "请您输入,(回车继续)") {
    DW.click.Connect(this, &ek_RKXZ::DW_Click);
    sngSL.change.Connect(this, &ek_RKXZ::ShowAmount);
    PFJ.change.Connect(this, &ek_RKXZ::ShowAmount);
  }

  Label PM{this, "PM"};
  Label GG{this, "GG"};
  ComboBox DW{this, "DW", "单  位", {.style = ComboStyle::kFixed}};
  TextBox sngSL{this, "sngSL", "数  量", QuantityBox()};
  TextBox sngLSJ{this, "sngLSJ", "零售价", PriceBox()};
  TextBox PFJ{this, "PFJ", "进货价格(大单位）", PriceBox()};
  TextBox PLJ{this, "PLJ", "批发价", PriceBox()};
  Label Label_JE{this, "Label_JE"};
  TextBox sPH{this, "sPH", "药品批号", EntryBox(limit::kBatch)};
  DateBox lYXQ{this, "lYXQ", "效  期"};
  Button Command1{this, "Command1", "确定(&Y)", &ek_RKXZ::Command1_Click};
  Button Command2{this, "Command2", "取消(&Q)", &ek_RKXZ::Cancel, ButtonRole::kCancel};

  // Set by the screen before it shows the dialog.
  std::int16_t CLB = 1;  ///< the drug's ratio
  double LSJ = 0;        ///< retail price of the large unit
  double CLLSJ = 0;      ///< retail price of the smallest unit

  Layout Arrange() const override {
    return Column({
        Fields(1, {Layout(PM).Titled("品  名"), Layout(GG).Titled("规  格")}),
        Fields(2, {DW, sngSL, sngLSJ, PFJ, PLJ, sPH, lYXQ, Layout(Label_JE).Titled("进货金额")}),
        Row({Space(), Command1, Command2}),
    });
  }

 protected:
  void Activated() override { Start(sngSL); }

 private:
  bool IsSmallestUnit() const { return DW.Items().size() >= 2 && !LargeUnitChosen(DW); }

  void DW_Click() {
    sngLSJ.SetText(LargeUnitChosen(DW) ? FormatNumber(LSJ, "0.00") : FormatNumber(CLLSJ, "0.000"));
    ShowAmount();
  }

  void ShowAmount() {
    if (Trim(sngSL.Text()).empty()) {
      Label_JE.SetCaption("");
    } else if (IsNumeric(sngSL.Text())) {
      const double price = NumberOrZero(PFJ.Text());
      const double unit_price = CLB >= 2 && !LargeUnitChosen(DW) ? price / CLB : price;
      Label_JE.SetCaption(FormatNumber(unit_price * CDbl(sngSL.Text()), "0.0000"));
    }
  }

  bool CheckLine() {
    NumberedMessages messages;
    if (sngSL.Text().empty()) {
      messages.Add(" 数量不能为空!", sngSL);
    } else if (!IsNumeric(sngSL.Text())) {
      messages.Add(" 数量只能为数字!", sngSL);
    } else if (CDbl(sngSL.Text()) < 0 && !MayTakeBack(app_)) {
      messages.Add(" 你没有输入负数的权限!", sngSL);
    }
    if (sPH.Text().empty()) messages.Add(" 批号不能为空!", sPH);
    CheckPrice(messages, PFJ, "进价不能为空!", "进价只能为数字");
    CheckPrice(messages, PLJ, "批发价不能为空!", "批发价只能为数字");
    return messages.Pass(app_.desktop);
  }

  void WriteLine() {
    const double quantity = CDbl(sngSL.Text());
    const double price = CDbl(PFJ.Text());
    Write(col::kUnit, DW.Text());
    Write(col::kQuantity, sngSL.Text());
    Write(col::kPurchasePrice, PFJ.Text());
    Write(col::kWholesalePrice, FormatNumberText(PLJ.Text(), "0.000"));
    Write(col::kRetailPrice, FormatNumberText(sngLSJ.Text(), "0.00"));
    Write(col::kAmount, FormatNumber(quantity * price, "0.000"));
    Write(col::kBatch, sPH.Text());
    Write(col::kExpiry, FormatDate(lYXQ.Value(), "yyyy-mm-dd"));
    if (!IsSmallestUnit()) return;
    Write(col::kRatio, "1");
    if (CLB <= 1) return;
    Write(col::kAmount, FormatNumber(quantity * price / CLB, "0.000"));
    Write(col::kUnitPurchasePrice, FormatNumber(price / CLB, "0.000"));
  }

  void Command1_Click() {
    if (!CheckLine()) return;
    WriteLine();
    Unload();
  }
};

}  // namespace

/// 药品入库录入: goods enter the storehouse from a supplier, and every saved line writes its prices back to the
/// catalogue.
class ek_YK_RKMX : public LineDocument {
 public:
  static constexpr const char* kName = "ek_YK_RKMX";
  explicit ek_YK_RKMX(AppContext& app);

  TextBox sRKDH{this, "sRKDH", "入库单号", {.cut = limit::kDocumentNumber, .ime = Ime::kOff}};
  ComboBox sGHDW{this, "sGHDW", "供货单位", NameList(limit::kCompany)};
  ComboBox sYSR{this, "sYSR", "验收人", NameList(limit::kPerson)};
  ComboBox sFHR{this, "sFHR", "复核人", NameList(limit::kPerson)};
  TextBox sFPH{this, "sFPH", "发票号", {.cut = limit::kInvoice, .ime = Ime::kOff}};
  DateBox FPRQ{this, "FPRQ", "发票日期"};
  ComboBox lFKBZ{this, "lFKBZ", "付款标志", {.style = ComboStyle::kFixed, .items = {"是", "否"}, .selected = 0}};
  Button Command1{this, "Command1", "入库(&R)", &ek_YK_RKMX::Command1_Click};
  Button Command2{this, "Command2", "药品暂存", &ek_YK_RKMX::Command2_Click};
  Button Command5{this, "Command5", "加载暂存药品", &ek_YK_RKMX::Command5_Click};
  Button Command6{this, "Command6", "新药品(&N)", &ek_YK_RKMX::Command6_Click};

  Layout Arrange() const override {
    return Arranged(Group("入库单", Fields(4, {sRKDH, sGHDW, sYSR, sFHR, sFPH, FPRQ, lFKBZ})),
                    {Command1, Command2, Command5, Command4, Command6});
  }

  /// Saves head, lines, batches, catalogue and log in one transaction; the screen keeps everything after a failure.
  void Save_YPRK();

 protected:
  std::vector<DictionaryList> Lists() override { return {{"GHDW", &sGHDW}, {"YP_YSR", &sYSR}, {"YP_FHR", &sFHR}}; }
  void ShowNumber() override { sRKDH.SetText(NextNumber()); }
  void EnterLine(int row) override;

 private:
  void fpSpread1_CheckEdit(Grid::CellRef cell, const std::string& text, bool& refuse);
  void fpSpread1_Change(int row, int column);
  void Command1_Click();
  void Command2_Click() { fpSpread1.Park(); }
  void Command5_Click() { fpSpread1.LoadParked(); }
  void Command6_Click() { kDrugEditor.open(app_); }

  bool CheckRK();
  std::string NextNumber() { return NextDocNo(app_, "RKDH", "YK_YPRK", "RKRQ"); }
  Statement HeadInsert(const std::string& number) const;
  void ReceiveLine(const std::string& number, int row);
  Statement Price(int row, int column) const;
  Statement UnitPurchasePrice(int row) const;
};

namespace {

const PickerSettings kPicker{.mode_caption = kScannerMode,
                             .columns = StandardColumns({.LSJ = "0.000", .PFJ = "0.000000"})};

const DocumentKind kKind{.name = ek_YK_RKMX::kName,
                         .caption = "药品入库录入",
                         .right = RightKey("YPGL_YKJYLR"),
                         .lists = "select * from CS",
                         .picker = kPicker,
                         .columns = kColumns,
                         .habits = kLineHabits.receipt};

}  // namespace

ek_YK_RKMX::ek_YK_RKMX(AppContext& app) : LineDocument(app, kKind) {
  fpSpread1.check_edit.Connect(this, &ek_YK_RKMX::fpSpread1_CheckEdit);
  fpSpread1.change.Connect(this, &ek_YK_RKMX::fpSpread1_Change);
}

void ek_YK_RKMX::EnterLine(int row) {
  auto& dialog = app_.forms.Get<ek_RKXZ>(app_, fpSpread1);
  const std::string ratio = Match(match::kRatio);
  const DrugRecord drug{Match(match::kLargeUnit), Match(match::kSmallestUnit),
                        IsNumeric(ratio) ? CInt(ratio) : std::int16_t{1}};
  fpSpread1.SetText(row, col::kRatio, std::to_string(drug.LargeUnitRatio()));
  dialog.EditRow = row;
  dialog.CLB = drug.LargeUnitRatio();
  dialog.PM.SetCaption(Match(match::kName));
  dialog.GG.SetCaption(Match(match::kSpecification));
  OfferUnits(dialog.DW, drug);
  const std::string retail = fpSpread1.Text(row, col::kRetailPrice);
  dialog.LSJ = NumberOrZero(retail);
  dialog.CLLSJ = NumberOrZero(Match(match::kSplitRetail));
  dialog.sngLSJ.SetText(retail);
  dialog.PLJ.SetText(fpSpread1.Text(row, col::kWholesalePrice));
  dialog.PFJ.SetText(Match(match::kPurchase));
  dialog.sngSL.SetText("1");
  dialog.ShowModal();
}

/// What the dialog asks the right for is not let in behind its back.
void ek_YK_RKMX::fpSpread1_CheckEdit(Grid::CellRef cell, const std::string& text, bool& refuse) {
  refuse = cell.col == col::kQuantity && NumberOrZero(text) < 0 && !MayTakeBack(app_);
}

/// A warning only: the price stands. The amount follows quantity and price as they are, whatever the line's unit.
void ek_YK_RKMX::fpSpread1_Change(int row, int column) {
  if (fpSpread1.MaxRows() == 0 || (column != col::kQuantity && column != col::kPurchasePrice)) return;
  const double price = fpSpread1.Number(row, col::kPurchasePrice);
  if (fpSpread1.Number(row, col::kWholesalePrice) < price) {
    app_.desktop.MsgBox({"进货价格大于批发价格。", box::kInformation, "系统信息"});
  }
  fpSpread1.SetText(row, col::kAmount, FormatNumber(fpSpread1.Number(row, col::kQuantity) * price, "0.0000"));
}

bool ek_YK_RKMX::CheckRK() {
  constexpr int kIndent = 6;
  NumberedMessages messages(kIndent);
  CheckNumber(messages, sRKDH, "入库单号不能为空!", " 入库单号必须为12位");
  messages.Demand(sGHDW, " 供货单位不能为空!");
  messages.Demand(sYSR, " 验收人不能为空!");
  messages.Demand(sFHR, " 复核人不能为空!");
  if (fpSpread1.MaxRows() == 0) messages.Add(" 入库项目明细不能为空!", picker.PM);
  return messages.Pass(app_.desktop);
}

void ek_YK_RKMX::Command1_Click() {
  if (!CheckRK() || !ConfirmSave(app_.desktop) || !HasLines(app_.desktop, fpSpread1)) return;
  fpSpread1.RemoveTotal();
  Save_YPRK();
}

void ek_YK_RKMX::Save_YPRK() {
  std::string next;
  const bool saved = InTransaction(app_, [&] {
    const std::string number = NextNumber();
    app_.Cn->Execute(HeadInsert(number));
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) ReceiveLine(number, row);
    next = NextNumber();
  });
  if (!saved) return;
  sRKDH.SetText(next);
  sFPH.SetText("");
  sGHDW.SetText("");
  Finished("入库添加成功!");
}

Statement ek_YK_RKMX::HeadInsert(const std::string& number) const {
  return InsertOf(
      "Insert into YK_YPRK(KFMC,RKDH,RKRQ,FPH,FPRQ,GHDW,FKBZ,YSR,FHR,DJR) Values(",
      {Quoted(app_.KFMC, "库房"), Quoted(number, "入库单号"),
       Quoted(FormatDate(app_.clock.Now(), "yyyy-mm-dd hh:mm:ss")), Quoted(sFPH),
       Quoted(FormatDate(FPRQ.Value(), "yyyy-mm-dd")), Quoted(sGHDW), Statement(lFKBZ.Text() == "是" ? "1" : "0"),
       Quoted(sYSR), Quoted(sFHR), Quoted(app_.CurUser.GetUserName, "操作员")});
}

/// The catalogue gets the typed price divided by the line's ratio, the batch the price of the line's unit.
void ek_YK_RKMX::ReceiveLine(const std::string& number, int row) {
  app_.Cn->Execute(kInsert(fpSpread1, row, {Quoted(number, "入库单号"), UnitPurchasePrice(row)}));
  MovedLine line = Moved(row, kMoved);
  if (line.ratio == 0) throw StandardFailure(failure::kDivisionByZero);
  line.PFJ = UnitPurchasePrice(row);
  line.PLJ = Price(row, col::kWholesalePrice);
  const double price = CDbl(Price(row, col::kPurchasePrice).text());
  line.further = Statement("PFJ=") + FormatNumber(price / line.ratio, "0.000") + ",PLJ=" + line.PLJ + ",";
  MoveStock(app_, kMove, line, number);
}

Statement ek_YK_RKMX::Price(int row, int column) const {
  Statement price;
  sent::FigureOr0(price, fpSpread1.Text(row, column), {kColumns[column - 1].caption, row});
  return price;
}

/// A line in the large unit has none of its own. What is no number is saved as 0.
Statement ek_YK_RKMX::UnitPurchasePrice(int row) const {
  std::string price = fpSpread1.Text(row, col::kUnitPurchasePrice);
  if (price.empty()) price = fpSpread1.Text(row, col::kPurchasePrice);
  return Bare(IsNumeric(price) ? price : "0", {"进货价格", row});
}

const Screen kReceipt = ChildScreen<ek_YK_RKMX>();
const Screen kReceiptEntry = EntryScreen<ek_RKXZ, ek_YK_RKMX>();

}  // namespace luming
