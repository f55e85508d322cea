#pragma once

#include <vector>

#include "platform/statement.h"
#include "screen/grid.h"

namespace luming {

/// Columns of the catalogue grid.
namespace catalogue {
enum Column {
  kYPBM = 1,
  kYPMC,
  kSPMC,
  kGG,
  kYKKCL,
  kZXDW,
  kJLDW,
  kCLB,
  kLargeUnitStock,
  kDW,
  kSCCJ,
  kABC,
  kJX,
  kPFJ,
  kLSJ,
  kCLLSJ,
  kPLJ,
  kSFXM,
  kSFTY,
  kSFSF,
  kZHJBZ,
  kCFXL,
  kHZYLYY,
  kGFYY,
  kYBYY,
  kYKKCSX,
  kYKKCXX,
  kPYDM,
  kWBDM,
  kSP_PYDM,
  kSP_WBDM,
  kPZWH,
  kZCSB,
  kZLZK,
  kYBXMBH,
  kNHXMBH,
  kGYTJ,
  kYYPC,
  kDCJL,
  kZSYP,
  kPSPB,
  kYLZYFL,
  kChanged,  ///< "1" when the row was changed
  kCost,
  kRetail,
  kCount = kRetail
};
}  // namespace catalogue

/// How a cell goes into the statement that saves its row.
enum class Sent {
  kNot,
  kQuoted,
  kBare,        ///< as it stands
  kBareOrNull,  ///< an empty cell as the word null
  kFlag,        ///< '0' for the text 0, '1' for any other
};

/// One column of the catalogue grid: what it is called, what it shows and how it is saved.
struct CatalogueColumn {
  const char* header;
  const char* field;    ///< of YF_YPML; empty for what is stored nowhere
  const char* picture;  ///< of the field as it is shown; null where the screen computes the cell
  CellKind kind;
  Holds holds;
  Sent sent;
  const char* dictionary;  ///< whose entries a list cell offers; empty where the list comes from elsewhere
};

/// All 45, in order; the first is column 1.
const std::vector<CatalogueColumn>& CatalogueColumns();

/// The same as a grid declares them.
std::vector<GridColumn> CatalogueGridColumns();

/// The statement that saves a row as its cells stand.
Statement CatalogueUpdate(const Grid& grid, int row);

}  // namespace luming
