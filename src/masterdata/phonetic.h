#pragma once

#include <string>
#include <string_view>

#include "frame/app_context.h"

namespace luming {

/// The search codes of a Chinese name, from the table GY_HZBM; ASCII characters stand for themselves, blanks and
/// characters that the table does not know drop out. A failure of the database gives an empty code and no message.

/// Pinyin: the whole of each character's PY.
std::string GetPYDM(AppContext& app, std::string_view text);
/// Wubi: the first letter of each character's WB.
std::string GetWBDM(AppContext& app, std::string_view text);

}  // namespace luming
