#include "documents/entry_dialog.h"

#include "util/number_text.h"

namespace luming {

void OfferUnits(ComboBox& list, const DrugUnits& units) {
  list.Clear();
  list.AddItem(units.DW);
  if (units.IsSplit()) list.AddItem(units.ZXDW);
  list.SetListIndex(0);
  list.SetEnabled(units.IsSplit());
}

double NumberOrZero(std::string_view text) {
  return IsNumeric(text) ? CDbl(text) : 0;
}

bool LargeUnitChosen(const ComboBox& list) {
  return list.ListIndex() == 0;
}

}  // namespace luming
