#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "documents/entry_dialog.h"
#include "documents/line_document.h"
#include "documents/line_insert.h"
#include "documents/screens.h"
#include "frame/gateway.h"
#include "output/grid_command.h"
#include "output/grid_routines.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/label.h"
#include "screen/redraw_pause.h"
#include "screen/text_box.h"
#include "stock/movement_log.h"
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
  kPrice,  ///< of the counted unit
  kBook,
  kCounted,  ///< in smallest units once the line is complete
  kDifference,
  kDifferenceAtRetail,
  kValue,
  kFactor,  ///< the count is multiplied by it: 1 on every complete line
  kLargeUnits,
  kRatio,  ///< for kLargeUnits alone
  kWholesale,
  kDifferenceAtWholesale,
  kBatchSql,
};
}  // namespace col

/// Columns of the search list, which has the trade name in the third place as no other document has.
namespace found {
enum Column { kCode = 1, kName, kTradeName, kSpecification, kUnit, kOrigin, kStock, kRetail, kPurchase };
}

// A line is copied by the numbers that the lists of the other documents have: on this screen each value from the third
// on stands one place beside its caption, until the dialog has set it right or the operator has seen it.
// clang-format off
constexpr LineColumn kColumns[] = {
  // column                      caption             from the match               saved as
  {col::kCode,                   "编码",             {},                          "YPBM", sent::Text, Cell::kLocked, Holds::kCode},
  {col::kName,                   "品名",             {found::kName}},
  {col::kSpecification,          "规格",             {found::kTradeName}},
  {col::kUnit,                   "单位",             {found::kSpecification},     "DW",   sent::Text},
  {col::kOrigin,                 "产地",             {found::kUnit}},
  {col::kPrice,                  "零售价",           {found::kStock, "0.000"},    "LSJ",  sent::FigureOr0},
  {col::kBook,                   "帐面库存",         {found::kOrigin, "0.00"},    "ZMKC", sent::FigureOr0},
  {col::kCounted,                "实际库存",         {},                          "SJKC", sent::FigureOr0, Cell::kCount},
  {col::kDifference,             "盈亏数"},
  {col::kDifferenceAtRetail,     "盈亏金额(零售价)"},
  {col::kValue,                  "库存金额"},
  {col::kFactor,                 "拆零比",           {found::kPurchase}},
  {col::kLargeUnits,             "合并包装数量"},
  {col::kRatio,                  "拆零比2",          {found::kPurchase}},
  {col::kWholesale,              "批发价",           {found::kRetail, "0.0000"}},
  {col::kDifferenceAtWholesale,  "盈亏金额"},
  {col::kBatchSql,               "",                 {},                          nullptr, nullptr,   Cell::kHidden},
};
// clang-format on
static_assert(InOrder(kColumns));

constexpr LineInsert kInsert("INSERT INTO YF_PDMX (PDRQ,YPBM,LSJ,ZMKC,SJKC,CZY,DW,KFBM) values(", kColumns,
                             {"PDRQ", "CZY", "KFBM"});

constexpr Colour kRed = 0xFF0000;
constexpr int kCountWidth = 12;  ///< room to write on the printed sheet
constexpr int kBringBack = 100;

constexpr std::string_view kBatchUpdate = "Update YK_CurryPH Set SL=";
constexpr std::string_view kBatchWhere = " Where id=";

/// The text of a line's last cell as the statements it was made from. The cell may come from a parked file: what is no
/// such statement is refused like a value that would run on as one.
Statement BatchStatements(const std::string& text, int row) {
  Statement statements;
  for (const std::string& line : Split(text, "\n")) {
    if (line.empty()) continue;
    const std::size_t where = line.find(kBatchWhere);
    const bool known = line.starts_with(kBatchUpdate) && where != std::string::npos;
    const std::string_view words = line;
    const std::size_t quantity = known ? kBatchUpdate.size() : 0;
    statements += std::string(kBatchUpdate) +
                  Bare(words.substr(quantity, known ? where - quantity : words.npos), {"批次数量", row});
    if (known) statements += std::string(kBatchWhere) + Bare(words.substr(where + kBatchWhere.size()), {"批次", row});
    statements += "\n";
  }
  return statements;
}

