#pragma once

#include <functional>
#include <string>
#include <vector>

#include "screen/control.h"

namespace luming {

/// How a form's fields are arranged: one nested expression that reads like the screen. The desktop draws it; a test
/// proves that each field stands in it exactly once.
///
///   return Column({
///       Group("单据", Fields(3, {sRKDH, sFPH, FPRQ, sGHDW, lFKBZ, sYSR, sFHR})),
///       Split(fpSpread2, fpSpread1),
///       Row({Command1, Command2, Space(), Command3}),
///   });
struct Layout {
  enum class Kind { kControl, kRow, kColumn, kFields, kGroup, kSplitAcross, kSplitDown, kSpace, kHidden };

  Layout(const Control& field) : control(&field) {}  // NOLINT(google-explicit-constructor): the expression reads so
  Layout(Kind layout_kind, std::vector<Layout> layout_parts, std::string layout_title = {}, int layout_columns = 1)
      : kind(layout_kind), parts(std::move(layout_parts)), title(std::move(layout_title)), columns(layout_columns) {}

  /// Share of the free room among the siblings; grids and pictures have 1 unless said, the rest 0.
  Layout&& Stretch(int share) && {
    stretch = share;
    return std::move(*this);
  }
  /// Fixed width in average characters.
  Layout&& Width(int characters) && {
    width = characters;
    return std::move(*this);
  }
  /// Fixed height in text lines.
  Layout&& Height(int lines) && {
    height = lines;
    return std::move(*this);
  }
  /// Words in front of a control that has none of its own: a label that shows a value.
  Layout&& Titled(std::string words) && {
    title = std::move(words);
    return std::move(*this);
  }
  /// Draws the control without its caption in front.
  Layout&& Bare() && {
    bare = true;
    return std::move(*this);
  }

  Kind kind = Kind::kControl;
  const Control* control = nullptr;
  std::vector<Layout> parts;
  std::string title;
  int columns = 1;
  int stretch = -1;
  int width = 0;
  int height = 0;
  bool bare = false;
};

inline Layout Row(std::vector<Layout> parts) {
  return {Layout::Kind::kRow, std::move(parts)};
}
inline Layout Column(std::vector<Layout> parts) {
  return {Layout::Kind::kColumn, std::move(parts)};
}
/// Captions and editors aligned in `columns` pairs, row by row.
inline Layout Fields(int columns, std::vector<Layout> parts) {
  return {Layout::Kind::kFields, std::move(parts), {}, columns};
}
inline Layout Group(std::string title, Layout inside) {
  return {Layout::Kind::kGroup, {std::move(inside)}, std::move(title)};
}
/// Side by side, with a divider that the operator can move.
inline Layout SplitAcross(std::vector<Layout> parts) {
  return {Layout::Kind::kSplitAcross, std::move(parts)};
}
/// One above the other, with a divider that the operator can move.
inline Layout SplitDown(std::vector<Layout> parts) {
  return {Layout::Kind::kSplitDown, std::move(parts)};
}
inline Layout Space() {
  return Layout{Layout::Kind::kSpace, {}}.Stretch(1);
}
/// Fields that the screen keeps but never draws.
inline Layout Hidden(std::vector<Layout> parts) {
  return {Layout::Kind::kHidden, std::move(parts)};
}

/// Calls `visit` for each field in the layout, in order; `hidden` for those that stand in a Hidden part.
void Walk(const Layout& layout, const std::function<void(const Control& field, bool hidden)>& visit);

/// A form's fields in the order in which Tab stops at them: as they are laid out, those in a Hidden part left out,
/// those that are not laid out last.
std::vector<Control*> TabOrder(const Layout& layout, const std::vector<Control*>& fields);

/// Whether the operator can ever see the field: it does not stand in a Hidden part.
bool IsDrawn(const Layout& layout, const Control& field);

}  // namespace luming
