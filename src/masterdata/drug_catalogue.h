#pragma once

#include <string>

#include "frame/app_context.h"
#include "masterdata/batch_pane.h"
#include "masterdata/charge_item_tree.h"
#include "output/grid_command.h"
#include "platform/statement.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "screen/label.h"
#include "screen/tree.h"
#include "stock/item_picker.h"

namespace luming {

/// 药品目录列表: the catalogue as a grid whose cells are edited in place and saved all at once, filtered by the charge
/// item or by the search pane, with the live batches of the drug in focus below.
class Frm_YPML : public Form {
 public:
  static constexpr const char* kName = "Frm_YPML";
  explicit Frm_YPML(AppContext& app);

  ChargeItemTree TreeView1{this};
  Grid fpSpread1;
  ItemPicker picker;
  BatchPane fpSpread2;
  Label TxtInfo{this, "TxtInfo"};
  Button btnTYYP{this, "btnTYYP", "显示停用药品", &Frm_YPML::btnTYYP_Click};
  Button Command2{this, "Command2", "添加新药品", &Frm_YPML::Command2_Click};
  Button Command10{this, "Command10", "修改药品", &Frm_YPML::Command10_Click};
  Button Command7{this, "Command7", "查看明细", &Frm_YPML::Command7_Click};
  Button Command3{this, "Command3", "删除", &Frm_YPML::Command3_Click};
  Button Command8{this, "Command8", "历史信息", &Frm_YPML::ShowHistory};
  Button Command9{this, "Command9", "导入药品", &Frm_YPML::Command9_Click};
  Button Command4{this, "Command4", "打印", &Frm_YPML::Command4_Click};
  Button Command5{this, "Command5", "导出", &Frm_YPML::Command5_Click};
  Button Command1{this, "Command1", "保存(&S)", &Frm_YPML::Command1_Click};
  Button Command6{this, "Command6", "关闭(&Q)", &Frm_YPML::Command6_Click};

  Layout Arrange() const override;

  /// The list of a tree node: a charge item, all of them, or the drugs that are injections or are not.
  void LoadData(const std::string& node);
  void FillGrid(Recordset& rows);
  /// Writes every marked row, one statement each, and says how many. @return false when the save ended early
  bool SaveGrid();
  /// Takes the active row out of the grid.
  void Del_Row(Grid& grid);

 protected:
  void Load() override;
  bool QueryUnload() override;
  void Unloading() override;
  void FormKeyDown(KeyEvent& event) override;

 private:
  void BuildTree();
  void ReadLists();
  Statement ListStatement(const std::string& node) const;
  void ShowList(const Statement& statement);
  void AddTotals(double cost, double retail);
  /// Of the active row; empty without one and on the total row.
  std::string ActiveCode() const;
  void ShowEditor(bool modify);
  void ShowHistory();
  void DeleteDrug(const std::string& code);
  bool HasStock(const std::string& code);

  void TreeView1_NodeClick(int node);
  void ShowBatches();
  void fpSpread1_Click(int, int) { ShowBatches(); }
  void fpSpread1_RowFocus(int) { ShowBatches(); }
  void fpSpread1_RightClick(int row, int col);
  void fpSpread1_BeforeEdit(Grid::CellRef cell, bool& refuse);
  void fpSpread1_Change(int row, int col);
  void fpSpread1_LeaveCell(Grid::CellRef from, Grid::CellRef to, bool& stay);
  void fpSpread1_LostFocus();
  void Picker_Picked(PickedBy by);
  void Picker_Fill(Recordset& rows);
  void btnTYYP_Click();
  void Command1_Click();
  void Command2_Click();
  void Command3_Click();
  void Command4_Click() { PrintTrapped(app_, fpSpread1, "药品目录表"); }
  void Command5_Click() { ExportTrapped(app_, fpSpread1); }
  void Command6_Click() { Unload(); }
  void Command7_Click() { ShowEditor(false); }
  void Command9_Click();
  void Command10_Click() { ShowEditor(true); }

  AppContext& app_;
  bool dirty_ = false;         ///< something was edited since the last save or search
  bool price_edited_ = false;  ///< the active cell holds a retail price that was just typed
};

}  // namespace luming
