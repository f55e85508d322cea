#include "desktop/qt_desktop.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QTemporaryDir>

#include "desktop/file_dialog.h"
#include "desktop/qt_text.h"
#include "desktop_fixture.h"
#include "screen/button.h"
#include "screen/text_box.h"

namespace luming {
namespace {

class AskingForm : public Form {
 public:
  static constexpr const char* kName = "AskingForm";
  explicit AskingForm(Forms& forms) : Form(forms, kName, "询问", WindowKind::kDialog) {}
  TextBox SL{this, "SL", "数量"};
  Button Command1{this, "Command1", "关闭(&Q)", &AskingForm::Command1_Click};
  Layout Arrange() const override { return Column({SL, Command1}); }
  void Command1_Click() { Unload(); }
};

/// Shows another form modally and goes on when it has closed.
class NestingForm : public Form {
 public:
  static constexpr const char* kName = "NestingForm";
  NestingForm(Forms& forms, bool& ran_on) : Form(forms, kName, "外层", WindowKind::kDialog), ran_on_(ran_on) {}
  Button Command1{this, "Command1", "打开", &NestingForm::Command1_Click};
  Layout Arrange() const override { return Row({Command1}); }
  void Command1_Click() {
    Registry().Get<AskingForm>(Registry()).ShowModal();
    ran_on_ = true;
  }

 private:
  bool& ran_on_;
};

using QtDesktopTest = DesktopTest;

TEST_F(QtDesktopTest, BoxesAreAnsweredByKeys) {
  const auto ask = [this](int style, int key) {
    Meanwhile([key] { Press(Find<QWidget>("box"), key); });
    Answer answer = Answer::kOk;
    desktop.Enter([&] { answer = desktop.MsgBox({"你确定要执行此操作吗？\r\n请检查。", style, "系统提示"}); });
    return answer;
  };
  EXPECT_EQ(ask(box::kYesNo | box::kQuestion, Qt::Key_Y), Answer::kYes);
  EXPECT_EQ(ask(box::kYesNo | box::kQuestion, Qt::Key_N), Answer::kNo);
  EXPECT_EQ(ask(box::kYesNo | box::kQuestion, Qt::Key_Return), Answer::kYes);
  EXPECT_EQ(ask(box::kYesNo | box::kSecondIsDefault, Qt::Key_Return), Answer::kNo);
  EXPECT_EQ(ask(box::kYesNoCancel, Qt::Key_Escape), Answer::kCancel);
  EXPECT_EQ(ask(box::kOkCancel, Qt::Key_Escape), Answer::kCancel);
  EXPECT_EQ(ask(box::kStop, Qt::Key_Escape), Answer::kOk);
}

/// Looks at the cursor while its button works, then asks.
class WorkingForm : public Form {
 public:
  static constexpr const char* kName = "WorkingForm";
  explicit WorkingForm(Forms& forms) : Form(forms, kName, "保存", WindowKind::kDialog) {
    SL.change.Connect([this] { Look(); });
  }
  TextBox SL{this, "SL", "数量"};
  Button Command1{this, "Command1", "保存", &WorkingForm::Command1_Click};
  Layout Arrange() const override { return Column({SL, Command1}); }
  void Command1_Click() {
    Look();
    Registry().desktop().MsgBox({"成功", box::kInformation, "信息"});
    Look();
  }
  void Look() { looks.push_back(IsWaiting()); }
  static bool IsWaiting() {
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor;
  }
  std::vector<bool> looks;
};

TEST_F(QtDesktopTest, WorkShowsTheWaitingCursorButNotWhileTheOperatorIsAsked) {
  auto& form = forms.Get<WorkingForm>(forms);
  form.Show();
  Settle();
  bool while_asked = true;
  Meanwhile([&] {
    while_asked = WorkingForm::IsWaiting();
    Press(Find<QWidget>("box"), Qt::Key_Return);
  });
  Find<QAbstractButton>("Command1")->click();
  EXPECT_EQ(form.looks, (std::vector<bool>{true, true}));
  EXPECT_FALSE(while_asked);
  EXPECT_FALSE(WorkingForm::IsWaiting());

  form.looks.clear();
  Type(Find<QLineEdit>("SL"), "1");
  EXPECT_EQ(form.looks, (std::vector<bool>{false})) << "typing does not flicker";
}

class CoverForm : public Form {
 public:
  static constexpr const char* kName = "CoverForm";
  explicit CoverForm(Forms& forms) : Form(forms, kName, "锁定", WindowKind::kCover) {}
  TextBox Text1{this, "Text1"};
  Layout Arrange() const override { return Column({Text1}); }

