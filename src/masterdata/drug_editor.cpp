#include "masterdata/drug_editor.h"

#include <algorithm>

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/dictionary_lists.h"
#include "masterdata/drug_record.h"
#include "masterdata/insurance_items.h"
#include "masterdata/phonetic.h"
#include "masterdata/producer_choice.h"
#include "masterdata/screens.h"
#include "output/grid_routines.h"
#include "util/ansi_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

/// Shows what a row holds. A fixed list that has no such entry gets it, so that saving the row does not lose it.
void ShowStored(ComboBox& list, const std::string& text) {
  if (list.Style() == ComboStyle::kFixed && text.empty()) {
    list.SetListIndex(-1);
    return;
  }
  if (list.Style() == ComboStyle::kFixed && std::ranges::find(list.Items(), text) == list.Items().end()) {
    list.AddItem(text);
  }
  list.SetText(text);
}

}  // namespace

eK_YPJBXX::eK_YPJBXX(AppContext& app) : Form(app.forms, kName, "药品基本信息", WindowKind::kDialog), app_(app) {
  SFXM.SetTag("1");
  YPBM.SetTag("1");
  for (Control* field : std::initializer_list<Control*>{&SFXM, &YPBM, &YPMC, &PYDM, &WBDM, &DW, &LSJ, &CLLSJ, &KCL}) {
    field->SetRequired(true);
  }
  CLB.SetText("1");
  LSJ.change.Connect(this, &eK_YPJBXX::Price_Change);
  CLB.change.Connect(this, &eK_YPJBXX::Price_Change);
  CLLSJ.got_focus.Connect(this, &eK_YPJBXX::CLLSJ_GotFocus);
  CLB.lost_focus.Connect(this, &eK_YPJBXX::CLB_LostFocus);
  YPMC.lost_focus.Connect(this, &eK_YPJBXX::YPMC_LostFocus);
  SPMC.lost_focus.Connect(this, &eK_YPJBXX::SPMC_LostFocus);
  JX.got_focus.Connect(this, &eK_YPJBXX::JX_GotFocus);
  SCCJ.change.Connect(this, &eK_YPJBXX::SCCJ_Change);
  SCCJ.lost_focus.Connect(this, &eK_YPJBXX::HideProducers);
}

ComboOptions eK_YPJBXX::YesOrNo(std::vector<std::string> items) {
  return {.style = ComboStyle::kFixed, .items = std::move(items), .selected = 0};
}

Layout eK_YPJBXX::Arrange() const {
  return Column({
      Group("名称与编码", Fields(3, {SFXM, YPBM, Space(), YPMC, PYDM, WBDM, SPMC, SP_PYDM, SP_WBDM})),
      Group("规格、单位与价格", Fields(4, {GG, DW, LSJ, CLB, CLLSJ, ZXDW, KCL, SCCJ})),
      Group("分类与限量",
            Fields(4, {ABC, JX, PZWH, ZCSB, ZLZK, SFSF, YBYY, ZHJBZ, CFXL, HLYY, GFYY, KCSX, KCXX, YFKCSX, YFKCXX})),
      Group("医保与用法", Fields(4, {NHXMBH, YBXMBH, GYTJ, YYPC, DCJL, YLZYFL, JLDW, Row({ZSYP, PSPB})})),
      Note,
      Row({Command2, Choose_NHXMBH, Choose_YBXMBH, Space(), Check1, Com_Save, Command6}),
  });
}

void eK_YPJBXX::Load() {
  CleanControl::SetControlColor(*this);
  Trapped(app_, [this] {
    LoadCombos(app_, "select controlid,DMMC from CS ",
               {{"YPDW", &DW},
                {"YPGG", &GG},
                {"ZLZK", &ZLZK},
                {"YPJX", &JX},
                {"ZXDW", &ZXDW},
                {"ABC", &ABC},
                {"JLDW", &JLDW},
                {"GYTJ", &GYTJ}});
    ReadChargeItems();
    ReadFrequencies();
  });
}

/// A single item is not offered.
void eK_YPJBXX::ReadChargeItems() {
  Recordset rows;
  OpenRs(app_, rows, "select sItemName from eK_ChargeItem where ypbz=1 ");
  if (rows.RecordCount() != 1) {
    SFXM.Clear();
    for (; !rows.Eof(); rows.MoveNext()) SFXM.AddItem(rows.Field("sItemName").TextOrEmpty());
  }
  CloseRs(rows);
}

void eK_YPJBXX::ReadFrequencies() {
  Recordset rows;
  OpenRs(app_, rows, "Select LDW From Config_YYPC Order by ID");
  YYPC.Clear();
  for (; !rows.Eof(); rows.MoveNext()) YYPC.AddItem(rows.Field("LDW").TextOrEmpty());
  CloseRs(rows);
}

void eK_YPJBXX::Unloading() {
  if (auto* list = app_.forms.FindAs<Frm_Check>()) list->Unload();
}

