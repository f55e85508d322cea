#include "desktop/qt_text.h"

namespace luming {

int UnitsBefore(const QString& text, std::size_t characters) {
  qsizetype unit = 0;
  while (characters > 0 && unit < text.size()) {
    unit += text[unit].isHighSurrogate() ? 2 : 1;
    --characters;
  }
  return static_cast<int>(std::min(unit, text.size()));
}

std::size_t CharactersBefore(const QString& text, int units) {
  std::size_t characters = 0;
  for (int unit = 0; unit < units && unit < text.size(); ++unit) {
    if (!text[unit].isLowSurrogate()) ++characters;
  }
  return characters;
}

}  // namespace luming
