#pragma once

#include <cstdint>
#include <string_view>

struct sqlite3;

namespace luming::localdb {

/// The order of text in the store: letters without regard to case, blanks at the end ignored, Chinese characters by
/// pinyin. The 3755 common characters stand in the order of code page 936, which is that of their pinyin; all others
/// follow by their code. Indexes on disk are built in this order: IT MUST NEVER CHANGE between versions of the program,
/// or a new collation name has to be introduced and the indexes be built again.
int CompareText(std::string_view left, std::string_view right);

/// A character in the order above, with the case folded: equal characters have equal weights.
std::uint32_t CharacterWeight(char32_t character);

/// Makes the collation known to the connection, by the name TSQL.
void RegisterCollation(sqlite3* store);

}  // namespace luming::localdb
