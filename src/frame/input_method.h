#pragma once

#include <cstdint>
#include <vector>

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/form.h"
#include "screen/label.h"

namespace luming {

/// 输入法设置: the operator's own input method and default search mode, kept in the operator's row.
class SetIme : public Form {
 public:
  static constexpr const char* kName = "SetIme";
  explicit SetIme(AppContext& app);

  ComboBox srflb{this, "srflb", "输入法列表", {.style = ComboStyle::kFixed}};
  Label dqsyslf{this, "dqsyslf"};
  ComboBox Combo1{this, "Combo1", "查询方式选择", {.style = ComboStyle::kFixed, .items = {"拼音码", "五笔码", "编码"}}};
  Button Com_set{this, "Com_set", "设置选定的输入法(&S)", &SetIme::Com_set_Click};
  Button Command2{this, "Command2", "退出(&X)", &SetIme::Command2_Click, ButtonRole::kCancel};

  Layout Arrange() const override;

 protected:
  void Load() override;

 private:
  void FillList();
  void ShowCurrent();
  void ShowSearchType();
  /// The layout handle of the chosen line; 0, which changes no layout, for a line without one.
  std::int32_t ChosenHandle() const;
  void Com_set_Click();
  void Command2_Click() { Unload(); }

  AppContext& app_;
  std::vector<std::int32_t> handles_;  // in step with the lines of the list
  std::int32_t set_handle_ = 0;
};

/// Lets fields for Chinese switch to the operator's keyboard layout. What goes wrong there is ignored: the operator
/// types on with the layout that is active.
void UseOperatorLayout(AppContext& app);

}  // namespace luming