/// An empty cell counts as 0.
double FigureIn(const std::string& cell) {
  return cell.empty() ? 0 : CDbl(cell);
}

/// What of a line is reckoned with; nothing for a line with a cell that is no number.
struct Figures {
  explicit Figures(const Grid& lines, int row) {
    for (const int column : {col::kPrice, col::kBook, col::kCounted, col::kRatio, col::kWholesale}) {
      const std::string cell = lines.Text(row, column);
      usable = usable && (cell.empty() || IsNumeric(cell));
    }
    if (!usable) return;
    price = FigureIn(lines.Text(row, col::kPrice));
    book = FigureIn(lines.Text(row, col::kBook));
    counted = FigureIn(lines.Text(row, col::kCounted));
    ratio = FigureIn(lines.Text(row, col::kRatio));
    wholesale = FigureIn(lines.Text(row, col::kWholesale));
  }

  bool usable = true;
  double price = 0, book = 0, counted = 0, ratio = 0, wholesale = 0;
};

}  // namespace

/// 盘点单录入: what was counted becomes the stock of the storehouse.
class ek_YPPDD : public LineDocument {
 public:
  static constexpr const char* kName = "ek_YPPDD";
  explicit ek_YPPDD(AppContext& app);

  DateBox DTPicker1{this, "DTPicker1", "盘点日期"};  ///< shown only: a count bears the moment of its saving
  ComboBox Text1{this, "Text1", "复核人", {.ime = Ime::kOperator}};
  CheckBox Check1{this, "Check1", "保存后清空"};
  CheckBox Check2{this, "Check2", "将未录入的药品材料全部盘点为零库存"};  ///< said of what is so in any case
  Label CountInfo{this, "CountInfo"};
  Button Command1{this, "Command1", "盘点(&S)", &ek_YPPDD::Command1_Click};
  Button Command2{this, "Command2", "盘点打印(&P)", &ek_YPPDD::Command2_Click};
  Button Command5{this, "Command5", "未盘点药品管理", &ek_YPPDD::Command5_Click};
  Button Command6{this, "Command6", "自动生成盘点单", &ek_YPPDD::Make_PDD};
  Button Command7{this, "Command7", "药品暂存", &ek_YPPDD::Command7_Click};
  Button Command8{this, "Command8", "加载暂存药品", &ek_YPPDD::Command8_Click};

  Layout Arrange() const override {
    return Column({
        Arranged(Group("盘点单", Row({Fields(2, {DTPicker1, Text1}), Check1, Check2, Space()})),
                 {Command1, Command2, Command6, Command5, Command7, Command8, Command4}),
        CountInfo,
    });
  }

  /// Recomputes one line; nothing while its count is empty.
  void Cacel_Grid(int row);
  /// Saves all lines in one transaction. A line that fails by itself is told, and the others are saved all the same.
  void Save_YPPD();
  /// Fills the grid with all drugs of the storehouse, counts empty.
  void Make_PDD();
  /// Puts a fresh total below the lines.
  void RecalcTotal();

 protected:
  void Load() override;
  std::vector<DictionaryList> Lists() override { return {{"YP_FHR", &Text1}}; }
  void EnterLine(int row) override;
  void Picker_Picked(PickedBy by) override;
  void FormKeyDown(KeyEvent& event) override;
  void Command4_Click() override;

 private:
  void fpSpread1_Change(int row, int column);
  void fpSpread1_RightClick(int row, int column);
  void Command1_Click();
  void Command2_Click() { PrintTrapped(app_, fpSpread1, "药品盘点报告"); }
  void Command5_Click() { kUncountedDrugs.open(app_); }
  void Command7_Click() { fpSpread1.Park(); }
  void Command8_Click();

  bool Del_PDLine(const std::string& code);
  bool Save_PDLine(bool absolute, int row);
  void SaveLine(int row);
  void ShowCounts();
  void KeepLines();
  void BringBackLines();

