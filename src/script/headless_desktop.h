#pragma once

#include <functional>

#include "platform/desktop.h"

namespace luming {

/// Thrown out of a waiting call when nobody is left to answer it: a box nobody expects, the end of a script inside a
/// modal form. Unwinds every handler that waits.
struct HeadlessStuck {};

/// A desktop with nothing drawn. Calls that wait run `pump` until what they show is answered or closed.
class HeadlessDesktop : public Desktop, public DesktopProbe {
 public:
  /// Does one thing an operator would do. Throws HeadlessStuck when it has nothing left to do; so does an empty one.
  std::function<void()> pump;
  /// What happens whenever the program lets events happen in the middle of its work; may stay empty.
  std::function<void()> yielded;

  bool Ended() const { return ended_; }  ///< EndProcess was called and nothing was shown since

  Answer MsgBox(const Box& box) override;
  std::optional<std::string> ChooseFile(const FileRequest& request) override;
  std::optional<int> PopUp(const std::vector<MenuEntry>& entries) override;
  void Show(Form& form) override;
  void Hide(Form&) override {}
  void RunModal(Form& form) override;
  void Close(Form&) override {}
  void Maximise(Form&) override {}
  void ArrangeChildren(Arrangement) override {}
  void DoEvents() override;
  void AttachSkin(const std::filesystem::path&) override {}
  void SetTheme(int) override {}
  void EndProcess() override { ended_ = true; }

  const Box* OpenBox() const override { return box_; }
  void AnswerBox(Answer answer) override;
  const FileRequest* OpenFileDialog() const override { return file_request_; }
  void AnswerFileDialog(std::optional<std::string> path) override;
  const std::vector<MenuEntry>* OpenPopUp() const override { return pop_up_; }
  void AnswerPopUp(std::optional<int> id) override;
  bool Shot(const std::filesystem::path&) override { return false; }

 private:
  /// Pumps until `done`; throws ProcessEnded when the process was ended meanwhile.
  template <class Done>
  void WaitUntil(Done done);

  bool ended_ = false;
  const Box* box_ = nullptr;
  const FileRequest* file_request_ = nullptr;
  const std::vector<MenuEntry>* pop_up_ = nullptr;
  std::optional<Answer> answer_;
  std::optional<std::optional<std::string>> path_;
  std::optional<std::optional<int>> chosen_;
};

}  // namespace luming
