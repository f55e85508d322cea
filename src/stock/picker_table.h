#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "screen/grid_column.h"

namespace luming {

/// One column of a picker's result list: what it is called, the field it shows, the picture it is shown by
/// and what it holds.
struct PickerColumn {
  const char* caption;
  const char* field;
  const char* picture = "";  ///< of FormatNumber; empty: as it comes
  Holds holds = Holds::kAnything;
};

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

/// What one screen's search pane does in its own way.
struct PickerSettings {
  const char* screen;
  PickerSearch search;
  PickerReading reading;
  F2Key f2;
  EnterKey enter;
  const char* mode_caption;          ///< of CXFS
  const char* stock_filter_caption;  ///< of KCXS
  const char* item_class;            ///< the one entry of SFLB
  /// Of the list. Empty where the screen fills a grid of its own with the results.
  std::vector<PickerColumn> columns;
};

/// The settings of a screen; an unknown screen is a Failure.
const PickerSettings& PickerSettingsOf(std::string_view screen);
/// All screens that have a search pane.
const std::vector<PickerSettings>& AllPickerSettings();

}  // namespace luming
