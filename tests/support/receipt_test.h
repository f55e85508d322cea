#pragma once

#include <string>

#include "documents/screens.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "support/store_test.h"

namespace luming {

/// The receipt screen, open, and what an operator does on it.
class ReceiptTest : public StoreTest {
 protected:
  ReceiptTest() {
    form.Show();
    form.Field<ComboBox>("CXFS").SetText("编码");
  }

  /// A line of batch A1, expiry 2027-12-31, at the dialog's own prices.
  void AddLine(const std::string& code, const std::string& quantity) {
    desktop.modals.push_back([=](Form& dialog) {
      dialog.Field<TextBox>("sngSL").UserText(quantity);
      dialog.Field<TextBox>("sPH").UserText("A1");
      dialog.Field<DateBox>("lYXQ").SetValue(DateTime(2027, 12, 31));
      dialog.UserClick(dialog.Field<Button>("Command1"));
    });
    form.Field<TextBox>("PM").UserText(code);
    form.Field<Grid>("fpSpread2").UserDoubleClick(1, 1);
    EXPECT_TRUE(desktop.modals.empty()) << "the dialog did not open";
  }
  void FillHead() {
    form.Field<ComboBox>("sGHDW").UserText("云泊医药有限公司");
    form.Field<ComboBox>("sYSR").UserText("方立群");
    form.Field<ComboBox>("sFHR").UserText("吕静仪");
    form.Field<TextBox>("sFPH").UserText("25659688");
    form.Field<DateBox>("FPRQ").SetValue(DateTime(2026, 2, 27));
  }
  void Save() {
    desktop.answers.push_back(Answer::kYes);
    form.UserClick(form.Field<Button>("Command1"));
  }

  Form& form = kReceipt.form(app);
  Grid& lines = form.Field<Grid>("fpSpread1");
};

}  // namespace luming
