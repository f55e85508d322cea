#include "masterdata/clean_control.h"

#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/label.h"
#include "screen/text_box.h"
#include "support/screen_test.h"

namespace luming {
namespace {

class EntryForm : public Form {
 public:
  explicit EntryForm(Forms& registry) : Form(registry, "EntryForm", "entry", WindowKind::kChild) {
    kept_text.SetTag("1");
    kept_list.SetTag("1");
    plain_label.SetTag("0");
    for (TextBox* box : {&text, &kept_text}) box->SetText("typed");
    for (ComboBox* list : {&free, &kept_list}) list->SetText("second");
    for (ComboBox* list : {&fixed, &empty}) list->SetListIndex(list->Items().empty() ? -1 : 1);
    date.SetValue(DateTime(2020, 5, 6));
  }
  Layout Arrange() const override { return Hidden({}); }

  TextBox text{this, "text"};
  TextBox kept_text{this, "kept_text"};
  ComboBox free{this, "free", "", {.items = {"first", "second"}}};
  ComboBox kept_list{this, "kept_list", "", {.items = {"first", "second"}}};
  ComboBox fixed{this, "fixed", "", {.style = ComboStyle::kFixed, .items = {"first", "second"}}};
  ComboBox empty{this, "empty", "", {.style = ComboStyle::kFixed}};
  DateBox date{this, "date"};
  Label label{this, "label"};
  Label plain_label{this, "plain_label"};
  CheckBox check{this, "check", "check"};
};

class CleanControlTest : public ScreenTest {
 protected:
  EntryForm form{forms};
};

TEST_F(CleanControlTest, ClearingSparesTaggedFields) {
  CleanControl::CleanControlText(form);
  EXPECT_EQ(form.text.Text(), "");
  EXPECT_EQ(form.kept_text.Text(), "typed");
  EXPECT_EQ(form.free.Text(), "");
  EXPECT_EQ(form.kept_list.Text(), "second");
  EXPECT_EQ(form.fixed.Text(), "first") << "a fixed list shows its first entry";
  EXPECT_EQ(form.empty.Text(), "");
  EXPECT_EQ(form.date.Value(), clock.Today());
}

TEST_F(CleanControlTest, ColourGoesToWhatShowsItAndIsNotTaggedZero) {
  CleanControl::SetControlColor(form);
  EXPECT_EQ(form.label.BackColour(), 0xC0DDFAU);
  EXPECT_EQ(form.check.BackColour(), 0xC0DDFAU);
  EXPECT_EQ(form.plain_label.BackColour(), Control::kNoColour);
  EXPECT_EQ(form.text.BackColour(), Control::kNoColour);
}

}  // namespace
}  // namespace luming
