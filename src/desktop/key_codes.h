#pragma once

#include <QKeyEvent>

#include "screen/event.h"

namespace luming {

/// The key as the screens speak of it; code 0 for a key that they have no name for.
KeyEvent ToKeyEvent(const QKeyEvent& event);

/// A letter pressed with Alt: it belongs to a caption, and types nothing though no caption has it.
bool IsMnemonic(const QKeyEvent& event);

/// The character that the key types; 0 when it types none (control characters, combinations with Ctrl or Alt).
char32_t TypedCharacter(const QKeyEvent& event);

/// Whether an editor of text changes its text or moves its caret with the key.
bool IsEditingKey(int qt_key);

}  // namespace luming
