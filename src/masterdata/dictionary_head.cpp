#include "masterdata/dictionary_head.h"

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/data_dictionary.h"
#include "masterdata/screens.h"
#include "util/text.h"

namespace luming {

namespace {

std::string Flag(const CheckBox& check) {
  return check.Checked() ? "1" : "0";
}

}  // namespace

Frm_ZD::Frm_ZD(AppContext& app) : Form(app.forms, kName, "字典", WindowKind::kDialog), app_(app) {
  ZDMC.SetRequired(true);
  ZDDM.SetRequired(true);
}

Layout Frm_ZD::Arrange() const {
  return Column({
      Fields(1, {Layout(ZDMC).Width(40), Row({ZDDM, Check1}), BZ}),
      Row({Space(), Command1, Command2}),
  });
}

void Frm_ZD::Load() {
  CleanControl::SetControlColor(*this);
}

void Frm_ZD::Add(sjzd& list) {
  list_ = &list;
  mode_ = kAdding;
  SetCaption("新建字典");
}

void Frm_ZD::Change(sjzd& list, const Head& head) {
  list_ = &list;
  mode_ = kChanging;
  SetCaption("修改字典");
  old_code_ = head.code;
  ZDDM.SetText(head.code);
  ZDMC.SetText(head.name);
  Check1.SetChecked(head.system);
  BZ.SetText(head.remark);
}

void Frm_ZD::Refuse(const std::string& text, TextBox& field) {
  app_.desktop.MsgBox({text, box::kStop, "错误"});
  field.SetFocus();
  field.SelectAll();
}

bool Frm_ZD::IsFilled() {
  if (Trim(ZDMC.Text()).empty()) {
    Refuse("字典名称不能为空", ZDMC);
    return false;
  }
  if (Trim(ZDDM.Text()).empty()) {
    Refuse("字典代码不能为空", ZDDM);
    return false;
  }
  return true;
}

void Frm_ZD::Command1_Click() {
  if (!IsFilled()) return;
  Trapped(app_, [this] { mode_ == kAdding ? SaveNew() : SaveChange(); });
}

void Frm_ZD::SaveNew() {
  if (GetField(app_, "DAGL_ZD", "DM", ZDDM.Text(), ZDDM.Caption()))
    return Refuse("该代码已存在，请输入其它代码。", ZDDM);
  if (!ExecSql(app_, "Insert into DAGL_ZD (DM,DMMC,ZD_TYPE,Moudelname,BZ) Values (" + Quoted(ZDDM) + "," +
                         Quoted(ZDMC) + "," + Quoted(Flag(Check1)) + "," + Quoted(ModuleOf(AppContext::kTitle)) + "," +
                         Quoted(BZ) + ")")) {
    return;
  }
  list_->ReloadList(list_->HasMarkedEntries() ? list_->CurrentCode() : ZDDM.Text());
  const Box question{"新建成功,是否继续新建新的字典？", box::kQuestion + box::kYesNo, "询问"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) {
    Unload();
    return;
  }
  ZDMC.SetText("");
  ZDDM.SetText("");
  ZDMC.SetFocus();
}

/// The entries keep the code under which they were entered, also when the dictionary gets another.
void Frm_ZD::SaveChange() {
  if (!ExecSql(app_, "Update DAGL_ZD Set BZ=" + Quoted(BZ) + ",DMMC=" + Quoted(ZDMC) + ",DM=" + Quoted(ZDDM) +
                         ",ZD_TYPE=" + Quoted(Flag(Check1)) + " Where DM Like" + Quoted(old_code_, ZDDM.Caption()))) {
    return;
  }
  list_->ReloadList(ZDDM.Text());
  app_.desktop.MsgBox({"修改成功", box::kInformation, "信息"});
  Unload();
}

const Screen kDictionaryHead = DialogScreen<Frm_ZD, sjzd, &sjzd::Command7>();

}  // namespace luming
