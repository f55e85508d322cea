#include "screen/caption.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/control.h"
#include "screen/date_box.h"
#include "screen/messages.h"
#include "screen/option_button.h"
#include "screen/text_box.h"
#include "screen/tree.h"
#include "support/screen_test.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {
namespace {

class FieldsForm : public Form {
 public:
  explicit FieldsForm(Forms& registry) : Form(registry, "FieldsForm", "fields", WindowKind::kChild) {
    for (TextBox* box : {&text, &price, &quantity, &digits}) {
      box->change.Connect([this, box] { log.push_back(box->Name() + "=" + box->Text()); });
    }
    for (ComboBox* box : {&free, &fixed}) {
      box->change.Connect([this, box] { log.push_back(box->Name() + "=" + box->Text()); });
      box->click.Connect([this, box] { log.push_back(box->Name() + " clicked"); });
    }
    check.click.Connect([this] { log.push_back(check.Checked() ? "check on" : "check off"); });
    for (OptionButton* option : {&left, &right}) {
      option->click.Connect([this, option] { log.push_back(option->Name() + " chosen"); });
    }
  }
  Layout Arrange() const override {
    return Column({Group("texts", Fields(2, {text, price})), Hidden({quantity}), Row({digits})});
  }
  std::vector<std::string> TakeLog() { return std::exchange(log, {}); }

  TextBox text{this, "text", "Text", {.cut = 4}};
  TextBox price{this, "price", "Price", {.keys = KeyFilter::kPrice}};
  TextBox quantity{this, "quantity", "Quantity", {.keys = KeyFilter::kQuantity, .select_on_focus = true}};
  TextBox digits{this, "digits", "Digits", {.keys = KeyFilter::kDigits, .ime = Ime::kOperator}};
  TextBox brief{this, "brief", "Brief", {.max = 3}};
  ComboBox free{this, "free", "Free", {.items = {"one", "two", "three"}, .cut = 6}};
  ComboBox fixed{this, "fixed", "Fixed", {.style = ComboStyle::kFixed, .items = {"ant", "bee", "asp"}, .selected = 0}};
  CheckBox check{this, "check", "Check"};
  OptionButton left{this, "left", "Left", "side", true};
  OptionButton right{this, "right", "Right", "side"};
  OptionButton apart{this, "apart", "Apart", "other", true};
  DateBox date{this, "date", "Date"};
  Tree tree{this, "tree"};
  std::vector<std::string> log;
};

using Log = std::vector<std::string>;

class ControlsTest : public ScreenTest {
 protected:
  void Type(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) form.UserType(NextCodePoint(text, at));
  }
  void Press(int code) { form.UserKey({.code = code}); }
  FieldsForm form{forms};
};

TEST_F(ControlsTest, KeyFiltersDropWhatTheFieldDoesNotTake) {
  struct Case {
    TextBox& box;
    std::string typed;
    std::string taken;
  };
  const Case cases[] = {
      {form.price, ".12a.5.6-", "12.56"}, {form.price, "0.5", "0.5"},    {form.quantity, "-1/2.5x,+", "-1/2.5"},
      {form.digits, "1a2.3-", "123"},     {form.text, "甲b.-", "甲b.-"},
  };
  for (const Case& each : cases) {
    each.box.SetText("");
    each.box.SetFocus();
    Type(each.typed);
    EXPECT_EQ(each.box.Text(), each.taken) << each.box.Name() << " typed " << each.typed;
  }
  form.price.SetText("  ");
  EXPECT_FALSE(form.price.Accepts(U'.')) << "blanks count as empty";
  form.price.SetText("no filter for code");
  EXPECT_EQ(form.price.Text(), "no filter for code");
}

TEST_F(ControlsTest, EditingCountsCharactersNotBytes) {
  form.digits.SetFocus();
  form.text.SetText("药品甲");
  form.text.SetFocus();
  form.text.SetSelection(1, 1);
  Type("物");
  EXPECT_EQ(form.text.Text(), "药物甲");
  Press(key::kBackspace);
  EXPECT_EQ(form.text.Text(), "药甲");
  Press(key::kDelete);
  EXPECT_EQ(form.text.Text(), "药");
  Press(key::kHome);
  Press(key::kBackspace);
  EXPECT_EQ(form.text.Text(), "药");
  Type("x");
  Press(key::kEnd);
  Type("y");
  EXPECT_EQ(form.text.Text(), "x药y");
  form.text.SelectAll();
  Press(key::kDelete);
  EXPECT_EQ(form.text.Text(), "");
  Press(key::kDelete);
  EXPECT_EQ(form.text.SelStart(), 0U);
}

TEST_F(ControlsTest, TheLongestTextHoldsForTheOperatorAndNotForCode) {
  form.brief.SetFocus();
  Type("药品一二");
  EXPECT_EQ(form.brief.Text(), "药品一");
  form.brief.SelectAll();
  Type("a");
  EXPECT_EQ(form.brief.Text(), "a");
  form.brief.UserText("pasted");
  EXPECT_EQ(form.brief.Text(), "pas");
  form.brief.SetText("1234.5");
  EXPECT_EQ(form.brief.Text(), "1234.5");
  Press(key::kEnd);
  Press(key::kBackspace);
  EXPECT_EQ(form.brief.Text(), "1234.") << "what stands there is shortened by what was taken out, and no more";
}

