#include "desktop/key_codes.h"

#include <QString>
#include <array>
#include <utility>

namespace luming {
namespace {

constexpr std::array<std::pair<int, int>, 17> kNamedKeys{{
    {Qt::Key_Backspace, key::kBackspace},
    {Qt::Key_Tab, key::kTab},
    {Qt::Key_Backtab, key::kTab},
    {Qt::Key_Return, key::kEnter},
    {Qt::Key_Enter, key::kEnter},
    {Qt::Key_Escape, key::kEsc},
    {Qt::Key_Space, key::kSpace},
    {Qt::Key_PageUp, key::kPageUp},
    {Qt::Key_PageDown, key::kPageDown},
    {Qt::Key_End, key::kEnd},
    {Qt::Key_Home, key::kHome},
    {Qt::Key_Left, key::kLeft},
    {Qt::Key_Up, key::kUp},
    {Qt::Key_Right, key::kRight},
    {Qt::Key_Down, key::kDown},
    {Qt::Key_Insert, key::kInsert},
    {Qt::Key_Delete, key::kDelete},
}};

int CodeOf(int qt_key) {
  for (const auto& [from, to] : kNamedKeys) {
    if (from == qt_key) return to;
  }
  if (qt_key >= Qt::Key_F1 && qt_key <= Qt::Key_F12) return key::kF1 + (qt_key - Qt::Key_F1);
  if ((qt_key >= Qt::Key_0 && qt_key <= Qt::Key_9) || (qt_key >= Qt::Key_A && qt_key <= Qt::Key_Z)) return qt_key;
  return 0;
}

}  // namespace

KeyEvent ToKeyEvent(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers();
  return {.code = CodeOf(event.key()),
          .shift = held.testFlag(Qt::ShiftModifier) || event.key() == Qt::Key_Backtab,
          .ctrl = held.testFlag(Qt::ControlModifier),
          .alt = held.testFlag(Qt::AltModifier)};
}

bool IsMnemonic(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers();
  return held.testFlag(Qt::AltModifier) && !held.testFlag(Qt::ControlModifier) && !event.text().isEmpty() &&
         event.text().front().isPrint();
}

char32_t TypedCharacter(const QKeyEvent& event) {
  if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return 0;
  const QList<uint> characters = event.text().toUcs4();
  if (characters.size() != 1 || characters.front() < 0x20 || characters.front() == 0x7F) return 0;
  return characters.front();
}

bool IsEditingKey(int qt_key) {
  switch (qt_key) {
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_Left:
    case Qt::Key_Right:
      return true;
    default:
      return false;
  }
}

}  // namespace luming
