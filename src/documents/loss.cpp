#include <string>

#include "documents/consumption_lines.h"
#include "documents/document_checks.h"
#include "documents/line_insert.h"
#include "documents/screens.h"
#include "frame/gateway.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/text_box.h"
#include "stock/document_numbers.h"
#include "util/date_text.h"

namespace luming {

namespace {

constexpr LineInsert kInsert("Insert into YK_YPBSDJMX(BSDH,YPBM,YPMC,GG,DW,CD,SL,LSJ,PFJ,PH,XQ,CLB)Values(",
                             consumption::kColumns, {"BSDH"});

const StockMove kMove = {.in = false,
                         .kind = "药品报损报废",
                         .reference = "报损单号：",
                         .update = "Update YF_YPML Set ",
                         .counter = "YKKCL",
                         .batches = BatchEffect::kConsumed};

const consumption::EntryHabits kEntry{
    .name = "Frm_YPBSCheck",
    .money = "￥0.0000",
    .catalogue_price = "0.0000",
    .batch = {.first_price = "0.0000", .chosen_price = "0.0000", .first_chosen = true, .keeps_price = true},
    .quantity_keys = KeyFilter::kPrice,  // so that no negative quantity is typed
    .always_two_units = true,
    .whole_stock = true,
    .enter_confirms = true};

/// Entry dialog of the loss.
class Frm_YPBSCheck : public consumption::Entry {
 public:
  static constexpr const char* kName = "Frm_YPBSCheck";
  Frm_YPBSCheck(AppContext& app, LineGrid& lines) : Entry(app, lines, kEntry) {}
};

}  // namespace

/// 药品报损登记: damaged or lost stock is written off. A saved loss stands.
class Frm_YPBS : public LineDocument {
 public:
  static constexpr const char* kName = "Frm_YPBS";
  explicit Frm_YPBS(AppContext& app);

  TextBox BSDH{this, "BSDH", "单号", {.cut = limit::kDocumentNumber, .ime = Ime::kOff}};
  DateBox BSRQ{this, "BSRQ", "日期"};
  ComboBox LYR{this, "LYR", "报损人", NameList(limit::kPerson)};
  ComboBox FHR{this, "FHR", "复核人", NameList(limit::kPerson)};
  TextBox BZ{this, "BZ", "备注:"};
  Button Command1{this, "Command1", "报损(&B)", &Frm_YPBS::Command1_Click};

  Layout Arrange() const override {
    return Arranged(Group("报损单", Fields(3, {BSDH, BSRQ, LYR, FHR, BZ})), {Command1, Command4});
  }

  /// Saves head, lines, counters, batches and log in one transaction; the screen keeps everything after a failure.
  void Save_YPBS();

 protected:
  std::vector<DictionaryList> Lists() override { return {{"LYR", &LYR}, {"YP_FHR", &FHR}}; }
  void ShowNumber() override { BSDH.SetText(NextNumber()); }
  void EnterLine(int row) override;

 private:
  bool CheckBS();
  bool CheckBSStock();
  void Command1_Click();
  std::string NextNumber() { return NextDocNo(app_, "BSDH", "YK_YPBSDJ", "BSRQ"); }
  Statement HeadInsert(const std::string& number) const;
};

namespace {

const PickerSettings kPicker{.f2 = F2Key::kDoesNothing,  // although the caption of KCXS shows it
                             .columns = StandardColumns({.LSJ = "0.00", .PFJ = "0.00", .CLLSJ = "0.000"}, 11)};

const DocumentKind kKind{.name = Frm_YPBS::kName,
                         .caption = "药品报损登记",
                         // That of the requisition: who may hand drugs out may write them off.
                         .right = RightKey("YPGL_KSLYLR"),
                         .lists = "select controlid,DMMC from CS ",
                         .picker = kPicker,
                         .columns = consumption::kColumns,
                         .habits = kLineHabits.loss};

}  // namespace

Frm_YPBS::Frm_YPBS(AppContext& app) : LineDocument(app, kKind) {}

void Frm_YPBS::EnterLine(int row) {
  auto& dialog = app_.forms.Get<Frm_YPBSCheck>(app_, fpSpread1);
  dialog.LoadData(fpSpread1.Text(row, consumption::kCode));
  dialog.PM.SetCaption(fpSpread1.Text(row, consumption::kName));
  dialog.EditRow = row;
  dialog.TYSL.SetText("1");
  dialog.ShowModal();
}

bool Frm_YPBS::CheckBSStock() {
  return StockSuffices(app_, fpSpread1, consumption::kQuantity, consumption::kRatio);
}

bool Frm_YPBS::CheckBS() {
  NumberedMessages messages;
  messages.Demand(LYR, " 报损人不能为空!");
  messages.Demand(FHR, " 复核人不能为空!");
  if (fpSpread1.MaxRows() == 0) messages.Add(" 报损项目明细不能为空!");
  return messages.Pass(app_.desktop);
}

/// The total stays away after a refusal.
void Frm_YPBS::Command1_Click() {
  if (!ConfirmSave(app_.desktop)) return;
  fpSpread1.RemoveTotal();
  if (!CheckBSStock() || !CheckBS()) return;
  Save_YPBS();
}

void Frm_YPBS::Save_YPBS() {
  const bool saved = InTransaction(app_, [this] {
    const std::string number = NextNumber();
    app_.Cn->Execute(HeadInsert(number));
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      app_.Cn->Execute(kInsert(fpSpread1, row, {Quoted(number, "单号")}));
      // The log tells the number that the operator saw, also where another workstation took it meanwhile.
      MoveStock(app_, kMove, Moved(row, consumption::kMoved), BSDH.Text());
    }
  });
  if (!saved) return;
  BSDH.SetText(NextNumber());
  Finished("报损成功");
}

Statement Frm_YPBS::HeadInsert(const std::string& number) const {
  return InsertOf("Insert into YK_YPBSDJ (KFMC,BSDH,BSRQ,LYR,FHR,DJR,BZ)Values(",
                  {Quoted(app_.KFMC, "库房"), Quoted(number, "单号"), Quoted(FormatDate(BSRQ.Value(), "yyyy-mm-dd")),
                   Quoted(LYR), Quoted(FHR), Quoted(app_.CurUser.GetUserName, "操作员"), Quoted(BZ.Text(), "备注")});
}

const Screen kLoss = ChildScreen<Frm_YPBS>();
const Screen kLossEntry = EntryScreen<Frm_YPBSCheck, Frm_YPBS>();

}  // namespace luming