TEST_F(ControlsTest, ChangeFiresOnceForEachDifferentText) {
  form.text.SetText("a");
  form.text.SetText("a");
  form.text.UserText("b");
  form.text.UserText("b");
  EXPECT_EQ(form.TakeLog(), (Log{"text=a", "text=b"}));
  form.text.SetReadOnly(true);
  form.text.SetFocus();
  Type("c");
  Press(key::kBackspace);
  EXPECT_EQ(form.text.Text(), "b");
}

TEST_F(ControlsTest, ASecondHandlerIsRefusedAndTheFirstOneStays) {
  EXPECT_THROW(form.check.click.Connect([] {}), std::logic_error);
  form.UserClick(form.check);
  EXPECT_EQ(form.TakeLog(), Log{"check on"});
}

TEST_F(ControlsTest, LeavingCutsToTheAnsiLimit) {
  form.text.SetFocus();
  form.text.SetText("甲乙丙");
  form.price.SetFocus();
  EXPECT_EQ(form.text.Text(), "甲乙");
  EXPECT_EQ(form.TakeLog(), (Log{"text=甲乙丙", "text=甲乙"}));
  form.free.SetFocus();
  Type("四个汉字");
  form.price.SetFocus();
  EXPECT_EQ(form.free.Text(), "四个汉");
}

TEST_F(ControlsTest, FocusSelectsOrSwitchesTheKeyboardWhereTheFieldAsks) {
  int switched = 0;
  forms.operator_ime = [&] { ++switched; };
  form.quantity.SetText("120");
  form.quantity.SetFocus();
  EXPECT_EQ(form.quantity.SelLength(), 3U);
  EXPECT_EQ(switched, 0);
  form.digits.SetFocus();
  EXPECT_EQ(switched, 1);
}

TEST_F(ControlsTest, FreeComboTakesAnyTextAndFixedOnlyItsEntries) {
  form.free.SetText("two");
  EXPECT_EQ(form.free.ListIndex(), 1);
  form.free.SetText("else");
  EXPECT_EQ(form.free.ListIndex(), -1);
  EXPECT_EQ(form.TakeLog(), (Log{"free=two", "free=else"}));

  form.fixed.SetText("bee");
  EXPECT_EQ(form.TakeLog(), (Log{"fixed=bee", "fixed clicked"}));
  EXPECT_THROW(form.fixed.SetText("wasp"), Failure);
  EXPECT_THROW(form.fixed.SetListIndex(3), Failure);
  EXPECT_EQ(form.fixed.Text(), "bee");
  form.fixed.Clear();
  EXPECT_EQ(form.fixed.Text(), "");
  form.free.Clear();
  EXPECT_EQ(form.free.Text(), "else") << "a free text outlives its list";
}

TEST_F(ControlsTest, KeysWalkAndSearchTheCombos) {
  form.fixed.SetFocus();
  Type("a");
  EXPECT_EQ(form.fixed.Text(), "asp") << "the next entry with that letter, not the present one";
  Type("A");
  EXPECT_EQ(form.fixed.Text(), "ant");
  Press(key::kUp);
  EXPECT_EQ(form.fixed.Text(), "ant");
  Press(key::kDown);
  EXPECT_EQ(form.fixed.Text(), "bee");

  form.free.SetText("old");
  form.free.SetFocus();
  Type("ne");
  Type("w");
  EXPECT_EQ(form.free.Text(), "new") << "entered with its text selected";
  Press(key::kBackspace);
  EXPECT_EQ(form.free.Text(), "ne");
  form.free.SetText("n");
  form.free.SelectAll();
  Type("no");
  EXPECT_EQ(form.free.Text(), "no") << "a selected text is replaced by its own letter, too";
}

TEST_F(ControlsTest, UserChoiceClosesTheList) {
  form.free.OpenList();
  form.free.UserChoose(2);
  EXPECT_FALSE(form.free.ListIsOpen());
  EXPECT_EQ(form.TakeLog(), (Log{"free=three", "free clicked"}));
}

TEST_F(ControlsTest, ChecksAndOptions) {
  form.UserClick(form.check);
  form.check.SetChecked(true);
  form.check.SetFocus();
  Press(key::kSpace);
  EXPECT_EQ(form.TakeLog(), (Log{"check on", "check off"}));

  form.UserClick(form.right);
  form.UserClick(form.right);
  EXPECT_TRUE(form.right.Chosen());
  EXPECT_FALSE(form.left.Chosen());
  EXPECT_TRUE(form.apart.Chosen()) << "another group";
  EXPECT_EQ(form.TakeLog(), (Log{"right chosen"}));
}

