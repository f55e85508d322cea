#include "documents/issue_note.h"

#include <string>
#include <utility>

#include "documents/document_checks.h"
#include "documents/entry_dialog.h"
#include "documents/entry_fields.h"
#include "documents/issue_desk.h"
#include "documents/line_insert.h"
#include "documents/screens.h"
#include "frame/gateway.h"
#include "masterdata/drug_record.h"
#include "output/grid_command.h"
#include "output/note_on_paper.h"
#include "output/template_documents.h"
#include "screen/combo_box.h"
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
  kRetailPrice,
  kStock,     ///< as the catalogue had it when the line was picked, in smallest units whatever the line's unit
  kQuantity,  ///< asked for, in the line's unit
  kRetailAmount,
  kPurchasePrice,
  kPurchaseAmount,
  kDifference,
  kRatio,
  kBatch,
  kExpiry,
};
}  // namespace col

// clang-format off
constexpr LineColumn kColumns[] = {
  // column               caption     from the match                saved as
  {col::kCode,            "编码",     {},                           "YPBM", sent::Text,      Cell::kLocked, Holds::kCode},
  {col::kName,            "品名",     {match::kName}},
  {col::kSpecification,   "规格",     {match::kSpecification}},
  {col::kUnit,            "单位",     {match::kLargeUnit},          "DW",   sent::Text},
  {col::kOrigin,          "产地",     {match::kOrigin},             "CD",   sent::Text},
  {col::kRetailPrice,     "零售价格", {match::kRetail, "0.0000"},  nullptr, nullptr,        Cell::kLocked, Holds::kFigure},
  {col::kStock,           "库存",     {},                           nullptr, nullptr,        Cell::kLocked, Holds::kFigure},
  {col::kQuantity,        "申领数量", {},                           "SLSL", sent::FigureOr0, Cell::kQuantity},
  {col::kRetailAmount,    "零售金额", {},                           nullptr, nullptr,        Cell::kLocked, Holds::kFigure},
  {col::kPurchasePrice,   "进货价格", {match::kPurchase},           nullptr, nullptr,        Cell::kLocked, Holds::kFigure},
  {col::kPurchaseAmount,  "进货金额", {},                           nullptr, nullptr,        Cell::kLocked, Holds::kFigure},
  {col::kDifference,      "差价",     {},                           nullptr, nullptr,        Cell::kLocked, Holds::kFigure},
  {col::kRatio,           "拆零比",   {match::kRatio},              "CLB",  sent::Ratio},
  // The server finds both when it moves the stock.
  {col::kBatch,           "批号",     {},                           nullptr, nullptr,        Cell::kHidden, Holds::kCode},
  {col::kExpiry,          "效期",     {},                           nullptr, nullptr,        Cell::kHidden, Holds::kDate},
};
// clang-format on
static_assert(InOrder(kColumns));

constexpr LineInsert kInsert("Insert Into YPSLMX(SLDH,YPBM,DW,CD,SLSL,SFSL,CLB)Values(", kColumns, {"SLDH", "SFSL"});

/// Entry dialog of the issue note: quantity and unit of one line.
class Frm_CheckYPSL : public EntryDialog {
 public:
  static constexpr const char* kName = "Frm_CheckYPSL";
  Frm_CheckYPSL(AppContext& app, LineGrid& lines) : EntryDialog(app, lines, kName, "请您输入数量[Enter确认，Esc取消]") {
    DW.click.Connect(this, &Frm_CheckYPSL::DW_Click);
  }

  Label PM{this, "PM"};
  Label GG{this, "GG"};
  ComboBox DW{this, "DW", "单  位", {.style = ComboStyle::kFixed}};
  Label L_LSJ{this, "L_LSJ"};
  TextBox SL{this, "SL", "数  量", QuantityBox()};
  Button Command1{this, "Command1", "确定(&Y)", &Frm_CheckYPSL::Command1_Click};
  Button Command2{this, "Command2", "关闭(&Q)", &Frm_CheckYPSL::Cancel, ButtonRole::kCancel};

  Layout Arrange() const override {
    return Column({
        Fields(1, {Layout(PM).Titled("品  名"), Layout(GG).Titled("规  格"), DW, Layout(L_LSJ).Titled("零售价"), SL}),
        Row({Space(), Command1, Command2}),
    });
  }

 protected:
  void Load() override {
    Trapped(app_, [this] { ShowDrug(lines_.Text(EditRow, col::kCode)); });
  }
  void Activated() override { Start(SL); }

