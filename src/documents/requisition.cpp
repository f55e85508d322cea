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

constexpr LineInsert kInsert("Insert into YK_KSLYDJMX(LYDH,YPBM,YPMC,GG,DW,CD,SL,LSJ,PFJ,PH,XQ,CLB)Values(",
                             consumption::kColumns, {"LYDH"});

const consumption::EntryHabits kEntry{
    .name = "ek_KSLYCheck",
    .money = "0.0000",
    .catalogue_price = "",
    // Expiry and price of the first batch show although none is chosen: the oldest stock goes then.
    .batch = {.first_price = "0.0000", .chosen_price = "0.0000"},
    .quantity_keys = KeyFilter::kQuantity,
    .always_two_units = false,
    .whole_stock = false,
    .enter_confirms = false};

/// Entry dialog of the requisition.
class ek_KSLYCheck : public consumption::Entry {
 public:
  static constexpr const char* kName = "ek_KSLYCheck";
  ek_KSLYCheck(AppContext& app, LineGrid& lines) : Entry(app, lines, kEntry) {}
};

}  // namespace

/// 科室领药录入: a department other than a pharmacy draws drugs; the stock falls with the save.
class ek_KSLY : public LineDocument {
 public:
  static constexpr const char* kName = "ek_KSLY";
  explicit ek_KSLY(AppContext& app);

  TextBox LYDH{this, "LYDH", "单号", {.cut = limit::kDocumentNumber, .ime = Ime::kOff}};
  DateBox LYRQ{this, "LYRQ", "日期"};
  ComboBox LYDW{this, "LYDW", "领药单位(非药房)", NameList(limit::kCompany)};
  ComboBox LYR{this, "LYR", "领药人", NameList(limit::kPerson)};
  ComboBox FHR{this, "FHR", "复核人", NameList(limit::kPerson)};
  TextBox BZ{this, "BZ", "备注:"};
  Button Command1{this, "Command1", "领药(&S)", &ek_KSLY::Command1_Click};

  Layout Arrange() const override {
    return Arranged(Group("领药单", Fields(3, {LYDH, LYRQ, LYDW, LYR, FHR, BZ})), {Command1, Command4});
  }

  /// Saves head, lines, counters, batches and log in one transaction; the screen keeps everything after a failure.
  void Save_KSLY();

 protected:
  std::vector<DictionaryList> Lists() override { return {{"LYDW", &LYDW}, {"YP_FHR", &FHR}, {"LYR", &LYR}}; }
  void ShowNumber() override { LYDH.SetText(NextNumber()); }
  void EnterLine(int row) override;

 private:
  bool CheckLY();
  void Command1_Click();
  std::string NextNumber() { return NextDocNo(app_, "LYDH", "YK_KSLYDJ", "LYRQ"); }
  Statement HeadInsert(const std::string& number) const;
};

namespace {

const PickerSettings kPicker{.f2 = F2Key::kDoesNothing,  // although the caption of KCXS shows it
                             .columns = StandardColumns({.LSJ = "0.00", .CLLSJ = "0.000"}, 11)};

const DocumentKind kKind{.name = ek_KSLY::kName,
                         .caption = "科室领药录入",
                         .right = RightKey("YPGL_KSLYLR"),
                         .lists = "select controlid,DMMC from CS ",
                         .picker = kPicker,
                         .columns = consumption::kColumns,
                         .habits = kLineHabits.requisition};

}  // namespace

ek_KSLY::ek_KSLY(AppContext& app) : LineDocument(app, kKind) {}

void ek_KSLY::EnterLine(int row) {
  auto& dialog = app_.forms.Get<ek_KSLYCheck>(app_, fpSpread1);
  dialog.EditRow = row;
  dialog.LoadData(fpSpread1.Text(row, consumption::kCode));
  dialog.TYSL.SetText("1");
  dialog.ShowModal();
}

/// The department may stay empty; the log then says that drugs went out, and not where to.
bool ek_KSLY::CheckLY() {
  constexpr int kIndent = 6;
  NumberedMessages messages(kIndent);
  messages.Demand(LYR, " 领药人不能为空!");
  messages.Demand(FHR, " 复核人不能为空!");
  if (fpSpread1.MaxRows() == 0) messages.Add(" 领药项目明细不能为空!", picker.PM);
  return messages.Pass(app_.desktop);
}

/// The total stays away after a refusal.
void ek_KSLY::Command1_Click() {
  if (!ConfirmSave(app_.desktop)) return;
  fpSpread1.RemoveTotal();
  if (!StockSuffices(app_, fpSpread1, consumption::kQuantity, consumption::kRatio) || !CheckLY()) return;
  Save_KSLY();
}

void ek_KSLY::Save_KSLY() {
  const StockMove move{.in = false,
                       .kind = "药库领药到 " + LYDW.Text(),
                       .reference = "领药单号：",
                       .update = "Update YF_YPML Set ",
                       .counter = "YKKCL",
                       .batches = BatchEffect::kConsumed};
  const bool saved = InTransaction(app_, [&] {
    const std::string number = NextNumber();
    app_.Cn->Execute(HeadInsert(number));
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      app_.Cn->Execute(kInsert(fpSpread1, row, {Quoted(number, "单号")}));
      MoveStock(app_, move, Moved(row, consumption::kMoved), number);
    }
  });
  if (!saved) return;
  LYDH.SetText(NextNumber());
  LYDW.SetText("");
  Finished("领药成功");
}

Statement ek_KSLY::HeadInsert(const std::string& number) const {
  return InsertOf(
      "Insert into YK_KSLYDJ (KFMC,LYDH,LYRQ,LYDW,LYR,FHR,DJR,BZ)Values(",
      {Quoted(app_.KFMC, "库房"), Quoted(number, "单号"), Quoted(FormatDate(LYRQ.Value(), "yyyy-mm-dd")), Quoted(LYDW),
       Quoted(LYR), Quoted(FHR), Quoted(app_.CurUser.GetUserName, "操作员"), Quoted(BZ.Text(), "备注")});
}

const Screen kRequisition = ChildScreen<ek_KSLY>();
const Screen kRequisitionEntry = EntryScreen<ek_KSLYCheck, ek_KSLY>();

}  // namespace luming
