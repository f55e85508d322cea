#include "script/script_driver.h"

#include <algorithm>
#include <ostream>

#include "screen/forms.h"
#include "screen/main_frame.h"
#include "script/headless_desktop.h"
#include "script/script_names.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

struct ScriptDriver::StepKind {
  StepSyntax syntax;
  Duty duty;
  void (ScriptDriver::*run)(const ScriptStep&);
};

const std::vector<ScriptDriver::StepKind>& ScriptDriver::Kinds() {
  using D = ScriptDriver;
  static const std::vector<StepKind> kinds = {
      {{"home", 0, Tail::kText, "DIR"}, Duty::kLook, &D::Home},
      {{"clock", 0, Tail::kText, "YYYY-MM-DD [HH:MM:SS]"}, Duty::kLook, &D::SetClock},
      {{"sql", 0, Tail::kText, "TEXT"}, Duty::kLook, &D::RunSql},
      {{"form", 0, Tail::kText, "NAME"}, Duty::kLook, &D::AddressForm},
      {{"ini", 2, Tail::kText, "SECTION KEY VALUE"}, Duty::kLook, &D::WriteSetting},
      {{"meanwhile", 1, Tail::kText, "N STEP"}, Duty::kLook, &D::Meanwhile},

      {{"start", 0, Tail::kMaybeText, "[TEXT]"}, Duty::kAct, &D::Start},
      {{"command", 1, Tail::kNone, "ID"}, Duty::kAct, &D::Command},
      {{"type", 1, Tail::kText, "CONTROL TEXT"}, Duty::kAct, &D::Type},
      {{"put", 1, Tail::kText, "CONTROL TEXT"}, Duty::kAct, &D::Put},
      {{"choose", 1, Tail::kText, "CONTROL TEXT"}, Duty::kAct, &D::Choose},
      {{"tick", 2, Tail::kNone, "CONTROL on|off"}, Duty::kAct, &D::Tick},
      {{"focus", 0, Tail::kText, "CONTROL"}, Duty::kAct, &D::Focus},
      {{"key", 1, Tail::kNone, "NAME"}, Duty::kAct, &D::Key},
      {{"click", 0, Tail::kText, "CONTROL"}, Duty::kAct, &D::Click},
      {{"tool", 0, Tail::kText, "CAPTION"}, Duty::kAct, &D::Tool},
      {{"row", 2, Tail::kNone, "GRID N"}, Duty::kAct, &D::ClickRow},
      {{"open", 2, Tail::kNone, "GRID N"}, Duty::kAct, &D::OpenRow},
      {{"enter", 2, Tail::kNone, "GRID N"}, Duty::kAct, &D::EnterRow},
      {{"right", 2, Tail::kNone, "GRID N"}, Duty::kAct, &D::RightClickRow},
      {{"right tab", 1, Tail::kNone, "FORM"}, Duty::kAct, &D::RightClickTab},
      {{"cell", 3, Tail::kText, "GRID ROW COL TEXT"}, Duty::kAct, &D::EditCell},
      {{"node", 1, Tail::kText, "TREE TEXT"}, Duty::kAct, &D::ClickNode},
      {{"close", 0, Tail::kNone, ""}, Duty::kAct, &D::CloseWindow},

      {{"answer", 1, Tail::kNone, "yes|no|ok|cancel|default"}, Duty::kAnswer, &D::AnswerBox},
      {{"file", 0, Tail::kText, "PATH|cancel"}, Duty::kAnswer, &D::AnswerFile},
      {{"popup", 0, Tail::kText, "CAPTION|cancel"}, Duty::kAnswer, &D::AnswerPopUp},

      {{"expect", 1, Tail::kText, "CONTROL TEXT, or GRID ROW COL TEXT"}, Duty::kLook, &D::ExpectValue},
      {{"expect rows", 2, Tail::kNone, "GRID N"}, Duty::kLook, &D::ExpectRows},
      {{"expect enabled", 0, Tail::kText, "CONTROL"}, Duty::kLook, &D::ExpectEnabled},
      {{"expect disabled", 0, Tail::kText, "CONTROL"}, Duty::kLook, &D::ExpectDisabled},
      {{"expect visible", 0, Tail::kText, "CONTROL"}, Duty::kLook, &D::ExpectVisible},
      {{"expect hidden", 0, Tail::kText, "CONTROL"}, Duty::kLook, &D::ExpectHidden},
      {{"expect focus", 0, Tail::kText, "CONTROL"}, Duty::kLook, &D::ExpectFocus},
      {{"expect colour", 4, Tail::kNone, "GRID ROW COL NAME"}, Duty::kLook, &D::ExpectColour},
      {{"expect background", 4, Tail::kNone, "GRID ROW COL NAME"}, Duty::kLook, &D::ExpectBackground},
      {{"expect bold", 3, Tail::kNone, "GRID ROW COL"}, Duty::kLook, &D::ExpectBold},
      {{"expect locked", 3, Tail::kNone, "GRID ROW COL"}, Duty::kLook, &D::ExpectLocked},
      {{"expect unlocked", 3, Tail::kNone, "GRID ROW COL"}, Duty::kLook, &D::ExpectUnlocked},
      {{"expect width", 3, Tail::kNone, "GRID COL N"}, Duty::kLook, &D::ExpectWidth},
      {{"expect box", 1, Tail::kMaybeText, "TITLE [TEXT]"}, Duty::kLook, &D::ExpectBox},
      {{"expect no box", 0, Tail::kNone, ""}, Duty::kLook, &D::ExpectNoBox},
      {{"expect form", 1, Tail::kMaybeText, "NAME [CAPTION]"}, Duty::kLook, &D::ExpectForm},
      {{"expect closed", 1, Tail::kNone, "NAME"}, Duty::kLook, &D::ExpectClosed},
      {{"expect panel", 1, Tail::kText, "N TEXT"}, Duty::kLook, &D::ExpectPanel},
      {{"expect command", 2, Tail::kNone, "ID enabled|disabled|checked"}, Duty::kLook, &D::ExpectCommand},
      {{"expect sql", 0, Tail::kText, "TEXT"}, Duty::kLook, &D::ExpectSql},
      {{"expect no sql", 0, Tail::kText, "TEXT"}, Duty::kLook, &D::ExpectNoSql},
      {{"expect voice", 0, Tail::kText, "TEXT"}, Duty::kLook, &D::ExpectVoice},
      {{"expect no voice", 0, Tail::kNone, ""}, Duty::kLook, &D::ExpectNoVoice},
      {{"expect ini", 2, Tail::kText, "SECTION KEY TEXT"}, Duty::kLook, &D::ExpectSetting},
      {{"expect pages", 0, Tail::kText, "TEXT"}, Duty::kLook, &D::ExpectPages},
      {{"expect query", 0, Tail::kArrowText, "SQL => TEXT"}, Duty::kLook, &D::ExpectQuery},

      {{"show", 0, Tail::kText, "CONTROL"}, Duty::kLook, &D::Show},
      {{"show form", 0, Tail::kNone, ""}, Duty::kLook, &D::ShowForm},
      {{"show forms", 0, Tail::kNone, ""}, Duty::kLook, &D::ShowForms},
      {{"show box", 0, Tail::kNone, ""}, Duty::kLook, &D::ShowBox},
      {{"show sql", 0, Tail::kNone, ""}, Duty::kLook, &D::ShowSql},
      {{"shot", 0, Tail::kText, "FILE.png"}, Duty::kLook, &D::Shot},
      {{"pages", 0, Tail::kText, "FILE"}, Duty::kLook, &D::Pages},
  };
  return kinds;
}

