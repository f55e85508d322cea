#include <QAbstractItemView>
#include <QDateEdit>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>

#include "desktop_fixture.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/text_box.h"

namespace luming {
namespace {

class EntryForm : public Form {
 public:
  static constexpr const char* kName = "EntryForm";
  explicit EntryForm(Forms& forms) : Form(forms, kName, "录入", WindowKind::kDialog) {
    PFJ.change.Connect(this, &EntryForm::PriceChanged);
  }

  TextBox PFJ{this, "PFJ", "进货价格", {.keys = KeyFilter::kPrice}};
  TextBox PH{this, "PH", "批号(&P)", {.cut = 4}};
  ComboBox GHDW{this, "GHDW", "供货单位", {.items = {"华康医药", "同济药业"}}};
  ComboBox FKBZ{this, "FKBZ", "付款标志", {.style = ComboStyle::kFixed, .items = {"是", "否"}, .selected = 0}};
  DateBox XQ{this, "XQ", "效期"};
  Button Command1{this, "Command1", "确定(&Y)", &EntryForm::Command1_Click};
  Button Command2{this, "Command2", "失败(&F)", &EntryForm::Command2_Click};

  Layout Arrange() const override {
    return Column({Fields(2, {PFJ, PH, GHDW, FKBZ, XQ}), Row({Space(), Command1, Command2})});
  }
  void Command1_Click() { ++confirmed; }
  void Command2_Click() { throw Failure(3704, "记录集未打开。"); }
  void PriceChanged() { ++price_changes; }

  int confirmed = 0;
  int price_changes = 0;

 protected:
  void FormKeyDown(KeyEvent& event) override { SendTab(*this, event.code); }
};

class EntryTest : public DesktopTest {
 protected:
  EntryTest() {
    form.Show();
    Settle();
  }
  static QLineEdit* Line(const char* name) { return Find<QLineEdit>(name); }
  EntryForm& form = forms.Get<EntryForm>(forms);
};

TEST_F(EntryTest, TypingReachesTheModelThroughItsFilter) {
  Type(Line("PFJ"), ".1x2.5.0");
  EXPECT_EQ(form.PFJ.Text(), "12.50");
  EXPECT_EQ(Line("PFJ")->text(), "12.50");
  EXPECT_EQ(form.price_changes, 5);

  QInputMethodEvent composed;
  composed.setCommitString("壹");
  QCoreApplication::sendEvent(Line("PFJ"), &composed);
  EXPECT_EQ(form.PFJ.Text(), "12.50");

  Press(Line("PFJ"), Qt::Key_Home);
  Press(Line("PFJ"), Qt::Key_Delete);
  EXPECT_EQ(form.PFJ.Text(), "2.50") << "an edit that is not at the end of the text";
}

TEST_F(EntryTest, EnterWalksSelectsAndDropsListsDown) {
  form.PH.SetText("A1");
  Press(Line("PFJ"), Qt::Key_Return);
  EXPECT_EQ(form.ActiveControl(), &form.PH);
  EXPECT_TRUE(Line("PH")->hasFocus());
  EXPECT_EQ(Line("PH")->selectedText(), "A1");

  Press(Line("PH"), Qt::Key_Return);
  EXPECT_EQ(form.ActiveControl(), &form.GHDW);
  auto* supplier = Find<QWidget>("GHDW");
  auto* list = supplier->findChild<QAbstractItemView*>("dropList");
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->isVisible());

  Press(supplier, Qt::Key_Down);
  EXPECT_EQ(form.GHDW.Text(), "华康医药");
  Press(supplier, Qt::Key_Return);
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(form.ActiveControl(), &form.FKBZ);