  using Lines = std::vector<std::vector<std::string>>;
  Lines former_;    ///< those that a generated list has replaced
  int failed_ = 0;  ///< lines that the last save could not save
};

namespace {

/// Entry dialog of the stock take: the count in one of the drug's units, and what is left of each batch.
class eK_YPPDDCheck : public EntryDialog {
 public:
  static constexpr const char* kName = "eK_YPPDDCheck";
  eK_YPPDDCheck(AppContext& app, LineGrid& lines)
      : EntryDialog(app, lines, kName, "请您输入(回车继续)"), take_(static_cast<ek_YPPDD&>(lines.Owner())) {
    DW.click.Connect(this, &eK_YPPDDCheck::DW_Click);
  }

  Label PM{this, "PM"};
  Label GG{this, "GG"};
  ComboBox DW{this, "DW", "单  位", {.style = ComboStyle::kFixed}};
  Label LSJ{this, "LSJ"};
  Label L_KCL{this, "L_KCL"};
  TextBox TYSL{this, "TYSL", "现库存量", {.keys = KeyFilter::kPrice, .ime = Ime::kOff, .select_on_focus = true}};
  Grid fpSpread1{
      this,
      "fpSpread1",
      {GridColumn("批号", 14).Code().Locked(), GridColumn("效期", 11).Date().Locked(),
       GridColumn("数量", 9).Figure().Typed({.keys = KeyFilter::kPrice, .figure = true}), GridColumn("id").Hidden()}};
  Button Command1{this, "Command1", "确定(&Y)", &eK_YPPDDCheck::Command1_Click};
  Button Command2{this, "Command2", "取消(&C)", &eK_YPPDDCheck::Cancel, ButtonRole::kCancel};

  Layout Arrange() const override {
    return Column({
        Fields(1, {Layout(PM).Titled("品  名"), Layout(GG).Titled("规  格")}),
        Fields(2, {DW, Layout(LSJ).Titled("零售价"), Layout(L_KCL).Titled("库存"), TYSL}),
        Layout(fpSpread1).Height(8),
        Row({Space(), Command1, Command2}),
    });
  }

  /// Shows drug, unit, stock and batches; comes ahead of the dialog itself. Failures are the caller's.
  void LoadData(const std::string& YPBM);

 protected:
  void Activated() override { Start(TYSL); }

 private:
  enum Batch { kBatch = 1, kExpiry, kQuantity, kId };

  bool SmallestUnitChosen() const { return DW.ListIndex() == 1; }
  void DW_Click();
  void Command1_Click();
  std::string GetBatchSql() const;

