#include "masterdata/drug_catalogue.h"

#include "frame/command_table.h"
#include "frame/gateway.h"
#include "masterdata/catalogue_columns.h"
#include "masterdata/catalogue_import.h"
#include "masterdata/clean_control.h"
#include "masterdata/dictionary_lists.h"
#include "masterdata/drug_editor.h"
#include "masterdata/screens.h"
#include "masterdata/stock_value.h"
#include "output/column_widths.h"
#include "output/grid_routines.h"
#include "screen/redraw_pause.h"
#include "stock/drug_list.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr const char* kInjections = "针剂";
constexpr const char* kNoInjections = "非针剂";
constexpr int kHistoryCommand = 203;

std::vector<ColumnSource> Sources() {
  std::vector<ColumnSource> sources;
  for (const CatalogueColumn& column : CatalogueColumns()) {
    sources.push_back(column.picture ? ColumnSource{column.field, column.picture} : ColumnSource{""});
  }
  return sources;
}

const PickerSettings kPicker{.reading = PickerReading::kOpenRs, .enter = EnterKey::kLeftAlone};

}  // namespace

Frm_YPML::Frm_YPML(AppContext& app)
    : Form(app.forms, kName, "药品目录列表", WindowKind::kChild),
      fpSpread1(this, "fpSpread1", CatalogueGridColumns()),
      picker(this, app, kPicker, &fpSpread1),
      fpSpread2(this, app, BatchAmounts::kPurchaseAndWholesale),
      app_(app) {
  constexpr int kCodeAndName = 2;
  fpSpread1.SetFrozenCols(kCodeAndName);
  for (int col = 1; col <= catalogue::kCount; ++col) {
    fpSpread1.SetKind(-1, col, CatalogueColumns()[static_cast<std::size_t>(col) - 1].kind);
  }
  TreeView1.node_click.Connect(this, &Frm_YPML::TreeView1_NodeClick);
  fpSpread1.click.Connect(this, &Frm_YPML::fpSpread1_Click);
  fpSpread1.row_focus.Connect(this, &Frm_YPML::fpSpread1_RowFocus);
  fpSpread1.right_click.Connect(this, &Frm_YPML::fpSpread1_RightClick);
  fpSpread1.before_edit.Connect(this, &Frm_YPML::fpSpread1_BeforeEdit);
  fpSpread1.change.Connect(this, &Frm_YPML::fpSpread1_Change);
  fpSpread1.leave_cell.Connect(this, &Frm_YPML::fpSpread1_LeaveCell);
  fpSpread1.lost_focus.Connect(this, &Frm_YPML::fpSpread1_LostFocus);
  picker.picked.Connect(this, &Frm_YPML::Picker_Picked);
  picker.fill.Connect(this, &Frm_YPML::Picker_Fill);
}

Layout Frm_YPML::Arrange() const {
  return SplitAcross({
      Layout(TreeView1).Stretch(1),
      Column({
                 picker.SearchLine(),
                 SplitDown({Layout(fpSpread1).Stretch(4), fpSpread2.Arrange().Stretch(1)}),
                 TxtInfo,
                 Row({Command2, Command10, Command7, Command3, Command8, btnTYYP, Space(), Command9, Command4, Command5,
                      Command1, Command6}),
             })
          .Stretch(6),
  });
}

void Frm_YPML::Load() {
  CleanControl::SetControlColor(*this);
  picker.Load();
  GridInit(fpSpread2);
  if (!app_.CurUser.YPGL_CKYPML) {
    CheckRight(app_, "YPGL_CKYPML");
    Unload();
    return;
  }
  const Command* history = app_.commands.Find(kHistoryCommand);
  Command8.SetEnabled(history && history->action);
  RestoreColumnWidths(app_, fpSpread1);
  Trapped(app_, [this] {
    BuildTree();
    ReadLists();
  });
  if (TreeView1.Nodes().size() < 2) return;
  TreeView1.Select(1);
  LoadData(TreeView1.TextOf(1));
}

void Frm_YPML::BuildTree() {
  TreeView1.Build(app_,
                  "select sItemName from eK_ChargeItem where ypbz=1 And SitemName in (Select sChargeItemName From "
                  "YFYK_LinkItem Where sInvItemName Like" +
                      Quoted(app_.KFMC, "库房") + ")",
                  {"key", ""}, {{kInjections, "keyZJ"}, {kNoInjections, "keyFZJ"}});
}

