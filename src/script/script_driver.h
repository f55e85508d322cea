#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "screen/grid.h"
#include "script/script_host.h"
#include "script/script_parser.h"

namespace luming {

class HeadlessDesktop;
class MainFrame;

/// Runs an operator script (docs/scripts.md) against the program on any desktop, step by step. A step that opens a box
/// or a modal form does not return before that is closed: the desktop calls Step again from within, until then.
class ScriptDriver {
 public:
  /// @param out what `show` prints
  /// @param errors expectations that failed and what stopped the script, one line each: "FILE:LINE: ..."
  ScriptDriver(DesktopProbe& probe, ScriptHost& host, std::ostream& out, std::ostream& errors);

  /// Reads the script. One that cannot be read or understood is reported and leaves nothing to run.
  void ReadFile(const std::filesystem::path& file);
  void ReadText(std::string_view text, std::string name);

  /// Runs the next step. False when none is left or the script was stopped. Throws nothing but what the desktop's own
  /// waiting calls throw to unwind.
  bool Step();
  /// The program has let events happen in the middle of its work: runs the steps that wait for this time.
  void Yielded();
  /// Reports what ended the script from outside, such as a failure in a handler that no step called.
  void Stop(const std::string& what);

  /// All steps of the language.
  static const std::vector<StepSyntax>& Syntaxes();

  /// 0 when every expectation held, 1 when one failed, 2 when the script was stopped.
  int ExitCode() const { return stopped_ ? 2 : failed_ > 0 ? 1 : 0; }

 private:
  struct StepKind;
  enum class Duty { kAct, kAnswer, kLook };

  static const std::vector<StepKind>& Kinds();
  bool Perform(const ScriptStep& step);
  void Run(const ScriptStep& step);
  void Finish();
  void Report(int line, const std::string& what);
  bool IsAsked() const;  ///< a box, a file dialog or a pop-up waits
  void RefuseWhileAsked() const;

  // What the arguments name.
  Forms& OpenForms() const;
  Form& CurrentForm() const;
  Form& FormForActing() const;
  bool IsBehindModal(const Form& form) const;
  void DemandInFront(const Form& form) const;
  Form& ShownForm(const std::string& name) const;
  MainFrame& MainWindow() const;
  Control& ControlForActing(const std::string& name) const;
  Grid& GridNamed(const std::string& name) const;
  Grid& GridForActing(const std::string& name) const;
  template <class T>
  T& ActingAs(const std::string& name, std::string_view kind) const;

  // Steps that set the stage.
  void Home(const ScriptStep& step);
  void SetClock(const ScriptStep& step);
  void RunSql(const ScriptStep& step);
  void AddressForm(const ScriptStep& step);
  void WriteSetting(const ScriptStep& step);
  void Meanwhile(const ScriptStep& step);

  // Steps that act.
  void Start(const ScriptStep& step);
  void Command(const ScriptStep& step);
  void Type(const ScriptStep& step);
  void Put(const ScriptStep& step);
  void Choose(const ScriptStep& step);
  void Tick(const ScriptStep& step);
  void Focus(const ScriptStep& step);
  void Key(const ScriptStep& step);
  void Click(const ScriptStep& step);
  void Tool(const ScriptStep& step);
  void ClickRow(const ScriptStep& step);
  void OpenRow(const ScriptStep& step);
  void EnterRow(const ScriptStep& step);
  void RightClickRow(const ScriptStep& step);
  void RightClickTab(const ScriptStep& step);
  void EditCell(const ScriptStep& step);
  void ClickNode(const ScriptStep& step);
  void CloseWindow(const ScriptStep& step);

  // Steps that answer.
  void AnswerBox(const ScriptStep& step);
  void AnswerFile(const ScriptStep& step);
  void AnswerPopUp(const ScriptStep& step);

  // Steps that compare.
  void Compare(std::string_view wanted, std::string_view found);
  void ExpectValue(const ScriptStep& step);
  void ExpectRows(const ScriptStep& step);
  void ExpectEnabled(const ScriptStep& step);
  void ExpectDisabled(const ScriptStep& step);
  void ExpectVisible(const ScriptStep& step);
  void ExpectHidden(const ScriptStep& step);
  void ExpectFocus(const ScriptStep& step);
  struct Cell;
  Cell CellNamed(const ScriptStep& step) const;
  void ExpectColour(const ScriptStep& step);
  void ExpectBackground(const ScriptStep& step);
  void ExpectBold(const ScriptStep& step);
  void ExpectLocked(const ScriptStep& step);
  void ExpectUnlocked(const ScriptStep& step);
  void ExpectWidth(const ScriptStep& step);
  void ExpectBox(const ScriptStep& step);
  void ExpectNoBox(const ScriptStep& step);
  void ExpectForm(const ScriptStep& step);
  void ExpectClosed(const ScriptStep& step);
  void ExpectPanel(const ScriptStep& step);
  void ExpectCommand(const ScriptStep& step);
  void ExpectSql(const ScriptStep& step);
  void ExpectNoSql(const ScriptStep& step);
  void ExpectVoice(const ScriptStep& step);
  void ExpectNoVoice(const ScriptStep& step);
  void ExpectSetting(const ScriptStep& step);
  void ExpectPages(const ScriptStep& step);
  void ExpectQuery(const ScriptStep& step);

  // Steps that print.
  void Show(const ScriptStep& step);
  void ShowForm(const ScriptStep& step);
  void ShowForms(const ScriptStep& step);
  void ShowBox(const ScriptStep& step);
  void ShowSql(const ScriptStep& step);
  void Shot(const ScriptStep& step);
  void Pages(const ScriptStep& step);

  DesktopProbe& probe_;
  ScriptHost& host_;
  std::ostream& out_;
  std::ostream& errors_;
  std::string name_;
  std::vector<ScriptStep> steps_;
  std::size_t next_ = 0;
  struct WaitingStep {
    int yields;  ///< still to come
    ScriptStep step;
  };
  std::vector<WaitingStep> waiting_;
  int line_ = 0;  ///< of the step that began last
  int failed_ = 0;
  bool stopped_ = false;
  std::string addressed_;    ///< name given by `form`; empty for none
  unsigned long above_ = 0;  ///< serial of the form on top when it was given: it holds while that one is on top
};

/// Runs all steps with nothing drawn; the desktop's pump is the script itself. Returns the exit code.
int RunHeadless(ScriptDriver& driver, HeadlessDesktop& desktop);

}  // namespace luming
