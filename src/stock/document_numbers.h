#pragma once

#include <string>

#include "frame/app_context.h"

namespace luming {

/// The number after the one of the document saved last today: date and a count of four digits, 202603010001. It is
/// read, not reserved. A failure is shown and gives an empty number; a last number that does not end in a count is one.
std::string NextDocNo(AppContext& app, const std::string& number_column, const std::string& table,
                      const std::string& date_column);

}  // namespace luming
