#include "documents/entry_fields.h"

#include "util/number_text.h"

namespace luming {

void OfferUnits(ComboBox& list, const DrugRecord& drug) {
  list.Clear();
  list.AddItem(drug.DW);
  if (drug.IsSplit()) list.AddItem(drug.ZXDW);
  list.SetListIndex(0);
  list.SetEnabled(drug.IsSplit());
}

double NumberOrZero(std::string_view text) {
  return IsNumeric(text) ? CDbl(text) : 0;
}

bool LargeUnitChosen(const ComboBox& list) {
  return list.ListIndex() == 0;
}

}  // namespace luming
