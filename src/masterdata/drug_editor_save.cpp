#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/drug_editor.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/messages.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

std::string InQuotes(const std::string& text) {
  return "'" + text + "'";
}

std::string Trimmed(const std::string& text) {
  return InQuotes(Trim(text));
}

std::string NumberOr(const char* otherwise, const std::string& text) {
  return IsNumeric(text) ? text : otherwise;
}

std::string Flag(const ComboBox& list) {
  return list.Text() == "是" ? "1" : "0";
}

std::string Flag(const CheckBox& box) {
  return box.Checked() ? "1" : "0";
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
  try {
    if (Mode == kAdding) {
      SaveNew();
    } else if (Mode == kChanging) {
      SaveChange();
    } else {
      Unload();
    }
  } catch (const Failure& failure) {
    ShowDbError(app_, failure);
  }
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
  if (!GetField(app_, "YF_YPML", "YPBM", code)) return false;
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
      {"YLZYFL", InQuotes(YLZYFL.Text())},
      {"YBXMBH", InQuotes(YBXMBH.Text())},
      {"NHXMBH", InQuotes(NHXMBH.Text())},
  };
}

eK_YPJBXX::Assignments eK_YPJBXX::Description() const {
  return {
      {"YPMC", Trimmed(YPMC.Text())}, {"SPMC", Trimmed(SPMC.Text())},  {"GG", Trimmed(GG.Text())},
      {"DW", InQuotes(DW.Text())},    {"SCCJ", InQuotes(SCCJ.Text())}, {"ABC", InQuotes(ABC.Text())},
      {"JX", InQuotes(JX.Text())},
  };
}

eK_YPJBXX::Assignments eK_YPJBXX::FiguresAndUse(const std::string& split_price) const {
  return {
      {"YKKCL", NumberOr("0", KCL.Text())},
      {"CLB", NumberOr("1", CLB.Text())},
      {"ZXDW", InQuotes(ZXDW.Text())},
      {"SFXM", InQuotes(SFXM.Text())},
      {"CFXL", NumberOr("0", CFXL.Text())},
      {"YKKCSX", NumberOr("0", KCSX.Text())},
      {"YKKCXX", NumberOr("0", KCXX.Text())},
      {"KCSX", NumberOr("0", YFKCSX.Text())},
      {"KCXX", NumberOr("0", YFKCXX.Text())},
      {"CLLSJ", NumberOr("0", split_price)},
      {"PYDM", Trimmed(PYDM.Text())},
      {"WBDM", Trimmed(WBDM.Text())},
      {"SP_PYDM", Trimmed(SP_PYDM.Text())},
      {"SP_WBDM", Trimmed(SP_WBDM.Text())},
      {"SFSF", Flag(SFSF)},
      {"ZHJBZ", Flag(ZHJBZ)},
      {"HZYLYY", Flag(HLYY)},
      {"GFYY", Flag(GFYY)},
      {"YBYY", Flag(YBYY)},
      {"PZWH", Trimmed(PZWH.Text())},
      {"ZCSB", Trimmed(ZCSB.Text())},
      {"ZLZK", Trimmed(ZLZK.Text())},
      {"GYTJ", Trimmed(GYTJ.Text())},
      {"DCJL", Trimmed(DCJL.Text())},
      {"YYPC", InQuotes(YYPC.Text())},
      {"ZSYP", Flag(ZSYP)},
      {"PSPB", Flag(PSPB)},
  };
}

std::string eK_YPJBXX::InsertStatement() const {
  std::vector<std::string> columns;
  std::vector<std::string> values;
  const auto add = [&](const Assignments& part) {
    for (const Assignment& each : part) {
      columns.emplace_back(each.column);
      values.push_back(each.value);
    }
  };
  add({{"JLDW", InQuotes(JLDW.Text())}});
  add(Links());
  add({{"YPBM", Trimmed(YPBM.Text())}});
  add(Description());
  add({{"LSJ", LSJ.Text()}});
  add(FiguresAndUse(CLLSJ.Text()));
  return "Insert Into YF_YPML(" + Join(columns, ",") + ") Values(" + Join(values, ",") + ")";
}

/// Prices go with three decimals, although the screen shows four.
std::string eK_YPJBXX::UpdateStatement() const {
  std::vector<std::string> set;
  const auto add = [&](const Assignments& part) {
    for (const Assignment& each : part) set.push_back(each.column + ("=" + each.value));
  };
  add(Links());
  add(Description());
  add({{"LSJ", FormatNumberText(LSJ.Text(), "0.000")}, {"JLDW", InQuotes(JLDW.Text())}});
  add(FiguresAndUse(FormatNumberText(CLLSJ.Text(), "0.000")));
  return "Update YF_YPML SET " + Join(set, ",") + " Where YPBM Like'" + YPBM.Text() + "'";
}

}  // namespace luming
