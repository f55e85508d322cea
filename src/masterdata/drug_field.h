#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/text_box.h"

namespace luming {

/// One drug as the condition of a query: code, name, and the button that opens the choice list. A group of fields of
/// the form whose member it is; the form is a DrugTaker and hands the choice on to Take.
class DrugField {
 public:
  /// @param button name of the button on that form
  DrugField(Form* form, AppContext& app, const char* button);

  TextBox BM;
  TextBox PM;
  Button choose;

  /// The drug was chosen in the list: code and name are shown. Failures are the caller's.
  void Take(const std::string& code);
  void Clear();
  void SetEnabled(bool enabled);
  /// Opens the choice list, which answers to the form.
  void Choose();

  Layout Arrange() const;

 private:
  AppContext& app_;
};

}  // namespace luming
