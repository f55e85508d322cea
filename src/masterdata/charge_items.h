#pragma once

#include <string>

#include "frame/app_context.h"
#include "platform/statement.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/grid.h"

namespace luming {

/// 收费项目管理: the charge items that drugs and examinations belong to. Saving replaces them all.
class ek_SFXMGL : public Form {
 public:
  static constexpr const char* kName = "ek_SFXMGL";
  explicit ek_SFXMGL(AppContext& app);

  Grid fpSpread1{
      this, "fpSpread1", {GridColumn("收费项目", 32), GridColumn("药品标志", 10), GridColumn("是否进库存", 12)}};
  Button Command1{this, "Command1", "新增行(&A)", &ek_SFXMGL::Command1_Click};
  Button Command2{this, "Command2", "插入行(&R)", &ek_SFXMGL::Command2_Click};
  Button Command5{this, "Command5", "删除(&D)", &ek_SFXMGL::Command5_Click};
  Button Command3{this, "Command3", "保存(&S)", &ek_SFXMGL::Command3_Click};
  Button Command4{this, "Command4", "退出(&Q)", &ek_SFXMGL::Command4_Click, ButtonRole::kCancel};

  Layout Arrange() const override;

 protected:
  void Load() override;

 private:
  void Command1_Click();
  void Command2_Click();
  void Command3_Click();
  void Command4_Click() { Unload(); }
  void Command5_Click();
  bool ReadItems();
  void BeginItem(int row);
  bool NamesAreUnique();
  void RemoveNamelessRows();
  Statement InsertStatement(int row) const;

  AppContext& app_;
};

}  // namespace luming