ScriptDriver::ScriptDriver(DesktopProbe& probe, ScriptHost& host, std::ostream& out, std::ostream& errors)
    : probe_(probe), host_(host), out_(out), errors_(errors) {}

const std::vector<StepSyntax>& ScriptDriver::Syntaxes() {
  static const std::vector<StepSyntax> syntaxes = [] {
    std::vector<StepSyntax> all;
    for (const StepKind& kind : Kinds()) all.push_back(kind.syntax);
    return all;
  }();
  return syntaxes;
}

void ScriptDriver::ReadFile(const std::filesystem::path& file) {
  name_ = file.string();
  try {
    const std::optional<std::string> text = ReadWholeFile(file);
    if (text) return ReadText(*text, file.string());
    Stop("there is no such file");
  } catch (const Failure& failure) {
    Stop(failure.description());
  }
}

void ScriptDriver::ReadText(std::string_view text, std::string name) {
  name_ = std::move(name);
  try {
    steps_ = ParseScript(text, Syntaxes());
  } catch (const ScriptProblem& problem) {
    line_ = problem.line;
    Stop(problem.what);
  }
}

bool ScriptDriver::Step() {
  if (stopped_) return false;
  if (next_ == steps_.size()) {
    Finish();
    return false;
  }
  return Perform(steps_[next_++]);
}

bool ScriptDriver::Perform(const ScriptStep& step) {
  const int line = line_ = step.line;
  try {
    Run(step);
  } catch (const ProcessEnded&) {
    // The program is gone as it wanted; the script may still look at what it left.
  } catch (const ScriptProblem& problem) {
    line_ = line;
    Stop(problem.what);
  } catch (const Failure& failure) {
    line_ = line;
    Stop("a failure that nobody trapped: " + std::to_string(failure.number()) + " " + failure.description() + " (" +
         failure.source() + ")");
  } catch (const std::exception& fault) {
    line_ = line;
    Stop(std::string("a fault of the program: ") + fault.what());
  }
  return !stopped_;
}

void ScriptDriver::Run(const ScriptStep& step) {
  const StepKind& kind = Kinds()[step.kind];
  if (kind.duty == Duty::kAct) RefuseWhileAsked();
  if (kind.duty != Duty::kLook) host_.ForgetSent();
  (this->*kind.run)(step);
}

