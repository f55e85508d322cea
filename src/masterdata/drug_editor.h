#pragma once

#include <string>
#include <vector>

#include "frame/app_context.h"
#include "masterdata/drug_choice.h"
#include "platform/statement.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/form.h"
#include "screen/label.h"
#include "screen/text_box.h"

namespace luming {

/// 药品基本信息: adds one drug to the catalogue, changes one or shows one.
class eK_YPJBXX : public Form, public DrugTaker {
 public:
  static constexpr const char* kName = "eK_YPJBXX";
  static constexpr const char* kAdding = "新建";
  static constexpr const char* kChanging = "修改";
  static constexpr const char* kViewing = "查看";
  explicit eK_YPJBXX(AppContext& app);

  std::string Mode = kAdding;  ///< set by the caller, with the caption, before the screen is shown

  // clang-format off
  ComboBox SFXM{this, "SFXM", "收费项目", {.style = ComboStyle::kFixed}};
  TextBox YPBM{this, "YPBM", "药品编码", {.cut = 20, .ime = Ime::kOff}};
  TextBox YPMC{this, "YPMC", "药品名称", {.cut = 50, .ime = Ime::kOperator}};
  TextBox PYDM{this, "PYDM", "拼音码(药品名)", {.cut = 50, .ime = Ime::kOff}};
  TextBox WBDM{this, "WBDM", "五笔码(药品名)", {.cut = 50, .ime = Ime::kOff}};
  TextBox SPMC{this, "SPMC", "商品名", {.cut = 30, .ime = Ime::kOperator}};
  TextBox SP_PYDM{this, "SP_PYDM", "拼音码(商品名)", {.cut = 50, .ime = Ime::kOff}};
  TextBox SP_WBDM{this, "SP_WBDM", "五笔码(商品名)", {.cut = 50, .ime = Ime::kOff}};
  ComboBox GG{this, "GG", "规  格", {.cut = 100, .ime = Ime::kOperator}};
  ComboBox DW{this, "DW", "单  位", {.cut = 20, .ime = Ime::kOperator}};
  TextBox LSJ{this, "LSJ", "零售价", {.cut = 9, .max = 8, .keys = KeyFilter::kPrice, .ime = Ime::kOff}};
  TextBox CLB{this, "CLB", "拆零比", {.cut = 9, .max = 8, .keys = KeyFilter::kPrice, .ime = Ime::kOff}};
  TextBox CLLSJ{this, "CLLSJ", "拆零零售价", {.max = 8, .keys = KeyFilter::kPrice, .ime = Ime::kOff}};
  ComboBox ZXDW{this, "ZXDW", "最小单位", {.cut = 20, .ime = Ime::kOperator}};
  TextBox KCL{this, "KCL", "库存(最小单位数量)", {.max = 8, .ime = Ime::kOff}};  // the storehouse's: YKKCL
  ComboBox SCCJ{this, "SCCJ", "产地(输入拼音码查找)", {.cut = 50, .ime = Ime::kOff}};
  ComboBox ABC{this, "ABC", "ABC", {.cut = 1, .ime = Ime::kOff}};
  ComboBox JX{this, "JX", "剂  型", {.cut = 10}};
  TextBox PZWH{this, "PZWH", "批准文号", {.ime = Ime::kOperator}};
  TextBox ZCSB{this, "ZCSB", "注册商标", {.ime = Ime::kOperator}};
  ComboBox ZLZK{this, "ZLZK", "质量状况", {.style = ComboStyle::kFixed, .ime = Ime::kOperator}};
  ComboBox SFSF{this, "SFSF", "是否收费", YesOrNo({"是", "否"})};
  ComboBox YBYY{this, "YBYY", "医保用药", YesOrNo({"否", "是"})};
  ComboBox ZHJBZ{this, "ZHJBZ", "自划价标志", YesOrNo({"否", "是"})};
  TextBox CFXL{this, "CFXL", "处方限量", {.cut = 9, .max = 8, .keys = KeyFilter::kPrice, .ime = Ime::kOff}};
  ComboBox HLYY{this, "HLYY", "合疗用药", YesOrNo({"否", "是"})};  // HZYLYY
  ComboBox GFYY{this, "GFYY", "常规收费项目", YesOrNo({"否", "是"})};
  TextBox KCSX{this, "KCSX", "药库库存上限", {.cut = 10, .max = 8, .keys = KeyFilter::kPrice, .ime = Ime::kOff}};  // YKKCSX
  TextBox KCXX{this, "KCXX", "药库库存下限", {.cut = 10, .max = 8, .keys = KeyFilter::kPrice, .ime = Ime::kOff}};  // YKKCXX
  TextBox YFKCSX{this, "YFKCSX", "药房库存上限", {.max = 8, .ime = Ime::kOff}};  // the pharmacy's: KCSX
  TextBox YFKCXX{this, "YFKCXX", "药房库存下限", {.max = 8, .ime = Ime::kOff}};  // the pharmacy's: KCXX
  TextBox NHXMBH{this, "NHXMBH", "关联农合编码", {.ime = Ime::kOff}};
  TextBox YBXMBH{this, "YBXMBH", "关联医保编码", {.ime = Ime::kOff}};
  ComboBox GYTJ{this, "GYTJ", "给药途径"};
  ComboBox YYPC{this, "YYPC", "用药频次", {.style = ComboStyle::kFixed}};
  TextBox DCJL{this, "DCJL", "单次剂量", {.keys = KeyFilter::kPrice, .ime = Ime::kOff}};
  ComboBox YLZYFL{this, "YLZYFL", "药理作用分类"};
  ComboBox JLDW{this, "JLDW", "剂量单位"};
  CheckBox ZSYP{this, "ZSYP", "注射药品"};
  CheckBox PSPB{this, "PSPB", "皮试判别"};
  CheckBox Check1{this, "Check1", "保存后清空", true};
  Button Com_Save{this, "Com_Save", "确定(&Y)", &eK_YPJBXX::Com_Save_Click};
  Button Command6{this, "Command6", "关闭(&Q)", &eK_YPJBXX::Command6_Click};
  Button Command2{this, "Command2", "从药品目录中引入(&F)", &eK_YPJBXX::Command2_Click};
  Button Choose_NHXMBH{this, "Choose_NHXMBH", "选择农合编码(&N)", &eK_YPJBXX::Choose_NHXMBH_Click};
  Button Choose_YBXMBH{this, "Choose_YBXMBH", "选择医保编码(&B)", &eK_YPJBXX::Choose_YBXMBH_Click};
  Label Note{this, "Note", "红字带*号为必填项目  要修改药品信息直接在药品目录中修改"};
  // clang-format on

