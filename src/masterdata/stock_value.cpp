#include "masterdata/stock_value.h"

#include "masterdata/drug_record.h"
#include "util/number_text.h"

namespace luming {

std::string StockValue::LargeUnits() const {
  return ratio != 0 ? FormatNumber(stock / ratio, "0.00") : std::string();
}

std::vector<StockValue> StockValues(Recordset& rows) {
  std::vector<StockValue> values;
  values.reserve(static_cast<std::size_t>(rows.RecordCount()));
  if (rows.RecordCount() == 0) return values;
  const auto index = [&](const char* name) { return rows.ColumnIndex(name); };
  const std::size_t stock = index("YKKCL"), ratio = index("CLB"), purchase = index("PFJ"), retail = index("LSJ");
  const std::size_t injection = index("ZSYP"), skin_test = index("PSPB");
  for (; !rows.Eof(); rows.MoveNext()) {
    StockValue& value = values.emplace_back();
    value.stock = rows.Field(stock).NumberOr(0);
    value.ratio = rows.Field(ratio).NumberOr(0);
    value.purchase_price = rows.Field(purchase).NumberOr(0);
    value.retail_price = rows.Field(retail).NumberOr(0);
    value.injection = IsFlagSet(rows.Field(injection));
    value.skin_test = IsFlagSet(rows.Field(skin_test));
  }
  rows.MoveFirst();
  return values;
}

void StockTotals::Add(const StockValue& value) {
  constexpr int kDecimals = 2;
  cost += value.IsSplit() ? RoundDecimal(value.Cost(), kDecimals) : value.Cost();
  retail += RoundDecimal(value.Retail(), kDecimals);
}

}  // namespace luming
