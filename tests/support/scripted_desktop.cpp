#include "support/scripted_desktop.h"

#include <gtest/gtest.h>

namespace luming {
namespace {

[[noreturn]] void FailTest(const std::string& what) {
  ADD_FAILURE() << what;
  throw HeadlessStuck{};
}

template <class T>
T TakeNext(std::deque<T>& prepared, const std::string& what) {
  if (prepared.empty()) FailTest("nothing was prepared for " + what);
  T next = std::move(prepared.front());
  prepared.pop_front();
  return next;
}

}  // namespace

ScriptedDesktop::ScriptedDesktop() {
  pump = [this] { ActAsOperator(); };
}

std::vector<std::string> ScriptedDesktop::TakeBoxTexts() {
  std::vector<std::string> texts;
  for (const Box& box : boxes) texts.push_back(box.text);
  boxes.clear();
  return texts;
}

Box ScriptedDesktop::TakeBox() {
  EXPECT_EQ(boxes.size(), 1U) << "boxes shown";
  const Box shown = boxes.empty() ? Box{} : boxes.back();
  boxes.clear();
  return shown;
}

void ScriptedDesktop::RunModal(Form& form) {
  modal_forms_.push_back(&form);
  struct Leave {
    explicit Leave(std::vector<Form*>& forms) : forms_(forms) {}
    ~Leave() { forms_.pop_back(); }
    std::vector<Form*>& forms_;
  } leave(modal_forms_);
  HeadlessDesktop::RunModal(form);
}

void ScriptedDesktop::ActAsOperator() {
  if (OpenBox()) {
    AnswerTheBox();
  } else if (OpenFileDialog()) {
    file_dialogs.push_back(*OpenFileDialog());
    AnswerFileDialog(TakeNext(files, "the file dialog " + OpenFileDialog()->title));
  } else if (OpenPopUp()) {
    AnswerPopUp(TakeNext(pop_ups, "a pop-up"));
  } else if (!modal_forms_.empty()) {
    Form& form = *modal_forms_.back();
    TakeNext(modals, "the modal form " + form.Name())(form);
  } else {
    FailTest("the program waits for nothing");
  }
}

void ScriptedDesktop::AnswerTheBox() {
  const Box& box = *OpenBox();
  boxes.push_back(box);
  const bool asks = (box.style & (box::kYesNo | box::kOkCancel)) != 0;
  AnswerBox(asks ? TakeNext(answers, "the question " + box.text) : Answer::kOk);
}

}  // namespace luming
