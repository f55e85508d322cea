#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "platform/statement.h"
#include "screen/grid.h"

namespace luming {

/// Columns of the search list as most documents show it: a line is filled from them.
namespace match {
enum Column {
  kCode = 1,
  kName,
  kSpecification,
  kLargeUnit,
  kOrigin,
  kStock,
  kRetail,
  kPurchase,
  kRatio,
  kSmallestUnit,
  kSplitRetail,
  kWholesale,
};
}  // namespace match

/// Where a cell comes from when a match is taken: a column of the search list, and the picture it is written by.
struct From {
  int match = 0;             ///< 0: the screen writes it, or its entry dialog
  const char* picture = "";  ///< of FormatNumberText; empty: as it stands
};

/// Puts a cell into a statement as its value.
using Sent = void (*)(Statement& statement, const std::string& cell, const ValueSource& source);

/// The ways in which most documents send their cells; a screen with an oddity brings a function of its own.
namespace sent {
void Text(Statement& statement, const std::string& cell, const ValueSource& source);
void Figure(Statement& statement, const std::string& cell, const ValueSource& source);     ///< as it stands
void FigureOr0(Statement& statement, const std::string& cell, const ValueSource& source);  ///< 0 when it is empty
void Ratio(Statement& statement, const std::string& cell, const ValueSource& source);      ///< 1 when it is empty
/// Two places, a currency sign left out; 0 when it is empty.
void Money(Statement& statement, const std::string& cell, const ValueSource& source);
void DayOrNull(Statement& statement, const std::string& cell, const ValueSource& source);
}  // namespace sent

/// What the operator can do with a cell in place. What he types is held to the keys, the length and the test of the
/// like field of the entry dialogs.
enum class Cell { kLocked, kHidden, kQuantity, kCount, kPrice, kBatch, kDay };

/// One column of a document's lines, said once: what it is called, where its cells come from and how they are saved.
struct LineColumn {
  int column;  ///< from 1, in order
  const char* caption;
  From from = {};
  const char* saved_as = nullptr;  ///< column of the line table; null: shown only
  Sent sent = nullptr;
  Cell cell = Cell::kLocked;
  Holds holds = Holds::kAnything;
};

/// Whether the columns are numbered as they stand, each that is saved with the way it is sent.
template <std::size_t Count>
consteval bool InOrder(const LineColumn (&columns)[Count]) {
  for (std::size_t i = 0; i < Count; ++i) {
    if (columns[i].column != static_cast<int>(i) + 1) return false;
    if ((columns[i].saved_as == nullptr) != (columns[i].sent == nullptr)) return false;
  }
  return true;
}

using LineColumns = std::span<const LineColumn>;

/// The columns as a grid declares them.
std::vector<GridColumn> GridColumnsOf(LineColumns columns);

}  // namespace luming
