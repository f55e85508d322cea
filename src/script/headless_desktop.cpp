#include "script/headless_desktop.h"

#include <utility>

#include "screen/forms.h"

namespace luming {
namespace {

/// What waits in front is what is asked now; when it is gone, what waited behind it is back.
template <class T>
class InFront {
 public:
  InFront(T*& place, T* shown) : place_(place), before_(std::exchange(place, shown)) {}
  ~InFront() { place_ = before_; }
  InFront(const InFront&) = delete;
  InFront& operator=(const InFront&) = delete;

 private:
  T*& place_;
  T* before_;
};

}  // namespace

template <class Done>
void HeadlessDesktop::WaitUntil(Done done) {
  ended_ = false;
  while (!done()) {
    if (!pump) throw HeadlessStuck{};
    pump();
    if (ended_) throw ProcessEnded{};
  }
}

Answer HeadlessDesktop::MsgBox(const Box& box) {
  const InFront front(box_, &box);
  answer_.reset();
  WaitUntil([this] { return answer_.has_value(); });
  return *std::exchange(answer_, std::nullopt);
}

std::optional<std::string> HeadlessDesktop::ChooseFile(const FileRequest& request) {
  const InFront front(file_request_, &request);
  path_.reset();
  WaitUntil([this] { return path_.has_value(); });
  return *std::exchange(path_, std::nullopt);
}

std::optional<int> HeadlessDesktop::PopUp(const std::vector<MenuEntry>& entries) {
  const InFront front(pop_up_, &entries);
  chosen_.reset();
  WaitUntil([this] { return chosen_.has_value(); });
  return *std::exchange(chosen_, std::nullopt);
}

void HeadlessDesktop::Show(Form&) {
  ended_ = false;
}

void HeadlessDesktop::DoEvents() {
  if (!yielded) return;
  // A program that is started anew has shown nothing yet since the one before it ended.
  const bool ended_before = ended_;
  yielded();
  if (ended_ && !ended_before) throw ProcessEnded{};
}

void HeadlessDesktop::RunModal(Form& form) {
  WaitUntil([&form] { return form.IsUnloaded() || !form.IsShown(); });
}

void HeadlessDesktop::AnswerBox(Answer answer) {
  if (box_) answer_ = answer;
}

void HeadlessDesktop::AnswerFileDialog(std::optional<std::string> path) {
  if (file_request_) path_ = std::move(path);
}

void HeadlessDesktop::AnswerPopUp(std::optional<int> id) {
  if (pop_up_) chosen_ = id;
}

}  // namespace luming