void eK_YPJBXX::GetNewYPBM() {
  Trapped(app_, [this] {
    Recordset rows;
    OpenRs(app_, rows, "Select count(YPBM) From YF_YPML ");
    YPBM.SetText(FormatNumber(rows.Field(0).Number() + 1, "0000"));
    CloseRs(rows);
  });
}

void eK_YPJBXX::FillD_Form(const std::string& code) {
  filling_ = true;
  Trapped(app_, [&] {
    Recordset rows;
    OpenRs(app_, rows, "select * from yf_ypMl where ypBm like" + Quoted(code, "编码"));
    if (rows.RecordCount() > 0) {
      if (Mode == kChanging) GuardChange();
      ShowRow(rows);
    }
    CloseRs(rows);
  });
  filling_ = false;
  if (Mode == kChanging) TellWhatWillBeCut();
}

/// Other programs that write the catalogue know nothing of the limits here.
void eK_YPJBXX::TellWhatWillBeCut() {
  std::string fields;
  const auto note = [&](const auto* field, std::size_t limit) {
    if (limit == 0 || CutAnsi(field->Text(), limit) == field->Text()) return;
    fields += "\r\n" + field->Caption() + "（限" + std::to_string(limit) + "字节）：" + field->Text();
  };
  for (const Control* control : Controls()) {
    if (const auto* text = dynamic_cast<const TextBox*>(control)) note(text, text->Options().cut);
    if (const auto* list = dynamic_cast<const ComboBox*>(control)) note(list, list->Options().cut);
  }
  if (fields.empty()) return;
  app_.desktop.MsgBox(
      {"以下内容超过本窗口的长度限制，光标离开该栏时会被截短：\r\n" + fields, box::kInformation, "系统提示"});
}

void eK_YPJBXX::GuardChange() {
  YPBM.SetEnabled(false);
  if (!app_.CurUser.YPGL_EDITKC) KCL.SetEnabled(false);
  if (!app_.CurUser.YPGL_EDITJG) {
    LSJ.SetEnabled(false);
    CLLSJ.SetEnabled(false);
  }
  Command2.SetEnabled(false);
}

/// The dose unit is not shown: the list stays as it was.
void eK_YPJBXX::ShowRow(const Recordset& row) {
  const auto stored = [&](const char* column) { return row.Field(column).TextOrEmpty(); };
  const auto show_flag = [&](ComboBox& list, const char* column) {
    if (!row.Field(column).IsNull()) list.SetText(IsFlagSet(row.Field(column)) ? "是" : "否");
  };
  if (!row.Field("YPBM").IsNull()) YPBM.SetText(stored("YPBM"));
  SPMC.SetText(stored("SPMC"));
  YPMC.SetText(stored("YPMC"));
  ShowStored(GG, stored("GG"));
  ShowStored(DW, stored("DW"));
  ShowStored(SCCJ, stored("SCCJ"));
  ShowStored(ABC, stored("ABC"));
  ShowStored(JX, stored("JX"));
  LSJ.SetText(row.Field("LSJ").Format("0.0000"));
  CLB.SetText(stored("CLB"));
  ShowStored(ZXDW, stored("ZXDW"));
  ShowStored(SFXM, stored("SFXM"));
  SFSF.SetText(IsFlagSet(row.Field("SFSF")) ? "是" : "否");
  show_flag(ZHJBZ, "ZHJBZ");
  show_flag(HLYY, "HZYLYY");
  show_flag(GFYY, "GFYY");
  show_flag(YBYY, "YBYY");
  CFXL.SetText(stored("CFXL"));
  KCSX.SetText(stored("YKKCSX"));
  KCXX.SetText(stored("YKKCXX"));
  YFKCSX.SetText(stored("KCSX"));
  YFKCXX.SetText(stored("KCXX"));
  CLLSJ.SetText(row.Field("CLLSJ").Format("0.000"));
  PYDM.SetText(stored("PYDM"));
  WBDM.SetText(stored("WBDM"));
  SP_PYDM.SetText(stored("SP_PYDM"));
  SP_WBDM.SetText(stored("SP_WBDM"));
  ShowStored(ZLZK, stored("ZLZK"));
  ZCSB.SetText(stored("ZCSB"));
  PZWH.SetText(stored("PZWH"));
  ShowStored(YYPC, stored("YYPC"));
  DCJL.SetText(stored("DCJL"));
  ShowStored(GYTJ, stored("GYTJ"));
  ZSYP.SetChecked(IsFlagSet(row.Field("ZSYP")));
  PSPB.SetChecked(IsFlagSet(row.Field("PSPB")));
  KCL.SetText(stored("YKKCL"));
  YBXMBH.SetText(stored("YBXMBH"));
  NHXMBH.SetText(stored("NHXMBH"));
  ShowStored(YLZYFL, stored("YLZYFL"));
}

bool eK_YPJBXX::IsSplit() const {
  return IsNumeric(CLB.Text()) && CDbl(CLB.Text()) > 1;
}

