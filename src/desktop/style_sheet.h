#pragma once

#include <QString>

namespace luming {

struct Theme;

/// The rules of the house's look, in the theme's colours.
QString StyleSheetOf(const Theme& theme);

}  // namespace luming