TEST_F(ControlsTest, DateBoxStartsTodayAndStepsByDays) {
  EXPECT_EQ(form.date.Text(), "2026-03-01");
  form.date.SetFocus();
  Press(key::kDown);
  EXPECT_EQ(form.date.Text(), "2026-02-28");
  Press(key::kUp);
  Press(key::kUp);
  EXPECT_EQ(form.date.Value(), DateTime(2026, 3, 2));
}

TEST_F(ControlsTest, ADateIsTypedPartByPart) {
  struct Case {
    const char* typed;
    const char* shown;
  };
  const Case cases[] = {
      {"2027-12-31", "2027-12-31"}, {"20271231", "2027-12-31"}, {"2027-3-7", "2027-03-07"},
      {"2027/3.", "2027-03-31"},    {"2027-02", "2027-02-28"},  // the last day, since the month has no 31
      {"2027-13-5", "2027-01-05"},                              // no month 13: the 3 is refused
      {"2027-02-31", "2027-02-03"},                             // no such day: the 1 is refused
      {"0001-02", "2026-02-28"},                                // nor a year 1: the last digit is refused, "-" goes on
      {"202", "2026-01-31"},        {"a2b0c2d8", "2028-01-31"}, {"2027-1-2999", "2027-01-29"},
      {"", "2026-01-31"},
  };
  for (const Case& one : cases) {
    form.date.SetValue(DateTime(2026, 1, 31, 8, 30, 0));
    form.text.SetFocus();
    form.date.SetFocus();
    Type(one.typed);
    EXPECT_EQ(form.date.Text(), one.shown) << one.typed;
    EXPECT_EQ(form.date.Value().Minute(), 30) << "the time of day stays";
  }
  form.date.SelectAll();
  Type("2030");
  EXPECT_EQ(form.date.Value().Year(), 2030) << "typing begins anew";
  form.date.SetReadOnly(true);
  form.date.SelectAll();
  Type("2031");
  EXPECT_EQ(form.date.Value().Year(), 2030);
}

TEST_F(ControlsTest, TypedPartsOfADateFireItsChange) {
  int changes = 0;
  form.date.change.Connect([&] { ++changes; });
  form.date.SetFocus();
  Type("2026-3-1");
  EXPECT_EQ(changes, 0) << "the date it was";
  form.date.SelectAll();
  Type("2026-12");
  EXPECT_EQ(changes, 2) << "January on the way to December";
}

TEST_F(ControlsTest, TreeForgetsAllBelowARemovedNode) {
  int clicked = -1;
  form.tree.node_click.Connect([&](int id) { clicked = id; });
  const int root = form.tree.AddNode(-1, "root");
  const int branch = form.tree.AddNode(root, "branch");
  const int leaf = form.tree.AddNode(branch, "leaf");
  form.tree.Select(leaf);
  EXPECT_EQ(clicked, -1);
  form.tree.UserSelect(leaf);
  EXPECT_EQ(clicked, leaf);
  form.tree.RemoveNode(branch);
  EXPECT_EQ(form.tree.Selected(), -1);
  EXPECT_TRUE(form.tree.Nodes()[2].removed);
  EXPECT_FALSE(form.tree.Nodes()[0].removed);
  EXPECT_THROW(form.tree.AddNode(branch, "orphan"), Failure);
}

TEST_F(ControlsTest, LayoutWalkTellsHiddenFieldsFromDrawnOnes) {
  Log seen;
  Walk(form.Arrange(), [&](const Control& field, bool hidden) { seen.push_back(field.Name() + (hidden ? "-" : "")); });
  EXPECT_EQ(seen, (Log{"text", "price", "quantity-", "digits"}));
  EXPECT_FALSE(IsDrawn(form.Arrange(), form.quantity));
  EXPECT_TRUE(IsDrawn(form.Arrange(), form.digits));
}

TEST_F(ControlsTest, MessagesAreNumberedInOneBoxAndLeaveTheFocusAtTheLast) {
  NumberedMessages none;
  EXPECT_TRUE(none.Pass(desktop));
  EXPECT_TRUE(desktop.boxes.empty());

  NumberedMessages messages(6);
  messages.Add(" 供货单位不能为空!", form.text);
  messages.Add(" 验收人不能为空!", form.price);
  EXPECT_FALSE(messages.Pass(desktop));
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.text, "系统提示您:\r\n\r\n      1 供货单位不能为空!\r\n      2 验收人不能为空!\r\n");
  EXPECT_EQ(box.style, 16);
  EXPECT_EQ(box.title, "提示");
  EXPECT_TRUE(form.price.HasFocus());
}

TEST(Caption, PlainAndMnemonic) {
  struct Case {
    const char* caption;
    const char* plain;
    char mnemonic;
  };
  const Case cases[] = {
      {"关闭(&Q)", "关闭", 'Q'},
      {"品名(F3)", "品名(F3)", 0},
      {"日  期：", "日  期", 0},
      {"&File: ", "File", 'F'},
      {"打印(&p)...", "打印...", 'P'},
      {"", "", 0},
      {"a&", "a", 0},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(PlainCaption(each.caption), each.plain);
    EXPECT_EQ(Mnemonic(each.caption), each.mnemonic) << each.caption;
  }
}

}  // namespace
}  // namespace luming
