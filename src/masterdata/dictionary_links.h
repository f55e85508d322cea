#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "screen/tree.h"

namespace luming {

/// 窗体与字典关联设置: which dictionary stands behind which control of which screen.
class Frm_LinkZD : public Form {
 public:
  static constexpr const char* kName = "Frm_LinkZD";
  explicit Frm_LinkZD(AppContext& app);

  Tree TreeView1{this, "TreeView1"};
  Grid fpSpread1{this,
                 "fpSpread1",
                 {GridColumn("控件名", 12), GridColumn("控件标题", 16), GridColumn("关联字典", 16),
                  GridColumn("状态", 6), GridColumn("ID").Hidden(), GridColumn("LINKZD").Hidden()}};
  Button Command1{this, "Command1", "保存(&S)", &Frm_LinkZD::Command1_Click};
  Button Command2{this, "Command2", "退出(&Q)", &Frm_LinkZD::Command2_Click, ButtonRole::kCancel};

  Layout Arrange() const override;

 protected:
  void Load() override;

 private:
  void BuildTree();
  void TreeView1_NodeClick(int node);
  void fpSpread1_DblClick(int row, int col);
  void fpSpread1_KeyDown(KeyEvent& event);
  void Command1_Click();
  void Command2_Click() { Unload(); }
  void ChooseDictionary(int row);

  AppContext& app_;
};

}  // namespace luming
