#include <string>

#include "documents/batch_choice.h"
#include "documents/document_checks.h"
#include "documents/entry_dialog.h"
#include "documents/entry_fields.h"
#include "documents/line_document.h"
#include "documents/line_insert.h"
#include "documents/screens.h"
#include "frame/gateway.h"
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
  kQuantity,  ///< in large units
  kPurchasePrice,
  kAmount,
  kBatch,
  kExpiry,
  kRatio,
};
}  // namespace col

// clang-format off
constexpr LineColumn kColumns[] = {
  // column              caption     from the match           saved as
  {col::kCode,           "编码",     {},                      "YPBM", sent::Text, Cell::kLocked, Holds::kCode},
  {col::kName,           "品名",     {match::kName},          "YPMC", sent::Text},
  {col::kSpecification,  "规格",     {match::kSpecification}, "GG",   sent::Text},
  {col::kUnit,           "单位",     {match::kLargeUnit},     "DW",   sent::Text},
  {col::kOrigin,         "产地",     {match::kOrigin},        "CD",   sent::Text},
  {col::kQuantity,       "退库数量", {},                      "TKSL", sent::FigureOr0},
  {col::kPurchasePrice,  "进货价格", {match::kPurchase},      "PFJ",  sent::Money},
  {col::kAmount,         "进货金额", {},                      "JE",   sent::Money},
  {col::kBatch,          "批号",     {},                      "PH",   sent::Text, Cell::kLocked, Holds::kCode},
  {col::kExpiry,         "效期",     {},                      "XQ",   sent::DayOrNull},
  {col::kRatio,          "拆零比",   {match::kRatio},         "CLB",  sent::Ratio},
};
// clang-format on
static_assert(InOrder(kColumns));

constexpr LineInsert kInsert("Insert into YK_TYDJMX(TYDH,YPBM,YPMC,GG,DW,CD,TKSL,PFJ,JE,PH,XQ,CLB) Values(", kColumns,
                             {"TYDH"});

constexpr MovedColumns kMoved = {col::kUnit, col::kQuantity, col::kBatch, col::kExpiry, col::kRatio};

const StockMove kMove = {.in = false,
                         .kind = "退药到供货商",
                         .reference = "退药单号：",
                         .update = "Update YF_YPML Set ",
                         .counter = "YKKCL",
                         .batches = BatchEffect::kConsumed};

/// Entry dialog of the return to a supplier: quantity, always in the large unit, and batch of one line.
class Frm_YKTYCheck : public EntryDialog {
 public:
  static constexpr const char* kName = "Frm_YKTYCheck";
  Frm_YKTYCheck(AppContext& app, LineGrid& lines) : EntryDialog(app, lines, kName, "请您输入(回车继续)") {}

  Label PM{this, "PM"};
  Label GG{this, "GG"};
  Label DW{this, "DW"};
  Label LSJ{this, "LSJ"};
  TextBox TYSL{this, "TYSL", "退药数量", QuantityBox()};
  BatchChoice batch{this, app_, {.first_price = "￥0.0000", .chosen_price = "0.00"}};
  Button Command1{this, "Command1", "确定(&Y)", &Frm_YKTYCheck::Command1_Click};
  Button Command2{this, "Command2", "取消(&C)", &Frm_YKTYCheck::Cancel, ButtonRole::kCancel};

  Layout Arrange() const override {
    return Column({
        Fields(1, {Layout(PM).Titled("品  名"), Layout(GG).Titled("规  格")}),
        Fields(2, {Layout(DW).Titled("单  位"), Layout(LSJ).Titled("零售价"), TYSL, batch.PH,
                   Layout(batch.XQ).Titled("效  期"), Layout(batch.PFJ).Titled("进  价")}),
        Row({Space(), Command1, Command2}),
    });
  }

 protected:
  void Load() override {
    Trapped(app_, [this] {
      const std::string code = lines_.Text(EditRow, col::kCode);
      ShowDrug(code);
      batch.Offer(code);
    });
  }
  void Activated() override { Start(TYSL); }

 private:
  void ShowDrug(const std::string& code) {
    Recordset drug;
    OpenRs(app_, drug, "Select YPMC,GG,DW,LSJ,PFJ,CLB,YKKCL From YF_YPML Where YPBM Like" + Quoted(code, "编码"));
    if (!drug.Eof()) {
      PM.SetCaption(drug.Field("YPMC").TextOrEmpty());
      GG.SetCaption(drug.Field("GG").TextOrEmpty());
      DW.SetCaption(drug.Field("DW").TextOrEmpty());
      LSJ.SetCaption(drug.Field("LSJ").Format("0.0000"));
      batch.PFJ.SetCaption(drug.Field("PFJ").Format("￥0.0000"));
      YKKCL_ = drug.Field("YKKCL").NumberOr(0);
    }
    CloseRs(drug);
  }

  /// Large units are held against smallest ones on purpose: the dialog stops slips of the hand, not every overdraft.
  bool CheckQuantity() { return QuantityPasses(TYSL, {"退药数量不能为空", "退药数量不能为0"}, 1, YKKCL_); }

