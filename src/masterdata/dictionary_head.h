#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/form.h"
#include "screen/text_box.h"

namespace luming {

class sjzd;

/// 字典: the head of one dictionary, new or changed.
class Frm_ZD : public Form {
 public:
  static constexpr const char* kName = "Frm_ZD";
  static constexpr const char* kAdding = "新建";
  static constexpr const char* kChanging = "修改";
  explicit Frm_ZD(AppContext& app);

  TextBox ZDMC{this, "ZDMC", "字典名称", {.ime = Ime::kOperator}};
  TextBox ZDDM{this, "ZDDM", "字典代码", {.ime = Ime::kOff}};
  CheckBox Check1{this, "Check1", "系统"};
  TextBox BZ{this, "BZ", "备注", {.ime = Ime::kOperator}};
  Button Command1{this, "Command1", "确定(&Y)", &Frm_ZD::Command1_Click};
  Button Command2{this, "Command2", "取消(&Q)", &Frm_ZD::Command2_Click, ButtonRole::kCancel};

  struct Head {
    std::string code;
    std::string name;
    bool system = false;
    std::string remark;
  };

  /// The mode, set before the dialog is shown. @param list is read anew after a save; outlives the dialog
  void Add(sjzd& list);
  void Change(sjzd& list, const Head& head);

  Layout Arrange() const override;

 protected:
  void Load() override;
  void FormKeyDown(KeyEvent& event) override { SendTab(*this, event.code); }

 private:
  void Command1_Click();
  void Command2_Click() { Unload(); }
  bool IsFilled();
  void Refuse(const std::string& text, TextBox& field);
  void SaveNew();
  void SaveChange();

  AppContext& app_;
  sjzd* list_ = nullptr;
  std::string mode_;
  std::string old_code_;
};

}  // namespace luming