 private:
  void ShowDrug(const std::string& code) {
    Recordset drug;
    OpenRs(app_, drug, "Select PFJ,YPMC,GG,DW,ZXDW,CLB,LSJ,CLLSJ From YF_YPML Where YPBM Like" + Quoted(code, "编码"));
    if (!drug.Eof()) {
      PM.SetCaption(drug.Field("YPMC").TextOrEmpty());
      GG.SetCaption(drug.Field("GG").TextOrEmpty());
      LSJ_ = drug.Field("LSJ").NumberOr(0);
      CLLSJ_ = drug.Field("CLLSJ").NumberOr(0);
      PFJ_ = drug.Field("PFJ").NumberOr(0);
      const DrugRecord units{drug.Field("DW").TextOrEmpty(), drug.Field("ZXDW").TextOrEmpty(),
                             CInt(drug.Field("CLB").NumberOr(1))};
      CLB_ = units.LargeUnitRatio();
      OfferUnits(DW, units);
    }
    CloseRs(drug);
  }

  double RetailPrice() const { return LargeUnitChosen(DW) ? LSJ_ : CLLSJ_; }
  void DW_Click() { L_LSJ.SetCaption(FormatNumber(RetailPrice(), "0.0000")); }

  void Command1_Click() {
    Trapped(app_, [this] {
      const double quantity = SL.Text().empty() ? 0 : CDbl(SL.Text());
      if (quantity == 0) {
        Refuse("数量不能为0", SL);
        return;
      }
      WriteLine(quantity);
      Unload();
    });
  }

  void WriteLine(double quantity) {
    const bool large = LargeUnitChosen(DW);
    const double purchase = large ? PFJ_ : PFJ_ / CLB_;
    Write(col::kUnit, DW.Text());
    Write(col::kQuantity, SL.Text());
    Write(col::kRatio, large ? std::to_string(CLB_) : "1");
    Write(col::kRetailPrice, FormatNumber(RetailPrice(), "0.0000"));
    Write(col::kPurchasePrice, FormatNumber(purchase, "0.0000"));
    WriteAmounts(FormatNumber(RetailPrice() * quantity, "0.000"), FormatNumber(purchase * quantity, "0.000"));
  }

  void WriteAmounts(const std::string& retail, const std::string& purchase) {
    Write(col::kRetailAmount, retail);
    Write(col::kPurchaseAmount, purchase);
    Write(col::kDifference, FormatNumber(Val(retail) - Val(purchase), "0.000"));
  }

  std::int16_t CLB_ = 1;
  double LSJ_ = 0;
  double CLLSJ_ = 0;
  double PFJ_ = 0;
};

const PickerSettings kPicker{.search = PickerSearch::kDrugsWithStock,
                             .reading = PickerReading::kOpenRs,
                             .mode_caption = kScannerMode,
                             .columns = StandardColumns({.LSJ = "0.0000", .PFJ = "0.0000"})};

const DocumentKind kKind{.name = Frm_YFYPSL::kName,
                         .caption = "药品出库单",
                         .lists = nullptr,
                         .picker = kPicker,
                         .columns = kColumns,
                         .habits = kLineHabits.issue_note,
                         .window = WindowKind::kDialog};

Frm_YPCKGL& IssueDesk(AppContext& app) {
  auto& desk = app.forms.Get<Frm_YPCKGL>(app);
  desk.EnsureLoaded();
  return desk;
}

}  // namespace

Frm_YFYPSL::Frm_YFYPSL(AppContext& app) : LineDocument(app, kKind) {
  Heading.SetVisible(false);
  fpSpread1.change.Connect(this, &Frm_YFYPSL::fpSpread1_Change);
}

Layout Frm_YFYPSL::Arrange() const {
  Layout head = Row({
      Row({Layout(SLDH).Width(14), Layout(SLRQ).Width(12), L_FHR, Layout(CZY).Width(12), Layout(BZ).Stretch(1)})
          .Stretch(1),
      Group("打印格式", Row({Option1, Option2})),
  });
  if (!way_.view) {
    return Arranged(Column({std::move(head), Heading}),
                    {Command1, Command2, Com_Check, Command4, Com_DelALL, Command5, Command6});
  }
  return Column({
      std::move(head),
      Heading,
      Layout(fpSpread1).Height(24),
      Row({Command1, Command2, Command5, Command6, Space(), close}),
      Hidden({picker.Arrange(), Com_Check, Command4, Com_DelALL}),
  });
}

void Frm_YFYPSL::Load() {
  LineDocument::Load();
  SLRQ.SetValue(app_.clock.Now());
  CZY.SetText(app_.CurUser.GetUserName);
}