void Frm_YPML::ReadLists() {
  auto dictionaries = ReadDictionaries(app_, "select controlid,DMMC from CS ");
  for (int col = 1; col <= catalogue::kCount; ++col) {
    const std::string dictionary = CatalogueColumns()[static_cast<std::size_t>(col) - 1].dictionary;
    if (!dictionary.empty()) fpSpread1.SetComboItems(-1, col, dictionaries[dictionary]);
  }
  fpSpread1.SetComboItems(-1, catalogue::kSCCJ, ReadList(app_, "select CDMC from YPGL_CDWF"));
  fpSpread1.SetComboItems(-1, catalogue::kSFXM, ReadList(app_, "select sItemName from eK_ChargeItem"));
}

void Frm_YPML::TreeView1_NodeClick(int node) {
  LoadData(TreeView1.TextOf(node));
}

/// Whether a drug is an injection shows in its name alone.
Statement Frm_YPML::ListStatement(const std::string& node) const {
  const bool in_stock = picker.KCXS.Checked();
  const std::string select = "select * from YF_YPML WHERE ";
  const std::string order = " Order by Left(PYDM,1)";
  const Statement of_storehouse = "SFXM IN (Select sChargeItemName From YFYK_LinkItem Where sInvItemName Like" +
                                  Quoted(app_.KFMC, "库房") + ")" + order;
  const std::string last_character = "Right(REPLACE(YPMC, ' ',''),1) ";
  if (node == kInjections) {
    return select + (in_stock ? " YKKCL>0 And  " : " ") + last_character + "Like'针' And " + of_storehouse;
  }
  if (node == kNoInjections) {
    return select + (in_stock ? "YKKCL>0 AND " : " ") + last_character + "<>'针' And " + of_storehouse;
  }
  if (node == ChargeItemTree::kAllItems) return select + (in_stock ? "YKKCL>0 AND  " : "") + of_storehouse;
  return select + "SFXM LIKE" + Quoted(node, "收费项目") + (in_stock ? " AND YKKCL>0" : "") + order;
}

void Frm_YPML::LoadData(const std::string& node) {
  TxtInfo.SetCaption("");
  ShowList(ListStatement(node));
}

void Frm_YPML::btnTYYP_Click() {
  ShowList(Statement("select * From YF_YPML WHERE SFTY=1"));
}

void Frm_YPML::ShowList(const Statement& statement) {
  Trapped(app_, [&] {
    Recordset rows;
    OpenRs(app_, rows, statement);
    FillGrid(rows);
    CloseRs(rows);
  });
}

/// An edit that was not saved is lost without a word when a search fills the grid.
void Frm_YPML::Picker_Fill(Recordset& rows) {
  FillGrid(rows);
  dirty_ = false;
}

void Frm_YPML::FillGrid(Recordset& rows) {
  static const std::vector<ColumnSource> sources = Sources();
  const std::vector<StockValue> values = StockValues(rows);
  const RedrawPause pause(fpSpread1);
  fpSpread1.SetMaxRows(0);
  FillDrugList(fpSpread1, std::move(rows), sources);
  price_edited_ = false;
  StockTotals totals;
  for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
    const StockValue& value = values[static_cast<std::size_t>(row) - 1];
    totals.Add(value);
    fpSpread1.SetText(row, catalogue::kLargeUnitStock, value.LargeUnits());
    fpSpread1.SetText(row, catalogue::kZSYP, value.injection ? "1" : "0");
    fpSpread1.SetText(row, catalogue::kPSPB, value.skin_test ? "1" : "0");
    fpSpread1.SetText(row, catalogue::kCost, FormatNumber(value.Cost(), "0.0000"));
    fpSpread1.SetText(row, catalogue::kRetail, FormatNumber(value.Retail(), "0.0000"));
  }
  fpSpread2.Clear();
  TxtInfo.SetCaption("");
  if (fpSpread1.MaxRows() > 0) AddTotals(totals.cost, totals.retail);
  fpSpread1.SetTopRow(1);
  fpSpread1.SetActiveCell(1, 1);
}

void Frm_YPML::AddTotals(double cost, double retail) {
  const int drugs = fpSpread1.MaxRows();
  const int total = drugs + 1;
  const std::string both = "进价合计：" + FormatNumber(cost, "0.000") + " 零售价合计：" + FormatNumber(retail, "0.000");
  fpSpread1.SetMaxRows(total);
  fpSpread1.SetTotalRow(total, true);
  fpSpread1.SetSpan(total, 1, 1, fpSpread1.MaxCols());
  fpSpread1.SetKind(total, -1, CellKind::kStatic);
  fpSpread1.SetBold(total, -1, -1, true);
  fpSpread1.SetText(total, 1, std::string(kTotalCaption) + std::to_string(drugs) + "条记录," + both);
  TxtInfo.SetCaption(both + "  毛利润合计:" + FormatNumber(retail - cost, "0.000"));
}

