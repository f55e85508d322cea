#include "script/headless_desktop.h"

#include <gtest/gtest.h>

namespace luming {
namespace {

TEST(HeadlessDesktop, WaitsUntilWhatIsInFrontIsAnswered) {
  HeadlessDesktop desktop;
  std::vector<std::string> seen;
  desktop.pump = [&] {
    if (const Box* box = desktop.OpenBox()) {
      seen.push_back(box->text);
      desktop.AnswerBox(Answer::kNo);
    } else if (desktop.OpenFileDialog()) {
      seen.push_back(desktop.OpenFileDialog()->title);
      EXPECT_EQ(desktop.MsgBox({"over the dialog", 0, ""}), Answer::kNo);
      desktop.AnswerFileDialog("/tmp/x.xls");
    } else {
      desktop.AnswerPopUp(7);
    }
  };
  EXPECT_EQ(desktop.ChooseFile({.title = "save"}), "/tmp/x.xls");
  EXPECT_EQ(desktop.PopUp({{"entry", 7, {}, false}}), 7);
  EXPECT_EQ(seen, (std::vector<std::string>{"save", "over the dialog"}));
  EXPECT_EQ(desktop.OpenBox(), nullptr);
  EXPECT_EQ(desktop.OpenFileDialog(), nullptr);
}

TEST(HeadlessDesktop, NobodyToAnswerAndTheEndOfTheProcessUnwind) {
  HeadlessDesktop desktop;
  EXPECT_THROW(desktop.MsgBox({"?", box::kYesNo, ""}), HeadlessStuck);
  EXPECT_EQ(desktop.OpenBox(), nullptr);
  desktop.pump = [&] { desktop.EndProcess(); };
  EXPECT_THROW(desktop.MsgBox({"?", box::kYesNo, ""}), ProcessEnded);
  desktop.AnswerBox(Answer::kYes);
  EXPECT_THROW(desktop.MsgBox({"a stray answer is no answer", box::kYesNo, ""}), ProcessEnded);
}

}  // namespace
}  // namespace luming