void Frm_YFYPSL::Begin(const NoteWay& way) {
  EnsureLoaded();
  way_ = way;
  SLDH.SetReadOnly(way.mode != note_way::kAdd.mode);
  SetFrame3Visible(!way.view);
  fpSpread1.SetEnabled(way.lines_enabled);
  fpSpread1.SetReadOnly(way.view);
  Command1.SetEnabled(!way.view);
  Command2.SetEnabled(way.confirms);
}

/// Nobody is to believe that lines which are deleted from a note that is only looked at are gone.
void Frm_YFYPSL::SetFrame3Visible(bool visible) {
  Walk(picker.Arrange(), [&](const Control& field, bool) { Find(field.Name())->SetVisible(visible); });
  for (Button* button : {&Com_Check, &Command4, &Com_DelALL}) button->SetVisible(visible);
}

void Frm_YFYPSL::LoadData(const std::string& number) {
  EnsureLoaded();
  Trapped(app_, [&] {
    Recordset head;
    OpenRs(app_, head,
           "Select YKQRR,SLDH,SLRQ,BZ,CZY,LYDW,YFQR from YPSLD WHERE SLDH LIKE" + Quoted(number, "出库单号"));
    if (!head.Eof()) ShowHead(head);
    CloseRs(head);
    Recordset lines;
    OpenRs(app_, lines,
           "Select A.PH,A.XQ,A.YPBM,B.YPMC,B.GG,A.DW,A.CD,CASE A.DW When B.DW Then B.LSJ Else B.CLLSJ END AS "
           "'LSJ',A.SLSL,ISNULL(CASE A.DW When B.DW Then B.LSJ Else B.CLLSJ END *A.SLSL,0) AS "
           "'LSJJE',B.PLJ,ISNULL(B.PLJ*A.SLSL,0) AS 'PLJJE',CASE A.DW When B.DW Then B.PFJ Else B.PFJ/B.CLB END  AS "
           "'PFJ',ISNULL(CASE A.DW When B.DW Then B.PFJ*A.SLSL Else B.PFJ/B.CLB*A.SLSL*A.CLB END,0) AS 'PFJJE',A.CLB "
           "From YPSLMX A Left join YF_YPML B ON A.YPBM=B.YPBM  Where SLDH Like" +
               Quoted(number, "出库单号"));
    ShowLines(std::move(lines));
  });
}

void Frm_YFYPSL::ShowHead(const Recordset& head) {
  SLDH.SetText(head.Field("SLDH").TextOrEmpty());
  if (const Value& written = head.Field("SLRQ"); !written.IsNull()) SLRQ.SetValue(written.Date());
  CZY.SetText(head.Field("CZY").TextOrEmpty());
  BZ.SetText(head.Field("BZ").TextOrEmpty());
  pharmacy_ = head.Field("LYDW").TextOrEmpty();
  if (!IsFlagSet(head.Field("YFQR"))) return;
  constexpr int kWidth = 8;
  constexpr const char* kTaken = "已确认出库单据";
  CZY.SetText(head.Field("YKQRR").TextOrEmpty());
  SetCaption(kTaken);
  Heading.SetCaption(kTaken);
  Heading.SetVisible(true);
  L_FHR.SetCaption("确认人");
  for (const int column : {col::kBatch, col::kExpiry}) {
    fpSpread1.SetColumnHidden(column, false);
    fpSpread1.SetColumnWidth(column, kWidth);
  }
}

/// A note of the store has neither the stock beside its lines nor their difference.
void Frm_YFYPSL::ShowLines(Recordset&& lines) {
  fpSpread1.Fill(std::move(lines), {{"YPBM"},
                                    {"YPMC"},
                                    {"GG"},
                                    {"DW"},
                                    {"CD"},
                                    {"LSJ", "0.0000"},
                                    {""},
                                    {"SLSL"},
                                    {"LSJJE"},
                                    {"PFJ"},
                                    {"PFJJE"},
                                    {""},
                                    {"CLB"},
                                    {"PH"},
                                    {"XQ", "yyyy-mm-dd"}});
  fpSpread1.AddTotal();
}

void Frm_YFYPSL::FromRKD(const std::string& receipt) {
  Trapped(app_, [&] {
    Recordset lines;
    OpenRs(app_, lines,
           "Select A.YPBM,A.PM,A.GG,A.DW,A.CD,A.LSJ,B.YKKCL,A.RKSL,A.LSJ*A.RKSL AS 'LSJE',A.PFJ,A.JE,A.LSJ-A.PFJ AS "
           "'CJ',A.CLB,A.PH,A.XQ From YK_YPRKMX A Left JOIN YF_YPML B ON A.YPBM=B.YPBM Where A.RKDH Like" +
               Quoted(receipt, "入库单号"));
    fpSpread1.Fill(std::move(lines), {{"YPBM"},
                                      {"PM"},
                                      {"GG"},
                                      {"DW"},
                                      {"CD"},
                                      {"LSJ"},
                                      {"YKKCL"},
                                      {"RKSL"},
                                      {"LSJE"},
                                      {"PFJ"},
                                      {"JE"},
                                      {"CJ"},
                                      {"CLB"},
                                      {"PH"},
                                      {"XQ"}});
  });
}

