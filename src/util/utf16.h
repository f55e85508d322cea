#pragma once

#include <string>
#include <string_view>

namespace luming {

/// UTF-16 units of a text; a character outside the first plane counts two. A bad byte becomes U+FFFD.
std::u16string ToUtf16(std::string_view utf8);
/// Half a pair becomes U+FFFD.
std::string FromUtf16(std::u16string_view units);

}  // namespace luming
