#pragma once

#include <string_view>

namespace luming {

/// Folds the case of the letters that have one: Latin, Greek, Cyrillic, full-width, Roman numerals. Indexes on disk are
/// built with it: IT MUST NEVER CHANGE between versions of the program.
char32_t FoldCase(char32_t character);

/// Whether the database takes the texts for equal: without regard to case and to blanks at the end.
bool EqualsInDatabase(std::string_view left, std::string_view right);

}  // namespace luming
