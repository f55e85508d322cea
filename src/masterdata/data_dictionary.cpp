#include "masterdata/data_dictionary.h"

#include <algorithm>

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/dictionary_head.h"
#include "masterdata/dictionary_links.h"
#include "masterdata/phonetic.h"
#include "masterdata/screens.h"
#include "output/grid_routines.h"
#include "util/text.h"

namespace luming {

namespace {

enum DictionaryColumn { kCode = 1, kDictionaryName, kType, kModule, kRemark };
enum EntryColumn { kText = 1, kState, kId };

constexpr const char* kSystem = "系统";
constexpr const char* kUser = "用户";
constexpr const char* kMarked = "修改";
constexpr const char* kEverywhere = "所有";
constexpr const char* kUpwards = "向上";
constexpr const char* kEntry = "字典内容";

}  // namespace

std::string ModuleOf(std::string_view program_title) {
  return program_title == AppContext::kTitle ? "药库" : "%";
}

sjzd::sjzd(AppContext& app) : Form(app.forms, kName, "数据字典", WindowKind::kDialog), app_(app) {
  fpSpread1.SetRowMode(true);
  LinkPrompt.SetVisible(false);
  Command4.SetVisible(false);
  ZDMC.key_down.Connect(this, &sjzd::ZDMC_KeyDown);
  Check1.click.Connect(this, &sjzd::Check1_Click);
  fpSpread1.click.Connect(this, &sjzd::fpSpread1_Click);
  fpSpread1.key_down.Connect(this, &sjzd::fpSpread1_KeyDown);
  fpSpread2.change.Connect(this, &sjzd::fpSpread2_Change);
}

Layout sjzd::Arrange() const {
  return Column({
      Row({Layout(ZDMC).Width(20), Layout(Combo1).Width(8), Com_Find, Space(), Check1}),
      LinkPrompt,
      SplitAcross({
          Column({Layout(fpSpread1).Height(22), Row({Command7, Command5, Command6, Command4, Space()})}).Stretch(7),
          Column({CurrentDictionary, fpSpread2, Row({Command2, Command8, Command9, Space()})}).Stretch(3),
      }),
      Row({Note, Space(), Command3, Command1}),
  });
}

void sjzd::Load() {
  CleanControl::SetControlColor(*this);
  GridInit(fpSpread1);
  GridInit(fpSpread2);
  ReloadList({});
}

void sjzd::LinkTo(const std::string& control) {
  LinkPrompt.SetCaption("请选择关联到【" + control + "】的字典");
  LinkPrompt.SetVisible(true);
  Command4.SetVisible(true);
  Command3.SetVisible(false);
}

Statement sjzd::ListStatement() const {
  if (Check1.Checked()) return Statement("select BZ,DM,DMMC,ZD_Type,moudelname From dagl_zd  order by xx");
  return "select BZ,DM,DMMC,ZD_Type,moudelname From dagl_zd Where MoudelName Like" +
         Quoted("%" + ModuleOf(AppContext::kTitle) + "%") + " order by xx";
}

void sjzd::ReloadList(const std::string& code) {
  Trapped(app_, [&] {
    Recordset rows;
    OpenRs(app_, rows, ListStatement());
    fpSpread1.Fill(std::move(rows), {{"DM"}, {"DMMC"}, {"ZD_Type"}, {"moudelname"}, {"BZ"}});
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
      fpSpread1.SetText(row, kType, fpSpread1.Text(row, kType) == "1" ? kSystem : kUser);
    }
    fpSpread1.SetActiveCell(std::max(RowOfDictionary(code), 1), 1);
    ShowDictionary(fpSpread1.ActiveRow());
  });
}

int sjzd::RowOfDictionary(const std::string& code) const {
  int row = fpSpread1.MaxRows();
  while (row > 0 && fpSpread1.Text(row, kCode) != code) --row;
  return row;
}

