#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/grid.h"
#include "screen/label.h"
#include "screen/layout.h"

namespace luming {

enum class BatchAmounts { kPurchase, kPurchaseAndWholesale };  ///< both: with totals below

/// The live batches of one drug, below a list of drugs, under the drug's name. A grid of the form whose member it is.
class BatchPane : public Grid {
 public:
  BatchPane(Form* form, AppContext& app, BatchAmounts amounts);

  Label BatchDrug;  ///< which drug's batches they are

  /// Batches without stock are left out; without a code there are none. A failure is shown and leaves the pane as it
  /// was.
  void ShowBatches(const std::string& code, const std::string& name);
  void Clear();

  Layout Arrange() const { return Column({BatchDrug, *this}); }

 private:
  void Fill(Recordset& rows);

  AppContext& app_;
  BatchAmounts amounts_;
};

}  // namespace luming
