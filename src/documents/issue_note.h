#pragma once

#include <string>
#include <string_view>

#include "documents/entry_fields.h"
#include "documents/line_document.h"
#include "platform/statement.h"
#include "screen/button.h"
#include "screen/date_box.h"
#include "screen/label.h"
#include "screen/option_button.h"
#include "screen/text_box.h"

namespace luming {

/// A way in which an issue note is opened.
struct NoteWay {
  std::string_view mode;  ///< what the save goes by
  bool view;              ///< the note is only looked at: what lines are entered with is away
  bool lines_enabled;     ///< the operator can go into the lines
  bool confirms;          ///< the storehouse's confirmation is offered
};

namespace note_way {
inline constexpr NoteWay kAdd{"新建", false, true, false};
inline constexpr NoteWay kChange{"修改", false, true, false};
inline constexpr NoteWay kView{"查看", true, true, false};
inline constexpr NoteWay kConfirm{"", true, false, true};
}  // namespace note_way

/// 药品出库单: goods for a pharmacy. Writing it moves no stock; that does the server once the storehouse has confirmed
/// it. Opened by the issue management alone.
class Frm_YFYPSL : public LineDocument {
 public:
  static constexpr const char* kName = "Frm_YFYPSL";
  explicit Frm_YFYPSL(AppContext& app);

  TextBox SLDH{this, "SLDH", "出库单号", {.cut = limit::kDocumentNumber, .ime = Ime::kOff}};
  DateBox SLRQ{this, "SLRQ", "申领日期"};
  Label L_FHR{this, "L_FHR", "制单人"};
  TextBox CZY{this, "CZY", "", {.cut = limit::kPerson, .ime = Ime::kOperator}};
  TextBox BZ{this, "BZ", "备注", {.ime = Ime::kOperator}};
  Label Heading{this, "Heading"};
  OptionButton Option1{this, "Option1", "格式1", "打印格式", true};
  OptionButton Option2{this, "Option2", "格式2", "打印格式"};
  Button Command1{this, "Command1", "确定(&Y)", &Frm_YFYPSL::Command1_Click};
  Button Command2{this, "Command2", "确认", &Frm_YFYPSL::Command2_Click};
  Button Command5{this, "Command5", "打印(&P)", &Frm_YFYPSL::Command5_Click};
  Button Command6{this, "Command6", "导出到Excel(&E)", &Frm_YFYPSL::Command6_Click};
  Button Com_Check{this, "Com_Check", "从药品出库单选择(&C)", &Frm_YFYPSL::Com_Check_Click};
  Button Com_DelALL{this, "Com_DelALL", "删除所有", &Frm_YFYPSL::Com_DelALL_Click};

  Layout Arrange() const override;

  /// Loads the screen and sets what the way says.
  void Begin(const NoteWay& way);

  /// Shows a note of the store.
  void LoadData(const std::string& number);
  /// Puts the lines of a receipt in the place of those that stand here.
  void FromRKD(const std::string& receipt);
  /// The amounts of a line by its prices and its quantity.
  void CaclJE(int row);

  /// Marks the quantity of a line that asks for more than the stock beside it.
  void MarkShortage(int row);

 protected:
  void Load() override;
  void EnterLine(int row) override;

 private:
  void fpSpread1_Change(int row, int column);
  void Command1_Click();
  void Command2_Click();
  void Command5_Click();
  void Command6_Click();
  void Com_Check_Click();
  void Com_DelALL_Click() { fpSpread1.SetMaxRows(0); }

  void SetFrame3Visible(bool visible);
  void ShowHead(const Recordset& head);
  void ShowLines(Recordset&& lines);
  /// The receiving pharmacy: of a new note what the management screen has chosen.
  std::string Pharmacy() const;

  std::string StockOf(const std::string& code) const;

  bool Save();
  Statement HeadInsert(const std::string& number) const;
  /// Another workstation may have confirmed the note since it was opened; then its lines are a matter of record.
  void DemandStillWaiting(const std::string& number);

  bool QuantitiesAreThere();
  bool CanBeMet();
  void Confirm();

  NoteWay way_ = note_way::kAdd;
  std::string pharmacy_;  ///< as LoadData read it
};

}  // namespace luming
