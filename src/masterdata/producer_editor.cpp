#include "masterdata/producer_editor.h"

#include "masterdata/clean_control.h"
#include "masterdata/phonetic.h"
#include "masterdata/producers.h"
#include "masterdata/screens.h"
#include "screen/messages.h"
#include "util/text.h"

namespace luming {

YPGL_CDWFEDIT::YPGL_CDWFEDIT(AppContext& app) : Form(app.forms, kName, "产地信息", WindowKind::kDialog), app_(app) {
  cdmc.key_down.Connect(this, &YPGL_CDWFEDIT::cdmc_KeyDown);
}

Layout YPGL_CDWFEDIT::Arrange() const {
  return Column({
      Fields(1, {Layout(cdmc).Width(40), pydm, WBDM, CDQC}),
      Row({Space(), Com_ok, Com_Cancel}),
  });
}

void YPGL_CDWFEDIT::Load() {
  CleanControl::SetControlColor(*this);
}

void YPGL_CDWFEDIT::Activated() {
  if (!IsAdding()) DataToGrid();
  cdmc.SetFocus();
}

void YPGL_CDWFEDIT::cdmc_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  pydm.SetText(GetPYDM(app_, cdmc.Text()));
  WBDM.SetText(GetWBDM(app_, cdmc.Text()));
}

void YPGL_CDWFEDIT::DataToGrid() {
  const EditableRecordset& row = list->producers;
  cdmc.SetText(row.Field("CDMC").TextOrEmpty());
  pydm.SetText(row.Field("PYDM").TextOrEmpty());
  WBDM.SetText(row.Field("WBDM").TextOrEmpty());
  CDQC.SetText(row.Field("CDQC").TextOrEmpty());
}

bool YPGL_CDWFEDIT::CheckProducer() {
  NumberedMessages messages;
  if (Trim(cdmc.Text()).empty()) messages.Add(".产地名称不能为空", cdmc);
  if (Trim(pydm.Text()).empty()) messages.Add(".拼音代码不能为空", pydm);
  if (Trim(WBDM.Text()).empty()) messages.Add(".五笔代码不能为空", WBDM);
  return messages.Pass(app_.desktop);
}

void YPGL_CDWFEDIT::CDWF_Add_Rec() {
  list->producers.AddNew();
  WriteFields();
}

void YPGL_CDWFEDIT::CDWF_Edit_Rec() {
  list->producers.CancelUpdate();
  WriteFields();
}

void YPGL_CDWFEDIT::WriteFields() {
  EditableRecordset& row = list->producers;
  row.SetField("CDMC", Value(cdmc.Text()));
  row.SetField("PYDM", Value(pydm.Text()));
  row.SetField("WBDM", Value(WBDM.Text()));
  row.SetField("CDQC", Value(CDQC.Text()));
  row.Update();
}

void YPGL_CDWFEDIT::Com_ok_Click() {
  if (!CheckProducer()) return;
  try {
    IsAdding() ? CDWF_Add_Rec() : CDWF_Edit_Rec();
  } catch (const Failure& failure) {
    app_.desktop.MsgBox({"出错信息：" + failure.description(), box::kWarning, "系统提示"});
    return;
  }
  list->ShowRows();
  app_.desktop.MsgBox({IsAdding() ? "添加成功" : "修改成功", box::kInformation, "恭喜"});
  if (!IsAdding()) {
    Unload();
    return;
  }
  CleanControl::CleanControlText(*this);
  cdmc.SetFocus();
}

const Screen kProducerEditor = DialogScreen<YPGL_CDWFEDIT, YPGL_CDWF, &YPGL_CDWF::Com_XGH>();

}  // namespace luming
