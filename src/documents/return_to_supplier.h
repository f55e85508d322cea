#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/form.h"
#include "stock/item_picker.h"
#include "stock/line_grid.h"

namespace luming {

struct ReturnLine;

/// 药库退药: goods go back from the storehouse to their supplier.
class Frm_YKTY : public Form {
 public:
  static constexpr const char* kName = "Frm_YKTY";
  explicit Frm_YKTY(AppContext& app);

  TextBox sRKDH;
  DateBox RQ{this, "RQ", "日期"};
  ComboBox sGHDW;
  ComboBox ZDR;
  ComboBox sFHR;
  TextBox BZ{this, "BZ", "备注："};
  ItemPicker picker;
  LineGrid fpSpread1;
  Button Command1{this, "Command1", "退药(&T)", &Frm_YKTY::Command1_Click};
  Button Command4{this, "Command4", "删除选择行(&D)", &Frm_YKTY::Command4_Click};
  Button Command3{this, "Command3", "关闭(&Q)", &Frm_YKTY::Command3_Click};

  Layout Arrange() const override;

  /// Takes the active match of the picker to the document and asks for quantity and batch.
  void PickItem();
  /// Saves head, lines, counters, batches and log in one transaction; the screen keeps everything after a failure.
  void Save_YKTY();

 protected:
  void Load() override;
  void FormKeyDown(KeyEvent& event) override { picker.FormKeyDown(event); }

 private:
  void Picker_Picked(PickedBy) { PickItem(); }
  void Command1_Click();
  void Command3_Click() { Unload(); }
  void Command4_Click() { fpSpread1.DeleteChosenRow(); }

  void FillLine(int row);
  bool CheckTY();
  std::string NextNumber();
  void InsertHead(const std::string& number);
  ReturnLine ReadLine(int row) const;
  void InsertLine(const std::string& number, const ReturnLine& line);
  void ReturnGoods(const std::string& number, const ReturnLine& line);

  AppContext& app_;
};

}  // namespace luming
