#include "stock/item_picker.h"

#include "screen/grid.h"
#include "screen/text_box.h"
#include "support/store_test.h"
#include "util/text.h"

namespace luming {
namespace {

/// The search pane of most documents, and those that do something in their own way.
const PickerSettings kUsual{.columns = StandardColumns({.LSJ = "0.000", .PFJ = "￥0.0000"})};
const PickerSettings kInStock{.search = PickerSearch::kDrugsWithStock, .columns = kUsual.columns};
const PickerSettings kItems{.search = PickerSearch::kItems, .columns = kUsual.columns};
const PickerSettings kThroughGateway{.reading = PickerReading::kOpenRs, .columns = kUsual.columns};
const PickerSettings kWithoutKeys{.f2 = F2Key::kDoesNothing, .enter = EnterKey::kLeftAlone, .columns = kUsual.columns};
const PickerSettings kShort{.columns = StandardColumns({.CLLSJ = "0.0000"}, 11)};
const PickerSettings kWholesale{.columns = WholesaleColumns()};

/// A screen with nothing but a pane.
class PaneForm : public Form {
 public:
  PaneForm(AppContext& app, const PickerSettings& settings)
      : Form(app.forms, "PaneForm", "pane", WindowKind::kChild), picker(this, app, settings) {
    picker.picked.Connect([this](PickedBy) { picks.push_back(picker.ActiveCode()); });
  }
  Layout Arrange() const override { return picker.Arrange(); }

  ItemPicker picker;
  TextBox after{this, "after"};
  std::vector<std::string> picks;

 protected:
  void Load() override { picker.Load(); }
  void FormKeyDown(KeyEvent& event) override { picker.FormKeyDown(event); }
};

class ItemPickerTest : public StoreTest {
 protected:
  PaneForm& Open(const PickerSettings& settings = kUsual) {
    forms_.push_back(std::make_unique<PaneForm>(app, settings));
    forms_.back()->EnsureLoaded();
    TakeSent();
    return *forms_.back();
  }
  std::string Codes(const PaneForm& form) {
    std::vector<std::string> codes;
    for (int row = 1; row <= form.picker.Results().MaxRows(); ++row)
      codes.push_back(form.picker.Results().Text(row, 1));
    return Join(codes, " ");
  }

