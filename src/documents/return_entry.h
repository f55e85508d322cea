#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/form.h"
#include "stock/line_grid.h"

namespace luming {

/// Entry dialog of the return to a supplier: quantity, always in the large unit, and batch of one line, written
/// straight into the line's cells.
class Frm_YKTYCheck : public Form {
 public:
  static constexpr const char* kName = "Frm_YKTYCheck";
  explicit Frm_YKTYCheck(AppContext& app);

  Label PM{this, "PM"};
  Label GG{this, "GG"};
  Label DW{this, "DW"};
  Label LSJ{this, "LSJ"};
  TextBox TYSL;
  ComboBox PH;
  Label XQ{this, "XQ"};
  Label PFJ{this, "PFJ"};
  Button Command1{this, "Command1", "确定(&Y)", &Frm_YKTYCheck::Command1_Click};
  Button Command2{this, "Command2", "取消(&C)", &Frm_YKTYCheck::Command2_Click, ButtonRole::kCancel};

  // Set by the screen before it shows the dialog.
  LineGrid* lines = nullptr;  ///< of the return; outlives the dialog
  int EditRow = 0;            ///< the line being entered

  Layout Arrange() const override;

 protected:
  void Load() override;
  void Activated() override;
  void ClosedByFrame() override { Command2_Click(); }
  void FormKeyDown(KeyEvent& event) override { SendTab(*this, event.code); }

 private:
  void ShowDrug(const std::string& code);
  void OfferBatches(const std::string& code);
  void PH_Click();
  void Command1_Click();
  void Command2_Click();
  bool CheckQuantity();
  void WriteLine();

  AppContext& app_;
  double YKKCL_ = 0;  ///< the drug's stock in smallest units
  Recordset batches_;
};

}  // namespace luming
