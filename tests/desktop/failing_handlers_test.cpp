#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QToolButton>
#include <filesystem>
#include <new>
#include <stdexcept>

#include "desktop_fixture.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "screen/tool_bar.h"

namespace luming {
namespace {

/// Every handler of it fails, with what the test says.
class FailingForm : public Form {
 public:
  static constexpr const char* kName = "FailingForm";
  FailingForm(Forms& forms, std::function<void()>& fail)
      : Form(forms, kName, "录入", WindowKind::kDialog), fail_(fail) {
    bar.button_click.Connect([this](const std::string&) { Fail(); });
    PM.change.Connect([this] { Fail(); });
    PM.lost_focus.Connect([this] { Fail(); });
    GHDW.change.Connect([this] { Fail(); });
    XQ.change.Connect([this] { Fail(); });
    JYTY.click.Connect([this] { Fail(); });
    Command1.click.Connect([this] { Fail(); });
    fpSpread1.change.Connect([this](int, int) { Fail(); });
    fpSpread1.click.Connect([this](int, int) { Fail(); });
    fpSpread1.double_click.Connect([this](int, int) { Fail(); });
    fpSpread1.right_click.Connect([this](int, int) { Fail(); });
    fpSpread1.header_click.Connect([this](int) { Fail(); });
    fpSpread1.row_focus.Connect([this](int) { Fail(); });
    fpSpread1.SetMaxRows(3);
  }
  ToolBar bar{this, "bar", {{"打印", "print"}}};
  TextBox PM{this, "PM", "品名"};
  TextBox SL{this, "SL", "数量"};
  ComboBox GHDW{this, "GHDW", "供货单位"};
  DateBox XQ{this, "XQ", "效期"};
  CheckBox JYTY{this, "JYTY", "禁用"};
  Button Command1{this, "Command1", "确定"};
  Grid fpSpread1{this, "fpSpread1", {"编码", "品名"}};
  Layout Arrange() const override { return Column({bar, Fields(2, {PM, SL, GHDW, XQ}), JYTY, Command1, fpSpread1}); }

 protected:
  void FormKeyDown(KeyEvent& event) override {
    if (event.code == key::kF2) Fail();
  }
  bool QueryUnload() override {
    Fail();
    return true;
  }

 private:
  void Fail() {
    const std::function<void()> now = fail_;  // it may put another in its place
    now();
  }
  std::function<void()>& fail_;
};

class FailingHandlersTest : public DesktopTest {
 protected:
  FailingHandlersTest() {
    desktop.SetFailureHook([this](const Failure& failure) { told.push_back(failure.description()); });
    form.Show();
    form.PM.SetFocus();
    Settle();
  }
  ~FailingHandlersTest() override {
    fail = [] {};
  }
  static QLineEdit* Line(const char* name) { return Find<QLineEdit>(name); }

  std::function<void()> fail = [] { throw std::runtime_error("broken"); };
  std::vector<std::string> told;
  FailingForm& form = forms.Get<FailingForm>(forms, fail);
};

TEST_F(FailingHandlersTest, WhateverTheOperatorDoesWhatAHandlerThrowsIsShownAndTheScreenStays) {
  auto* table = Find<QTableView>("fpSpread1");
  const auto cell = [&](int row) { return table->visualRect(table->model()->index(row, 0)).center(); };
  const std::vector<std::pair<const char*, std::function<void()>>> acts = {
      {"a typed letter", [] { Type(Line("PM"), "a"); }},
      {"a key of the form", [] { Press(Line("PM"), Qt::Key_F2); }},
      {"leaving a field", [] { Press(Line("PM"), Qt::Key_Tab); }},
      {"a typed entry", [] { Type(Find<QComboBox>("GHDW")->lineEdit(), "b"); }},
      {"a date",
       [] {
         Find<QDateEdit>("XQ")->setDate({2030, 1, 1});
       }},
      {"a tick", [] { Find<QAbstractButton>("JYTY")->click(); }},
      {"a button", [] { Find<QAbstractButton>("Command1")->click(); }},
      {"the tool bar", [] { Find<QWidget>("bar")->findChild<QToolButton*>()->click(); }},
      {"a head", [&] { emit table->horizontalHeader()->sectionClicked(0); }},
      {"a click on a cell", [&] { Click(table->viewport(), cell(0)); }},
      {"another row", [&] { Press(table, Qt::Key_Down); }},
      {"a double click", [&] { QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell(1)); }},
      {"the right button", [&] { QTest::mousePress(table->viewport(), Qt::RightButton, Qt::NoModifier, cell(1)); }},
      {"an edited cell",
       [&] {
         Type(table, "7");
         Press(table->findChild<QLineEdit*>("cellEditor"), Qt::Key_Return);
       }},
      {"the frame", [&] { table->window()->close(); }},
  };
  for (const auto& [what, act] : acts) {
    told.clear();
    act();
    Settle();
    EXPECT_FALSE(told.empty()) << what;
    for (const std::string& text : told) EXPECT_EQ(text, "内部错误：broken") << what;
    EXPECT_TRUE(form.IsShown()) << what;
  }
  EXPECT_EQ(form.PM.Text(), "a");
  EXPECT_EQ(form.fpSpread1.Text(2, 1), "7");
}

TEST_F(FailingHandlersTest, TheKeyboardIsWhereTheModelIsThoughTheFieldThatWasLeftFails) {
  Press(Line("PM"), Qt::Key_Tab);
  Settle();
  EXPECT_EQ(form.ActiveControl(), &form.SL);
  EXPECT_TRUE(Line("SL")->hasFocus());
}

TEST_F(FailingHandlersTest, EachKindOfFaultHasItsWordsAlsoInANestedLoop) {
  const auto click = [] { Find<QAbstractButton>("Command1")->click(); };
  fail = [] {
    throw std::filesystem::filesystem_error("cannot look", "/store/西药库RYYP.Dat",
                                            std::make_error_code(std::errc::permission_denied));
  };
  click();
  fail = [] { throw std::bad_alloc(); };
  click();
  fail = [] { throw 7; };
  click();
  EXPECT_EQ(told,
            (std::vector<std::string>{"路径/文件访问错误：/store/西药库RYYP.Dat（没有权限）", "内存溢出", "内部错误"}));

  told.clear();
  bool went_on = false;
  fail = [&] {
    Meanwhile([&] {
      fail = [] { throw std::out_of_range("inner"); };
      Find<QAbstractButton>("JYTY")->click();
      EXPECT_NE(desktop.OpenBox(), nullptr) << "the box still waits for its answer";
      desktop.AnswerBox(Answer::kOk);
    });
    desktop.MsgBox({"保存？", box::kQuestion, "提示"});
    went_on = true;
  };
  click();
  EXPECT_TRUE(went_on);
  EXPECT_EQ(told, (std::vector<std::string>{"内部错误：inner"}));
}

}  // namespace
}  // namespace luming