void eK_YPJBXX::ShowSplitPrice() {
  if (IsSplit() && IsNumeric(LSJ.Text())) {
    CLLSJ.SetText(FormatNumber(CDbl(LSJ.Text()) / CDbl(CLB.Text()), "0.0000"));
  }
}

void eK_YPJBXX::Price_Change() {
  ShowSplitPrice();
}

void eK_YPJBXX::CLLSJ_GotFocus() {
  if (CLLSJ.Text().empty()) ShowSplitPrice();
}

void eK_YPJBXX::CLB_LostFocus() {
  if (!IsNumeric(CLB.Text())) {
    CLB.SetText("1");
    app_.desktop.MsgBox({"拆零比只能为数字。", box::kWarning, "系统提示"});
  } else if (CDbl(CLB.Text()) < 1) {
    app_.desktop.MsgBox({"拆零比最小至少为1表示不拆零", box::kWarning, "系统提示"});
    CLB.SetText("1");
  } else {
    ShowSplitPrice();
  }
}

void eK_YPJBXX::YPMC_LostFocus() {
  if (SPMC.Text().empty()) SPMC.SetText(YPMC.Text());
  PYDM.SetText(GetPYDM(app_, YPMC.Text()));
  WBDM.SetText(GetWBDM(app_, YPMC.Text()));
}

void eK_YPJBXX::SPMC_LostFocus() {
  SP_PYDM.SetText(GetPYDM(app_, SPMC.Text()));
  SP_WBDM.SetText(GetWBDM(app_, SPMC.Text()));
}

void eK_YPJBXX::SCCJ_Change() {
  if (filling_) return;
  if (Trim(SCCJ.Text()).empty()) return HideProducers();
  Trapped(app_, [this] {
    Recordset rows;
    OpenRs(app_, rows, "select * from YPGL_CDWF WHERE PYDM LIKE " + Quoted(CleanSearchText(SCCJ.Text()) + "%"));
    if (rows.RecordCount() > 0) {
      auto& list = app_.forms.Get<Frm_Check>(app_);
      if (!list.taken.IsConnected()) list.taken.Connect(this, &eK_YPJBXX::TakeProducer);
      list.Show();
      list.Fill_JB(rows);
    } else {
      HideProducers();
    }
    CloseRs(rows);
  });
}

bool eK_YPJBXX::ProducersAreShown() const {
  const auto* list = app_.forms.FindAs<Frm_Check>();
  return list && list->IsShown();
}

void eK_YPJBXX::HideProducers() {
  auto* list = app_.forms.FindAs<Frm_Check>();
  if (!list) return;
  list->fpSpread1.SetMaxRows(0);
  list->Hide();
}

void eK_YPJBXX::TakeProducer(const std::string& name) {
  SCCJ.SetText(name);
  SCCJ.SetFocus();
}

void eK_YPJBXX::FormKeyDown(KeyEvent& event) {
  if (event.code == key::kEnter && SCCJ.HasFocus() && ProducersAreShown()) {
    event.handled = true;
    app_.forms.FindAs<Frm_Check>()->EnterList();
    return;
  }
  SendTab(*this, event.code);
}

void eK_YPJBXX::Command2_Click() {
  ChooseDrug(app_, *this);
}

void eK_YPJBXX::Choose_NHXMBH_Click() {
  ChooseInsuranceItem(NHXMBH);
}

void eK_YPJBXX::Choose_YBXMBH_Click() {
  ChooseInsuranceItem(YBXMBH);
}

void eK_YPJBXX::ChooseInsuranceItem(TextBox& code) {
  auto& dialog = app_.forms.Get<NHXMXZ>(app_);
  dialog.ShowModal();
  if (!dialog.TakenCode().empty()) code.SetText(dialog.TakenCode());
  code.SetFocus();
}

namespace {

/// The editor ready for that mode. What another mode has locked or filled is gone.
eK_YPJBXX& OpenEditor(AppContext& app, const std::string& mode, const char* caption) {
  auto* open = app.forms.FindAs<eK_YPJBXX>();
  if (open && open->Mode != mode) open->Unload();
  auto& editor = app.forms.Get<eK_YPJBXX>(app);
  editor.Mode = mode;
  if (caption) editor.SetCaption(caption);
  editor.Show();
  return editor;
}

}  // namespace

void AddDrug(AppContext& app) {
  const Forms::HandlerScope scope(app.forms);
  OpenEditor(app, eK_YPJBXX::kAdding, nullptr).GetNewYPBM();
}

void ShowDrug(AppContext& app, const std::string& mode, const std::string& code) {
  const Forms::HandlerScope scope(app.forms);
  OpenEditor(app, mode, mode == eK_YPJBXX::kChanging ? "修改药品信息" : "浏览药品信息").FillD_Form(code);
}

const Screen kDrugEditor{eK_YPJBXX::kName, FormOf<eK_YPJBXX>, AddDrug};

}  // namespace luming