  Layout Arrange() const override;

  /// Shows the drug of that code, to be changed or looked at, or as a pattern for a new one.
  void FillD_Form(const std::string& code) override;
  /// Proposes the code behind the number of drugs that there are.
  void GetNewYPBM();

 protected:
  void Load() override;
  void Unloading() override;
  void FormKeyDown(KeyEvent& event) override;

 private:
  struct Assignment {
    const char* column;
    Statement value;
  };
  using Assignments = std::vector<Assignment>;

  static ComboOptions YesOrNo(std::vector<std::string> items);

  void ReadChargeItems();
  void ReadFrequencies();
  void GuardChange();
  void TellWhatWillBeCut();
  void ShowRow(const Recordset& row);

  void Price_Change();
  void CLLSJ_GotFocus();
  void CLB_LostFocus();
  void YPMC_LostFocus();
  void SPMC_LostFocus();
  void JX_GotFocus() { JX.OpenList(); }
  void ShowSplitPrice();
  bool IsSplit() const;

  void SCCJ_Change();
  bool ProducersAreShown() const;
  void HideProducers();
  void TakeProducer(const std::string& name);

  bool CheckDrug();
  void Com_Save_Click();
  void Command2_Click();
  void Command6_Click() { Unload(); }
  void Choose_NHXMBH_Click();
  void Choose_YBXMBH_Click();
  void ChooseInsuranceItem(TextBox& code);
  void SaveNew();
  void SaveChange();
  bool CodeExists(const std::string& code);
  Statement InsertStatement() const;
  Statement UpdateStatement() const;
  Assignments Links() const;
  Assignments Description() const;
  Assignments FiguresAndUse(const std::string& split_price) const;

  AppContext& app_;
  bool filling_ = false;  ///< the fields are being filled from a row, not typed
};

/// Opens the editor for a new drug.
void AddDrug(AppContext& app);
/// Opens the editor with the drug of that code. @param mode eK_YPJBXX::kChanging or kViewing
void ShowDrug(AppContext& app, const std::string& mode, const std::string& code);

}  // namespace luming
