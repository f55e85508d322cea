#include "script/script_names.h"

#include <algorithm>
#include <charconv>

#include "screen/caption.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/grid.h"
#include "screen/option_button.h"
#include "screen/picture.h"
#include "screen/text_box.h"
#include "screen/tree.h"
#include "script/script_parser.h"
#include "util/text.h"

namespace luming {
namespace {

bool IsLabel(const Control* control) {
  return control->Kind() == ControlKind::kLabel;
}

/// Keeps those that `better` tells, if there are any.
template <class Better>
void Prefer(std::vector<Control*>& controls, Better better) {
  std::vector<Control*> kept;
  std::copy_if(controls.begin(), controls.end(), std::back_inserter(kept), better);
  if (!kept.empty()) controls = std::move(kept);
}

}  // namespace

Control& ControlNamed(const Form& form, const std::string& name) {
  if (Control* control = form.Find(name)) return *control;
  std::vector<Control*> found;
  const std::string caption = PlainCaption(name);
  for (Control* control : form.Controls()) {
    if (!caption.empty() && PlainCaption(control->Caption()) == caption) found.push_back(control);
  }
  if (found.empty()) throw ScriptProblem{0, "form " + form.Name() + " has no \"" + name + "\""};
  Prefer(found, [](const Control* control) { return !IsLabel(control); });
  if (found.size() > 1) Prefer(found, [](const Control* control) { return IsSeen(*control); });
  if (found.size() > 1) throw ScriptProblem{0, "form " + form.Name() + " has several \"" + name + "\"; name the field"};
  return *found.front();
}

bool IsSeen(const Control& control) {
  return control.Visible() && IsDrawn(control.Owner().Arrange(), control);
}

std::string ValueOf(const Control& control) {
  if (const auto* box = dynamic_cast<const TextBox*>(&control)) return box->Text();
  if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) return combo->Text();
  if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return check->Checked() ? "on" : "off";
  if (const auto* option = dynamic_cast<const OptionButton*>(&control)) return option->Chosen() ? "on" : "off";
  if (const auto* date = dynamic_cast<const DateBox*>(&control)) return date->Text();
  if (const auto* picture = dynamic_cast<const Picture*>(&control)) return picture->File().filename().string();
  if (const auto* tree = dynamic_cast<const Tree*>(&control)) {
    return tree->Selected() < 0 ? std::string() : tree->Nodes()[static_cast<std::size_t>(tree->Selected())].text;
  }
  return control.Caption();
}

int NumberFrom(int first, const std::string& text, std::string_view what) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc{} || stop != end || number < first) {
    throw ScriptProblem{0, "\"" + text + "\" is no " + std::string(what)};
  }
  return number;
}

int RowFrom(int first, const Grid& grid, const std::string& text) {
  const int row = NumberFrom(first, text, "row");
  if (row > grid.MaxRows()) {
    throw ScriptProblem{0, grid.Name() + " has no row " + text + ", only " + std::to_string(grid.MaxRows())};
  }
  return row;
}

int ColumnNamed(const Grid& grid, const std::string& text) {
  for (int col = 1; col <= grid.MaxCols(); ++col) {
    if (grid.Text(0, col) == text) return col;
  }
  const int col = NumberFrom(1, text, "column of " + grid.Name());
  if (col > grid.MaxCols()) throw ScriptProblem{0, grid.Name() + " has no column " + text};
  return col;
}

std::string WithPlainLineEnds(std::string_view text) {
  return Replace(text, "\r\n", "\n");
}

}  // namespace luming
