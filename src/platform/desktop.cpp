#include "platform/desktop.h"

#include <algorithm>

namespace luming {

std::vector<Answer> AnswersOf(int style) {
  constexpr int kButtons = 0x0F;  // the rest is icon and default
  switch (style & kButtons) {
    case box::kOkCancel:
      return {Answer::kOk, Answer::kCancel};
    case box::kYesNoCancel:
      return {Answer::kYes, Answer::kNo, Answer::kCancel};
    case box::kYesNo:
      return {Answer::kYes, Answer::kNo};
    default:
      return {Answer::kOk};
  }
}

Answer DefaultAnswer(int style) {
  const std::vector<Answer> offered = AnswersOf(style);
  const std::size_t standard = (style & box::kSecondIsDefault) != 0 ? 1 : 0;
  return offered[std::min(standard, offered.size() - 1)];
}

}  // namespace luming
