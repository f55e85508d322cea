#include "desktop/main_window.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QToolBar>

#include "desktop_fixture.h"
#include "screen/main_frame.h"
#include "screen/text_box.h"

namespace luming {
namespace {

class SmallFrame : public MainFrame {
 public:
  static constexpr const char* kName = "SmallFrame";
  explicit SmallFrame(Forms& forms) : MainFrame(forms, kName, "仓管系统") {}

  const std::vector<MenuEntry>& Menus() const override { return menus_; }
  const std::vector<MenuEntry>& ToolBarButtons() const override { return buttons_; }
  CommandState StateOf(int command) const override { return {command != 201, command == 1001}; }
  void Execute(int command) override { executed.push_back(command); }
  void Workspace_RClick(Form* item) override { right_clicked = item; }
  using MainFrame::SetStatusPanel;
  using MainFrame::SetToolBarVisible;

  std::vector<int> executed;
  Form* right_clicked = nullptr;
  int frame_closes = 0;

 protected:
  void ClosedByFrame() override { ++frame_closes; }

 private:
  std::vector<MenuEntry> menus_{
      {"药品目录(&Y)", 0, {{"添加新药品(&S)", 201, {}}, {"药品目录(&F)", 202, {}}}},
      {"窗口(&W)", 0, {{"Office XP", 1001, {}}, {"层叠(&C)", 801, {}}, {"列表", kWindowListId, {}, true}}},
  };
  std::vector<MenuEntry> buttons_{{"添加新药品", 201, {}}, {"药品目录", 202, {}}, {"锁定系统", 9103, {}, true}};
};

class ChildForm : public Form {
 public:
  ChildForm(Forms& forms, const char* name, const char* caption) : Form(forms, name, caption, WindowKind::kChild) {}
  TextBox PM{this, "PM", "品名"};
  TextBox SL{this, "SL", "数量"};
  Layout Arrange() const override { return Row({PM, SL}); }
};
class FirstChild : public ChildForm {
 public:
  static constexpr const char* kName = "FirstChild";
  explicit FirstChild(Forms& forms) : ChildForm(forms, kName, "药品入库") {}
};
class SecondChild : public ChildForm {
 public:
  static constexpr const char* kName = "SecondChild";
  explicit SecondChild(Forms& forms) : ChildForm(forms, kName, "药品目录") {}
};

class ThirdChild : public ChildForm {
 public:
  static constexpr const char* kName = "ThirdChild";
  explicit ThirdChild(Forms& forms) : ChildForm(forms, kName, "数据字典") {}
};

class MainWindowTest : public DesktopTest {
 protected:
  MainWindowTest() {
    frame.Show();
    Settle();
    main = Find<MainWindow>("mainWindow");
  }
  QMenu* MenuNumber(int number) { return main->menuBar()->actions().at(number)->menu(); }
  static QAction* Entry(QMenu* menu, const char* caption) {
    for (QAction* action : menu->actions()) {
      if (action->text() == caption) return action;
    }
    return nullptr;
  }
  SmallFrame& frame = forms.Get<SmallFrame>(forms);
  MainWindow* main = nullptr;
};

TEST_F(MainWindowTest, MenusAndToolBarExecuteCommandsInTheirState) {
  QMenu* catalogue = MenuNumber(0);
  emit catalogue->aboutToShow();
  EXPECT_FALSE(Entry(catalogue, "添加新药品(&S)")->isEnabled());
  Entry(catalogue, "药品目录(&F)")->trigger();
  emit MenuNumber(1)->aboutToShow();
  EXPECT_TRUE(Entry(MenuNumber(1), "Office XP")->isChecked());
  auto* bar = main->findChild<QToolBar*>();
  EXPECT_FALSE(bar->actions().front()->isEnabled());
  bar->actions().back()->trigger();
  EXPECT_EQ(frame.executed, (std::vector<int>{202, 9103}));

  frame.SetStatusPanel(4, "操作员：张三");
  bool shown = false;
  for (const QLabel* label : main->findChildren<QLabel*>()) shown = shown || label->text() == "操作员：张三";
  EXPECT_TRUE(shown);
  frame.SetToolBarVisible(false);
  EXPECT_TRUE(bar->isHidden());
  main->close();
  EXPECT_EQ(frame.frame_closes, 1);
  EXPECT_TRUE(main->isVisible()) << "the form decides what closing means";
}

TEST_F(MainWindowTest, ChildrenAreTabsThatTheOperatorSwitchesArrangesAndCloses) {
  auto& first = forms.Get<FirstChild>(forms);
  auto& second = forms.Get<SecondChild>(forms);
  for (Form* child : std::initializer_list<Form*>{&first, &second}) {
    child->Show();
    desktop.Maximise(*child);
  }
  Settle();
  auto* tabs = main->workspace().findChild<QTabBar*>();
  ASSERT_EQ(tabs->count(), 2);
  EXPECT_EQ(tabs->tabText(0), "药品入库");
  EXPECT_EQ(forms.ActiveChild(), &second);
  tabs->setCurrentIndex(0);
  EXPECT_EQ(forms.ActiveChild(), &first);

  QMenu* windows = MenuNumber(1);
  emit windows->aboutToShow();
  emit windows->aboutToShow();
  ASSERT_NE(Entry(windows, "&2  药品目录"), nullptr);
  Entry(windows, "&2  药品目录")->trigger();
  EXPECT_EQ(forms.ActiveChild(), &second);

  desktop.ArrangeChildren(Arrangement::kTileVertically);
  EXPECT_EQ(main->workspace().viewMode(), QMdiArea::SubWindowView);
  EXPECT_EQ(main->workspace().Children().size(), 2U);
  desktop.Maximise(second);
  EXPECT_EQ(main->workspace().viewMode(), QMdiArea::TabbedView);

  second.Unload();
  Settle();
  EXPECT_EQ(main->workspace().Children().size(), 1U);
  EXPECT_EQ(forms.ActiveChild(), &first);
}

TEST_F(MainWindowTest, BehindAMaximisedChildThatGoesTheOneUsedBeforeIsMaximised) {
  const auto open_three = [this] {
    for (Form* child : std::initializer_list<Form*>{&forms.Get<FirstChild>(forms), &forms.Get<SecondChild>(forms),
                                                    &forms.Get<ThirdChild>(forms), &forms.Get<FirstChild>(forms)}) {
      child->Show();
      desktop.Maximise(*child);
      Settle();
    }
  };
  const auto front = [this] {
    FormWidget* child = main->workspace().ActiveChild();
    if (!child) return std::string("none");
    EXPECT_EQ(child->form(), forms.ActiveChild());
    EXPECT_EQ(child->parentWidget()->size(), main->workspace().viewport()->size()) << child->form()->Name();
    EXPECT_TRUE(child->findChild<QLineEdit*>("PM")->hasFocus()) << child->form()->Name();
    return child->form()->Name();
  };
  open_three();
  EXPECT_EQ(front(), "FirstChild");
  forms.ActiveChild()->Unload();
  Settle();
  EXPECT_EQ(front(), "ThirdChild");
  desktop.Enter([this] { forms.ActiveChild()->UserClose(); });
  Settle();
  EXPECT_EQ(front(), "SecondChild");

  open_three();
  desktop.ArrangeChildren(Arrangement::kCascade);
  main->workspace().ActiveChild()->parentWidget()->showMaximized();
  Settle();
  forms.ActiveChild()->Hide();
  Settle();
  EXPECT_EQ(front(), "ThirdChild");
}

TEST_F(MainWindowTest, AFocusThatQtMovedDoesNotBringAFormBackToTheFront) {
  auto& first = forms.Get<FirstChild>(forms);
  first.Show();
  Settle();
  auto* field = main->workspace().ActiveChild()->findChild<QLineEdit*>("SL");
  field->setFocus(Qt::OtherFocusReason);
  Settle();
  EXPECT_EQ(main->workspace().ActiveChild()->findChild<QLineEdit*>("PM"), QApplication::focusWidget());

  field->setFocus(Qt::OtherFocusReason);
  auto& second = forms.Get<SecondChild>(forms);
  second.Show();
  Settle();
  EXPECT_EQ(forms.ActiveChild(), &second);
}

}  // namespace
}  // namespace luming
