#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/drug_editor.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/messages.h"
#include "screen/text_box.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

Statement Trimmed(const TypedField auto& field) {
  return Quoted(Trim(field.Text()), field.Caption());
}

/// A figure as it was typed, else what counts for it.
Statement FigureOr(const char* otherwise, const TextBox& field, const std::string& text) {
  return Bare(IsNumeric(text) ? text : otherwise, field.Caption());
}
Statement FigureOr(const char* otherwise, const TextBox& field) {
  return FigureOr(otherwise, field, field.Text());
}

Statement Flag(const ComboBox& list) {
  return Statement(list.Text() == "是" ? "1" : "0");
}

Statement Flag(const CheckBox& box) {
  return Statement(box.Checked() ? "1" : "0");
}

std::string WithoutLineEnds(const std::string& text) {
  return Replace(Replace(text, "\r", ""), "\n", "");
}

}  // namespace

bool eK_YPJBXX::CheckDrug() {
  NumberedMessages messages;
  const auto demand = [&](auto& field, const char* message) {
    if (Trim(field.Text()).empty()) messages.Add(message, field);
  };
  demand(SFXM, " 收费项目不能为空!");
  demand(YPBM, " 编码不能为空!");
  demand(YPMC, " 品名不能为空!");
  if (Trim(DW.Text()).empty()) messages.Add(" 单位不能为空!");
  demand(PYDM, " 药品名称拼音码不能为空。");
  demand(WBDM, " 药品名称五笔码不能为空。");
  demand(LSJ, " 零售价不能为空!");
  if (!Trim(LSJ.Text()).empty() && !IsNumeric(LSJ.Text())) messages.Add(" 零售价只能为数字!", LSJ);
  if (IsSplit()) {
    demand(ZXDW, " 拆零比大于1,最小单位不能为空!");
    demand(CLLSJ, " 拆零比大于1,拆零零售价不能为空!");
  }
  return messages.Pass(app_.desktop);
}

void eK_YPJBXX::Com_Save_Click() {
  Trapped(app_, [this] {
    if (Mode == kAdding) {
      SaveNew();
    } else if (Mode == kChanging) {
      SaveChange();
    } else {
      Unload();
    }
  });
}

void eK_YPJBXX::SaveNew() {
  if (!app_.CurUser.YPGL_AddYP) return CheckRight(app_, "YPGL_AddYP");
  if (!CheckDrug()) return;
  YPBM.SetText(Trim(WithoutLineEnds(YPBM.Text())));
  if (CodeExists(YPBM.Text())) return;
  if (!ExecSql(app_, InsertStatement())) return;
  if (Check1.Checked()) CleanControl::CleanControlText(*this);
  const Box question{"添加成功,是否继续添加新的药品?", box::kQuestion + box::kYesNo, "系统询问"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) {
    Unload();
    return;
  }
  GetNewYPBM();
  SFXM.SetFocus();
}

bool eK_YPJBXX::CodeExists(const std::string& code) {
  if (!GetField(app_, "YF_YPML", "YPBM", code, YPBM.Caption())) return false;
  app_.desktop.MsgBox({"编码【" + code + "】已存在,请重新输入！", box::kStop, "提示"});
  YPBM.SetFocus();
  YPBM.SelectAll();
  return true;
}

void eK_YPJBXX::SaveChange() {
  if (!app_.CurUser.YPGL_EditYP) return CheckRight(app_, "YPGL_EditYP");
  if (!CheckDrug()) return;
  if (!ExecSql(app_, UpdateStatement())) return;
  app_.desktop.MsgBox({"修改成功", box::kInformation, "系统提示"});
  Unload();
}

eK_YPJBXX::Assignments eK_YPJBXX::Links() const {
  return {
      {"YLZYFL", Quoted(YLZYFL)},
      {"YBXMBH", Quoted(YBXMBH)},
      {"NHXMBH", Quoted(NHXMBH)},
  };
}

eK_YPJBXX::Assignments eK_YPJBXX::Description() const {
  return {
      {"YPMC", Trimmed(YPMC)}, {"SPMC", Trimmed(SPMC)}, {"GG", Trimmed(GG)}, {"DW", Quoted(DW)},
      {"SCCJ", Quoted(SCCJ)},  {"ABC", Quoted(ABC)},    {"JX", Quoted(JX)},
  };
}

eK_YPJBXX::Assignments eK_YPJBXX::FiguresAndUse(const std::string& split_price) const {
  return {
      {"YKKCL", FigureOr("0", KCL)},
      {"CLB", FigureOr("1", CLB)},
      {"ZXDW", Quoted(ZXDW)},
      {"SFXM", Quoted(SFXM)},
      {"CFXL", FigureOr("0", CFXL)},
      {"YKKCSX", FigureOr("0", KCSX)},
      {"YKKCXX", FigureOr("0", KCXX)},
      {"KCSX", FigureOr("0", YFKCSX)},
      {"KCXX", FigureOr("0", YFKCXX)},
      {"CLLSJ", FigureOr("0", CLLSJ, split_price)},
      {"PYDM", Trimmed(PYDM)},
      {"WBDM", Trimmed(WBDM)},
      {"SP_PYDM", Trimmed(SP_PYDM)},
      {"SP_WBDM", Trimmed(SP_WBDM)},
      {"SFSF", Flag(SFSF)},
      {"ZHJBZ", Flag(ZHJBZ)},
      {"HZYLYY", Flag(HLYY)},
      {"GFYY", Flag(GFYY)},
      {"YBYY", Flag(YBYY)},
      {"PZWH", Trimmed(PZWH)},
      {"ZCSB", Trimmed(ZCSB)},
      {"ZLZK", Trimmed(ZLZK)},
      {"GYTJ", Trimmed(GYTJ)},
      {"DCJL", Trimmed(DCJL)},
      {"YYPC", Quoted(YYPC)},
      {"ZSYP", Flag(ZSYP)},
      {"PSPB", Flag(PSPB)},
  };
}

Statement eK_YPJBXX::InsertStatement() const {
  Statement columns;
  Statement values;
  const auto add = [&](const Assignments& part) {
    for (const Assignment& each : part) {
      if (!columns.empty()) {
        columns += ",";
        values += ",";
      }
      columns += each.column;
      values += each.value;
    }
  };
  add({{"JLDW", Quoted(JLDW)}});
  add(Links());
  add({{"YPBM", Trimmed(YPBM)}});
  add(Description());
  add({{"LSJ", Bare(LSJ)}});
  add(FiguresAndUse(CLLSJ.Text()));
  return "Insert Into YF_YPML(" + columns + ") Values(" + values + ")";
}

/// Prices go with three decimals, although the screen shows four.
Statement eK_YPJBXX::UpdateStatement() const {
  Statement set;
  const auto add = [&](const Assignments& part) {
    for (const Assignment& each : part) {
      if (!set.empty()) set += ",";
      set += each.column + ("=" + each.value);
    }
  };
  add(Links());
  add(Description());
  add({{"LSJ", Bare(FormatNumberText(LSJ.Text(), "0.000"), LSJ.Caption())}, {"JLDW", Quoted(JLDW)}});
  add(FiguresAndUse(FormatNumberText(CLLSJ.Text(), "0.000")));
  return "Update YF_YPML SET " + set + " Where YPBM Like" + Quoted(YPBM);
}

}  // namespace luming
