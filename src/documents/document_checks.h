#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/grid.h"
#include "screen/messages.h"
#include "screen/text_box.h"

namespace luming {

/// Complains of a document number that is not twelve digits long.
void CheckNumber(NumberedMessages& messages, TextBox& number, const char* when_empty, const char* otherwise);

/// Asks whether to save the document.
bool ConfirmSave(Desktop& desktop);
/// Whether the document has lines, of which a total row left behind is none; tells it when there are none.
/// @param words after the common heading
bool HasLines(Desktop& desktop, const Grid& lines, const std::string& words = "入库项目明细不能为空");

/// Whether the storehouse holds now what all the lines ask for, each by itself; names those for which it does not.
/// @param quantity column of the quantity @param ratio column of the ratio; an empty cell counts as 1
bool StockSuffices(AppContext& app, const Grid& lines, int quantity, int ratio);

}  // namespace luming
