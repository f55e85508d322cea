#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/app_context.h"
#include "platform/statement.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "screen/label.h"
#include "screen/text_box.h"

namespace luming {

/// Which module's dictionaries the program of that title shows; "%", all of them, for a title that is not known.
std::string ModuleOf(std::string_view program_title);

/// 数据字典: the dictionaries that feed the pick lists of all screens, and the entries of the one in focus.
class sjzd : public Form {
 public:
  static constexpr const char* kName = "sjzd";
  explicit sjzd(AppContext& app);

  // clang-format off
  TextBox ZDMC{this, "ZDMC", "字典名称", {.ime = Ime::kOperator}};
  ComboBox Combo1{this, "Combo1", "方向", {.style = ComboStyle::kFixed, .items = {"所有", "向下", "向上"}, .selected = 0}};
  Button Com_Find{this, "Com_Find", "查找下一个(&N)", &sjzd::Com_Find_Click};
  CheckBox Check1{this, "Check1", "显示所有字典"};
  Label LinkPrompt{this, "LinkPrompt"};
  Grid fpSpread1{this, "fpSpread1", {GridColumn("字典代码", 8).Code(), GridColumn("字典名称", 16), GridColumn("类型", 6),
                                     GridColumn("所属模块", 10), GridColumn("备注", 24)}};
  Label CurrentDictionary{this, "CurrentDictionary"};
  Grid fpSpread2{this, "fpSpread2", {GridColumn("", 20), GridColumn("状态", 6).Locked(), GridColumn("").Hidden()}};
  Button Command7{this, "Command7", "新建字典(&N)", &sjzd::Command7_Click};
  Button Command5{this, "Command5", "修改字典(&E)", &sjzd::Command5_Click};
  Button Command6{this, "Command6", "删除字典(&D)", &sjzd::Command6_Click};
  Button Command4{this, "Command4", "选择此字典关联(&L)", &sjzd::Command4_Click};
  Button Command2{this, "Command2", "新建字典内容", &sjzd::Command2_Click};
  Button Command8{this, "Command8", "保存", &sjzd::Command8_Click};
  Button Command9{this, "Command9", "删除", &sjzd::Command9_Click};
  Label Note{this, "Note", "注意:修改字典内容后，重新启动软件生效。"};
  Button Command3{this, "Command3", "窗体与字典关联(&G)", &sjzd::Command3_Click};
  Button Command1{this, "Command1", "退出(&Q)", &sjzd::Command1_Click, ButtonRole::kCancel};
  // clang-format on

  Layout Arrange() const override;

  /// Opens for choosing the dictionary of a screen's control: shows which one, and the button that takes the choice.
  void LinkTo(const std::string& control);
  struct Choice {
    std::string code;
    std::string name;
  };
  /// What the link mode gave; nothing when it was left without a choice.
  const std::optional<Choice>& Taken() const { return taken_; }

  /// Reads the list anew and goes to the dictionary of that code, or else to the first.
  void ReloadList(const std::string& code);
  const std::string& CurrentCode() const { return code_; }
  /// Whether entries wait for being saved.
  bool HasMarkedEntries() const;

 protected:
  void Load() override;

 private:
  struct Entry {
    std::string text;
    std::string id;  ///< empty: not in the database yet
  };

  void Com_Find_Click();
  void Check1_Click() { ReloadList(code_); }
  void Command1_Click() { Unload(); }
  void Command2_Click();
  void Command3_Click();
  void Command4_Click();
  void Command5_Click();
  void Command6_Click();
  void Command7_Click();
  void Command8_Click();
  void Command9_Click();
  void ZDMC_KeyDown(KeyEvent& event);
  void fpSpread1_Click(int row, int col);
  void fpSpread1_KeyDown(KeyEvent& event);
  void fpSpread2_Change(int row, int col);

  Statement ListStatement() const;
  int FindNext() const;
  int RowOfDictionary(const std::string& code) const;
  void ShowDictionary(int row);
  bool ReadEntries();
  int AddEntryRow();
  void MarkEntry(const Entry& entry);
  std::vector<Entry> MarkedEntries() const;
  void RefreshEntries();
  Statement SaveStatement(int row);

  AppContext& app_;
  std::string code_;  ///< of the dictionary whose entries are shown; empty for none
  std::optional<Choice> taken_;
};

}  // namespace luming