 private:
  std::vector<std::unique_ptr<PaneForm>> forms_;
};

TEST_F(ItemPickerTest, StatementsNameClassColumnTextAndFilter) {
  struct Case {
    const PickerSettings& settings;
    const char* item_class;
    const char* mode;
    bool in_stock;
    const char* typed;
    const char* sent;
  };
  const std::vector<Case> cases = {
      {kUsual, "药品", "拼音码", false, "amx", "exec Get_YP_JCTestYK '1','PYDM','amx%','0','1','西药库'"},
      {kUsual, "药品", "拼音码", true, "amx", "exec Get_YP_JCTestYK '1','PYDM','amx%' ,'1','1','西药库'"},
      {kUsual, "全部", "五笔码", false, " a'b ", "exec Get_YP_JCTestYK '0','WBDM','ab%','0','1','西药库'"},
      {kUsual, "检查及治疗", "编码", true, "'", "exec Get_YP_JCTestYK '2','YPBM','%' ,'1','1','西药库'"},
      {kInStock, "全部", "编码", false, "1", "exec Get_YP_JCTestYK '1','YPBM','1%' ,'1','1','西药库'"},
      {kItems, "检查及治疗", "拼音码", false, "x", "exec GET_YP_JC2 '2','PYDM','x%','0'"},
      {kItems, "检查及治疗", "五笔码", true, "x", "exec GET_YP_JC2 '2','WBDM','x%' ,'1'"},
  };
  for (const Case& c : cases) {
    PaneForm& form = Open(c.settings);
    form.picker.SFLB.SetText(c.item_class);
    form.picker.CXFS.SetText(c.mode);
    form.picker.KCXS.SetChecked(c.in_stock);
    form.picker.PM.UserText(c.typed);
    EXPECT_EQ(TakeSent(), std::vector<std::string>{c.sent});
  }
}

TEST_F(ItemPickerTest, EveryKeystrokeSearches) {
  PaneForm& form = Open();
  form.picker.PM.SetFocus();
  Type(form, "am");
  EXPECT_EQ(TakeSent(), (std::vector<std::string>{"exec Get_YP_JCTestYK '1','PYDM','a%','0','1','西药库'",
                                                  "exec Get_YP_JCTestYK '1','PYDM','am%','0','1','西药库'"}));
  EXPECT_EQ(Codes(form), "100001");
  form.picker.PM.UserText("");
  EXPECT_EQ(Codes(form), "100002 100003 100001");
  form.picker.PM.UserText("zzz");
  EXPECT_EQ(Codes(form), "");
}

TEST_F(ItemPickerTest, TheStockFilterWaitsForTheNextSearch) {
  PaneForm& form = Open();
  form.picker.PM.SetFocus();
  form.picker.SearchStart();
  Press(form, key::kF2);
  EXPECT_TRUE(form.picker.KCXS.Checked());
  EXPECT_EQ(Codes(form), "100002 100003 100001");
  form.picker.SearchStart();
  EXPECT_EQ(Codes(form), "100002");
}

TEST_F(ItemPickerTest, F2AndEnterAreLeftAloneWhereAScreenSaysSo) {
  for (const PickerSettings* settings : {&kUsual, &kWithoutKeys}) {
    PaneForm& form = Open(*settings);
    form.picker.SFLB.SetFocus();
    Press(form, key::kF2);
    Press(form, key::kEnter);
    EXPECT_EQ(form.picker.KCXS.Checked(), settings == &kUsual);
    EXPECT_EQ(form.ActiveControl() == &form.picker.CXFS, settings == &kUsual);
  }
}

TEST_F(ItemPickerTest, KeysReachTheFieldsOfThePane) {
  PaneForm& form = Open();
  const std::vector<std::pair<int, Control*>> keys = {
      {key::kF3, &form.picker.PM}, {key::kF4, &form.picker.SFLB}, {key::kF5, &form.picker.CXFS}};
  for (const auto& [code, field] : keys) {
    Press(form, code);
    EXPECT_EQ(form.ActiveControl(), field);
  }
  Press(form, key::kEnter);
  EXPECT_EQ(form.ActiveControl(), &form.picker.KCXS) << "Enter walks on";
}

TEST_F(ItemPickerTest, EnterGoesFromTheTextToTheListAndTakesTheMatch) {
  PaneForm& form = Open();
  form.picker.PM.SetFocus();
  Type(form, "t");
  Press(form, key::kEnter);
  EXPECT_EQ(form.ActiveControl(), &form.picker.Results());
  EXPECT_TRUE(form.picker.Results().RowMode());
  Press(form, key::kEnter);
  EXPECT_EQ(form.picks, std::vector<std::string>{"100003"});

  form.picker.PM.UserText("");
  form.picker.Results().UserDoubleClick(1, 2);
  EXPECT_EQ(form.picks.back(), "100002");
}

TEST_F(ItemPickerTest, EnterOnAnEmptyListTakesNothing) {
  PaneForm& form = Open();
  form.picker.PM.SetFocus();
  Type(form, "q");
  Press(form, key::kEnter);
  Press(form, key::kEnter);
  EXPECT_EQ(form.picker.ActiveCode(), "");
  EXPECT_TRUE(desktop.boxes.empty());
}

TEST_F(ItemPickerTest, TheSearchModeIsTheOperators) {
  EXPECT_EQ(Open().picker.CXFS.Text(), "拼音码");
  app.SearchType = "编码";
  EXPECT_EQ(Open().picker.CXFS.Text(), "编码");
}

TEST_F(ItemPickerTest, ColumnsShowTheirFieldsInTheScreensPictures) {
  const std::vector<std::pair<const PickerSettings*, const char*>> rows = {
      {&kUsual, "100001|阿莫西林胶囊|0.25g*10粒|盒|望川制药|0|15.500|￥12.0000|10|粒|1.55|13"},
      {&kShort, "100001|阿莫西林胶囊|0.25g*10粒|盒|望川制药|0|15.5|12|10|粒|1.5500"},
      {&kWholesale, "100001|阿莫西林胶囊|0.25g*10粒|盒|望川制药|0|13.000|10|12"},
  };
  for (const auto& [settings, row] : rows) {
    PaneForm& form = Open(*settings);
    form.picker.PM.UserText("a");
    const Grid& list = form.picker.Results();
    ASSERT_EQ(list.MaxRows(), 1);
    std::vector<std::string> cells;
    for (int column = 1; column <= list.MaxCols(); ++column) cells.push_back(list.Text(1, column));
    EXPECT_EQ(Join(cells, "|"), row);
  }
}

TEST_F(ItemPickerTest, FailuresLeaveTheListAndAreTold) {
  PaneForm& own = Open();
  own.picker.PM.UserText("a");
  PaneForm& gateway = Open(kThroughGateway);
  gateway.picker.PM.UserText("a");
  Run("Drop Procedure Get_YP_JCTestYK");

  own.picker.PM.UserText("am");
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.title, "提示");
  EXPECT_TRUE(box.text.starts_with("出错信息:")) << box.text;
  EXPECT_EQ(Codes(own), "100001");

  gateway.picker.PM.UserText("am");
  for (const std::string& text : desktop.TakeBoxTexts()) EXPECT_TRUE(text.starts_with("错误号：")) << text;
  EXPECT_EQ(Codes(gateway), "100001");
}

}  // namespace
}  // namespace luming
