#include "desktop/qt_desktop.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QTemporaryDir>

#include "desktop/file_filter.h"
#include "desktop/qt_text.h"
#include "desktop_fixture.h"

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
  EXPECT_EQ(ask("/tmp/x.xls"), "/tmp/x.xls");
  EXPECT_EQ(ask({}), std::nullopt);
  EXPECT_EQ(NameFilters("工作簿|*.xls;*.xlsx|全部|*.*"), (QStringList{"工作簿 (*.xls *.xlsx)", "全部 (*.*)"}));
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
