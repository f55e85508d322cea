#pragma once

#include <string>

#include "frame/app_context.h"
#include "platform/editable_recordset.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "screen/text_box.h"

namespace luming {

/// 产地信息维护: the producers and places of origin of drugs. Rows are edited through the list's own recordset.
class YPGL_CDWF : public Form {
 public:
  static constexpr const char* kName = "YPGL_CDWF";
  explicit YPGL_CDWF(AppContext& app);

  TextBox Search{this, "Search", "输入拼音简码搜索", {.ime = Ime::kOff}};
  Grid DataGrid1{this,
                 "DataGrid1",
                 {GridColumn("产地名称", 24), GridColumn("拼音代码", 14).Code(), GridColumn("五笔代码", 14).Code(),
                  GridColumn("产地全称", 34)}};
  Button Com_XGH{this, "Com_XGH", "新建(&N)", &YPGL_CDWF::Com_XGH_Click};
  Button Com_XG{this, "Com_XG", "修改(&E)", &YPGL_CDWF::Com_XG_Click};
  Button Com_DEL{this, "Com_DEL", "删除(&D)", &YPGL_CDWF::Com_DEL_Click};
  Button Com_TC{this, "Com_TC", "退出(&Q)", &YPGL_CDWF::Com_TC_Click, ButtonRole::kCancel};

  EditableRecordset producers;  ///< closed after a failed search

  Layout Arrange() const override;

  /// Shows the recordset's rows, its current one active.
  void ShowRows();

 protected:
  void Load() override;

 private:
  void Search_Change();
  void Com_XGH_Click();
  void Com_XG_Click();
  void Com_DEL_Click();
  void Com_TC_Click() { Unload(); }
  void OpenList(const Statement& statement);
  void OpenDialog(const std::string& caption);
  /// Makes the grid's active row the recordset's current one. @return false when there is none
  bool TakeActiveRow();

  AppContext& app_;
};

}  // namespace luming
