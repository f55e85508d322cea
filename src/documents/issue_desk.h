#pragma once

#include <string>

#include "documents/note_desk.h"

namespace luming {

/// 出库管理: the issue notes to the storehouse's pharmacy, and all that is done with them.
class Frm_YPCKGL : public NoteDesk {
 public:
  static constexpr const char* kName = "Frm_YPCKGL";
  explicit Frm_YPCKGL(AppContext& app);

  Button Com_Add{this, "Com_Add", "添加(F2)", &Frm_YPCKGL::Com_Add_Click};
  Button Command2{this, "Command2", "修改(F4)", &Frm_YPCKGL::Command2_Click};
  Button Com_Del{this, "Com_Del", "删除(F6)", &Frm_YPCKGL::Com_Del_Click};
  Button Command5{this, "Command5", "出库单查询", &Frm_YPCKGL::Command5_Click};

  Layout Arrange() const override {
    return Arranged({Com_Add, Command1, Command2, Command4, Com_Del, Command3, Command5});
  }

 protected:
  void FormKeyDown(KeyEvent& event) override;
  void View(const std::string& number) override;
  void Confirm(const std::string& number) override;
  void ConfirmedShown() override;

 private:
  void Com_Add_Click();
  void Command2_Click();
  void Com_Del_Click();
  void Command5_Click();
  void fpSpread1_DoubleClick(int, int) { ViewChosen(fpSpread1); }
  void fpSpread2_RightClick(int row, int col);
  Recordset ReadUnmoved() const;
  bool StillWaits(const std::string& number);
};

}  // namespace luming
