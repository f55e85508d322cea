#pragma once

#include <cstddef>
#include <string_view>

#include "masterdata/drug_record.h"
#include "screen/combo_box.h"
#include "screen/text_box.h"

namespace luming {

/// Lengths that the fields of the documents are cut to on leaving, in bytes of the ANSI form.
namespace limit {
inline constexpr std::size_t kDocumentNumber = 50;
inline constexpr std::size_t kInvoice = 50;
inline constexpr std::size_t kPerson = 50;
inline constexpr std::size_t kCompany = 100;
inline constexpr std::size_t kBatch = 24;
inline constexpr std::size_t kFigure = 12;
inline constexpr std::size_t kWholesaleInvoice = 16;
inline constexpr std::size_t kWholesaleChecker = 10;
}  // namespace limit

/// @name Text boxes of the entry dialogs: all selected on entry, input method off
/// @{
inline TextOptions EntryBox(std::size_t cut, KeyFilter keys = KeyFilter::kAny) {
  return {.cut = cut, .keys = keys, .ime = Ime::kOff, .select_on_focus = true};
}
inline TextOptions QuantityBox() {
  return EntryBox(limit::kFigure, KeyFilter::kQuantity);
}
inline TextOptions PriceBox() {
  return EntryBox(limit::kFigure, KeyFilter::kPrice);
}
/// @}

/// A list of Chinese names that also takes free text.
inline ComboOptions NameList(std::size_t cut) {
  return {.cut = cut, .ime = Ime::kOperator};
}

/// Fills a dialog's unit list and shows the large unit: that alone, and the list disabled, for a drug that is not
/// split; else the large and the smallest unit.
void OfferUnits(ComboBox& list, const DrugRecord& drug);

/// What a text counts as where nothing has tested it yet.
double NumberOrZero(std::string_view text);

/// Whether the list shows its first item.
bool LargeUnitChosen(const ComboBox& list);

}  // namespace luming
