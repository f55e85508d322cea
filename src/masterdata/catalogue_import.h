#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frame/app_context.h"
#include "masterdata/import_report.h"
#include "platform/statement.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/label.h"
#include "screen/progress_bar.h"
#include "screen/text_box.h"

namespace luming {

/// 从Excel导入药品目录: fills the drug catalogue from the sheet "药品目录" of a workbook, row by row. A row that fails
/// is told in the log and the next one goes on; a stop keeps what has come in.
class UploadData : public Form {
 public:
  static constexpr const char* kName = "UploadData";
  explicit UploadData(AppContext& app);

  Button Command6{this, "Command6", "从Excel导入数据", &UploadData::Command6_Click};
  Button Command11{this, "Command11", "停止导入", &UploadData::Command11_Click};
  Button Command4{this, "Command4", "关闭(&Q)", &UploadData::Command4_Click, ButtonRole::kCancel};
  ProgressBar Picture1{this, "Picture1"};
  Label Label_Info{this, "Label_Info"};
  TextBox Text1{this, "Text1", "", {.multi_line = true}};

  Layout Arrange() const override;

 protected:
  void Load() override;
  void Unloading() override { stop_ = true; }

 private:
  enum class Kind { kText, kNumber, kDate };

  /// Where a column of the sheet goes; no name: nowhere.
  struct Target {
    std::string column;
    Kind kind = Kind::kText;
  };

  void Command6_Click();
  void Command11_Click();
  void Command4_Click() { Unload(); }

  void Import(const std::string& file);
  static Kind KindOf(std::string_view type);
  /// By the heads of a workbook, in lower case.
  std::map<std::string, Target> ReadTargets();
  /// Finds the targets of the sheet's columns. @return the head of the statement that a row becomes
  std::string MakeSql(const std::map<std::string, Target>& known, const std::vector<std::string>& heads);
  void ImportRows(Recordset& rows, const std::string& statement, ImportReport& report);
  /// Which drug a row is about, a line of the log; empty where the row does not say.
  std::string DrugOf(const Recordset& row) const;
  /// What the row has for a column of the catalogue; empty where the sheet has no such column.
  std::string TextFor(const char* column, const Recordset& row) const;
  Statement ValuesOf(const Recordset& rows);
  Statement ValueFor(const Target& target, const Value& value, const std::string& head);
  void ShowShare(int done, int total);

  AppContext& app_;
  std::vector<Target> targets_;  ///< one for each column of the sheet
  bool stop_ = false;
  int succeeded_ = 0;
  int failed_ = 0;
};

}  // namespace luming
