#include "frame/input_method.h"
#include "frame/lock.h"
#include "support/app_test.h"

namespace luming {
namespace {

class OperatorToolsTest : public AppTest {
 protected:
  OperatorToolsTest() { Connect(); }
  SetIme& Opened() {
    auto& form = app.forms.Get<SetIme>(app);
    form.Show();
    return form;
  }
  void Press(SetIme& form) { form.UserClick(form.Com_set); }
};

TEST_F(OperatorToolsTest, InputMethodsStandInStepWithTheirHandles) {
  devices.layouts = {{7, ""}, {8, " 拼音 "}, {9, "  "}};
  devices.layout = KeyboardLayout{8, " 拼音 "};
  SetIme& form = Opened();
  EXPECT_EQ(form.srflb.Items(), (std::vector<std::string>{"英语（美国）", "拼音", "英语（美国）"}));
  EXPECT_EQ(form.dqsyslf.Caption(), "拼音");
  form.srflb.UserChoose(2);
  Press(form);
  EXPECT_EQ(devices.activated, (std::vector<std::int32_t>{9}));
  EXPECT_EQ(app.IME, 9);
  EXPECT_EQ(desktop.TakeBox().text, "输入法设置成功");
}

TEST_F(OperatorToolsTest, AMethodThatCannotBeActivatedIsToldAndNotWritten) {
  devices.layouts = {{7, "拼音"}};
  SetIme& form = Opened();
  form.srflb.UserChoose(0);
  devices.refuses = true;
  store.TakeSent();
  Press(form);
  EXPECT_NE(desktop.TakeBox().text.find("没有权限"), std::string::npos);
  EXPECT_TRUE(store.TakeSent().empty());
  EXPECT_EQ(app.SearchType, "");
}

TEST_F(OperatorToolsTest, FieldsForChineseActivateTheOperatorsLayoutSilently) {
  UseOperatorLayout(app);
  app.IME = 42;
  app.forms.operator_ime();
  EXPECT_EQ(devices.activated, (std::vector<std::int32_t>{42}));
  devices.refuses = true;
  app.forms.operator_ime();
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(OperatorToolsTest, TheMouseDrawsALineAroundTheLocksPicture) {
  auto& lock = app.forms.Get<LockApp>(app);
  lock.Image1.UserMouseMove();
  EXPECT_EQ(lock.Image1.BorderStyle(), 1);
  lock.Picture1.UserMouseMove();
  EXPECT_EQ(lock.Image1.BorderStyle(), 0);
}

}  // namespace
}  // namespace luming
