#pragma once

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/text_box.h"

namespace luming {

class YPGL_CDWF;

/// 产地信息: one producer, new or changed. The caption is the mode.
class YPGL_CDWFEDIT : public Form {
 public:
  static constexpr const char* kName = "YPGL_CDWFEDIT";
  static constexpr const char* kAdding = "添加新产地";
  static constexpr const char* kChanging = "修改产地信息";
  explicit YPGL_CDWFEDIT(AppContext& app);

  TextBox cdmc{this, "cdmc", "产地名称", {.ime = Ime::kOperator}};
  TextBox pydm{this, "pydm", "拼音代码", {.ime = Ime::kOff}};
  TextBox WBDM{this, "WBDM", "五笔代码", {.ime = Ime::kOff}};
  TextBox CDQC{this, "CDQC", "产地全称", {.ime = Ime::kOperator}};
  Button Com_ok{this, "Com_ok", "确定(&Y)", &YPGL_CDWFEDIT::Com_ok_Click};
  Button Com_Cancel{this, "Com_Cancel", "取消(&Q)", &YPGL_CDWFEDIT::Com_Cancel_Click, ButtonRole::kCancel};

  YPGL_CDWF* list = nullptr;  ///< whose recordset is edited; set before the dialog is shown, outlives it

  Layout Arrange() const override;

 protected:
  void Load() override;
  void Activated() override;
  void FormKeyDown(KeyEvent& event) override { SendTab(*this, event.code); }

 private:
  void cdmc_KeyDown(KeyEvent& event);
  void Com_ok_Click();
  void Com_Cancel_Click() { Unload(); }
  bool IsAdding() const { return Caption() == kAdding; }
  bool CheckProducer();
  void CDWF_Add_Rec();
  void CDWF_Edit_Rec();
  void DataToGrid();
  void WriteFields();

  AppContext& app_;
};

}  // namespace luming