/// Entries that wait for being saved stay when their own dictionary is shown again.
void sjzd::ShowDictionary(int row) {
  const bool shows = row >= 1 && row <= fpSpread1.MaxRows();
  const std::string code = shows ? fpSpread1.Text(row, kCode) : std::string();
  const std::string name = shows ? "【" + fpSpread1.Text(row, kDictionaryName) + "】" : std::string();
  CurrentDictionary.SetCaption(shows ? "  当前选择字典" + name : "");
  fpSpread2.SetText(0, kText, shows ? name + kEntry : "");
  if (shows && code == code_ && HasMarkedEntries()) return;
  code_ = code;
  fpSpread2.SetMaxRows(0);
  if (shows) ReadEntries();
}

bool sjzd::ReadEntries() {
  return Trapped(app_, [this] {
    Recordset rows;
    OpenRs(app_, rows, "Select DMMC,id From CS Where ControlID Like" + Quoted(code_, "字典代码"));
    fpSpread2.Fill(std::move(rows), {{"DMMC"}, {""}, {"id"}});
  });
}

void sjzd::fpSpread1_Click(int row, int) {
  ShowDictionary(row);
}

void sjzd::fpSpread1_KeyDown(KeyEvent& event) {
  const int from = fpSpread1.ActiveRow();
  fpSpread1.DefaultKey(event);
  if (fpSpread1.ActiveRow() != from) ShowDictionary(fpSpread1.ActiveRow());
}

void sjzd::ZDMC_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  Com_Find_Click();
}

void sjzd::Com_Find_Click() {
  const int row = FindNext();
  if (row == 0) {
    app_.desktop.MsgBox({"未找到搜索的字典", box::kInformation, "提示"});
    return;
  }
  fpSpread1.SetActiveCell(row, 1);
  ShowDictionary(row);
}

/// The next row whose name holds the text; over the whole list the search begins again at its top. 0 for none.
int sjzd::FindNext() const {
  const std::string wanted = UpperAscii(Trim(ZDMC.Text()));
  if (wanted.empty()) return 0;
  const int rows = fpSpread1.MaxRows();
  const int step = Combo1.Text() == kUpwards ? -1 : 1;
  int row = fpSpread1.ActiveRow();
  for (int left = rows; left > 0; --left) {
    row += step;
    if (row > rows && Combo1.Text() == kEverywhere) row = 1;
    if (row < 1 || row > rows) return 0;
    if (UpperAscii(fpSpread1.Text(row, kDictionaryName)).find(wanted) != std::string::npos) return row;
  }
  return 0;
}

int sjzd::AddEntryRow() {
  fpSpread2.SetMaxRows(fpSpread2.MaxRows() + 1);
  return fpSpread2.MaxRows();
}

void sjzd::Command2_Click() {
  if (code_.empty()) return;
  fpSpread2.SetActiveCell(AddEntryRow(), kText);
  fpSpread2.SetFocus();
}

void sjzd::fpSpread2_Change(int row, int col) {
  if (col == kText) fpSpread2.SetText(row, kState, kMarked);
}

std::vector<sjzd::Entry> sjzd::MarkedEntries() const {
  std::vector<Entry> marked;
  for (int row = 1; row <= fpSpread2.MaxRows(); ++row) {
    if (fpSpread2.Text(row, kState).empty()) continue;
    marked.push_back({fpSpread2.Text(row, kText), fpSpread2.Text(row, kId)});
  }
  return marked;
}

bool sjzd::HasMarkedEntries() const {
  return !MarkedEntries().empty();
}

Statement sjzd::SaveStatement(int row) {
  const std::string text = fpSpread2.Text(row, kText);
  const std::string id = fpSpread2.Text(row, kId);
  const std::string pinyin = GetPYDM(app_, text);
  const ValueSource cell(kEntry, row);
  if (id.empty()) {
    return " Insert into CS(Controlid,DM,DMMC) Values (" + Quoted(code_, "字典代码") + "," + Quoted(pinyin, cell) +
           "," + Quoted(text, cell) + ")";
  }
  return "Update CS Set DMMC=" + Quoted(text, cell) + ",DM=" + Quoted(pinyin, cell) + " Where ID=" + Bare(id);
}

