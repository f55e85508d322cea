#pragma once

#include <string_view>

namespace luming {

/// What characters a field lets through while typing (setting the text by code or pasting is not filtered).
enum class KeyFilter {
  kAny,
  kPrice,     ///< digits, backspace, one '.', and none as the first character
  kQuantity,  ///< character codes 46 to 57 ('.', '/', digits), backspace and '-'
  kDigits,
};

/// Whether a typed character, which is no control character, may join the present text.
bool Passes(KeyFilter filter, char32_t character, std::string_view present);

}  // namespace luming