void Frm_YFYPSL::CaclJE(int row) {
  const double quantity = fpSpread1.Number(row, col::kQuantity);
  const double retail = fpSpread1.Number(row, col::kRetailPrice) * quantity;
  const double purchase = fpSpread1.Number(row, col::kPurchasePrice) * quantity;
  fpSpread1.SetText(row, col::kRetailAmount, NumberText(retail));
  fpSpread1.SetText(row, col::kPurchaseAmount, NumberText(purchase));
  // Of the figures as the operator reads them.
  const double difference = Val(FormatNumber(retail, "0.0000")) - Val(FormatNumber(purchase, "0.0000"));
  fpSpread1.SetText(row, col::kDifference, FormatNumber(difference, "0.0000"));
}

/// The stock counts smallest units and the quantity those of the line: a warning, not the test.
void Frm_YFYPSL::MarkShortage(int row) {
  constexpr Colour kBlack = 0x000000;
  constexpr Colour kRed = 0xFF0000;
  const bool covered = fpSpread1.Number(row, col::kStock) >= fpSpread1.Number(row, col::kQuantity);
  fpSpread1.SetColours(row, col::kQuantity, col::kQuantity, covered ? kBlack : kRed, Control::kNoColour);
  fpSpread1.SetBold(row, col::kQuantity, col::kQuantity, !covered);
}

void Frm_YFYPSL::EnterLine(int row) {
  fpSpread1.SetText(row, col::kStock, StockOf(fpSpread1.Text(row, col::kCode)));
  auto& dialog = app_.forms.Get<Frm_CheckYPSL>(app_, fpSpread1);
  dialog.EditRow = row;
  dialog.ShowModal();
  if (row <= fpSpread1.MaxRows()) MarkShortage(row);
}

/// The catalogue's present figure, whatever the search list showed.
std::string Frm_YFYPSL::StockOf(const std::string& code) const {
  Recordset stock;
  OpenRs(app_, stock, "Select YKKCL From YF_YPML Where YPBM Like" + Quoted(code, "编码"));
  return stock.Eof() ? std::string() : stock.Field("YKKCL").TextOrEmpty();
}

void Frm_YFYPSL::fpSpread1_Change(int row, int column) {
  if (fpSpread1.MaxRows() == 0 || column != col::kQuantity) return;
  MarkShortage(row);
  CaclJE(row);
}

void Frm_YFYPSL::Com_Check_Click() {
  kReceiptChoice.form(app_).ShowModal();
}

void Frm_YFYPSL::Command1_Click() {
  if (way_.mode == note_way::kView.mode) {
    Unload();
    return;
  }
  if (!ConfirmSave(app_.desktop) || !HasLines(app_.desktop, fpSpread1, "项目明细不能为空")) return;
  fpSpread1.RemoveTotal();
  if (Save()) Unload();
}

/// Head and lines bear one number: another note may have taken the one that is shown.
bool Frm_YFYPSL::Save() {
  return InTransaction(app_, [this] {
    const bool is_new = way_.mode == note_way::kAdd.mode;
    const std::string number = is_new ? NextDocNo(app_, "SLDH", "YPSLD", "SLRQ") : SLDH.Text();
    if (is_new) {
      app_.Cn->Execute(HeadInsert(number));
    } else {
      DemandStillWaiting(number);
      app_.Cn->Execute("Delete YPSLMX Where SLDH Like" + Quoted(number, "出库单号"));
    }
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      Statement issued;
      sent::FigureOr0(issued, fpSpread1.Text(row, col::kQuantity), {kColumns[col::kQuantity - 1].caption, row});
      app_.Cn->Execute(kInsert(fpSpread1, row, {Quoted(number, "出库单号"), issued}));
    }
  });
}

Statement Frm_YFYPSL::HeadInsert(const std::string& number) const {
  return Statement("Insert Into YPSLD(SLDH,SLRQ,BZ,CZY,CKFS,SFTJ,LYDW) Values(") + Quoted(number, "出库单号") + "," +
         Quoted(FormatDate(SLRQ.Value(), "yyyy-mm-dd hh:mm:ss")) + "," + Quoted(BZ) + "," +
         Quoted(CZY.Text(), L_FHR.Caption()) + ",1,1," + Quoted(Pharmacy(), "出库方式") + ")";
}