void sjzd::Command8_Click() {
  bool failed = false;
  bool saved = false;
  for (int row = 1; row <= fpSpread2.MaxRows() && !failed; ++row) {
    if (fpSpread2.Text(row, kState).empty()) continue;
    failed = !ExecSql(app_, SaveStatement(row));
    if (failed) continue;
    saved = true;
    fpSpread2.SetText(row, kState, "");
  }
  if (saved) RefreshEntries();
  if (!failed) app_.desktop.MsgBox({"保存成功", box::kInformation, "信息"});
}

/// Gives the entries just saved the ids that the database made; what is still to be saved stays as typed.
void sjzd::RefreshEntries() {
  const std::vector<Entry> marked = MarkedEntries();
  const int row = fpSpread2.ActiveRow();
  if (!ReadEntries()) return;
  for (const Entry& entry : marked) MarkEntry(entry);
  fpSpread2.SetActiveCell(row, kText);
}

void sjzd::MarkEntry(const Entry& entry) {
  int row = entry.id.empty() ? 0 : fpSpread2.MaxRows();
  while (row > 0 && fpSpread2.Text(row, kId) != entry.id) --row;
  if (row == 0) row = AddEntryRow();
  fpSpread2.SetText(row, kText, entry.text);
  fpSpread2.SetText(row, kState, kMarked);
}

void sjzd::Command9_Click() {
  const int row = fpSpread2.ActiveRow();
  const std::string id = fpSpread2.Text(row, kId);
  if (id.empty()) {
    GridDelRow(fpSpread2, row);
    return;
  }
  const Box question{"你真的要删除第" + std::to_string(row) + "行吗?", box::kQuestion + box::kYesNo, "询问"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) return;
  if (!ExecSql(app_, "Delete CS Where id Like" + Quoted(id))) return;
  GridDelRow(fpSpread2, row);
  app_.desktop.MsgBox({"删除成功", box::kInformation, "信息"});
}

void sjzd::Command7_Click() {
  auto& dialog = app_.forms.Get<Frm_ZD>(app_);
  dialog.Add(*this);
  dialog.ShowModal();
}

void sjzd::Command5_Click() {
  const int row = fpSpread1.ActiveRow();
  if (row == 0) return;
  auto& dialog = app_.forms.Get<Frm_ZD>(app_);
  dialog.Change(*this, {fpSpread1.Text(row, kCode), fpSpread1.Text(row, kDictionaryName),
                        fpSpread1.Text(row, kType) == kSystem, fpSpread1.Text(row, kRemark)});
  dialog.ShowModal();
}

void sjzd::Command6_Click() {
  const int row = fpSpread1.ActiveRow();
  if (row == 0) return;
  if (fpSpread1.Text(row, kType) == kSystem) {
    app_.desktop.MsgBox({"该数据字典为系统字典，不能删除。", box::kInformation, "提示"});
    return;
  }
  const std::string code = fpSpread1.Text(row, kCode);
  const Box question{"你真的要删除字典【" + fpSpread1.Text(row, kDictionaryName) + "】吗？",
                     box::kQuestion + box::kYesNo, "询问"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) return;
  if (!ExecSql(app_, "Delete DAGL_ZD Where DM Like" + Quoted(code, "字典代码"))) return;
  const bool entries_gone = ExecSql(app_, "Delete CS Where ControlID Like" + Quoted(code, "字典代码"));
  GridDelRow(fpSpread1, row);
  ShowDictionary(fpSpread1.ActiveRow());
  if (entries_gone) app_.desktop.MsgBox({"删除成功", box::kInformation, "信息"});
}

void sjzd::Command3_Click() {
  Unload();
  app_.forms.Get<Frm_LinkZD>(app_).ShowModal();
}

void sjzd::Command4_Click() {
  const int row = fpSpread1.ActiveRow();
  if (row == 0) return;
  taken_ = Choice{fpSpread1.Text(row, kCode), fpSpread1.Text(row, kDictionaryName)};
  Unload();
}

const Screen kDataDictionary = ModalScreen<sjzd>();

}  // namespace luming
