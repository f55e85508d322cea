#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "support/screen_test.h"
#include "util/failure.h"

namespace luming {
namespace {

using Log = std::vector<std::string>;

/// Writes down what reaches whom, and lets a test decide what its handlers do.
class KeyForm : public Form {
 public:
  explicit KeyForm(Forms& registry) : Form(registry, "KeyForm", "keys", WindowKind::kDialog) {
    for (Control* control : Controls()) {
      control->got_focus.Connect([this, control] { log.push_back("+" + control->Name()); });
      control->lost_focus.Connect([this, control] {
        log.push_back("-" + control->Name());
        if (on_leave) on_leave(*control);
      });
      control->key_down.Connect([this, control](KeyEvent& event) {
        log.push_back(control->Name() + ":" + std::to_string(event.code));
        if (on_key) on_key(event);
      });
    }
    accept.click.Connect([this] { log.push_back("accept"); });
    cancel.click.Connect([this] { log.push_back("cancel"); });
  }
  Layout Arrange() const override { return Column({first, list, second, grid, accept, cancel}); }
  void FormKeyDown(KeyEvent& event) override {
    if (on_form_key) on_form_key(event);
  }
  Log TakeLog() { return std::exchange(log, {}); }

  TextBox first{this, "first", "First(&F)"};
  ComboBox list{this, "list", "List", {.items = {"a", "b"}}};
  TextBox second{this, "second", "Second"};
  Grid grid{this, "grid", {"one"}};
  Button accept{this, "accept", "OK(&Y)", ButtonRole::kDefault};
  Button cancel{this, "cancel", "Cancel(&C)", ButtonRole::kCancel};
  std::function<void(KeyEvent&)> on_form_key;
  std::function<void(KeyEvent&)> on_key;
  std::function<void(Control&)> on_leave;
  Log log;
};

class FormKeysTest : public ScreenTest {
 protected:
  FormKeysTest() { form.Show(); }
  void EnterWalks() {
    form.on_form_key = [this](KeyEvent& event) { SendTab(form, event.code); };
  }
  bool Press(int code, bool shift = false, bool alt = false) {
    return form.UserKey({.code = code, .shift = shift, .alt = alt});
  }
  KeyForm form{forms};
};

TEST_F(FormKeysTest, ShowingFocusesTheFirstStop) {
  EXPECT_EQ(form.ActiveControl(), &form.first);
  EXPECT_EQ(form.TakeLog(), (Log{"+first"}));
}

/// Declared in another order than it is laid out, as fields of a base class are.
class ArrangedForm : public Form {
 public:
  explicit ArrangedForm(Forms& registry) : Form(registry, "ArrangedForm", "arranged", WindowKind::kDialog) {}
  Layout Arrange() const override { return Column({Row({head, list}), Hidden({kept}), lines, close}); }
  void FormKeyDown(KeyEvent& event) override { SendTab(*this, event.code); }

