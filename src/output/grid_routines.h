#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/app_context.h"
#include "platform/desktop.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "screen/grid_init.h"

namespace luming {

/// First cell of every total row.
inline constexpr std::string_view kTotalCaption = "合计：";

/// Appends the total row: the caption, and live sums of the named columns. A grid without rows is left alone.
/// @param caption_col where the caption stands; column 1 is emptied first
void GridSumRow(Grid& grid, int caption_col, const std::vector<int>& columns);

/// Makes a row with totals known as one: marked, its caption centred, bold, locked. What was loaded from a file gets it
/// back by this.
void MakeTotalRow(Grid& grid, int row, int caption_col);

/// Deletes one row. Without rows it says so instead. @return whether a row was deleted
bool GridDelRow(Grid& grid, int row);

/// Deletes every row whose cell in `col` equals `text`.
void RemoveTotalRow(int col, std::string_view text, Grid& grid);

/// The search mode that the operator saved, else the list's first entry.
void SetSearchType(const AppContext& app, ComboBox& combo);

/// A search text made safe for a statement: without quotes, blanks and line ends.
std::string CleanSearchText(std::string_view text);

/// The common open and save dialog. A proposed name that no file can bear is not proposed.
/// @return the chosen path; nothing when it was cancelled or the proposed name is above 260 characters
std::optional<std::string> FileDialog(Desktop& desktop, FileRequest request);

}  // namespace luming
