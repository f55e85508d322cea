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
  Compare(parts[2], grid->Text(NumberFrom(1 - grid->HeaderRows(), parts[0], "row"), ColumnNamed(*grid, parts[1])));
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
  const bool title_alone = step.arguments.size() == 1;
  const auto told = [&](const std::string& title, const std::string& text) {
    return title_alone ? title : title + ": " + text;
  };
  const Box* box = probe_.OpenBox();
  Compare(told(step.arguments[0], title_alone ? "" : step.arguments[1]), box ? told(box->title, box->text) : "no box");
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

}  // namespace luming
