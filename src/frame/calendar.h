#pragma once

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "screen/label.h"
#include "screen/text_box.h"

namespace luming {

/// 万年历: one month of the civil calendar with its lunar days and festivals. Walked by keyboard: arrows by days and
/// weeks, PageUp and PageDown by months, with Ctrl by years, Home back to today.
class Frm_wnl : public Form {
 public:
  static constexpr const char* kName = "Frm_wnl";
  explicit Frm_wnl(AppContext& app);

  Button Command1{this, "Command1", "上一年", &Frm_wnl::Command1_Click};
  Button Command2{this, "Command2", "上一月", &Frm_wnl::Command2_Click};
  TextBox Year{this, "Year", "年份", {.max = 4, .keys = KeyFilter::kDigits, .ime = Ime::kOff, .select_on_focus = true}};
  ComboBox Month{this, "Month", "月份", {.style = ComboStyle::kFixed}};
  Button Command3{this, "Command3", "下一月", &Frm_wnl::Command3_Click};
  Button Command4{this, "Command4", "下一年", &Frm_wnl::Command4_Click};
  Button Command5{this, "Command5", "今天(&T)", &Frm_wnl::Command5_Click};
  Grid fpSpread1{this, "fpSpread1"};
  Label Today{this, "Today"};  ///< the chosen day in full
  Button Command6{this, "Command6", "关闭(&Q)", &Frm_wnl::Command6_Click, ButtonRole::kCancel};

  Layout Arrange() const override;

 protected:
  void Load() override;
  void FormKeyDown(KeyEvent& event) override;

 private:
  void Command1_Click() { WalkMonths(-12); }
  void Command2_Click() { WalkMonths(-1); }
  void Command3_Click() { WalkMonths(1); }
  void Command4_Click() { WalkMonths(12); }
  void Command5_Click() { Choose(app_.clock.Today()); }
  void Command6_Click() { Unload(); }
  void Year_Change();
  void Year_LostFocus();
  void Month_Click();
  void fpSpread1_Click(int row, int col);
  void fpSpread1_KeyDown(KeyEvent& event);

  void WalkMonths(int months);
  /// Shows the day's month with the day active; days outside the calendar's years change nothing.
  void Choose(const DateTime& day);
  void FillPage();
  void FillCell(int row, int col);
  void ShowChosen();
  DateTime DayAt(int row, int col) const;

  AppContext& app_;
  DateTime chosen_;
  bool filling_ = false;  // the screen writes its own fields
};

}  // namespace luming
