#pragma once

#include <QIcon>
#include <QPixmap>
#include <string>

namespace luming::glyphs {

/// Icon of a command of the main window; a null icon when it has none.
QIcon ForCommand(int command);

/// Icon of a screen's tool bar button, by what its caption says; a null icon when none fits.
QIcon ForCaption(const std::string& caption);

/// The mark of a message box's style (16 stop, 32 question, 48 warning, 64 information); a null icon for none.
QIcon ForBoxStyle(int style);

/// The picture of a tree node: the check boxes "None", "Some" and "All"; a null icon for any other.
QIcon OfNode(const std::string& image);

enum class Direction { kLeft, kRight, kUp };
/// An arrow for going back and forth.
QIcon Arrow(Direction direction);

/// The program's own mark.
QIcon OfProgram();

}  // namespace luming::glyphs
