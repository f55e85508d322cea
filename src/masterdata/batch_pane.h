#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/grid.h"

namespace luming {

enum class BatchAmounts { kPurchase, kPurchaseAndWholesale };  ///< both: with totals below

/// The live batches of one drug, below a list of drugs. A grid of the form whose member it is.
class BatchPane : public Grid {
 public:
  BatchPane(Form* form, AppContext& app, BatchAmounts amounts);

  /// Batches without stock are left out; an empty code changes nothing. A failure is shown and leaves the pane as it
  /// was.
  void ShowBatches(const std::string& code);

 private:
  void Fill(Recordset& rows);

  AppContext& app_;
  BatchAmounts amounts_;
};

}  // namespace luming
