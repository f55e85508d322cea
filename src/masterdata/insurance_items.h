#pragma once

#include <string>

#include "frame/app_context.h"
#include "platform/statement.h"
#include "screen/combo_box.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "screen/text_box.h"

namespace luming {

/// 农合项目选择: finds an item of the rural co-operative insurance's catalogues of drugs and of treatments.
class NHXMXZ : public Form {
 public:
  static constexpr const char* kName = "NHXMXZ";
  explicit NHXMXZ(AppContext& app);

  ComboBox SFLB{
      this, "SFLB", "搜索类别", {.style = ComboStyle::kFixed, .items = {"药品项目", "诊疗项目"}, .selected = 0}};
  TextBox PM{this, "PM", "简码:", {.ime = Ime::kOff}};
  Grid fpSpread1{this, "fpSpread1"};

  /// Code of the item that was taken; empty when the dialog was left without a choice.
  const std::string& TakenCode() const { return taken_code_; }

  Layout Arrange() const override;

 protected:
  void Load() override;
  void Activated() override { PM.SetFocus(); }
  void FormKeyDown(KeyEvent& event) override;

 private:
  void Search();
  bool SearchesDrugs() const;
  void ShowHeads();
  Statement SearchStatement() const;
  void PM_KeyDown(KeyEvent& event);
  void fpSpread1_KeyDown(KeyEvent& event);
  void fpSpread1_DblClick(int row, int col);
  void Take(int row);

  AppContext& app_;
  std::string taken_code_;
};

}  // namespace luming
