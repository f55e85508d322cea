#pragma once

#include <QFontMetrics>
#include <QWidget>

/// Distances that all forms share, in device-independent pixels, and sizes told in characters and lines.
namespace luming::metrics {

inline constexpr int kMargin = 10;        ///< around a form and within a group
inline constexpr int kDialogMargin = 16;  ///< around a form with a window of its own
inline constexpr int kGap = 6;            ///< between neighbours
inline constexpr int kCaptionGap = 6;     ///< between a caption and its editor
inline constexpr int kRowHeight = 24;     ///< of a grid row at the usual font
inline constexpr int kEditorHeight = 26;
inline constexpr int kButtonWidth = 86;  ///< of a button with a short caption; a longer one is never cut
inline constexpr int kTextMargin = 3;    ///< between an editor's frame and its text, beside the style's own
inline constexpr int kFrame = 9;         ///< frame and inner margin at both sides of an editor

inline int CharactersWidth(const QWidget& widget, int characters) {
  return widget.fontMetrics().averageCharWidth() * characters;
}
inline int EditorWidth(const QWidget& widget, int characters) {
  return CharactersWidth(widget, characters) + 2 * kFrame;
}
inline int LinesHeight(const QWidget& widget, int lines) {
  return widget.fontMetrics().lineSpacing() * lines + kFrame;
}

}  // namespace luming::metrics
