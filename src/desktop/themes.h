#pragma once

#include <QColor>
#include <QString>

namespace luming {

/// Colours of one visual theme.
struct Theme {
  QColor text;
  QColor muted;         ///< captions of disabled fields, row numbers
  QColor window;        ///< behind the fields of a form
  QColor chrome;        ///< menu bar, tool bar, status bar, headers
  QColor chrome_deep;   ///< pressed, and the workspace behind the forms
  QColor line;          ///< rules, frames, grid lines
  QColor field_line;    ///< frame of an editor
  QColor base;          ///< editors and odd rows
  QColor stripe;        ///< even rows
  QColor total;         ///< the total row
  QColor typed;         ///< cells that are there to be typed in
  QColor accent;        ///< focus, selection, default button
  QColor accent_text;   ///< on the accent
  QColor accent_pale;   ///< chosen row of a grid without the keyboard
  QColor accent_faint;  ///< active row, hover
};

/// @param number 0 Office XP, 1 Default, 2 Office 2003, 3 Native XP; any other is taken for 1
const Theme& ThemeOfNumber(int number);

/// The theme in use; the default until ApplyTheme is called.
const Theme& CurrentTheme();

/// Dresses the whole application: font, palette, style sheet.
/// @param skin further rules in Qt's style sheet language, applied on top
void ApplyTheme(int number, const QString& skin);

}  // namespace luming
