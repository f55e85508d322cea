#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/grid.h"

namespace luming {

/// 请选择你要进入的药库: the storehouse that everything from now on works in.
class Frm_CheckYK : public Form {
 public:
  static constexpr const char* kName = "Frm_CheckYK";
  explicit Frm_CheckYK(AppContext& app);

  Grid fpSpread1{this, "fpSpread1", {GridColumn("药库名称", 30)}};
  Button Command1{this, "Command1", "选择(&C)", &Frm_CheckYK::Choose};
  Button Command2{this, "Command2", "退出(&Q)", &Frm_CheckYK::Command2_Click};

  bool Chosen() const { return chosen_; }

  Layout Arrange() const override;

 protected:
  void Load() override;

 private:
  void Choose();
  void RefuseWithout(bool right, const std::string& storehouse);
  void fpSpread1_DblClick(int row, int col);
  void fpSpread1_KeyDown(KeyEvent& event);
  void Command2_Click();

  AppContext& app_;
  bool chosen_ = false;
};

}  // namespace luming
