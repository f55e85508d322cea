#pragma once

#include <cstddef>
#include <vector>

#include "screen/grid_column.h"

namespace luming {

/// One column of a picker's result list: what it is called, the field it shows, the picture it is shown by and what it
/// holds.
struct PickerColumn {
  const char* caption;
  const char* field;
  const char* picture = "";  ///< of FormatNumber; empty: as it comes
  Holds holds = Holds::kAnything;
};

/// The first column of every list.
inline constexpr PickerColumn kCodeColumn{"编码", "YPBM", "", Holds::kCode};

/// Which statement a search sends.
enum class PickerSearch {
  kByControls,      ///< Get_YP_JCTestYK with class and stock filter as the pane shows them
  kDrugsWithStock,  ///< Get_YP_JCTestYK with drugs in stock only, whatever the pane shows
  kItems,           ///< GET_YP_JC2, which knows no storehouse
};

/// How its rows are read, and with that who reports a failure.
enum class PickerReading { kOwnRecordset, kOpenRs };

enum class F2Key { kToggles, kDoesNothing };
enum class EnterKey { kWalks, kLeftAlone };

/// What one screen's search pane does in its own way; what a screen does not say is what most do.
struct PickerSettings {
  PickerSearch search = PickerSearch::kByControls;
  PickerReading reading = PickerReading::kOwnRecordset;
  F2Key f2 = F2Key::kToggles;
  EnterKey enter = EnterKey::kWalks;
  const char* mode_caption = "搜索方式(F5)";              ///< of CXFS
  const char* stock_filter_caption = "无库存不显示(F2)";  ///< of KCXS
  const char* item_class = "药品";                        ///< the one entry of SFLB
  /// Of the list. Empty where the screen fills a grid of its own with the results.
  std::vector<PickerColumn> columns = {};
};

/// Caption of CXFS on the screens that announce the scanner.
inline constexpr const char* kScannerMode = "搜索方式(F5)支持条形码";

/// How prices are shown; empty: as they come.
struct PricePictures {
  const char* LSJ = "";
  const char* PFJ = "";
  const char* CLLSJ = "";
};

/// The columns that most screens share, each with its own pictures, up to the last one that it shows.
std::vector<PickerColumn> StandardColumns(const PricePictures& pictures, std::size_t count = 12,
                                          const char* stock_caption = "药库库存");
/// Those of the wholesale documents.
std::vector<PickerColumn> WholesaleColumns();

}  // namespace luming
