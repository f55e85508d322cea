#pragma once

#include <string>

#include "frame/app_context.h"
#include "platform/database.h"
#include "screen/combo_box.h"
#include "screen/form.h"
#include "screen/label.h"

namespace luming {

/// What one dialog's choice of a batch does in its own way.
struct BatchHabits {
  const char* first_price;    ///< picture of the purchase price of the first batch
  const char* chosen_price;   ///< and of the one that is chosen
  bool first_chosen = false;  ///< the list starts with the first batch; else with none
  bool keeps_price = false;   ///< a chosen batch without a price leaves the one that stands there
};

/// The batches of a drug in an entry dialog: the list, and expiry and purchase price of the batch that stands in it. A
/// group of fields of the dialog whose member it is.
class BatchChoice {
 public:
  BatchChoice(Form* form, AppContext& app, const BatchHabits& habits);

  ComboBox PH;
  Label XQ;
  Label PFJ;

  /// Reads the drug's batches and shows expiry and price of the first. A drug without batches leaves the fields as they
  /// are. Failures are the caller's.
  void Offer(const std::string& code);
  /// Whether there is something to choose from.
  bool IsOpen() const { return PH.Items().size() > 1; }

 private:
  void PH_Click();

  AppContext& app_;
  BatchHabits habits_;
  Recordset batches_;
};

}  // namespace luming