 protected:
  void ClosedByFrame() override {}
};

class FloatingForm : public Form {
 public:
  static constexpr const char* kName = "FloatingForm";
  explicit FloatingForm(Forms& forms) : Form(forms, kName, "品名选择", WindowKind::kFloating) {}
  TextBox PM{this, "PM"};
  Layout Arrange() const override { return Column({PM}); }
};

TEST_F(QtDesktopTest, AFloatingFormAppearsAtTheFieldThatIsTypedInto) {
  auto& asking = forms.Get<AskingForm>(forms);
  asking.Show();
  Settle();
  QWidget* const field = Find<QLineEdit>("SL");
  const auto place_of = [&](QPoint window) {
    field->window()->move(window);
    Settle();
    asking.SL.SetFocus();
    forms.Get<FloatingForm>(forms).Show();
    Settle();
    const QRect place = Find<QLineEdit>("PM")->window()->frameGeometry();
    forms.Get<FloatingForm>(forms).Unload();
    return place.translated(-field->mapToGlobal(QPoint(0, 0)));
  };
  EXPECT_EQ(place_of({100, 100}).topLeft(), QPoint(0, field->height()));
  const QRect room = field->screen()->availableGeometry();
  EXPECT_LT(place_of({100, room.bottom() - 60}).bottom(), 0) << "above it where the screen ends";
}

TEST_F(QtDesktopTest, ACoverHidesTheOtherWindowsAndIsClosedByItsFormAlone) {
  forms.Get<AskingForm>(forms).Show();
  forms.Get<FloatingForm>(forms).Show();
  Settle();
  QWidget* const below = Find<QLineEdit>("SL")->window();
  QWidget* const floating = Find<QLineEdit>("PM")->window();
  below->move(-50, -40);
  Meanwhile([&] {
    QWidget* const cover = Find<QLineEdit>("Text1")->window();
    EXPECT_TRUE(cover->geometry().contains(below->frameGeometry()));
    EXPECT_TRUE(cover->geometry().contains(cover->screen()->geometry()));
    EXPECT_TRUE(cover->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_FALSE(floating->isVisible()) << "it would stay above the cover";
    cover->close();
    EXPECT_TRUE(cover->isVisible());
    forms.Get<CoverForm>(forms).Unload();
  });
  desktop.Enter([&] { forms.Get<CoverForm>(forms).ShowModal(); });
  EXPECT_EQ(forms.Find("CoverForm"), nullptr);
  EXPECT_TRUE(floating->isVisible());
}

TEST_F(QtDesktopTest, AModalFormReturnsWhenItClosesOrHides) {
  bool returned = false;
  const auto run = [&] {
    returned = false;
    desktop.Enter([&] {
      forms.Get<AskingForm>(forms).ShowModal();
      returned = true;
    });
  };
  Meanwhile([this] {
    EXPECT_TRUE(Find<QLineEdit>("SL")->isVisible());
    auto& form = forms.Get<AskingForm>(forms);
    form.UserClick(form.Command1);
  });
  run();
  EXPECT_TRUE(returned);
  EXPECT_EQ(forms.Find("AskingForm"), nullptr);

  Meanwhile([this] { forms.Get<AskingForm>(forms).Hide(); });
  run();
  EXPECT_TRUE(returned);
  EXPECT_NE(forms.Find("AskingForm"), nullptr);
}

TEST_F(QtDesktopTest, TheEndOfTheProcessLeavesNestedModalForms) {
  bool inner_ran_on = false;
  bool outer_ran_on = false;
  auto& outer = forms.Get<NestingForm>(forms, inner_ran_on);
  QTimer::singleShot(10, qApp, [&] { desktop.Enter([&] { outer.UserClick(outer.Command1); }); });
  QTimer::singleShot(20, qApp, [this] {
    ASSERT_NE(forms.Find("AskingForm"), nullptr);
    desktop.Enter([this] {
      forms.UnloadAll();
      desktop.EndProcess();
      throw ProcessEnded{};
    });
  });
  Meanwhile([&] {
    desktop.Enter([&] {
      outer.ShowModal();
      outer_ran_on = true;
    });
  });
  desktop.Run();
  EXPECT_TRUE(desktop.HasEnded());
  EXPECT_FALSE(outer_ran_on);
  EXPECT_FALSE(inner_ran_on);
  EXPECT_TRUE(forms.All().empty());
}

TEST_F(QtDesktopTest, AFileDialogTakesAPathOrNone) {
  const auto ask = [&](std::optional<std::string> reply) {
    Meanwhile([this, reply] {
      ASSERT_NE(desktop.OpenFileDialog(), nullptr);
      EXPECT_EQ(desktop.OpenFileDialog()->extension, "xls");
      desktop.AnswerFileDialog(reply);
    });
    std::optional<std::string> chosen;
    desktop.Enter([&] {
      chosen = desktop.ChooseFile({true, "导出", "*.xls", QDir::tempPath().toStdString(), "a.xls", "xls"});
    });
    return chosen;
  };
  QTemporaryDir used;
  const std::string chosen_there = used.filePath("x.xls").toStdString();
  EXPECT_EQ(ask(chosen_there), chosen_there);
  Meanwhile([&] {
    auto* dialog = Find<QFileDialog>("fileDialog");
    EXPECT_EQ(dialog->directory(), QDir(QDir::tempPath())) << "as it was asked for";
    EXPECT_TRUE(dialog->sidebarUrls().contains(QUrl::fromLocalFile(used.path()))) << "the one used last beside it";
    desktop.AnswerFileDialog({});
  });
  desktop.Enter([&] { desktop.ChooseFile({true, "导出", "*.xls", QDir::tempPath().toStdString()}); });
  EXPECT_EQ(ask({}), std::nullopt);
  EXPECT_EQ(NameFilters("工作簿|*.xls;*.xlsx|*.csv|*.csv"), (QStringList{"工作簿 (*.xls *.xlsx)", "*.csv"}));
}

TEST_F(QtDesktopTest, APopUpReturnsTheChosenIdOrNone) {
  const auto ask = [&](std::function<void()> act) {
    Meanwhile(std::move(act));
    std::optional<int> chosen;
    desktop.Enter([&] { chosen = desktop.PopUp({{"关闭(&C)", 6661, {}}, {"排列", 0, {{"层叠", 801, {}}}, true}}); });
    EXPECT_EQ(desktop.OpenPopUp(), nullptr);
    return chosen;
  };
  EXPECT_EQ(ask([] { Press(QApplication::activePopupWidget(), Qt::Key_C, "c"); }), 6661);
  EXPECT_EQ(ask([] { Press(QApplication::activePopupWidget(), Qt::Key_Escape); }), std::nullopt);
  EXPECT_EQ(ask([this] {
              EXPECT_EQ(desktop.OpenPopUp()->size(), 2U);
              desktop.AnswerPopUp(801);
            }),
            801);
}

TEST_F(QtDesktopTest, APictureShowsTheDialogOverTheForm) {
  QTemporaryDir directory;
  const QString file = directory.filePath("shot.png");
  EXPECT_FALSE(desktop.Shot(file.toStdString())) << "nothing is shown";
  forms.Get<AskingForm>(forms).Show();
  ASSERT_TRUE(desktop.Shot(file.toStdString()));
  const QImage alone(file);
  Meanwhile([&] {
    EXPECT_TRUE(desktop.Shot(file.toStdString()));
    desktop.AnswerBox(Answer::kOk);
  });
  desktop.Enter([&] { desktop.MsgBox({"入库添加成功!", box::kInformation, "信息"}); });
  const QImage with_box(file);
  EXPECT_FALSE(with_box.isNull());
  EXPECT_NE(with_box, alone);
}

TEST_F(QtDesktopTest, ASkinThatIsNoTextIsIgnored) {
  QTemporaryDir directory;
  const auto attach = [&](const char* name, const QByteArray& bytes) {
    QFile file(directory.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    desktop.AttachSkin(file.fileName().toStdString());
  };
  attach("bad.she", QByteArray("/* skin */\xFF\xFE\x00", 13));
  EXPECT_FALSE(qApp->styleSheet().contains("/* skin */"));
  attach("good.she", "/* skin */ QPushButton { color: red; }");
  EXPECT_TRUE(qApp->styleSheet().contains("/* skin */"));
  desktop.SetTheme(2);
  EXPECT_TRUE(qApp->styleSheet().contains("/* skin */")) << "the skin outlives a change of theme";
}

TEST(UnitsAndCharactersTest, CountIdeographsBeyondTheFirstPlaneOnce) {
  const QString text = QString::fromUtf8("a𠮷b");
  EXPECT_EQ(UnitsBefore(text, 2), 3);
  EXPECT_EQ(UnitsBefore(text, 9), 4);
  EXPECT_EQ(CharactersBefore(text, 3), 2U);
}

}  // namespace
}  // namespace luming