  // A list to choose from stays closed to typing; a free one takes any text, edited in its middle, too.
  Press(Find<QWidget>("FKBZ"), Qt::Key_Escape);
  Type(Find<QWidget>("FKBZ"), "x");
  EXPECT_EQ(form.FKBZ.Text(), "是");
  form.GHDW.SetFocus();
  Type(supplier, "abc");
  Press(supplier, Qt::Key_Left);
  Press(supplier, Qt::Key_Backspace);
  EXPECT_EQ(form.GHDW.Text(), "ac");
}

TEST_F(EntryTest, AListOpensAndChoosesByMouse) {
  auto* paid = Find<QWidget>("FKBZ");
  auto* list = paid->findChild<QAbstractItemView*>("dropList");
  const QPoint arrow(paid->width() - 8, paid->height() / 2);
  Click(paid, arrow);
  EXPECT_EQ(form.ActiveControl(), &form.FKBZ);
  ASSERT_TRUE(list->isVisible());
  Click(list->viewport(), list->visualRect(list->model()->index(1, 0)).center());
  EXPECT_EQ(form.FKBZ.Text(), "否");
  EXPECT_FALSE(list->isVisible());

  Click(paid, arrow);
  EXPECT_TRUE(list->isVisible());
  Click(paid, arrow);
  EXPECT_FALSE(list->isVisible());
  Click(paid->findChild<QLineEdit*>(), QPoint(4, 4));
  EXPECT_TRUE(list->isVisible()) << "a list to choose from opens by a click anywhere";
  Click(Line("PH"), QPoint(4, 4));
  EXPECT_FALSE(list->isVisible());
}

TEST_F(EntryTest, LeavingCutsAndTheViewFollowsTheModel) {
  form.PH.SetFocus();
  Type(Line("PH"), "ABCDEF");
  Press(Line("PH"), Qt::Key_Tab);
  EXPECT_EQ(Line("PH")->text(), "ABCD");

  form.PH.SetEnabled(false);
  form.PFJ.SetVisible(false);
  form.PH.SetText("X");
  EXPECT_FALSE(Line("PH")->isEnabled());
  EXPECT_TRUE(Line("PFJ")->isHidden());
  EXPECT_EQ(Line("PH")->text(), "X");

  auto* date = Find<QDateEdit>("XQ");
  EXPECT_EQ(date->date(), QDate(2026, 3, 1));
  date->setDate(QDate(2027, 12, 31));
  EXPECT_EQ(form.XQ.Text(), "2027-12-31");
  form.XQ.SetFocus();
  Press(date, Qt::Key_Up);
  EXPECT_EQ(date->date(), QDate(2028, 1, 1));
}

TEST_F(EntryTest, ADateIsTypedAtTheWidgetAndByScriptsAlike) {
  auto* date = Find<QDateEdit>("XQ");
  form.XQ.SetFocus();
  for (const auto& [typed, shown] : {std::pair{"2031-11-30", "2031-11-30"},
                                     {"20290507", "2029-05-07"},
                                     {"2030/3/9", "2030-03-09"},
                                     {"2032.12.1", "2032-12-01"}}) {
    form.PH.SetFocus();
    form.XQ.SetFocus();
    Type(date, typed);
    Press(date, Qt::Key_F5);
    EXPECT_EQ(form.XQ.Text(), shown) << typed;
  }
  form.XQ.SelectAll();
  for (const char digit : std::string("2029-05-07")) form.UserType(static_cast<char32_t>(digit));
  EXPECT_EQ(date->date(), QDate(2029, 5, 7));
}

TEST_F(EntryTest, LettersOfCaptionsClickAndMoveTheFocus) {
  Press(Line("PFJ"), Qt::Key_Y, {}, Qt::AltModifier);
  EXPECT_EQ(form.confirmed, 1);
  Press(Find<QPushButton>("Command1"), Qt::Key_P, {}, Qt::AltModifier);
  EXPECT_TRUE(Line("PH")->hasFocus());
  Press(Line("PH"), Qt::Key_Z, "z", Qt::AltModifier);
  EXPECT_EQ(form.PH.Text(), "") << "a letter that no caption has";
}

TEST_F(EntryTest, AFailureOfAHandlerIsShownAndTheProgramGoesOn) {
  bool shown = false;
  Meanwhile([&] {
    ASSERT_NE(desktop.OpenBox(), nullptr);
    shown = desktop.OpenBox()->text.find("记录集未打开。") != std::string::npos;
    desktop.AnswerBox(Answer::kOk);
  });
  Find<QPushButton>("Command2")->click();
  EXPECT_TRUE(shown);
  EXPECT_EQ(desktop.OpenBox(), nullptr);
  Find<QPushButton>("Command1")->click();
  EXPECT_EQ(form.confirmed, 1);
}

}  // namespace
}  // namespace luming
