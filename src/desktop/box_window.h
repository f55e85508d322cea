#pragma once

#include <QEventLoop>
#include <QWidget>
#include <vector>

#include "platform/desktop.h"

class QHBoxLayout;

namespace luming {

/// A message box: text, icon and one to three buttons that answer by mouse, Enter, Esc or letter.
class BoxWindow final : public QWidget {
 public:
  explicit BoxWindow(const Box& box);

  /// Leaves the loop with an answer, when it is one that the box offers.
  void Reply(Answer answer);
  Answer Given() const { return given_; }
  QEventLoop& Loop() { return loop_; }
  const Box& Asked() const { return box_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void AddButtons(QHBoxLayout& foot);
  bool Offers(Answer answer) const;
  bool ReplyByLetter(int key);
  /// What Esc and the window's frame mean; only a box that can be left without a choice has it.
  void Escape();

  Box box_;
  QEventLoop loop_;
  std::vector<Answer> offered_;
  Answer given_ = Answer::kOk;
};

}  // namespace luming
