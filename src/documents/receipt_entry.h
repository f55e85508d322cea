#pragma once

#include <cstdint>

#include "frame/app_context.h"
#include "screen/form.h"
#include "stock/line_grid.h"

namespace luming {

/// Entry dialog of the goods receipt: quantity, unit, prices, batch and expiry of one line, written straight into the
/// line's cells.
class ek_RKXZ : public Form {
 public:
  static constexpr const char* kName = "ek_RKXZ";
  explicit ek_RKXZ(AppContext& app);

  Label PM{this, "PM"};
  Label GG{this, "GG"};
  ComboBox DW;
  TextBox sngSL;
  TextBox sngLSJ;
  TextBox PFJ;
  TextBox PLJ;
  Label Label_JE{this, "Label_JE"};
  TextBox sPH;
  DateBox lYXQ{this, "lYXQ", "效  期"};
  Button Command1{this, "Command1", "确定(&Y)", &ek_RKXZ::Command1_Click};
  Button Command2{this, "Command2", "取消(&Q)", &ek_RKXZ::Command2_Click, ButtonRole::kCancel};

  // Set by the screen before it shows the dialog.
  LineGrid* lines = nullptr;  ///< of the receipt; outlives the dialog
  int EditRow = 0;            ///< the line being entered
  std::int16_t CLB = 1;       ///< the drug's ratio
  double LSJ = 0;             ///< retail price of the large unit
  double CLLSJ = 0;           ///< retail price of the smallest unit

  Layout Arrange() const override;

  /// Collects what is wrong with the entry and shows it. @return true when nothing is
  bool CheckLine();

 protected:
  void Activated() override;
  void ClosedByFrame() override;
  void FormKeyDown(KeyEvent& event) override;

 private:
  void DW_Click();
  void ShowAmount();
  void Command1_Click();
  void Command2_Click();
  void WriteLine();
  /// Of the line's unit, from the typed price of the large unit.
  double UnitPrice() const;

  AppContext& app_;
};

}  // namespace luming