  ek_YPPDD& take_;
  std::int32_t ratio_ = 0;
  std::int32_t YKKCL_ = 0;  ///< whole smallest units: a fraction of the stock is not shown
  double large_price_ = 0;
  double split_price_ = 0;
};

void eK_YPPDDCheck::LoadData(const std::string& YPBM) {
  Recordset drug;
  OpenRs(app_, drug,
         "Select PFJ,YPMC,GG,DW,LSJ,PFJ,CLB,YKKCL,ZXDW,CLLSJ From YF_YPML Where YPBM Like" + Quoted(YPBM, "编码"));
  if (!drug.Eof()) {
    ratio_ = CLng(drug.Field("CLB").NumberOr(0));
    YKKCL_ = CLng(drug.Field("YKKCL").NumberOr(0));
    large_price_ = drug.Field("LSJ").NumberOr(0);
    split_price_ = ratio_ < 2 ? large_price_ : drug.Field("CLLSJ").NumberOr(0);
    PM.SetCaption(drug.Field("YPMC").TextOrEmpty());
    GG.SetCaption(drug.Field("GG").TextOrEmpty());
    DW.AddItem(drug.Field("DW").TextOrEmpty());
    if (ratio_ >= 2) DW.AddItem(drug.Field("ZXDW").TextOrEmpty());
    DW.SetListIndex(ratio_ >= 2 ? 1 : 0);
  }
  CloseRs(drug);
  Recordset batches;
  OpenRs(app_, batches, "Exec YK_GetPH " + Quoted(YPBM, "编码"));
  GridInit(fpSpread1);
  fpSpread1.Fill(std::move(batches), {{"PH"}, {"XQ", "yyyy-mm-dd"}, {"SL"}, {"id"}});
}

void eK_YPPDDCheck::DW_Click() {
  LSJ.SetCaption(FormatNumber(SmallestUnitChosen() ? split_price_ : large_price_, "0.0000"));
  const bool in_large_units = !SmallestUnitChosen() && ratio_ > 1;
  L_KCL.SetCaption(in_large_units ? FormatNumber(static_cast<double>(YKKCL_) / ratio_, "0.00")
                                  : std::to_string(YKKCL_));
}

void eK_YPPDDCheck::Command1_Click() {
  if (TYSL.Text().empty()) {
    Refuse("盘点数量不能为空", TYSL);
    return;
  }
  Trapped(app_, [this] {
    const std::string times_ratio = NumberText(CDbl(TYSL.Text()) * ratio_);
    if (DW.Items().size() > 1) {
      Write(col::kPrice, FormatNumber(split_price_, "0.0000"));
      Write(col::kUnit, DW.Items()[1]);
      Write(col::kCounted, SmallestUnitChosen() ? TYSL.Text() : times_ratio);
    } else {
      // A drug without a ratio is counted as 0. The line shows it in red, and the count can be typed there.
      Write(col::kCounted, times_ratio);
      const bool lost = ratio_ == 0 && CDbl(TYSL.Text()) != 0;
      if (lost) lines_.SetColours(EditRow, col::kCounted, col::kCounted, kRed, Control::kNoColour);
    }
    Write(col::kFactor, "1");
    Write(col::kBatchSql, GetBatchSql());
    take_.Cacel_Grid(EditRow);
    Unload();
  });
}

/// Every batch is written anew, changed or not. What is no figure is found when the statements are sent.
std::string eK_YPPDDCheck::GetBatchSql() const {
  std::string statements;
  for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
    statements.append(kBatchUpdate).append(fpSpread1.Text(row, kQuantity));
    statements.append(kBatchWhere).append(fpSpread1.Text(row, kId)).append("\n");
  }
  return statements;
}

const PickerSettings kPicker{.reading = PickerReading::kOpenRs,
                             .f2 = F2Key::kDoesNothing,
                             .stock_filter_caption = "无库存不显示",
                             .columns = {kCodeColumn,
                                         {"品名", "YPMC"},
                                         {"商品名", "SPMC"},
                                         {"规格", "GG"},
                                         {"单位", "DW"},
                                         {"产地", "SCCJ"},
                                         {"库存", "YKKCL"},
                                         {"零售价", "LSJ", "0.00"},
                                         {"进价", "PFJ"},
                                         {"拆零比", "CLB"},
                                         {"最小单位", "zxdw"},
                                         {"拆零零售价", "CLLSJ"}}};

const DocumentKind kKind{.name = ek_YPPDD::kName,
                         .caption = "盘点单录入",
                         .lists = "select * from CS",
                         .picker = kPicker,
                         .columns = kColumns,
                         .habits = kLineHabits.stock_take};

}  // namespace

ek_YPPDD::ek_YPPDD(AppContext& app) : LineDocument(app, kKind) {
  Command4.SetCaption("删除选择项(&D)");
  fpSpread1.SetColumnWidth(col::kCounted, kCountWidth);
  fpSpread1.change.Connect(this, &ek_YPPDD::fpSpread1_Change);
  fpSpread1.right_click.Connect(this, &ek_YPPDD::fpSpread1_RightClick);
}

void ek_YPPDD::Load() {
  LineDocument::Load();
  Text1.SetText(app_.CurUser.GetUserName);
  ShowCounts();
}

