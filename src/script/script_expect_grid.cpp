#include <algorithm>
#include <array>
#include <charconv>

#include "script/script_driver.h"
#include "script/script_names.h"

namespace luming {
namespace {

struct ColourName {
  std::string_view name;
  Colour colour;
};

constexpr std::array kColourNames = {
    ColourName{"default", Control::kNoColour},
    ColourName{"black", 0x000000},
    ColourName{"red", 0xFF0000},
    ColourName{"grey", 0x808080},
    ColourName{"blue", 0x0000FF},
    ColourName{"green", 0x008000},
    ColourName{"white", 0xFFFFFF},
};

Colour ColourNamed(const std::string& text) {
  const auto known = std::ranges::find(kColourNames, text, &ColourName::name);
  if (known != kColourNames.end()) return known->colour;
  Colour colour = 0;
  const char* const end = text.data() + text.size();
  const bool coded = text.size() == 7 && text[0] == '#';
  if (!coded || std::from_chars(text.data() + 1, end, colour, 16).ptr != end)
    throw ScriptProblem{0, "\"" + text + "\" is no colour"};
  return colour;
}

std::string NameOf(Colour colour) {
  const auto known = std::ranges::find(kColourNames, colour, &ColourName::colour);
  if (known != kColourNames.end()) return std::string(known->name);
  std::string code = "#";
  for (int shift = 20; shift >= 0; shift -= 4) code += "0123456789abcdef"[colour >> shift & 0xF];
  return code;
}

}  // namespace

struct ScriptDriver::Cell {
  const Grid& grid;
  int row;
  int col;
};

/// By the first three arguments of a step.
ScriptDriver::Cell ScriptDriver::CellNamed(const ScriptStep& step) const {
  const Grid& grid = GridNamed(step.arguments[0]);
  return {grid, RowFrom(0, grid, step.arguments[1]), ColumnNamed(grid, step.arguments[2])};
}

void ScriptDriver::ExpectRows(const ScriptStep& step) {
  const int wanted = NumberFrom(0, step.arguments[1], "count of rows");
  Compare(std::to_string(wanted), std::to_string(GridNamed(step.arguments[0]).MaxRows()));
}

void ScriptDriver::ExpectColour(const ScriptStep& step) {
  const Cell cell = CellNamed(step);
  Compare(NameOf(ColourNamed(step.arguments[3])), NameOf(cell.grid.CellTextColour(cell.row, cell.col)));
}

void ScriptDriver::ExpectBackground(const ScriptStep& step) {
  const Cell cell = CellNamed(step);
  Compare(NameOf(ColourNamed(step.arguments[3])), NameOf(cell.grid.CellBackColour(cell.row, cell.col)));
}

void ScriptDriver::ExpectBold(const ScriptStep& step) {
  const Cell cell = CellNamed(step);
  Compare("bold", cell.grid.Bold(cell.row, cell.col) ? "bold" : "not bold");
}

void ScriptDriver::ExpectLocked(const ScriptStep& step) {
  const Cell cell = CellNamed(step);
  Compare("locked", cell.grid.Locked(cell.row, cell.col) ? "locked" : "unlocked");
}

void ScriptDriver::ExpectUnlocked(const ScriptStep& step) {
  const Cell cell = CellNamed(step);
  Compare("unlocked", cell.grid.Locked(cell.row, cell.col) ? "locked" : "unlocked");
}

void ScriptDriver::ExpectWidth(const ScriptStep& step) {
  const Grid& grid = GridNamed(step.arguments[0]);
  const int col = ColumnNamed(grid, step.arguments[1]);
  const int wanted = NumberFrom(0, step.arguments[2], "width");
  Compare(std::to_string(wanted), std::to_string(grid.ColumnHidden(col) ? 0 : grid.ColumnWidth(col)));
}

}  // namespace luming
