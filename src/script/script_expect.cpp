#include <algorithm>
#include <fstream>
#include <ostream>

#include "screen/forms.h"
#include "screen/grid.h"
#include "screen/main_frame.h"
#include "script/script_driver.h"
#include "script/script_names.h"
#include "util/text.h"

namespace luming {
namespace {

std::string InQuotes(std::string_view text) {
  std::string shown = Replace(WithPlainLineEnds(text), "\\", "\\\\");
  shown = Replace(Replace(Replace(shown, "\"", "\\\""), "\n", "\\n"), "\t", "\\t");
  return "\"" + shown + "\"";
}

/// One cell of a printed table: what would break the table is escaped.
std::string Flat(std::string_view text) {
  return Replace(Replace(WithPlainLineEnds(text), "\n", "\\n"), "\t", "\\t");
}

std::string RowsAsText(Recordset rows) {
  std::string text;
  if (!rows.IsOpen()) return text;
  for (bool first_row = true; !rows.Eof(); rows.MoveNext(), first_row = false) {
    if (!first_row) text += '\n';
    for (std::size_t col = 0; col < rows.ColumnCount(); ++col) {
      const Value& value = std::as_const(rows).Field(col);
      if (col > 0) text += '\t';
      text += value.IsNull() ? "NULL" : value.Text();
    }
  }
  return text;
}

std::string AllStatements(const std::vector<TracedStatement>& sent) {
  std::vector<std::string> texts;
  for (const TracedStatement& statement : sent) texts.push_back(statement.sql);
  return Join(texts, "\n");
}

bool WasSent(const std::vector<TracedStatement>& sent, const std::string& text) {
  return std::any_of(sent.begin(), sent.end(), [&](const TracedStatement& statement) {
    return WithPlainLineEnds(statement.sql).find(text) != std::string::npos;
  });
}

std::string StateOf(const Control& control) {
  std::string state = control.Enabled() ? "enabled" : "disabled";
  if (!IsSeen(control)) state += " hidden";
  if (control.ReadOnly()) state += " read-only";
  if (control.HasFocus()) state += " focus";
  return state;
}

void PrintGrid(std::ostream& out, const Grid& grid) {
  for (int row = 0; row <= grid.MaxRows(); ++row) {
    for (int col = 1; col <= grid.MaxCols(); ++col) {
      const std::string text = Flat(grid.Text(row, col));
      out << (col > 1 ? "\t" : "") << (row == 0 && grid.ColumnHidden(col) ? "[" + text + "]" : text);
    }
    out << '\n';
  }
}

std::string ValueInForm(const Control& control) {
  if (const auto* grid = dynamic_cast<const Grid*>(&control)) return std::to_string(grid->MaxRows()) + " rows";
  return Flat(ValueOf(control));
}

}  // namespace

void ScriptDriver::Compare(std::string_view wanted, std::string_view found) {
  if (WithPlainLineEnds(wanted) == WithPlainLineEnds(found)) return;
  ++failed_;
  Report(line_, "wanted " + InQuotes(wanted) + ", found " + InQuotes(found));
}

void ScriptDriver::ExpectValue(const ScriptStep& step) {
  const Control& control = ControlNamed(CurrentForm(), step.arguments[0]);
  const auto* grid = dynamic_cast<const Grid*>(&control);
  if (!grid) return Compare(step.arguments[1], ValueOf(control));
  const std::vector<std::string> parts = SplitTail(step.raw_tail, 2);
  Compare(parts[2], grid->Text(NumberFrom(0, parts[0], "row"), ColumnNamed(*grid, parts[1])));
}

void ScriptDriver::ExpectRows(const ScriptStep& step) {
  const int wanted = NumberFrom(0, step.arguments[1], "count of rows");
  Compare(std::to_string(wanted), std::to_string(GridNamed(step.arguments[0]).MaxRows()));
}

void ScriptDriver::ExpectEnabled(const ScriptStep& step) {
  Compare("enabled", ControlNamed(CurrentForm(), step.arguments[0]).Enabled() ? "enabled" : "disabled");
}

void ScriptDriver::ExpectDisabled(const ScriptStep& step) {
  Compare("disabled", ControlNamed(CurrentForm(), step.arguments[0]).Enabled() ? "enabled" : "disabled");
}

void ScriptDriver::ExpectVisible(const ScriptStep& step) {
  Compare("visible", IsSeen(ControlNamed(CurrentForm(), step.arguments[0])) ? "visible" : "hidden");
}

void ScriptDriver::ExpectHidden(const ScriptStep& step) {
  Compare("hidden", IsSeen(ControlNamed(CurrentForm(), step.arguments[0])) ? "visible" : "hidden");
}

void ScriptDriver::ExpectFocus(const ScriptStep& step) {
  const Form& form = CurrentForm();
  const Control* active = form.ActiveControl();
  Compare(ControlNamed(form, step.arguments[0]).Name(), active ? active->Name() : "");
}

void ScriptDriver::ExpectBox(const ScriptStep& step) {
  const Box* box = probe_.OpenBox();
  if (!box) return Compare(step.arguments[0] + ": " + step.arguments[1], "no box");
  Compare(step.arguments[0] + ": " + step.arguments[1], box->title + ": " + box->text);
}

void ScriptDriver::ExpectNoBox(const ScriptStep&) {
  const Box* box = probe_.OpenBox();
  Compare("no box", box ? box->title + ": " + box->text : "no box");
}

void ScriptDriver::ExpectForm(const ScriptStep& step) {
  const Forms* forms = host_.OpenForms();
  const Form* form = forms ? forms->Find(step.arguments[0]) : nullptr;
  const bool open = form && form->IsShown();
  if (!open) return Compare("form " + step.arguments[0] + " open", "it is not");
  if (step.arguments.size() > 1) Compare(step.arguments[1], form->Caption());
}

void ScriptDriver::ExpectClosed(const ScriptStep& step) {
  const Forms* forms = host_.OpenForms();
  const Form* form = forms ? forms->Find(step.arguments[0]) : nullptr;
  if (form && form->IsShown()) Compare("form " + step.arguments[0] + " closed", "it is open");
}

void ScriptDriver::ExpectPanel(const ScriptStep& step) {
  const int number = NumberFrom(1, step.arguments[0], "status panel");
  if (number > MainFrame::kPanelCount) throw ScriptProblem{0, "there is no status panel " + step.arguments[0]};
  Compare(step.arguments[1], MainWindow().StatusPanel(number));
}

void ScriptDriver::ExpectCommand(const ScriptStep& step) {
  const CommandState state = MainWindow().StateOf(NumberFrom(1, step.arguments[0], "command"));
  const std::string& wanted = step.arguments[1];
  if (wanted == "checked") return Compare(wanted, state.checked ? "checked" : "not checked");
  if (wanted != "enabled" && wanted != "disabled") {
    throw ScriptProblem{0, "\"" + wanted + "\" is none of enabled, disabled, checked"};
  }
  Compare(wanted, state.enabled ? "enabled" : "disabled");
}

void ScriptDriver::ExpectSql(const ScriptStep& step) {
  if (!WasSent(host_.Statements(), step.arguments[0])) Compare(step.arguments[0], AllStatements(host_.Statements()));
}

void ScriptDriver::ExpectNoSql(const ScriptStep& step) {
  if (!WasSent(host_.Statements(), step.arguments[0])) return;
  Compare("not " + step.arguments[0], AllStatements(host_.Statements()));
}

void ScriptDriver::ExpectQuery(const ScriptStep& step) {
  Compare(step.arguments[1], RowsAsText(host_.RunBeside(step.arguments[0])));
}

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
