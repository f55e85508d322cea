#pragma once

#include <string>

#include "screen/form.h"
#include "screen/grid.h"

namespace luming {

/// The control of that name or, where no control bears it, of that caption without mnemonic; among several of one
/// caption the one that can be seen, a field ahead of a label. Throws ScriptProblem when there is none, or no telling.
Control& ControlNamed(const Form& form, const std::string& name);

/// Whether the operator sees the control on its form.
bool IsSeen(const Control& control);

/// What a script compares of a control: a field's text, "on" or "off", a date as yyyy-mm-dd, the caption of a label or
/// a button, the chosen node of a tree.
std::string ValueOf(const Control& control);

/// A whole number from `first` on; ScriptProblem for any other text.
int NumberFrom(int first, const std::string& text, std::string_view what);

/// A row by its number, `first` being the least; ScriptProblem for one that is not there.
int RowFrom(int first, const Grid& grid, const std::string& text);

/// A column by its number or its header.
int ColumnNamed(const Grid& grid, const std::string& text);

/// Line ends of either kind as \n.
std::string WithPlainLineEnds(std::string_view text);

}  // namespace luming