std::string Frm_YPML::ActiveCode() const {
  const int row = fpSpread1.ActiveRow();
  return fpSpread1.MaxRows() == 0 || fpSpread1.IsTotalRow(row) ? std::string() : fpSpread1.Text(row, catalogue::kYPBM);
}

void Frm_YPML::FormKeyDown(KeyEvent& event) {
  if (event.code == key::kEnter && picker.PM.HasFocus()) {
    fpSpread1.SetActiveCell(1, 1);
    fpSpread1.SetFocus();
    event.handled = true;
    return;
  }
  picker.FormKeyDown(event);
}

void Frm_YPML::Picker_Picked(PickedBy by) {
  if (by == PickedBy::kDoubleClick) {
    ShowEditor(false);
  } else {
    ShowBatches();
  }
}

void Frm_YPML::ShowBatches() {
  fpSpread2.ShowBatches(ActiveCode(), fpSpread1.Text(fpSpread1.ActiveRow(), catalogue::kYPMC));
}

void Frm_YPML::Command2_Click() {
  AddDrug(app_);
}

void Frm_YPML::ShowEditor(bool modify) {
  const std::string code = ActiveCode();
  if (code.empty()) {
    app_.desktop.MsgBox({"请先选择您要操作的数据。", box::kInformation, "系统提示"});
    return;
  }
  if (modify && !app_.CurUser.YPGL_EditYP) return CheckRight(app_, "YPGL_EditYP");
  ShowDrug(app_, modify ? eK_YPJBXX::kChanging : eK_YPJBXX::kViewing, code);
}

void Frm_YPML::fpSpread1_RightClick(int, int) {
  ShowHistory();
}

/// Which drug the history is about, the command reads from the active row itself.
void Frm_YPML::ShowHistory() {
  const Command* history = app_.commands.Find(kHistoryCommand);
  if (ActiveCode().empty() || !history || !history->action) return;
  const std::string name = fpSpread1.Text(fpSpread1.ActiveRow(), catalogue::kYPMC);
  const auto chosen = app_.desktop.PopUp({{"查看【" + name + "】历史信息(&H)", kHistoryCommand}});
  if (chosen == kHistoryCommand) history->action(app_);
}

void Frm_YPML::Command3_Click() {
  if (!app_.CurUser.YPGL_DelYP) return CheckRight(app_, "YPGL_DelYP");
  const Box question{"你真的要删除吗？删除后将不可恢复！", box::kWarning + box::kYesNo, "警告"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) return;
  Trapped(app_, [this] { DeleteDrug(ActiveCode()); });
}

bool Frm_YPML::HasStock(const std::string& code) {
  Recordset rows;
  OpenRs(app_, rows, "Select KCL,YKKCL From YF_YPML Where YPBM Like" + Quoted(code, "编码"));
  const bool stocked =
      rows.RecordCount() > 0 && (rows.Field("KCL").NumberOr(0) > 0 || rows.Field("YKKCL").NumberOr(0) > 0);
  CloseRs(rows);
  return stocked;
}

void Frm_YPML::DeleteDrug(const std::string& code) {
  if (code.empty()) return;
  if (HasStock(code)) {
    app_.desktop.MsgBox({"该药品项目还有库存，不能删除。", box::kWarning, "系统提示"});
    return;
  }
  if (!ExecSql(app_, "Delete yf_ypml where ypbm like" + Quoted(code, "编码"))) return;
  Del_Row(fpSpread1);
  app_.desktop.MsgBox({"删除成功！", box::kInformation, "提示"});
}

void Frm_YPML::Del_Row(Grid& grid) {
  if (grid.MaxRows() == 0) {
    app_.desktop.MsgBox({"已经没有记录可以删除了!", box::kInformation, "提示"});
    return;
  }
  grid.DeleteRows(grid.ActiveRow(), 1);
  grid.SetMaxRows(grid.MaxRows() - 1);
}

void Frm_YPML::Command9_Click() {
  app_.forms.Get<UploadData>(app_).ShowModal();
}

const Screen kDrugCatalogue = ChildScreen<Frm_YPML>();

}  // namespace luming