  void Command1_Click() {
    Trapped(app_, [this] {
      if (!CheckQuantity()) return;
      Write(col::kQuantity, TYSL.Text());
      Write(col::kAmount, FormatNumber(CDbl(TYSL.Text()) * NumberOrZero(batch.PFJ.Caption()), "0.00"));
      Write(col::kBatch, batch.PH.Text());
      if (IsDate(batch.XQ.Caption())) Write(col::kExpiry, batch.XQ.Caption());
      Unload();
    });
  }

  double YKKCL_ = 0;  ///< the drug's stock in smallest units
};

}  // namespace

/// 药库退药: goods go back from the storehouse to their supplier.
class Frm_YKTY : public LineDocument {
 public:
  static constexpr const char* kName = "Frm_YKTY";
  explicit Frm_YKTY(AppContext& app);

  TextBox sRKDH{this, "sRKDH", "单号", {.cut = limit::kDocumentNumber, .ime = Ime::kOff}};
  DateBox RQ{this, "RQ", "日期"};
  ComboBox sGHDW{this, "sGHDW", "供货单位", NameList(limit::kCompany)};
  ComboBox ZDR{this, "ZDR", "制单人", NameList(limit::kPerson)};
  ComboBox sFHR{this, "sFHR", "复核人", NameList(limit::kPerson)};
  TextBox BZ{this, "BZ", "备注："};
  Button Command1{this, "Command1", "退药(&T)", &Frm_YKTY::Command1_Click};

  Layout Arrange() const override {
    return Arranged(Group("退药单", Fields(3, {sRKDH, RQ, sGHDW, ZDR, sFHR, BZ})), {Command1, Command4});
  }

  /// Saves head, lines, counters, batches and log in one transaction; the screen keeps everything after a failure.
  void Save_YKTY();

 protected:
  std::vector<DictionaryList> Lists() override { return {{"YP_FHR", &sFHR}, {"GHDW", &sGHDW}}; }
  void ShowNumber() override;
  void EnterLine(int row) override;

 private:
  bool CheckTY();
  void Command1_Click();
  std::string NextNumber() { return NextDocNo(app_, "TYDH", "YK_TYDJ", "TYRQ"); }
  Statement HeadInsert(const std::string& number) const;
};

namespace {

const PickerSettings kPicker{.mode_caption = kScannerMode,
                             .columns = StandardColumns({.LSJ = "0.0000", .PFJ = "￥0.000"})};

const DocumentKind kKind{.name = Frm_YKTY::kName,
                         .caption = "药库退药",
                         .lists = "select * from CS",
                         .picker = kPicker,
                         .columns = kColumns,
                         .habits = kLineHabits.return_to_supplier};

}  // namespace

Frm_YKTY::Frm_YKTY(AppContext& app) : LineDocument(app, kKind) {}

void Frm_YKTY::ShowNumber() {
  ZDR.SetText(app_.CurUser.GetUserName);
  sRKDH.SetText(NextNumber());
}

void Frm_YKTY::EnterLine(int row) {
  auto& dialog = app_.forms.Get<Frm_YKTYCheck>(app_, fpSpread1);
  dialog.EditRow = row;
  dialog.ShowModal();
}

bool Frm_YKTY::CheckTY() {
  constexpr int kIndent = 6;
  NumberedMessages messages(kIndent);
  messages.Demand(sGHDW, " 供货单位不能为空!");
  messages.Demand(sFHR, " 复核人不能为空!");
  if (fpSpread1.MaxRows() == 0) messages.Add(" 项目明细不能为空!", picker.PM);
  return messages.Pass(app_.desktop);
}

void Frm_YKTY::Command1_Click() {
  if (!CheckTY() || !ConfirmSave(app_.desktop) || !HasLines(app_.desktop, fpSpread1)) return;
  // The number shown may well stand on a document by now: the save takes its own.
  if (!Trapped(app_, [this] { GetField(app_, "YK_TYDJ", "TYDH", Trim(sRKDH.Text())); })) return;
  fpSpread1.RemoveTotal();
  Save_YKTY();
}

void Frm_YKTY::Save_YKTY() {
  const bool saved = InTransaction(app_, [this] {
    const std::string number = NextNumber();
    app_.Cn->Execute(HeadInsert(number));
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      app_.Cn->Execute(kInsert(fpSpread1, row, {Quoted(number, "单号")}));
      MoveStock(app_, kMove, Moved(row, kMoved), number);
    }
  });
  if (!saved) return;
  sRKDH.SetText(NextNumber());
  sGHDW.SetText("");
  Finished("退药成功!");
}

Statement Frm_YKTY::HeadInsert(const std::string& number) const {
  return InsertOf("Insert Into YK_TYDJ (KFMC,TYDH,TYRQ,ZDR,FHR,GHDW,BZ)Values(",
                  {Quoted(app_.KFMC, "库房"), Quoted(number, "单号"), Quoted(FormatDate(RQ.Value(), "yyyy-mm-dd")),
                   Quoted(ZDR), Quoted(sFHR), Quoted(sGHDW), Quoted(BZ.Text(), "备注")});
}

const Screen kReturnToSupplier = ChildScreen<Frm_YKTY>();
const Screen kReturnToSupplierEntry = EntryScreen<Frm_YKTYCheck, Frm_YKTY>();

}  // namespace luming
