#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "screen/form.h"
#include "script/headless_desktop.h"

namespace luming {

/// An operator with prepared answers. Boxes with nothing but OK are answered by themselves; a question, a file dialog,
/// a pop-up or a modal form without a prepared answer fails the test.
class ScriptedDesktop : public HeadlessDesktop {
 public:
  ScriptedDesktop();

  std::deque<Answer> answers;  ///< to questions, in order
  std::deque<std::optional<std::string>> files;
  std::deque<std::optional<int>> pop_ups;
  /// What is done in each modal form, in order. A form that is still open afterwards takes the next one.
  std::deque<std::function<void(Form&)>> modals;

  std::vector<Box> boxes;                 ///< all that were shown
  std::vector<FileRequest> file_dialogs;  ///< all that were shown

  /// Texts of the boxes shown since the last call.
  std::vector<std::string> TakeBoxTexts();
  /// The one box shown since the last call; fails the test when there was none or more than one.
  Box TakeBox();

  void RunModal(Form& form) override;

 private:
  void ActAsOperator();
  void AnswerTheBox();

  std::vector<Form*> modal_forms_;
};

}  // namespace luming