void ek_YPPDD::EnterLine(int row) {
  auto& dialog = app_.forms.Get<eK_YPPDDCheck>(app_, fpSpread1);
  dialog.LoadData(fpSpread1.Text(row, col::kCode));
  dialog.EditRow = row;
  dialog.ShowModal();
  Cacel_Grid(fpSpread1.MaxRows());
}

/// Enter leaves the lines without a total.
void ek_YPPDD::Picker_Picked(PickedBy by) {
  PickItem();
  if (by == PickedBy::kDoubleClick) RecalcTotal();
  ShowCounts();
}

/// Counts are typed down their column: Enter goes to the next line.
void ek_YPPDD::FormKeyDown(KeyEvent& event) {
  const bool at_a_count = fpSpread1.HasFocus() && fpSpread1.Entry(fpSpread1.ActiveRow(), fpSpread1.ActiveCol());
  if (event.code != key::kEnter || !at_a_count) return LineDocument::FormKeyDown(event);
  event.handled = true;
  fpSpread1.UserActivate(fpSpread1.ActiveRow() + 1, fpSpread1.ActiveCol());
}

void ek_YPPDD::Command4_Click() {
  GridDelRow(fpSpread1, fpSpread1.ActiveRow());
  RecalcTotal();
  ShowCounts();
}

void ek_YPPDD::Command8_Click() {
  fpSpread1.LoadParked();
  ShowCounts();
}

void ek_YPPDD::fpSpread1_Change(int row, int column) {
  if (column != col::kCounted) return;
  Cacel_Grid(row);
  ShowCounts();
}

/// A shortage colours the cell in focus, wherever that is, and no later surplus takes the colour back.
void ek_YPPDD::Cacel_Grid(int row) {
  if (fpSpread1.Text(row, col::kCounted).empty()) return;
  const Figures line(fpSpread1, row);
  if (!line.usable) return;
  const double difference = line.counted - line.book;
  const auto show = [&](int column, double figure, const char* picture) {
    fpSpread1.SetText(row, column, FormatNumber(figure, picture));
  };
  fpSpread1.SetText(row, col::kDifference, NumberText(difference));
  if (difference < 0) {
    fpSpread1.SetColours(fpSpread1.ActiveRow(), fpSpread1.ActiveCol(), fpSpread1.ActiveCol(), kRed, Control::kNoColour);
  }
  show(col::kDifferenceAtRetail, line.price * difference, "0.000");
  show(col::kDifferenceAtWholesale, line.wholesale * difference, "0.000");
  show(col::kValue, line.price * line.counted, "0.00");
  const double large_units = line.ratio > 0 ? std::trunc(line.counted / line.ratio) : line.counted;
  fpSpread1.SetText(row, col::kLargeUnits, NumberText(large_units));
}

void ek_YPPDD::RecalcTotal() {
  if (fpSpread1.MaxRows() == 0) return;
  const int last = fpSpread1.MaxRows();
  if (fpSpread1.IsTotalRow(last) || fpSpread1.Text(last, col::kName) == kTotalCaption) GridDelRow(fpSpread1, last);
  if (fpSpread1.MaxRows() == 0) return;
  GridSumRow(fpSpread1, 1,
             {col::kBook, col::kCounted, col::kDifference, col::kDifferenceAtRetail, col::kValue, col::kWholesale,
              col::kDifferenceAtWholesale});
}

