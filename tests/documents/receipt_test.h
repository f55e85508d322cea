#pragma once

#include <functional>
#include <string>
#include <utility>

#include "documents/receipt.h"
#include "documents/receipt_entry.h"
#include "support/store_test.h"
#include "util/text.h"

namespace luming {

/// The receipt screen, open, and what an operator does on it.
class ReceiptTest : public StoreTest {
 protected:
  ReceiptTest() {
    form.Show();
    form.picker.CXFS.SetText("编码");
  }

  /// Double-clicks the drug's match; `enter` works in the dialog that opens.
  void Pick(const std::string& code, std::function<void(ek_RKXZ&)> enter) {
    desktop.modals.push_back([enter](Form& dialog) { enter(dynamic_cast<ek_RKXZ&>(dialog)); });
    PickWithoutDialog(code);
    EXPECT_TRUE(desktop.modals.empty()) << "the dialog did not open";
  }
  void PickWithoutDialog(const std::string& code) {
    form.picker.PM.UserText(code);
    form.picker.Results().UserDoubleClick(1, 1);
  }
  /// A line with batch A1 and expiry 2027-12-31 at the dialog's own prices.
  void AddLine(const std::string& code, const std::string& quantity, bool smallest_unit = false) {
    Pick(code, [=](ek_RKXZ& dialog) {
      if (smallest_unit) dialog.DW.UserChoose(1);
      dialog.sngSL.UserText(quantity);
      dialog.sPH.UserText("A1");
      dialog.lYXQ.SetValue(DateTime(2027, 12, 31));
      dialog.UserClick(dialog.Command1);
    });
  }
  void FillHead() {
    form.sGHDW.UserText("云泊医药有限公司");
    form.sYSR.UserText("方立群");
    form.sFHR.UserText("吕静仪");
    form.sFPH.UserText("25659688");
    form.FPRQ.SetValue(DateTime(2026, 2, 27));
  }
  void Save() {
    desktop.answers.push_back(Answer::kYes);
    form.UserClick(form.Command1);
  }
  std::string Row(int row) const {
    std::vector<std::string> cells;
    for (int column = 1; column <= form.fpSpread1.MaxCols(); ++column) {
      cells.push_back(form.fpSpread1.Text(row, column));
    }
    return Join(cells, "|");
  }

  ek_YK_RKMX& form = app.forms.Get<ek_YK_RKMX>(app);
};

}  // namespace luming
