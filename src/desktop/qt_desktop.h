#pragma once

#include <QPointer>
#include <QProgressDialog>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "desktop/model_guard.h"
#include "platform/desktop.h"

namespace luming {

class BoxWindow;
class FormWidget;
class MainFrame;
class MainWindow;

/// The operator's desktop drawn with Qt Widgets. Needs a QApplication.
class QtDesktop : public Desktop, public DesktopProbe {
 public:
  /// @param title in the frame of a dialog that has no caption of its own
  explicit QtDesktop(const std::string& title = {});
  ~QtDesktop() override;

  /// How a failure that nobody's trap took is shown; a plain box unless set.
  void SetFailureHook(std::function<void(const Failure&)> hook) { guard_.SetFailureHook(std::move(hook)); }
  /// Runs `entry` as an event of its own: nothing that it throws comes out.
  void Enter(const std::function<void()>& entry) { guard_.Enter(entry); }
  /// Handles the operator's input until EndProcess.
  void Run() { guard_.Run(); }
  /// Lets a process start after the last one has ended.
  void StartAnew() { guard_.StartAnew(); }
  /// Within DoEvents: a handler goes on as soon as what is pending has been done.
  bool IsCatchingUp() const { return catching_up_; }
  bool HasEnded() const { return guard_.HasEnded(); }
  /// What else happens within DoEvents, behind the operator's input.
  void SetYieldHook(std::function<void()> hook) { yielded_ = std::move(hook); }

  /// Shows a window that is no form beside the screens; a modal screen in front does not block it.
  void ShowBeside(QWidget& window);

  Answer MsgBox(const Box& box) override;
  std::optional<std::string> ChooseFile(const FileRequest& request) override;
  std::optional<int> PopUp(const std::vector<MenuEntry>& entries) override;
  void Show(Form& form) override;
  void Hide(Form& form) override;
  void RunModal(Form& form) override;
  void Close(Form& form) override;
  void Maximise(Form& form) override;
  void ArrangeChildren(Arrangement arrangement) override;
  void DoEvents() override;
  void ShowProgress(const std::string& what, int done, int total) override;
  void AttachSkin(const std::filesystem::path& file) override;
  void SetTheme(int theme) override;
  void EndProcess() override;

  const Box* OpenBox() const override;
  void AnswerBox(Answer answer) override;
  const FileRequest* OpenFileDialog() const override;
  void AnswerFileDialog(std::optional<std::string> path) override;
  const std::vector<MenuEntry>* OpenPopUp() const override;
  void AnswerPopUp(std::optional<int> id) override;
  bool Shot(const std::filesystem::path& file) override;

 private:
  /// What the desktop keeps for a form: one of the widgets, and the loop that waits for it while it is modal.
  struct Window {
    FormWidget* widget = nullptr;
    MainWindow* main = nullptr;
    QEventLoop* waiting = nullptr;
  };
  Window& WindowOf(Form& form);
  FormWidget& WidgetOf(Form& form);
  QWidget* Front() const;
  /// How large a window may be: as the screen, or as the main window where that is larger, without a display.
  QSize RoomFor(const QWidget& widget) const;
  void OpenMain(MainFrame& frame);
  void ShowDialog(FormWidget& widget, bool modal);
  void ShowFloating(FormWidget& widget);
  void ShowCover(FormWidget& widget);
  /// The windows that would stay above a cover, hidden now.
  std::vector<QPointer<QWidget>> HideFloating();
  void Raise(QWidget& window);
  /// Gives the keyboard to the window that a closed one has uncovered; not every window system does.
  void ActivateFront();

  ModelGuard guard_;
  std::unordered_map<Form*, Window> windows_;
  MainWindow* main_ = nullptr;
  std::vector<QPointer<QWidget>> stack_;  ///< windows in order of showing, the last in front
  std::vector<BoxWindow*> boxes_;
  struct FileQuestion {
    FileRequest request;
    std::optional<std::string> answer;
    QEventLoop loop;
  };
  struct PopUpQuestion {
    const std::vector<MenuEntry>* entries = nullptr;
    std::optional<int> answer;
    QEventLoop loop;
  };
  const QString title_;
  QString last_directory_;  ///< of the file chosen last
  FileQuestion* file_question_ = nullptr;
  PopUpQuestion* pop_up_question_ = nullptr;
  QString skin_;
  int theme_ = 1;
  bool catching_up_ = false;
  std::function<void()> yielded_;
  std::unique_ptr<QProgressDialog> progress_;
};

}  // namespace luming
