#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/form.h"
#include "stock/item_picker.h"
#include "stock/line_grid.h"

namespace luming {

class ek_RKXZ;
struct ReceiptLine;

/// 药品入库录入: goods enter the storehouse from a supplier, and every saved line writes its prices back to the
/// catalogue.
class ek_YK_RKMX : public Form {
 public:
  static constexpr const char* kName = "ek_YK_RKMX";
  explicit ek_YK_RKMX(AppContext& app);

  TextBox sRKDH;
  ComboBox sGHDW;
  ComboBox sYSR;
  ComboBox sFHR;
  TextBox sFPH;
  DateBox FPRQ{this, "FPRQ", "发票日期"};
  ComboBox lFKBZ;
  ItemPicker picker;
  LineGrid fpSpread1;
  Button Command1{this, "Command1", "入库(&R)", &ek_YK_RKMX::Command1_Click};
  Button Command2{this, "Command2", "药品暂存", &ek_YK_RKMX::Command2_Click};
  Button Command5{this, "Command5", "加载暂存药品", &ek_YK_RKMX::Command5_Click};
  Button Command4{this, "Command4", "删除选择行(&D)", &ek_YK_RKMX::Command4_Click};
  Button Command6{this, "Command6", "新药品(&N)", &ek_YK_RKMX::Command6_Click};
  Button Command3{this, "Command3", "关闭(&Q)", &ek_YK_RKMX::Command3_Click};

  Layout Arrange() const override;

  /// Takes the active match of the picker to the document and asks for its quantity, batch and prices.
  void PickItem();
  /// Saves head, lines, batches, catalogue and log in one transaction; the screen keeps everything after a failure.
  void Save_YPRK();

 protected:
  void Load() override;
  void FormKeyDown(KeyEvent& event) override { picker.FormKeyDown(event); }

 private:
  void Picker_Picked(PickedBy) { PickItem(); }
  void fpSpread1_Change(int row, int column);
  void Command1_Click();
  void Command2_Click() { fpSpread1.Park(); }
  void Command3_Click() { Unload(); }
  void Command4_Click() { fpSpread1.DeleteChosenRow(); }
  void Command5_Click() { fpSpread1.LoadParked(); }
  void Command6_Click();

  void FillLine(int row, ek_RKXZ& dialog);
  bool CheckRK();
  std::string NextNumber();
  void InsertHead(const std::string& number);
  ReceiptLine ReadLine(int row) const;
  void InsertLine(const std::string& number, const ReceiptLine& line);
  void ReceiveLine(const std::string& number, const ReceiptLine& line);

  AppContext& app_;
};

}  // namespace luming