void ek_YPPDD::Make_PDD() {
  constexpr const char* kWhat = "正在生成盘点单……";
  Trapped(app_, [this] {
    app_.desktop.ShowProgress(kWhat, 0, 2);
    Recordset drugs;
    OpenRs(app_, drugs,
           "Select YPBM,YPMC,GG,ZXDW,DW,SCCJ,LSJ,CLB,CLLSJ,YKKCL AS 'KCL' From YF_YPML Where SFXM IN (Select "
           "sChargeItemName From YFYK_LinkItem Where sInvItemName Like" +
               Quoted(app_.KFMC, "库房") + ") Order BY Left(PYDM,1) ");
    app_.desktop.ShowProgress(kWhat, 1, 2);
    struct Counted {
      std::string unit, price, ratio, value;
    };
    std::vector<Counted> counted;
    counted.reserve(static_cast<std::size_t>(drugs.RecordCount()));
    for (; !drugs.Eof(); drugs.MoveNext()) {
      const double ratio = drugs.Field("CLB").NumberOr(0);
      const Value& price = drugs.Field(ratio < 2 ? "LSJ" : "CLLSJ");
      counted.push_back({drugs.Field(ratio < 2 ? "DW" : "ZXDW").TextOrEmpty(), price.TextOrEmpty(), NumberText(ratio),
                         NumberText(price.NumberOr(0) * drugs.Field("KCL").NumberOr(0))});
    }
    KeepLines();
    const RedrawPause pause(fpSpread1);
    fpSpread1.SetMaxRows(0);
    if (!counted.empty()) {
      drugs.MoveFirst();
      fpSpread1.Fill(std::move(drugs), {{"YPBM"}, {"YPMC"}, {"GG"}, {""}, {"SCCJ"}, {""}, {"KCL"}});
    }
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      Counted& line = counted[static_cast<std::size_t>(row) - 1];
      fpSpread1.SetText(row, col::kUnit, std::move(line.unit));
      fpSpread1.SetText(row, col::kPrice, std::move(line.price));
      fpSpread1.SetText(row, col::kValue, std::move(line.value));
      fpSpread1.SetText(row, col::kFactor, "1");
      fpSpread1.SetText(row, col::kRatio, std::move(line.ratio));
    }
    GridSumRow(fpSpread1, 1, {col::kValue});
    fpSpread1.SetTopRow(1);
    fpSpread1.SetActiveCell(1, col::kCounted);
  });
  app_.desktop.ShowProgress(kWhat, 2, 2);
  ShowCounts();
}

/// The button replaces what was typed without a question; nothing typed is lost for good.
void ek_YPPDD::KeepLines() {
  fpSpread1.RemoveTotal();
  former_.clear();
  for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
    std::vector<std::string>& line = former_.emplace_back();
    for (int column = 1; column <= fpSpread1.MaxCols(); ++column) line.push_back(fpSpread1.Text(row, column));
  }
}

void ek_YPPDD::BringBackLines() {
  const Lines lines = std::exchange(former_, {});
  const RedrawPause pause(fpSpread1);
  fpSpread1.SetMaxRows(0);
  fpSpread1.SetMaxRows(static_cast<int>(lines.size()));
  int row = 0;
  for (const std::vector<std::string>& line : lines) {
    ++row;
    for (int column = 1; column <= fpSpread1.MaxCols(); ++column) {
      fpSpread1.SetText(row, column, line[static_cast<std::size_t>(column) - 1]);
    }
  }
  RecalcTotal();
  ShowCounts();
}

void ek_YPPDD::fpSpread1_RightClick(int, int) {
  std::vector<MenuEntry> own;
  if (!former_.empty()) own.push_back({"恢复被替换的明细(&R)", kBringBack});
  if (fpSpread1.OfferCommands(std::move(own)) == kBringBack) BringBackLines();
}

/// A line left empty is saved as a count of 0: the operator sees at any time how many there are.
void ek_YPPDD::ShowCounts() {
  int counted = 0, empty = 0;
  for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
    if (fpSpread1.IsTotalRow(row)) continue;
    ++(fpSpread1.Text(row, col::kCounted).empty() ? empty : counted);
  }
  std::string words = "已录入实际库存 " + std::to_string(counted) + " 行，未录入 " + std::to_string(empty) + " 行";
  if (empty > 0) words += "（保存后这些药品的库存为 0）";
  if (failed_ > 0) words += "。上次保存有 " + std::to_string(failed_) + " 行没有保存，品名为红色";
  if (!former_.empty()) words += "。被替换的 " + std::to_string(former_.size()) + " 行可以在明细上点右键恢复一次";
  CountInfo.SetCaption(words);
}

void ek_YPPDD::Command1_Click() {
  if (!app_.CurUser.YPGL_YPPD) return CheckRight(app_);
  if (fpSpread1.MaxRows() > 0) fpSpread1.RemoveTotal();
  Save_YPPD();
  ShowCounts();
}

