#include "screen/forms.h"

#include "screen/button.h"
#include "screen/text_box.h"
#include "support/screen_test.h"
#include "util/failure.h"

namespace luming {
namespace {

using Log = std::vector<std::string>;

template <int kNumber, WindowKind kWindow>
class LoggedForm : public Form {
 public:
  static constexpr const char* kName = kNumber == 1 ? "One" : kNumber == 2 ? "Two" : kNumber == 3 ? "Main" : "Floating";
  LoggedForm(Forms& registry, Log& the_log) : Form(registry, kName, kName, kWindow), log(the_log) {}
  ~LoggedForm() override { log.push_back(std::string("~") + kName); }
  Layout Arrange() const override { return Column({field, button}); }
  void Load() override {
    log.push_back(std::string("load ") + kName);
    if (on_load) on_load();
  }
  void Activated() override { log.push_back(std::string("front ") + kName); }
  bool QueryUnload() override { return may_close; }
  void Unloading() override {
    log.push_back(std::string("unload ") + kName);
    if (on_unloading) on_unloading();
  }

  TextBox field{this, "field"};
  Button button{this, "button", "Go"};
  std::function<void()> on_load;
  std::function<void()> on_unloading;
  bool may_close = true;
  Log& log;
};
using One = LoggedForm<1, WindowKind::kChild>;
using Two = LoggedForm<2, WindowKind::kDialog>;
using Main = LoggedForm<3, WindowKind::kMain>;
using Floating = LoggedForm<4, WindowKind::kFloating>;

class FormsTest : public ::testing::Test {
 protected:
  Log TakeLog() { return std::exchange(log, {}); }
  template <class T>
  T& Get() {
    return forms.Get<T>(forms, log);
  }
  Log log;
  ScriptedDesktop desktop;
  FixedClock clock{DateTime(2026, 3, 1)};
  Forms forms{desktop, clock};
};

TEST_F(FormsTest, OneInstanceForEachClassUntilItIsClosed) {
  One& one = Get<One>();
  EXPECT_EQ(&one, &Get<One>());
  EXPECT_EQ(forms.Find("oNE"), &one);
  EXPECT_EQ(TakeLog(), Log{}) << "made, not loaded";
  one.Show();
  one.Show();
  EXPECT_EQ(TakeLog(), (Log{"load One", "front One"}));
  EXPECT_TRUE(one.Unload());
  EXPECT_EQ(TakeLog(), (Log{"unload One", "~One"}));
  EXPECT_EQ(forms.FindAs<One>(), nullptr);
  EXPECT_TRUE(forms.Shown().empty());
}

TEST_F(FormsTest, AFormClosedInItsOwnHandlerOutlivesTheHandler) {
  One& one = Get<One>();
  one.Show();
  one.button.click.Connect([&] {
    one.Unload();
    EXPECT_EQ(forms.Find("One"), nullptr);
    one.log.push_back("still here: " + one.field.Name());
    Get<One>();
  });
  TakeLog();
  one.UserClick(one.button);
  EXPECT_EQ(TakeLog(), (Log{"unload One", "still here: field", "~One"}));
  EXPECT_NE(forms.Find("One"), nullptr) << "the next use has made a new one";
}

TEST_F(FormsTest, AFormMayRefuseToCloseAndTheFrameAsksIt) {
  One& one = Get<One>();
  one.Show();
  one.may_close = false;
  one.UserClose();
  EXPECT_TRUE(one.IsShown());
  one.may_close = true;
  one.UserClose();
  EXPECT_EQ(forms.Find("One"), nullptr);
}

TEST_F(FormsTest, AFormThatUnloadsOrFailsInItsLoadIsNotShown) {
  {
    Forms::HandlerScope scope(forms);
    One& one = Get<One>();
    one.on_load = [&] { one.Unload(); };
    one.Show();
    EXPECT_FALSE(one.IsShown());
    Two& two = Get<Two>();
    two.on_load = [] { throw StandardFailure(failure::kInvalidNull); };
    EXPECT_THROW(two.ShowModal(), Failure);
    EXPECT_FALSE(two.IsShown());
  }
  EXPECT_TRUE(forms.All().empty());
  EXPECT_EQ(TakeLog(), (Log{"load One", "unload One", "load Two", "unload Two", "~One", "~Two"}));
}

TEST_F(FormsTest, AModalFormReturnsToItsCallerWhenUnloadedOrHidden) {
  Forms::HandlerScope scope(forms);
  desktop.modals = {[](Form& form) {
                      EXPECT_TRUE(form.IsModal());
                      form.Find("field")->SetCaption("left behind");
                    },
                    [](Form& form) { form.UserClose(); }};
  Two& two = Get<Two>();
  two.ShowModal();
  EXPECT_EQ(two.field.Caption(), "left behind") << "readable after its end within the caller's handler";
  EXPECT_EQ(forms.Find("Two"), nullptr);
  EXPECT_FALSE(two.IsModal());

  desktop.modals = {[](Form& form) { form.Hide(); }};
  Get<Two>().ShowModal();
  EXPECT_NE(forms.Find("Two"), nullptr);
}

TEST_F(FormsTest, TheMainWindowNeverCoversItsChildren) {
  Main& main = Get<Main>();
  One& one = Get<One>();
  Two& two = Get<Two>();
  main.Show();
  one.Show();
  main.Show();
  EXPECT_EQ(forms.Top(), &one);
  two.Show();
  EXPECT_EQ(forms.Top(), &two);
  EXPECT_EQ(forms.ActiveChild(), &one);
  one.Hide();
  EXPECT_EQ(forms.ActiveChild(), nullptr);
  EXPECT_EQ(forms.Top(), &two);
}

TEST_F(FormsTest, UnloadAllAsksNobodyStartsAtTheLastAndPassesAFailureOn) {
  One& one = Get<One>();
  Two& two = Get<Two>();
  one.Show();
  two.Show();
  one.may_close = false;
  two.on_unloading = [] { throw StandardFailure(failure::kFileAccess); };
  TakeLog();
  EXPECT_THROW(forms.UnloadAll(), Failure);
  EXPECT_EQ(TakeLog(), (Log{"unload Two", "unload One", "~Two", "~One"}));
  EXPECT_TRUE(forms.All().empty());
}

TEST_F(FormsTest, AFloatingFormLeavesTheKeyboardUntilItIsGivenIt) {
  One& one = Get<One>();
  one.Show();
  Floating& list = Get<Floating>();
  list.TakeKeyboard();
  EXPECT_FALSE(list.IsShown()) << "only what is shown can have it";
  list.Show();
  list.Show();
  EXPECT_EQ(forms.Top(), &one);
  EXPECT_EQ(forms.Shown(), (std::vector<Form*>{&list, &one}));
  list.TakeKeyboard();
  EXPECT_EQ(forms.Top(), &list);
  EXPECT_EQ(list.ActiveControl(), &list.field);
  list.Hide();
  EXPECT_EQ(forms.Top(), &one);
}

TEST_F(FormsTest, UnloadAllMayBeCalledFromAFormThatIsClosing) {
  One& one = Get<One>();
  Get<Two>().Show();
  one.Show();
  one.on_unloading = [&] { forms.UnloadAll(); };
  one.Unload();
  EXPECT_TRUE(forms.All().empty());
}

TEST_F(FormsTest, TheEndOfTheProcessUnwindsModalFormsAndHandlers) {
  One& one = Get<One>();
  one.Show();
  bool ran_on = false;
  one.button.click.Connect([&] {
    Get<Two>().ShowModal();
    ran_on = true;
  });
  desktop.modals = {[&](Form&) {
    forms.UnloadAll();
    desktop.EndProcess();
    throw ProcessEnded{};
  }};
  EXPECT_THROW(one.UserClick(one.button), ProcessEnded);
  EXPECT_FALSE(ran_on);
  EXPECT_TRUE(forms.All().empty());
}

}  // namespace
}  // namespace luming
