#pragma once

#include <string>

#include "platform/desktop.h"
#include "screen/grid.h"

namespace luming {

/// Columns of the search list as most documents show it: a line is filled from them.
namespace match {
enum Column {
  kName = 2,
  kSpecification,
  kLargeUnit,
  kOrigin,
  kRetail = 7,
  kPurchase,
  kRatio,
  kSmallestUnit,
  kSplitRetail,
  kWholesale,
};
}  // namespace match

/// An expiry as a statement takes it: a quoted date, or the word Null for any other text.
std::string ExpirySent(const std::string& expiry);

/// Asks whether to save the document. False at no, and for a document without lines, which is said.
bool ConfirmSave(Desktop& desktop, const Grid& lines);

}  // namespace luming
