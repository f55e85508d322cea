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
  kPurchasePrice,
  kAmount,
  kBatch,
  kExpiry,
  kRatio,
  kUnitPurchasePrice,
};
}  // namespace receipt

/// Columns of the lines that go back to a supplier.
namespace supplier_return {
inline constexpr int kCode = 1, kName = 2, kQuantity = 6, kPurchasePrice = 7, kBatch = 9, kRatio = 11;
}  // namespace supplier_return

/// Columns of the lines that go to a pharmacy.
namespace issue_note {
inline constexpr int kCode = 1, kQuantity = 8, kRatio = 13;
}  // namespace issue_note

}  // namespace luming