void ScriptDriver::Stop(const std::string& what) {
  if (stopped_) return;
  stopped_ = true;
  Report(line_, what);
}

void ScriptDriver::Meanwhile(const ScriptStep& step) {
  const int yields = NumberFrom(1, step.arguments[0], "number of times");
  std::vector<ScriptStep> inner = ParseScript(step.raw_tail, Syntaxes());
  if (inner.size() != 1) throw ScriptProblem{0, "there is no step to be done meanwhile"};
  inner.front().line = step.line;
  waiting_.push_back({yields, std::move(inner.front())});
}

void ScriptDriver::Yielded() {
  std::vector<ScriptStep> due;
  for (WaitingStep& waiting : waiting_) {
    if (--waiting.yields == 0) due.push_back(waiting.step);
  }
  std::erase_if(waiting_, [](const WaitingStep& waiting) { return waiting.yields == 0; });
  for (const ScriptStep& step : due) {
    if (!stopped_) Perform(step);
  }
}

void ScriptDriver::Finish() {
  try {
    RefuseWhileAsked();
    if (waiting_.empty()) return;
    line_ = waiting_.front().step.line;
    Stop("the program was never at work so long");
  } catch (const ScriptProblem& problem) {
    Stop(problem.what);
  }
}

void ScriptDriver::Report(int line, const std::string& what) {
  errors_ << name_;
  if (line > 0) errors_ << ':' << line;
  errors_ << ": " << what << std::endl;
}

bool ScriptDriver::IsAsked() const {
  return probe_.OpenBox() || probe_.OpenFileDialog() || probe_.OpenPopUp();
}

void ScriptDriver::RefuseWhileAsked() const {
  if (const Box* box = probe_.OpenBox()) {
    throw ScriptProblem{0, "the box \"" + box->title + "\" is left unanswered: " + WithPlainLineEnds(box->text)};
  }
  if (const FileRequest* dialog = probe_.OpenFileDialog()) {
    throw ScriptProblem{0, "the file dialog \"" + dialog->title + "\" is left unanswered"};
  }
  if (probe_.OpenPopUp()) throw ScriptProblem{0, "the pop-up is left unanswered"};
}

Forms& ScriptDriver::OpenForms() const {
  Forms* forms = host_.OpenForms();
  if (!forms) throw ScriptProblem{0, "the program is not running"};
  return *forms;
}

Form& ScriptDriver::ShownForm(const std::string& name) const {
  Form* form = OpenForms().Find(name);
  if (!form || !form->IsShown()) throw ScriptProblem{0, "form " + name + " is not open"};
  return *form;
}

Form& ScriptDriver::CurrentForm() const {
  Form* top = OpenForms().Top();
  if (!top) throw ScriptProblem{0, "no form is open"};
  return !addressed_.empty() && top->Serial() == above_ ? ShownForm(addressed_) : *top;
}

bool ScriptDriver::IsBehindModal(const Form& form) const {
  const std::vector<Form*>& shown = OpenForms().Shown();
  const auto own = std::find(shown.begin(), shown.end(), &form);
  return std::any_of(own, shown.end(), [&](const Form* each) { return each != &form && each->IsModal(); });
}

void ScriptDriver::DemandInFront(const Form& form) const {
  if (IsBehindModal(form)) throw ScriptProblem{0, "form " + form.Name() + " waits behind a modal form"};
}

Form& ScriptDriver::FormForActing() const {
  Form& form = CurrentForm();
  DemandInFront(form);
  return form;
}

MainFrame& ScriptDriver::MainWindow() const {
  for (Form* form : OpenForms().All()) {
    auto* frame = dynamic_cast<MainFrame*>(form);
    if (frame && frame->IsShown()) return *frame;
  }
  throw ScriptProblem{0, "the main window is not open"};
}

Control& ScriptDriver::ControlForActing(const std::string& name) const {
  Control& control = ControlNamed(FormForActing(), name);
  if (!IsSeen(control)) throw ScriptProblem{0, "\"" + name + "\" is hidden"};
  if (!control.Enabled()) throw ScriptProblem{0, "\"" + name + "\" is disabled"};
  return control;
}

Grid& ScriptDriver::GridNamed(const std::string& name) const {
  if (auto* grid = dynamic_cast<Grid*>(&ControlNamed(CurrentForm(), name))) return *grid;
  throw ScriptProblem{0, "\"" + name + "\" is no grid"};
}

int RunHeadless(ScriptDriver& driver, HeadlessDesktop& desktop) {
  desktop.pump = [&driver] {
    if (!driver.Step()) throw HeadlessStuck{};
  };
  desktop.yielded = [&driver] { driver.Yielded(); };
  try {
    while (driver.Step()) {
    }
  } catch (const HeadlessStuck&) {
    // The script ended or was stopped while the program still waited in a modal form.
  }
  desktop.pump = nullptr;
  desktop.yielded = nullptr;
  return driver.ExitCode();
}

}  // namespace luming