/// The update changes nothing; it keeps a confirmation by another workstation waiting until these lines are saved.
void Frm_YFYPSL::DemandStillWaiting(const std::string& number) {
  const Statement same = " Where SLDH Like" + Quoted(number, "出库单号");
  const Recordset state =
      app_.Cn->Execute(Statement("Update YPSLD Set SFQR=SFQR") + same + " Select SFQR From YPSLD" + same);
  if (state.Eof()) throw Failure(failure::kInvalidCall, "出库单【" + number + "】已被删除，不能修改。");
  if (IsFlagSet(state.Field("SFQR")))
    throw Failure(failure::kInvalidCall, "出库单【" + number + "】已经确认，不能修改。");
}

void Frm_YFYPSL::Command2_Click() {
  fpSpread1.RemoveTotal();
  if (!QuantitiesAreThere()) return;
  fpSpread1.AddTotal();
  Trapped(app_, [this] {
    if (CanBeMet()) Confirm();
  });
}

bool Frm_YFYPSL::QuantitiesAreThere() {
  for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
    if (fpSpread1.Number(row, col::kQuantity) != 0) continue;
    app_.desktop.MsgBox(
        {"第" + std::to_string(row) + "行【" + fpSpread1.Text(row, col::kName) + "】申领数量不能等于0。", box::kWarning,
         "系统提示"});
    return false;
  }
  return true;
}

/// The server's own answer; another workstation's issue can still come ahead of the move, which tests again.
bool Frm_YFYPSL::CanBeMet() {
  Recordset unmet;
  OpenRs(app_, unmet, "Exec SP_Get_YK_CKQR " + Quoted(SLDH));
  if (unmet.RecordCount() == 0) return true;
  std::string reasons;
  for (; !unmet.Eof(); unmet.MoveNext()) {
    reasons += "【" + unmet.Field("YPMC").TextOrEmpty() + "  " + unmet.Field("YPBM").TextOrEmpty() + "】 --" +
               unmet.Field("YY").TextOrEmpty() + "。\n";
  }
  app_.desktop.MsgBox({reasons, box::kWarning, "库存不足提示"});
  CloseRs(unmet);
  return false;
}

/// Two statements without a transaction: where the second one fails the note stands as confirmed, the stock has not
/// moved, and the management screen shows it so.
void Frm_YFYPSL::Confirm() {
  app_.Cn->Execute(
      "Update YPSLD Set FYYK=" + Quoted(app_.KFMC, "库房") + ",YKQRR=" + Quoted(app_.CurUser.GetUserName, "操作员") +
      ", SFQR=1 ,CKRQ=" + Quoted(FormatDate(app_.clock.Today(), "yyyy-mm-dd")) + " Where SLDH Like" + Quoted(SLDH));
  ExecSql(app_, "Exec SP_YK_UpdateCKJG " + Quoted(SLDH));
  IssueDesk(app_).LoadData();
  Unload();
}

std::string Frm_YFYPSL::Pharmacy() const {
  return way_.mode == note_way::kAdd.mode ? IssueDesk(app_).KFLIST.Text() : pharmacy_;
}

/// The first form has always left the quantities out; the second one has them.
void Frm_YFYPSL::Command5_Click() {
  if (Option2.Chosen()) {
    PrintCKD(app_, true, SLDH.Text());
    return;
  }
  const NoteOnPaper note(fpSpread1,
                         "出库单号:" + SLDH.Text() + "      申领日期:" + SLRQ.Text() +
                             " 申领人:      复核人:      制单人:         备注:" + BZ.Text(),
                         {col::kCode, col::kQuantity});
  PrintTrapped(app_, fpSpread1, "【" + app_.KFMC + "】药品出库单",
               {.footRight = "打印日期：" + FormatDate(app_.clock.Today(), "yyyy-mm-dd"),
                .headCentre = "申领单位:" + Pharmacy()});
}

void Frm_YFYPSL::Command6_Click() {
  const NoteOnPaper note(fpSpread1, "出库单号:" + SLDH.Text() + "      日期:" + SLRQ.Text() + "     备注:" + BZ.Text(),
                         {col::kCode, col::kStock});
  ExportTrapped(app_, fpSpread1);
}

const Screen kIssueNote = DialogScreen<Frm_YFYPSL, Frm_YPCKGL, &Frm_YPCKGL::Com_Add>();
const Screen kIssueNoteEntry = EntryScreen<Frm_CheckYPSL, Frm_YFYPSL>();

}  // namespace luming
