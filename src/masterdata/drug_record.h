#pragma once

#include <cstdint>
#include <string>

#include "platform/database.h"
#include "util/text.h"

namespace luming {

/// One row of the drug catalogue YF_YPML as documents count with it: one DW holds CLB of ZXDW. Stock counts ZXDW; all
/// prices are those of one DW, except CLLSJ, the retail price of one ZXDW. A document line has a unit and a ratio of
/// its own, the drug's CLB for a line in DW and 1 for one in ZXDW, so that its effect on the stock is always quantity
/// times ratio.
struct DrugRecord {
  std::string DW;
  std::string ZXDW;
  std::int16_t CLB = 1;  ///< at most 1: the drug is not split

  bool IsSplit() const { return CLB > 1; }
  std::int16_t LargeUnitRatio() const { return IsSplit() ? CLB : std::int16_t{1}; }
};

/// Whether a flag column is set: 1, or a true bit where a site has one.
inline bool IsFlagSet(const Value& flag) {
  return !flag.IsNull() && (flag.Text() == "1" || EqualsIgnoreCase(flag.Text(), "True"));
}

}  // namespace luming
