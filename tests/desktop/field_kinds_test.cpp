#include <QAbstractButton>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTreeWidget>

#include "desktop_fixture.h"
#include "screen/check_box.h"
#include "screen/label.h"
#include "screen/option_button.h"
#include "screen/picture.h"
#include "screen/progress_bar.h"
#include "screen/text_box.h"
#include "screen/tool_bar.h"
#include "screen/tree.h"

namespace luming {
namespace {

class KindsForm : public Form {
 public:
  static constexpr const char* kName = "KindsForm";
  explicit KindsForm(Forms& forms) : Form(forms, kName, "各种字段", WindowKind::kDialog) {
    bar.button_click.Connect(this, &KindsForm::Pressed);
    tree.node_click.Connect(this, &KindsForm::NodeClicked);
    refusing.click.Connect(this, &KindsForm::Refuse);
    image.click.Connect(this, &KindsForm::ImageClicked);
    lock.mouse_move.Connect([this] { lock.SetBorderStyle(1); });
  }

  ToolBar bar{this, "bar", {{"打印", "print"}, {"导出到Excel", "export", true, false}, {"关闭(&Q)", "close"}}};
  Tree tree{this, "tree"};
  CheckBox refusing{this, "refusing", "停用"};
  OptionButton first{this, "first", "按编码", "order", true};
  OptionButton second{this, "second", "按品名", "order"};
  TextBox memo{this, "memo", "备注", {.multi_line = true}};
  TextBox log{this, "log", "", {.multi_line = true}};
  ProgressBar done{this, "done"};
  Label amount{this, "amount", "12.50"};
  Picture image{this, "image"};
  Picture lock{this, "lock", Emblem::kLock};
  TextBox secret{this, "secret", "口令", {.masked = true}};
  TextBox parked{this, "parked", "不显示"};

  Layout Arrange() const override {
    return Column({bar, Row({tree, memo}), done, log,
                   Row({refusing, first, second, Space(), Layout(amount).Titled("进货金额")}), image,
                   Layout(lock).Width(4).Height(2), secret, Hidden({parked})});
  }
  void Pressed(const std::string& which) { pressed.push_back(which); }
  void NodeClicked(int id) { clicked.push_back(id); }
  void Refuse() { refusing.SetChecked(false); }
  void ImageClicked() { ++image_clicks; }

