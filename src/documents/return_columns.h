#pragma once

namespace luming {

/// Columns of the lines that go back to a supplier.
namespace supplier_return {
enum Column {
  kCode = 1,
  kName,
  kSpecification,
  kUnit,
  kOrigin,
  kQuantity,  ///< in large units
  kPurchasePrice,
  kAmount,
  kBatch,
  kExpiry,
  kRatio,
};
}  // namespace supplier_return

}  // namespace luming
