#include <fstream>
#include <ostream>

#include "screen/forms.h"
#include "script/script_driver.h"
#include "script/script_names.h"
#include "util/text.h"

namespace luming {
namespace {

/// One cell of a printed table: what would break the table is escaped.
std::string Flat(std::string_view text) {
  return Replace(Replace(WithPlainLineEnds(text), "\n", "\\n"), "\t", "\\t");
}

std::string StateOf(const Control& control) {
  std::string state = control.Enabled() ? "enabled" : "disabled";
  if (!IsSeen(control)) state += " hidden";
  if (control.ReadOnly()) state += " read-only";
  if (control.HasFocus()) state += " focus";
  return state;
}

void PrintGrid(std::ostream& out, const Grid& grid) {
  for (int row = 1 - grid.HeaderRows(); row <= grid.MaxRows(); ++row) {
    for (int col = 1; col <= grid.MaxCols(); ++col) {
      const std::string text = Flat(grid.Text(row, col));
      out << (col > 1 ? "\t" : "") << (row <= 0 && grid.ColumnHidden(col) ? "[" + text + "]" : text);
    }
    out << '\n';
  }
}

std::string ValueInForm(const Control& control) {
  if (const auto* grid = dynamic_cast<const Grid*>(&control)) return std::to_string(grid->MaxRows()) + " rows";
  return Flat(ValueOf(control));
}

}  // namespace

void ScriptDriver::Show(const ScriptStep& step) {
  const Control& control = ControlNamed(CurrentForm(), step.arguments[0]);
  if (const auto* grid = dynamic_cast<const Grid*>(&control)) {
    PrintGrid(out_, *grid);
  } else {
    out_ << WithPlainLineEnds(ValueOf(control)) << '\n';
  }
  out_.flush();
}

void ScriptDriver::ShowForm(const ScriptStep&) {
  const Form& form = CurrentForm();
  out_ << form.Name() << '\t' << form.Caption() << '\n';
  for (const Control* control : form.Controls()) {
    out_ << control->Name() << '\t' << Flat(control->Caption()) << '\t' << ValueInForm(*control) << '\t'
         << StateOf(*control) << '\n';
  }
  out_.flush();
}

void ScriptDriver::ShowForms(const ScriptStep&) {
  const std::vector<Form*>& shown = OpenForms().Shown();
  for (auto form = shown.rbegin(); form != shown.rend(); ++form) {
    out_ << (*form)->Name() << '\t' << (*form)->Caption() << ((*form)->IsModal() ? "\tmodal" : "") << '\n';
  }
  out_.flush();
}

void ScriptDriver::ShowBox(const ScriptStep&) {
  if (const Box* box = probe_.OpenBox()) {
    out_ << box->title << '\t' << box->style << '\n' << WithPlainLineEnds(box->text) << std::endl;
  } else {
    out_ << "no box" << std::endl;
  }
}

void ScriptDriver::ShowSql(const ScriptStep&) {
  for (const TracedStatement& statement : host_.Statements()) {
    out_ << statement.sql << '\t' << statement.rows << " rows";
    if (!statement.failure.empty()) out_ << '\t' << statement.failure;
    out_ << '\n';
  }
  out_.flush();
}

void ScriptDriver::Shot(const ScriptStep& step) {
  probe_.Shot(step.arguments[0]);
}

void ScriptDriver::Pages(const ScriptStep& step) {
  const std::string pages = host_.LastPages();
  if (pages.empty()) throw ScriptProblem{0, "nothing was printed yet"};
  std::ofstream file(step.arguments[0], std::ios::binary);
  file << pages;
  if (!file.flush()) throw ScriptProblem{0, "cannot write " + step.arguments[0]};
}

}  // namespace luming