  TextBox lines{this, "lines"};
  Button close{this, "close", "Close"};
  TextBox kept{this, "kept"};
  TextBox beside{this, "beside"};
  TextBox head{this, "head"};
  ComboBox list{this, "list"};
};

TEST_F(FormKeysTest, TabFollowsTheArrangementWhateverTheOrderOfDeclaration) {
  ArrangedForm arranged{forms};
  arranged.Show();
  EXPECT_TRUE(arranged.head.HasFocus());
  arranged.UserKey({.code = key::kEnter});
  EXPECT_TRUE(arranged.list.ListIsOpen()) << "the walk goes on, although the list is declared last";
  Log way;
  for (int i = 0; i < 4; ++i) {
    arranged.UserKey({.code = key::kTab});
    way.push_back(arranged.ActiveControl()->Name());
  }
  EXPECT_EQ(way, (Log{"lines", "close", "beside", "head"})) << "what is hidden never stops";
}

TEST_F(FormKeysTest, TabSkipsWhatIsOutOfUseAndWraps) {
  form.list.SetEnabled(false);
  form.grid.SetVisible(false);
  form.TakeLog();
  Log way;
  for (int i = 0; i < 4; ++i) {
    Press(key::kTab);
    way.push_back(form.ActiveControl()->Name());
  }
  EXPECT_EQ(way, (Log{"second", "accept", "cancel", "first"}));
  Press(key::kTab, true);
  EXPECT_TRUE(form.cancel.HasFocus());
}

TEST_F(FormKeysTest, TheFieldThatIsLeftHearsItFirstAndMaySendTheFocusElsewhere) {
  form.TakeLog();
  form.second.SetFocus();
  EXPECT_EQ(form.TakeLog(), (Log{"-first", "+second"}));
  form.on_leave = [this](Control& left) {
    if (&left == &form.second) form.accept.SetFocus();
  };
  form.first.SetFocus();
  EXPECT_TRUE(form.accept.HasFocus());
  EXPECT_EQ(form.TakeLog(), (Log{"-second", "+accept"})) << "the field that was never reached hears nothing";
}

TEST_F(FormKeysTest, AFieldTakenOutOfUseLosesTheFocus) {
  form.TakeLog();
  form.first.SetEnabled(false);
  EXPECT_TRUE(form.list.HasFocus());
  form.list.SetVisible(false);
  EXPECT_TRUE(form.second.HasFocus());
  form.first.SetFocus();
  EXPECT_TRUE(form.second.HasFocus()) << "what is disabled takes no focus";
  EXPECT_EQ(form.TakeLog(), (Log{"-first", "+list", "-list", "+second"}));
}

TEST_F(FormKeysTest, EnterWalksOpensListsSelectsTextsAndEndsOnTheButton) {
  EnterWalks();
  form.second.SetText("text");
  Press(key::kEnter);
  EXPECT_TRUE(form.list.HasFocus());
  EXPECT_TRUE(form.list.ListIsOpen());
  Press(key::kEnter);
  EXPECT_TRUE(form.second.HasFocus());
  EXPECT_FALSE(form.list.ListIsOpen());
  EXPECT_EQ(form.second.SelLength(), 4U);
  form.accept.SetFocus();
  form.TakeLog();
  Press(key::kEnter);
  EXPECT_EQ(form.TakeLog(), (Log{"accept:13", "accept"}));
  EXPECT_TRUE(form.accept.HasFocus()) << "Enter on a button clicks it and walks nowhere";
}

TEST_F(FormKeysTest, WalkPastTheLastFieldOnlyStartsOver) {
  EnterWalks();
  form.accept.SetEnabled(false);
  form.cancel.SetEnabled(false);
  form.first.SetEnabled(false);
  form.grid.SetEnabled(false);
  form.second.SetFocus();
  Press(key::kEnter);
  EXPECT_TRUE(form.list.HasFocus());
  EXPECT_FALSE(form.list.ListIsOpen());
}

TEST_F(FormKeysTest, EnterInAGridStaysThereUnlessItsHandlerLeaves) {
  EnterWalks();
  form.grid.SetFocus();
  form.TakeLog();
  EXPECT_TRUE(Press(key::kEnter));
  EXPECT_EQ(form.TakeLog(), (Log{"grid:13"}));
  form.on_key = [this](KeyEvent&) { form.second.SetFocus(); };
  Press(key::kEnter);
  EXPECT_TRUE(form.second.HasFocus());
}

TEST_F(FormKeysTest, AHandlerThatMovesTheFocusOrClosesTheFormStopsTheWalk) {
  EnterWalks();
  form.on_key = [this](KeyEvent&) { form.grid.SetFocus(); };
  Press(key::kEnter);
  EXPECT_TRUE(form.grid.HasFocus());
  form.on_key = [this](KeyEvent&) { form.Unload(); };
  form.TakeLog();
  EXPECT_TRUE(Press(key::kEnter));
  EXPECT_EQ(form.TakeLog(), (Log{"grid:13"})) << "neither a walk nor the default button";
}

TEST_F(FormKeysTest, DefaultAndCancelButtonsTakeWhatNobodyTook) {
  form.TakeLog();
  Press(key::kEnter);
  Press(key::kEsc);
  EXPECT_EQ(form.TakeLog(), (Log{"first:13", "accept", "first:27", "cancel"}));
  EXPECT_TRUE(form.first.HasFocus());

  EnterWalks();
  Press(key::kEnter);
  EXPECT_EQ(form.TakeLog(), (Log{"first:13", "-first", "+list"})) << "a walk goes before the default button";
  form.accept.SetEnabled(false);
  form.on_form_key = nullptr;
  EXPECT_FALSE(Press(key::kEnter));
}

TEST_F(FormKeysTest, WhatAHandlerTakesGoesNoFurther) {
  form.TakeLog();
  form.on_form_key = [](KeyEvent& event) { event.handled = true; };
  EXPECT_TRUE(Press(key::kEsc));
  EXPECT_EQ(form.TakeLog(), Log{}) << "the form saw it ahead of the control";
  form.on_form_key = nullptr;
  form.on_key = [](KeyEvent& event) { event.handled = true; };
  Press(key::kEsc);
  Press(key::kTab);
  EXPECT_EQ(form.TakeLog(), (Log{"first:27", "first:9"}));
}

TEST_F(FormKeysTest, EscClosesAnOpenListAheadOfTheCancelButton) {
  form.list.SetFocus();
  form.list.OpenList();
  form.TakeLog();
  Press(key::kEsc);
  EXPECT_FALSE(form.list.ListIsOpen());
  EXPECT_EQ(form.TakeLog(), (Log{"list:27"}));
  Press(key::kEsc);
  EXPECT_EQ(form.TakeLog(), (Log{"list:27", "cancel"}));
}

TEST_F(FormKeysTest, AltWithTheMnemonicClicksOrFocuses) {
  form.TakeLog();
  Press('C', false, true);
  EXPECT_EQ(form.TakeLog(), (Log{"first:67", "-first", "+cancel", "cancel"}));
  Press('F', false, true);
  EXPECT_TRUE(form.first.HasFocus());
  EXPECT_FALSE(Press('X', false, true));
}

TEST_F(FormKeysTest, AClickThatLosesItsFormOnTheWayIsNoClick) {
  form.on_leave = [this](Control&) { form.Unload(); };
  form.TakeLog();
  form.UserClick(form.accept);
  EXPECT_EQ(form.TakeLog(), (Log{"-first"}));
}

TEST_F(FormKeysTest, AFailureNobodyTrapsReachesTheCallerAndLeavesNoWalkBehind) {
  EnterWalks();
  form.on_key = [](KeyEvent&) { throw StandardFailure(failure::kTypeMismatch); };
  EXPECT_THROW(Press(key::kEnter), Failure);
  form.on_key = nullptr;
  form.on_form_key = nullptr;
  form.TakeLog();
  Press(key::kF2);
  EXPECT_TRUE(form.first.HasFocus());
}

}  // namespace
}  // namespace luming
