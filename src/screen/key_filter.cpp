#include "screen/key_filter.h"

#include "util/text.h"

namespace luming {

namespace {

bool IsDigit(char32_t character) {
  return character >= U'0' && character <= U'9';
}

}  // namespace

bool Passes(KeyFilter filter, char32_t character, std::string_view present) {
  switch (filter) {
    case KeyFilter::kAny:
      return true;
    case KeyFilter::kDigits:
      return IsDigit(character);
    case KeyFilter::kQuantity:
      return (character >= 46 && character <= 57) || character == U'-';
    case KeyFilter::kPrice:
      if (character != U'.') return IsDigit(character);
      return !Trim(present).empty() && present.find('.') == std::string_view::npos;
  }
  return false;
}

}  // namespace luming
