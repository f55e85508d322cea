#pragma once

namespace luming {

/// Columns of the receipt's lines.
namespace receipt {
enum Column {
  kCode = 1,
  kName,
  kSpecification,
  kUnit,
  kOrigin,
  kWholesalePrice,
  kRetailPrice,
  kQuantity,
  kPurchasePrice,  ///< of the large unit, whichever unit the line has
  kAmount,
  kBatch,
  kExpiry,
  kRatio,
  kUnitPurchasePrice,  ///< of the line's unit; hidden, and empty for a line in the large unit
};
}  // namespace receipt

}  // namespace luming
