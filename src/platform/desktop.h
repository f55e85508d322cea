#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace luming {

class Form;

/// Values of a message box's style: one icon plus one set of buttons (plus kSecondIsDefault).
namespace box {
inline constexpr int kStop = 16;
inline constexpr int kQuestion = 32;
inline constexpr int kWarning = 48;
inline constexpr int kInformation = 64;
inline constexpr int kOkCancel = 1;
inline constexpr int kYesNoCancel = 3;
inline constexpr int kYesNo = 4;
inline constexpr int kSecondIsDefault = 256;
}  // namespace box

enum class Answer { kOk, kCancel, kYes, kNo };

/// The buttons of a box of that style, in order.
std::vector<Answer> AnswersOf(int style);
/// The button that Enter presses at once.
Answer DefaultAnswer(int style);

struct Box {
  std::string text;  ///< line ends are "\r\n" or "\n"
  int style = 0;     ///< see namespace box
  std::string title;
};

struct FileRequest {
  bool save = false;
  std::string title = {};
  std::string filter = {};  ///< "*.xls" or "description|pattern|…"
  std::filesystem::path directory = {};
  std::string name = {};  ///< proposed
  std::string extension = {};
};

/// An entry of a menu, a pop-up or a tool bar. Captions carry their mnemonic as "(&S)".
struct MenuEntry {
  std::string caption;
  int id = 0;
  std::vector<MenuEntry> children = {};  ///< not empty: a pop-up
  bool starts_group = false;
};

enum class Arrangement { kCascade = 0, kTileHorizontally = 1, kTileVertically = 2, kIcons = 3 };

/// The operator's desktop: whatever asks, tells or shows goes through it. Calls that wait (boxes, file dialogs, modal
/// forms) keep handling input for what they show until it is answered or closed.
class Desktop {
 public:
  virtual ~Desktop() = default;

  virtual Answer MsgBox(const Box& box) = 0;
  virtual std::optional<std::string> ChooseFile(const FileRequest& request) = 0;  ///< nothing when cancelled
  /// Shows a pop-up at the mouse and returns the chosen id; nothing when it was dismissed.
  virtual std::optional<int> PopUp(const std::vector<MenuEntry>& entries) = 0;

  /// Shows the form or brings it to the front. How it is framed follows from Form::Kind.
  virtual void Show(Form& form) = 0;
  virtual void Hide(Form& form) = 0;
  /// Returns when the form is no longer open. Throws ProcessEnded if the process was ended meanwhile.
  virtual void RunModal(Form& form) = 0;
  /// The form is going away; the desktop forgets it at once.
  virtual void Close(Form& form) = 0;
  virtual void Maximise(Form& form) = 0;
  virtual void ArrangeChildren(Arrangement arrangement) = 0;

  /// Lets pending input and painting happen; what it triggers may close forms.
  virtual void DoEvents() = 0;
  /// How far long work has come: shown once it takes a while, gone when all is done. What the operator does meanwhile
  /// is not taken. Nothing happens where nothing is drawn.
  virtual void ShowProgress(const std::string& what, int done, int total) {
    static_cast<void>(what), static_cast<void>(done), static_cast<void>(total);
  }
  /// Attaches a skin file to all windows; a file that is none is ignored.
  virtual void AttachSkin(const std::filesystem::path& file) = 0;
  virtual void SetTheme(int theme) = 0;  ///< 0 Office XP, 1 Default, 2 Office 2003, 3 Native XP
  /// No window is left and none will be shown: leave the event loop.
  virtual void EndProcess() = 0;
};

/// Thrown by ExitApp so that no code of a handler runs on after the end of the process. Not a Failure: no trap takes
/// it.
struct ProcessEnded {};

/// What an operator script sees and answers beside the forms themselves; both desktops offer it.
class DesktopProbe {
 public:
  virtual ~DesktopProbe() = default;
  virtual const Box* OpenBox() const = 0;  ///< the box now waiting, or null
  virtual void AnswerBox(Answer answer) = 0;
  virtual const FileRequest* OpenFileDialog() const = 0;
  virtual void AnswerFileDialog(std::optional<std::string> path) = 0;
  virtual const std::vector<MenuEntry>* OpenPopUp() const { return nullptr; }
  virtual void AnswerPopUp(std::optional<int>) {}
  /// A picture of the desktop as PNG; false where there is nothing drawn.
  virtual bool Shot(const std::filesystem::path& file) = 0;
};

}  // namespace luming