  std::vector<std::string> pressed;
  std::vector<int> clicked;
  int image_clicks = 0;
};

class FieldKindsTest : public DesktopTest {
 protected:
  FieldKindsTest() {
    root = form.tree.AddNode(-1, "所有收费项目");
    child = form.tree.AddNode(root, "西药费");
    form.tree.SetExpanded(root, true);
    form.Show();
    Settle();
  }
  static QLabel* LabelOf(const char* text) {
    for (QWidget* widget : QApplication::allWidgets()) {
      auto* label = dynamic_cast<QLabel*>(widget);
      if (label && label->text() == text) return label;
    }
    return nullptr;
  }
  KindsForm& form = forms.Get<KindsForm>(forms);
  int root = 0;
  int child = 0;
};

TEST_F(FieldKindsTest, ClicksAreTheModels) {
  auto* check = Find<QAbstractButton>("refusing");
  check->click();
  EXPECT_FALSE(check->isChecked()) << "the handler took the tick back";
  Find<QAbstractButton>("second")->click();
  EXPECT_FALSE(Find<QAbstractButton>("first")->isChecked());
  EXPECT_TRUE(form.second.Chosen());
  Find<QAbstractButton>("second")->click();
  EXPECT_TRUE(Find<QAbstractButton>("second")->isChecked()) << "an option is not cleared by a second click";
}

TEST_F(FieldKindsTest, ToolBarTellsItsKeysAndGreysItsButtons) {
  const auto buttons = Find<QWidget>("bar")->findChildren<QToolButton*>();
  ASSERT_EQ(buttons.size(), 3);
  for (QToolButton* button : buttons) button->click();
  EXPECT_EQ(form.pressed, (std::vector<std::string>{"print", "close"}));
  form.bar.SetButtonEnabled("export", true);
  buttons[1]->click();
  EXPECT_EQ(form.pressed.back(), "export");
}

TEST_F(FieldKindsTest, TreeFollowsTheModelAndTellsClicksAndKeys) {
  auto* tree = Find<QTreeWidget>("tree");
  ASSERT_EQ(tree->topLevelItemCount(), 1);
  EXPECT_TRUE(tree->topLevelItem(0)->isExpanded());
  form.tree.SetFocus();
  form.tree.Select(root);
  Settle();
  EXPECT_TRUE(form.clicked.empty()) << "a selection by code is no click";
  Press(tree, Qt::Key_Down);
  EXPECT_EQ(form.clicked, (std::vector<int>{child}));
  emit tree->itemClicked(tree->topLevelItem(0), 0);
  EXPECT_EQ(form.clicked.back(), root);

  form.tree.SetNodeImage(root, "Some");
  Settle();
  EXPECT_FALSE(tree->topLevelItem(0)->icon(0).isNull());
  EXPECT_TRUE(tree->topLevelItem(0)->child(0)->icon(0).isNull());

  form.tree.RemoveNode(child);
  form.tree.AddNode(root, "针剂");
  Settle();
  ASSERT_EQ(tree->topLevelItem(0)->childCount(), 1);
  EXPECT_EQ(tree->topLevelItem(0)->child(0)->text(0), "针剂");
}

TEST_F(FieldKindsTest, ValuesHaveTitlesAndHiddenFieldsNoWidget) {
  ASSERT_NE(LabelOf("进货金额"), nullptr);
  form.amount.SetVisible(false);
  EXPECT_TRUE(LabelOf("进货金额")->isHidden());
  EXPECT_EQ(Find<QWidget>("parked"), nullptr);
  EXPECT_EQ(LabelOf("不显示"), nullptr);
}

TEST_F(FieldKindsTest, ALogGrowsAtItsEndAndStaysThere) {
  form.log.SetReadOnly(true);
  auto* log = Find<QPlainTextEdit>("log");
  EXPECT_TRUE(log->isReadOnly());
  for (int line = 1; line <= 500; ++line) form.log.AppendText("第" + std::to_string(line) + "行\r\n");
  QTRY_COMPARE(log->blockCount(), 501);
  EXPECT_EQ(log->verticalScrollBar()->value(), log->verticalScrollBar()->maximum());
  form.log.SetText("新的");
  QTRY_COMPARE(log->toPlainText(), QString("新的"));
}

TEST_F(FieldKindsTest, AProgressBarShowsItsShare) {
  auto* bar = Find<QProgressBar>("done");
  EXPECT_EQ(bar->value(), bar->minimum());
  form.done.SetShare(0.5);
  EXPECT_EQ(bar->value() * 2, bar->maximum());
  form.done.SetShare(7);
  EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(FieldKindsTest, MemoTakesLinesAndAPictureOnlyWhatIsOne) {
  form.memo.SetFocus();
  auto* memo = Find<QPlainTextEdit>("memo");
  Type(memo, "ab");
  Press(memo, Qt::Key_Return, "\r");
  Type(memo, "c");
  EXPECT_EQ(form.memo.Text(), "ab\nc");

  auto* picture = Find<QWidget>("image");
  QTemporaryDir directory;
  QFile bad(directory.filePath("bad.jpg"));
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write("no picture");
  bad.close();
  form.image.SetFile(bad.fileName().toStdString());
  EXPECT_TRUE(picture->isHidden());
  const QString good = directory.filePath("good.png");
  ASSERT_TRUE(QImage(40, 30, QImage::Format_RGB32).save(good));
  form.image.SetFile(good.toStdString());
  EXPECT_FALSE(picture->isHidden());
  EXPECT_EQ(picture->sizeHint(), QSize(40, 30));
}

TEST_F(FieldKindsTest, APictureWithoutAFileShowsItsEmblemAndFeelsTheMouse) {
  auto* widget = Find<QWidget>("lock");
  EXPECT_TRUE(widget->isVisible());
  EXPECT_FALSE(Find<QWidget>("image")->isVisible()) << "nothing to show takes no room";
  const QImage before = widget->grab().toImage();
  QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
  QCoreApplication::sendEvent(widget, &enter);
  EXPECT_EQ(form.lock.BorderStyle(), 1);
  EXPECT_NE(widget->grab().toImage(), before) << "the line around it is drawn";
}

}  // namespace
}  // namespace luming
