#pragma once

#include <string>
#include <vector>

#include "platform/database.h"

namespace luming {

/// What the catalogue reckons of one drug.
struct StockValue {
  double stock = 0;  ///< YKKCL, in smallest units
  double ratio = 0;  ///< CLB; 0 for NULL
  double purchase_price = 0;
  double retail_price = 0;
  bool injection = false;
  bool skin_test = false;

  bool IsSplit() const { return ratio > 1; }
  /// The stock in large units with two decimals; empty for a ratio of 0.
  std::string LargeUnits() const;
  double Cost() const { return Worth(purchase_price); }
  double Retail() const { return Worth(retail_price); }

 private:
  double Worth(double price) const { return IsSplit() ? stock / ratio * price : stock * price; }
};

/// Of each row of YF_YPML, in order; the recordset stands on its first row afterwards.
std::vector<StockValue> StockValues(Recordset& rows);

/// The sums below the list: each value counts with two decimals, only the cost of a drug that is not split with all.
struct StockTotals {
  double cost = 0;
  double retail = 0;
  void Add(const StockValue& value);
};

}  // namespace luming