void ek_YPPDD::Save_YPPD() {
  constexpr const char* kWhat = "正在保存盘点单……";
  const int lines = fpSpread1.MaxRows();
  if (lines == 0) {
    app_.desktop.MsgBox({"请先加入你要盘点的药品项目!", box::kInformation, "提示"});
    return;
  }
  if (app_.desktop.MsgBox({"你确实需要盘点吗？", box::kQuestion + box::kYesNo, "询问"}) != Answer::kYes) return;
  failed_ = 0;
  const bool saved = InTransaction(app_, [&] {
    for (int row = 1; row <= lines; ++row) {
      app_.desktop.ShowProgress(kWhat, row - 1, lines);
      SaveLine(row);
    }
  });
  app_.desktop.ShowProgress(kWhat, lines, lines);
  if (!saved) return;
  if (Check1.Checked()) {
    if (failed_ > 0) KeepLines();
    fpSpread1.SetMaxRows(0);
    Check2.SetChecked(false);
  }
  picker.RereadStock();
  app_.desktop.MsgBox({"执行成功", box::kInformation, AppContext::kTitle});
}

/// Neither the deletion of the day's earlier count nor a line that fails by itself stops the others; its name is
/// marked, since the closing words know nothing of it. A failing batch does stop the save.
void ek_YPPDD::SaveLine(int row) {
  constexpr std::size_t kNoStatement = 5;
  Del_PDLine(fpSpread1.Text(row, col::kCode));
  const bool saved = Save_PDLine(true, row);
  if (!saved) ++failed_;
  fpSpread1.SetColours(row, col::kName, col::kName, saved ? Control::kNoColour : kRed, Control::kNoColour);
  const std::string batches = fpSpread1.Text(row, col::kBatchSql);
  if (batches.size() > kNoStatement) app_.Cn->Execute(BatchStatements(batches, row));
}

bool ek_YPPDD::Del_PDLine(const std::string& code) {
  const std::string today = FormatDate(app_.clock.Now(), "yyyy-mm-dd");
  return ExecSql(app_, "Delete YF_PDMX Where KFBM Like" + Quoted(app_.KFMC, "库房") + " And YPBM LIKE" +
                           Quoted(code, "编码") + "and PDRQ between " + Quoted(today + " 00:00:00") + " and " +
                           Quoted(today + " 23:59:59"));
}

/// @param absolute whether the count becomes the stock; else it is added to it
bool ek_YPPDD::Save_PDLine(bool absolute, int row) {
  return Trapped(app_, [&] {
    const auto cell = [&](int column) { return fpSpread1.Text(row, column); };
    const std::string now = DateText(app_.clock.Now());
    app_.Cn->Execute(
        kInsert(fpSpread1, row, {Quoted(now), Quoted(app_.CurUser.GetUserName, "操作员"), Quoted(app_.KFMC, "库房")}));
    const double counted = FigureIn(cell(col::kCounted));
    const std::int16_t factor = CInt(cell(col::kFactor));
    const double stock = counted * factor;
    app_.Cn->Execute("update YF_YPML set YKKCL=" + NumberText(stock) + (absolute ? "" : "+YKkcl") + " where YPBM LIKE" +
                     Quoted(cell(col::kCode), "编码"));
    AddMoveLog(app_, {.YPBM = cell(col::kCode),
                      .SL = counted,
                      .CLB = factor,
                      .KCL = stock,
                      .DW = cell(col::kUnit),
                      .in = true,
                      .MS = "药品盘点",
                      .RQ = now,
                      .KFBM = app_.KFMC,
                      .BZ = "盘点日期：" + FormatDate(app_.clock.Now(), "yyyy-mm-dd")});
  });
}

const Screen kStockTake = ChildScreen<ek_YPPDD>();
const Screen kStockTakeEntry = EntryScreen<eK_YPPDDCheck, ek_YPPDD>();

}  // namespace luming
