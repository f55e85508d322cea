#pragma once

#include "documents/batch_choice.h"
#include "documents/entry_dialog.h"
#include "documents/entry_fields.h"
#include "documents/line_columns.h"
#include "documents/line_document.h"
#include "screen/button.h"
#include "screen/label.h"

namespace luming {

/// Lines by which drugs are used up, by a department or by mishap: in either unit, out of one batch. Requisition and
/// loss have the same columns.
namespace consumption {

enum {
  kCode = 1,
  kName,
  kSpecification,
  kOrigin,
  kQuantity,
  kUnit,
  kRetailPrice,
  kBatch,
  kExpiry,
  kRetailAmount,
  kPurchasePrice,
  kPurchaseAmount,
  kRatio,
};

// clang-format off
inline constexpr LineColumn kColumns[] = {
  // column            caption     from the match           saved as
  {kCode,              "编码",     {},                      "YPBM",  sent::Text, Cell::kLocked, Holds::kCode},
  {kName,              "品名",     {match::kName},          "YPMC",  sent::Text},
  {kSpecification,     "规格",     {match::kSpecification}, "GG",    sent::Text},
  {kOrigin,            "产地",     {match::kOrigin},        "CD",    sent::Text},
  {kQuantity,          "数量",     {},                      "SL",    sent::Figure},
  {kUnit,              "单位",     {},                      "DW",    sent::Text},
  {kRetailPrice,       "零售价",   {},                      "LSJ",   sent::Money},
  {kBatch,             "批号",     {},                      "PH",    sent::Text, Cell::kLocked, Holds::kCode},
  {kExpiry,            "效期",     {},                      "XQ",    sent::DayOrNull},
  {kRetailAmount,      "金额"},
  {kPurchasePrice,     "进价",     {},                      "PFJ",   sent::Money},
  {kPurchaseAmount,    "进价金额"},
  {kRatio,             "拆零比",   {},                      "CLB",   sent::Ratio},
};
// clang-format on
static_assert(InOrder(kColumns));

inline constexpr MovedColumns kMoved = {kUnit, kQuantity, kBatch, kExpiry, kRatio};

/// What one entry dialog does in its own way.
struct EntryHabits {
  const char* name;
  const char* money;            ///< picture of retail price and amounts in the line
  const char* catalogue_price;  ///< of the purchase price of a drug without batches; empty: as it comes
  BatchHabits batch;
  KeyFilter quantity_keys;
  bool always_two_units;  ///< a drug that is not split has both to choose from, and no price once one was chosen
  bool whole_stock;       ///< the quantity is held against the stock rounded to a whole number
  bool enter_confirms;    ///< in the last field that leaves something to say
};

/// The dialog of one line: quantity, unit, and the batch with its expiry and purchase price.
class Entry : public EntryDialog {
 public:
  Entry(AppContext& app, LineGrid& lines, const EntryHabits& habits);

  Label PM{this, "PM"};
  Label GG{this, "GG"};
  ComboBox DW{this, "DW", "单  位", {.style = ComboStyle::kFixed}};
  TextBox TYSL;
  Label LSJ{this, "LSJ"};
  BatchChoice batch;
  Button Command1{this, "Command1", "确定(&Y)", &Entry::Command1_Click};
  Button Command2{this, "Command2", "取消(&C)", &Entry::Cancel, ButtonRole::kCancel};

  Layout Arrange() const override;

  /// Shows the drug and its batches. Failures are shown; what could not be read stays empty.
  void LoadData(const std::string& YPBM);

 protected:
  void Activated() override { Start(TYSL); }
  void FormKeyDown(KeyEvent& event) override;

 private:
  void ShowDrug(const Recordset& drug);
  void DW_Click();
  void Command1_Click();
  void WriteLine();
  std::int16_t Factor() const { return drug_.IsSplit() && LargeUnitChosen(DW) ? drug_.CLB : std::int16_t{1}; }

  const EntryHabits& habits_;
  DrugRecord drug_;
  double retail_ = 0;        ///< of the large unit
  double split_retail_ = 0;  ///< of the smallest unit
  double YKKCL_ = 0;         ///< the drug's stock in smallest units
};

}  // namespace consumption

}  // namespace luming
