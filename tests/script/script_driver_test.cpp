#include "script/script_driver.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/forms.h"
#include "screen/grid.h"
#include "screen/label.h"
#include "screen/main_frame.h"
#include "screen/option_button.h"
#include "screen/text_box.h"
#include "screen/tool_bar.h"
#include "screen/tree.h"
#include "script/headless_desktop.h"
#include "support/temp_directory.h"

namespace luming {
namespace {

class ToyDialog : public Form {
 public:
  static constexpr const char* kName = "ToyDialog";
  explicit ToyDialog(Forms& registry) : Form(registry, kName, "请您输入", WindowKind::kDialog) {}
  Layout Arrange() const override { return Column({amount, done}); }
  TextBox amount{this, "amount", "数  量", {.keys = KeyFilter::kQuantity}};
  Button done{this, "done", "确定(&Y)", &ToyDialog::UserClose, ButtonRole::kDefault};
};

class ToyMain;

/// A program of one main window, one child and one dialog, and a store that is a list of statements.
class ToyHost : public ScriptHost {
 public:
  explicit ToyHost(HeadlessDesktop& the_desktop) : desktop(the_desktop) {}

  void SetHome(const std::filesystem::path& directory) override { home = directory; }
  void SetClock(const DateTime& now) override { clock.Set(now); }
  void Start(const std::string& hand_off) override;
  void ExecuteCommand(int command) override;
  Forms* OpenForms() override { return ended ? nullptr : &forms; }
  Recordset RunBeside(std::string_view sql) override {
    beside.emplace_back(sql);
    Recordset rows({"a", "b"});
    rows.AppendRow({Value("x"), Value()});
    rows.AppendRow({Value(1.5), Value("two\r\nlines")});
    return rows;
  }
  const std::vector<TracedStatement>& Statements() const override { return statements; }
  const std::vector<std::string>& Spoken() const override { return spoken; }
  void ForgetSent() override {
    statements.clear();
    spoken.clear();
  }
  void WriteSetting(const std::string& section, const std::string& key, const std::string& value) override {
    settings[section + "." + key] = value;
  }
  std::string ReadSetting(const std::string& section, const std::string& key) override {
    return settings[section + "." + key];
  }
  std::string LastPages() const override { return pages; }

  void Send(const std::string& sql) { statements.push_back({sql, 1, {}, {}}); }
  void Exit() {
    ended = true;
    forms.UnloadAll();
    desktop.EndProcess();
    throw ProcessEnded{};
  }

  HeadlessDesktop& desktop;
  FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  Forms forms{desktop, clock};
  std::filesystem::path home;
  std::string handed_off;
  std::vector<std::string> beside;
  std::vector<TracedStatement> statements;
  std::vector<std::string> spoken;
  std::map<std::string, std::string> settings;
  std::string pages;
  bool ended = false;
};

class ToyChild : public Form {
 public:
  static constexpr const char* kName = "ToyChild";
  ToyChild(Forms& registry, ToyHost& the_host) : Form(registry, kName, "药品录入", WindowKind::kChild), host(the_host) {
    PM.change.Connect([this] { host.Send("search '" + PM.Text() + "'"); });
    lines.SetMaxRows(2);
    lines.SetText(1, 1, "001");
    lines.SetText(1, 2, "甲");
    lines.SetText(1, 3, "多行\r\n文本");
    lines.SetLocked(2, 1, 3, true);
    lines.SetColours(1, 1, 1, 0xFF0000, 0x00AB0F);
    lines.SetBold(2, 1, 1, true);
    lines.double_click.Connect([this](int row, int) { OpenDialog(row); });
    lines.key_down.Connect([this](KeyEvent& event) {
      if (event.code == key::kEnter) OpenDialog(lines.ActiveRow());
    });
    lines.right_click.Connect([this](int, int) {
      if (registryDesktop().PopUp({{"更多", 0, {{"删除(&D)", 7, {}, false}}, false}}) == 7) PM.SetText("deleted");
    });
    bar.button_click.Connect([this](const std::string& pressed) { PM.SetText(pressed); });
    tree.AddNode(-1, "根");
    tree.node_click.Connect([this](int id) { PM.SetText("node " + std::to_string(id)); });
    greyed.SetEnabled(false);
  }
  Layout Arrange() const override {
    return Column({PM_L, PM, CXFS, KCXS, left, right, day, lines, grouped, tree, bar, save, fail, quit, count, stop,
                   greyed, Hidden({kept})});
  }
  void FormKeyDown(KeyEvent& event) override {
    SendTab(*this, event.code);
    if (event.code == key::kF3) PM.SetFocus();
  }
  Desktop& registryDesktop() { return Registry().desktop(); }
  void OpenDialog(int row) {
    auto& dialog = Registry().Get<ToyDialog>(Registry());
    dialog.ShowModal();
    lines.SetText(row, 2, dialog.amount.Text());
    host.Send("after dialog");
    host.spoken = {"J" + dialog.amount.Text(), "v"};
  }
  void Save() {
    const Answer answer =
        registryDesktop().MsgBox({"你确定吗？\r\n请检查。", box::kQuestion + box::kYesNo, "系统提示"});
    if (answer != Answer::kYes) return;
    host.Send("Insert into T(a) Values('1')");
    registryDesktop().MsgBox({"成功!", box::kInformation, "信息"});
    if (const auto path = registryDesktop().ChooseFile({.title = "保存"})) PM.SetText(*path);
  }
  void Count() {
    for (int row = 1; row <= 10 && !stopped; ++row) {
      PM.SetText(std::to_string(row));
      registryDesktop().DoEvents();
    }
  }
  void Stop() { stopped = true; }
  void Fail() { throw StandardFailure(failure::kTypeMismatch); }
  void Quit() { host.Exit(); }

  ToyHost& host;
  Label PM_L{this, "PM_L", "品名(F3)"};
  TextBox PM{this, "PM", "品名(F3)"};
  ComboBox CXFS{this, "CXFS", "搜索方式", {.style = ComboStyle::kFixed, .items = {"拼音码", "编码"}, .selected = 0}};
  CheckBox KCXS{this, "KCXS", "无库存不显示"};
  OptionButton left{this, "left", "左", "", true};
  OptionButton right{this, "right", "右"};
  DateBox day{this, "day", "日  期："};
  Grid lines{this, "lines", {"编码", GridColumn("品名", 12), GridColumn("内码").Hidden()}};
  Grid grouped{this, "grouped", {"品名", GridColumn("单价").Under("调前")}};
  Tree tree{this, "tree"};
  ToolBar bar{this, "bar", {{"打印(&P)", "print"}, {"导出", "export", false, false}}};
  Button save{this, "save", "入库(&R)", &ToyChild::Save};
  Button fail{this, "fail", "出错", &ToyChild::Fail};
  Button quit{this, "quit", "退出", &ToyChild::Quit};
  Button count{this, "count", "计数", &ToyChild::Count};
  Button stop{this, "stop", "停止", &ToyChild::Stop};
  bool stopped = false;
  Button greyed{this, "greyed", "灰色"};
  TextBox kept{this, "kept", "保留"};
};

class ToyMain : public MainFrame {
 public:
  static constexpr const char* kName = "mainfrm";
  ToyMain(Forms& registry, ToyHost& the_host) : MainFrame(registry, kName, "鹿鸣仓管系统"), host(the_host) {
    SetStatusPanel(2, "中心医院");
  }
  const std::vector<MenuEntry>& Menus() const override { return menus; }
  const std::vector<MenuEntry>& ToolBarButtons() const override { return menus; }
  CommandState StateOf(int command) const override { return {command == 302, command == 1001}; }
  void Execute(int command) override {
    if (command == 302) Registry().Get<ToyChild>(Registry(), host).Show();
  }
  void Workspace_RClick(Form* item) override {
    if (Registry().desktop().PopUp({{"关闭(&C)", 6661, {}, false}}) == 6661) item->Unload();
  }
  ToyHost& host;
  std::vector<MenuEntry> menus = {{"药品录入", 302, {}, false}, {"其它", 303, {}, false}};
};

void ToyHost::Start(const std::string& hand_off) {
  handed_off = hand_off;
  forms.Get<ToyMain>(forms, *this).Show();
}

void ToyHost::ExecuteCommand(int command) {
  forms.FindAs<ToyMain>()->Execute(command);
}

class ScriptDriverTest : public ::testing::Test {
 protected:
  int Run(const std::string& script) {
    ScriptDriver driver(desktop, host, out, errors);
    driver.ReadText(script, "toy.txt");
    return RunHeadless(driver, desktop);
  }
  /// The script behind an open child window.
  int RunOnChild(const std::string& script) { return Run("start\ncommand 302\n" + script); }

  TempDirectory directory;
  HeadlessDesktop desktop;
  ToyHost host{desktop};
  std::ostringstream out;
  std::ostringstream errors;
};

TEST_F(ScriptDriverTest, StagesAndStarts) {
  EXPECT_EQ(Run("home /srv/store\n"
                "clock 2026-05-06 07:08:09\n"
                "start conn$op$pw$\n"
                "expect form mainfrm 鹿鸣仓管系统\n"
                "expect panel 2 中心医院\n"
                "expect command 302 enabled\n"
                "expect command 303 disabled\n"
                "expect command 1001 checked\n"
                "command 302\n"
                "expect day 2026-05-06\n"
                "expect form ToyChild\n"
                "sql insert into x values('#1')\n"),
            0)
      << errors.str();
  EXPECT_EQ(host.home, "/srv/store");
  EXPECT_EQ(host.handed_off, "conn$op$pw$");
  EXPECT_EQ(host.beside.back(), "insert into x values('#1')");
}

TEST_F(ScriptDriverTest, FieldsAreNamedOrCaptioned) {
  EXPECT_EQ(RunOnChild("type PM amx\n"
                       "expect PM amx\n"
                       "expect sql \"search 'amx'\"\n"
                       "expect sql \"search 'a'\"\n"
                       "expect no sql \"search 'amxx'\"\n"
                       "type 品名(F3) 阿司\n"
                       "expect pm 阿司\n"
                       "type PM \"\"\n"
                       "expect PM \"\"\n"
                       "choose 搜索方式 编码\n"
                       "expect CXFS 编码\n"
                       "put CXFS 拼音码\n"
                       "tick 无库存不显示 on\n"
                       "tick KCXS on\n"
                       "expect KCXS on\n"
                       "tick right on\n"
                       "expect left off\n"
                       "put \"日  期\" 2026-2-28\n"
                       "expect day 2026-02-28\n"
                       "expect PM_L 品名(F3)\n"
                       "type day 2027-3-15\n"
                       "expect day 2027-03-15\n"
                       "type day 20260228\n"
                       "focus day\n"
                       "key Up\n"
                       "expect day 2026-03-01\n"
                       "key F3\n"
                       "expect focus PM\n"
                       "key x\n"
                       "key Space\n"
                       "key Ctrl+y\n"
                       "expect PM \"x \"\n"
                       "key Enter\n"
                       "expect focus CXFS\n"
                       "expect enabled PM\n"
                       "expect disabled greyed\n"
                       "expect visible PM\n"
                       "expect hidden kept\n"),
            0)
      << errors.str();
}

TEST_F(ScriptDriverTest, GridsTreesAndTools) {
  EXPECT_EQ(RunOnChild("expect rows lines 2\n"
                       "expect lines 1 品名 甲\n"
                       "expect lines 0 2 品名\n"
                       "expect grouped -1 2 调前\n"
                       "expect lines 1 3 \"多行\\n文本\"\n"
                       "cell lines 1 品名 \"乙 丙\"\n"
                       "expect lines 1 2 乙 丙\n"
                       "row lines 2\n"
                       "expect focus lines\n"
                       "node tree 根\n"
                       "expect PM \"node 0\"\n"
                       "expect tree 根\n"
                       "tool 打印\n"
                       "expect PM print\n"
                       "right lines 1\n"
                       "popup 删除\n"
                       "expect PM deleted\n"),
            0)
      << errors.str();
}

TEST_F(ScriptDriverTest, LooksOfCellsAndSettingsAreCompared) {
  EXPECT_EQ(RunOnChild("expect colour lines 1 编码 red\n"
                       "expect colour lines 1 2 default\n"
                       "expect background lines 1 1 #00ab0F\n"
                       "expect bold lines 2 1\n"
                       "expect locked lines 2 品名\n"
                       "expect unlocked lines 1 品名\n"
                       "expect width lines 品名 12\n"
                       "expect width lines 3 0\n"
                       "ini 配置 药库类型 中药库 二\n"
                       "expect ini 配置 药库类型 中药库 二\n"
                       "ini 配置 药库类型 \"\"\n"
                       "expect ini 配置 药库类型 \"\"\n"),
            0)
      << errors.str();
  EXPECT_EQ(RunOnChild("expect colour lines 1 1 black\n"
                       "expect background lines 1 1 green\n"
                       "expect bold lines 1 1\n"
                       "expect locked lines 1 1\n"
                       "expect unlocked lines 2 1\n"
                       "expect width lines 2 11\n"
                       "expect voice J\n"
                       "open lines 1\n"
                       "key Enter\n"
                       "expect voice J1\n"
                       "expect no voice\n"
                       "expect pages nothing of this\n"),
            1);
  EXPECT_EQ(errors.str(),
            "toy.txt:3: wanted \"black\", found \"red\"\n"
            "toy.txt:4: wanted \"green\", found \"#00ab0f\"\n"
            "toy.txt:5: wanted \"bold\", found \"not bold\"\n"
            "toy.txt:6: wanted \"locked\", found \"unlocked\"\n"
            "toy.txt:7: wanted \"unlocked\", found \"locked\"\n"
            "toy.txt:8: wanted \"11\", found \"12\"\n"
            "toy.txt:9: wanted \"J\", found \"no voice\"\n"
            "toy.txt:12: wanted \"J1\", found \"J\\nv\"\n"
            "toy.txt:13: wanted \"no voice\", found \"J\\nv\"\n"
            "toy.txt:14: wanted \"nothing of this\", found \"\"\n");
}

TEST_F(ScriptDriverTest, AModalFormReturnsToTheScriptAndItsCallerGoesOnWhenItCloses) {
  EXPECT_EQ(RunOnChild("open lines 1\n"
                       "expect form ToyDialog 请您输入\n"
                       "type 数量 1x2\n"
                       "type \"数  量\" 1x2\n"),
            2);
  EXPECT_EQ(errors.str(), "toy.txt:5: form ToyDialog has no \"数量\"\n");
  errors.str("");
  EXPECT_EQ(Run("form ToyChild\n"
                "enter lines 2\n"
                "type \"数  量\" 1x2\n"
                "form ToyChild\n"
                "expect PM \"\"\n"
                "form ToyDialog\n"
                "key Enter\n"
                "expect closed ToyDialog\n"
                "expect lines 2 2 12\n"
                "expect sql after dialog\n"
                "expect voice J12\n"
                "expect voice v\n"
                "key F3\n"
                "expect no voice\n"
                "expect form ToyChild\n"),
            0)
      << errors.str();
}

TEST_F(ScriptDriverTest, BoxesAndFileDialogsAreAnsweredOneByOne) {
  EXPECT_EQ(RunOnChild("click 入库\n"
                       "expect box 系统提示 \"你确定吗？\\n请检查。\"\n"
                       "answer no\n"
                       "expect no box\n"
                       "expect no sql Insert\n"
                       "click save\n"
                       "expect PM \"\"\n"
                       "answer yes\n"
                       "expect sql Insert into T(a) Values('1')\n"
                       "expect box 信息 成功!\n"
                       "expect box 信息\n"
                       "answer ok\n"
                       "file /tmp/a b.xls\n"
                       "expect PM /tmp/a b.xls\n"),
            0)
      << errors.str();
}

TEST_F(ScriptDriverTest, ABoxOfThreeTakesEachOfItsAnswers) {
  for (const auto& [name, answer] :
       {std::pair{"yes", Answer::kYes}, {"no", Answer::kNo}, {"cancel", Answer::kCancel}}) {
    Answer given = Answer::kOk;
    ScriptDriver driver(desktop, host, out, errors);
    driver.ReadText(std::string("answer ") + name, "three");
    desktop.pump = [&] { driver.Step(); };
    given = desktop.MsgBox({"保存？", box::kWarning + box::kYesNoCancel, "警告"});
    EXPECT_EQ(given, answer) << name;
  }
}

TEST_F(ScriptDriverTest, AllFailedExpectationsAreReported) {
  host.pages = "page 1\f";
  EXPECT_EQ(RunOnChild("expect PM x\n"
                       "click save\n"
                       "expect box 系统提示 你确定\n"
                       "expect box 提示\n"
                       "expect no box\n"
                       "answer no\n"
                       "expect box 提示 x\n"
                       "expect rows lines 3\n"
                       "expect hidden PM\n"
                       "expect form ToyDialog\n"
                       "expect closed ToyChild\n"
                       "expect sql x\n"
                       "expect query select 1 => \"x\\tNULL\\n1.5\\ttwo\"\n"
                       "expect query select 1 => \"x\\tNULL\\n1.5\\ttwo\\nlines\"\n"),
            1);
  EXPECT_EQ(errors.str(),
            "toy.txt:3: wanted \"x\", found \"\"\n"
            "toy.txt:5: wanted \"系统提示: 你确定\", found \"系统提示: 你确定吗？\\n请检查。\"\n"
            "toy.txt:6: wanted \"提示\", found \"系统提示\"\n"
            "toy.txt:7: wanted \"no box\", found \"系统提示: 你确定吗？\\n请检查。\"\n"
            "toy.txt:9: wanted \"提示: x\", found \"no box\"\n"
            "toy.txt:10: wanted \"3\", found \"2\"\n"
            "toy.txt:11: wanted \"hidden\", found \"visible\"\n"
            "toy.txt:12: wanted \"form ToyDialog open\", found \"it is not\"\n"
            "toy.txt:13: wanted \"form ToyChild closed\", found \"it is open\"\n"
            "toy.txt:14: wanted \"x\", found \"\"\n"
            "toy.txt:15: wanted \"x\\tNULL\\n1.5\\ttwo\", found \"x\\tNULL\\n1.5\\ttwo\\nlines\"\n");
}

TEST_F(ScriptDriverTest, AStepThatCannotBeCarriedOutStopsTheScript) {
  struct Case {
    const char* step;
    const char* problem;
  };
  const Case cases[] = {
      {"click greyed", "\"greyed\" is disabled"},
      {"type kept x", "\"kept\" is hidden"},
      {"type lines x", "\"lines\" takes no typed text"},
      {"click nothing", "form ToyChild has no \"nothing\""},
      {"focus PM_L", "\"PM_L\" takes no focus"},
      {"cell lines 2 1 x", "the cell lines 2 1 cannot be edited so"},
      {"cell lines 1 3 x", "the cell lines 1 3 is hidden"},
      {"cell lines 1 4 x", "lines has no column 4"},
      {"row lines 3", "lines has no row 3, only 2"},
      {"row lines 0", "\"0\" is no row"},
      {"row PM 1", "\"PM\" is no grid"},
      {"put day soon", "\"soon\" is no date"},
      {"choose CXFS 五笔", "CXFS has no entry \"五笔\"; it has: 拼音码, 编码"},
      {"tick left off", "an option is cleared by setting another one"},
      {"tick PM on", "\"PM\" is neither a check box nor an option"},
      {"tick KCXS yes", "\"yes\" is neither on nor off"},
      {"key Hyper+x", "\"Hyper+x\" is no key"},
      {"key F13", "\"F13\" is no key"},
      {"tool 导出", "the tool \"导出\" is disabled"},
      {"tool 没有", "form ToyChild has no tool \"没有\""},
      {"node tree 叶", "tree has no node \"叶\""},
      {"answer ok", "no box is open"},
      {"file x", "no file dialog is open"},
      {"popup x", "no pop-up is open"},
      {"form ToyDialog", "form ToyDialog is not open"},
      {"command 303", "command 303 is unknown or disabled"},
      {"command x", "\"x\" is no command"},
      {"pages /tmp/x", "nothing was printed yet"},
      {"clock soon", "\"soon\" is no date"},
      {"expect lines 1", "an argument is missing"},
      {"expect colour lines 1 1 pink", "\"pink\" is no colour"},
      {"expect colour lines 1 1 #12345g", "\"#12345g\" is no colour"},
      {"expect bold lines 3 1", "lines has no row 3, only 2"},
      {"click fail", "a failure that nobody trapped: 13 类型不匹配 (luming)"},
  };
  for (const Case& each : cases) {
    errors.str("");
    EXPECT_EQ(RunOnChild(std::string(each.step) + "\nexpect PM never reached\n"), 2) << each.step;
    EXPECT_EQ(errors.str(), std::string("toy.txt:3: ") + each.problem + "\n");
    host.forms.UnloadAll();
  }
}

TEST_F(ScriptDriverTest, ABoxLeftUnansweredStopsTheScript) {
  EXPECT_EQ(RunOnChild("click save\nexpect form ToyChild\nclick quit\n"), 2);
  EXPECT_EQ(errors.str(), "toy.txt:5: the box \"系统提示\" is left unanswered: 你确定吗？\n请检查。\n");
  errors.str("");
  EXPECT_EQ(Run("form ToyChild\nclick save\n"), 2) << "at the end of the script, too";
  EXPECT_EQ(Run("form ToyChild\nclick save\nanswer ok\n"), 2) << "a question has no OK";
  EXPECT_EQ(Run("form ToyChild\nclick save\nanswer yes\nanswer ok\nclick save\n"), 2) << "so is a file dialog";
  EXPECT_EQ(Run("form ToyChild\nopen lines 1\n"), 0) << "an open form is none";
  EXPECT_EQ(Run("form ToyChild\nopen lines 1\nform ToyChild\nclick save\n"), 2) << "but what waits behind it waits";
}

TEST_F(ScriptDriverTest, TheEndOfTheProcessEndsTheHandlersNotTheScript) {
  EXPECT_EQ(RunOnChild("click quit\nexpect closed ToyChild\nexpect closed mainfrm\nexpect no box\n"), 0)
      << errors.str();
  EXPECT_EQ(Run("type PM x\n"), 2);
  EXPECT_EQ(errors.str(), "toy.txt:1: the program is not running\n");
}

TEST_F(ScriptDriverTest, StepsAreDoneMeanwhileWithinLongWork) {
  EXPECT_EQ(RunOnChild("meanwhile 3 expect PM 3   # counted from here\n"
                       "meanwhile 4 click stop\n"
                       "click count\n"
                       "expect PM 4\n"),
            0)
      << errors.str();
  host.forms.UnloadAll();
  EXPECT_EQ(RunOnChild("meanwhile 2 expect PM 3\nclick count\nexpect PM 10\n"), 1);
  EXPECT_EQ(errors.str(), "toy.txt:3: wanted \"3\", found \"2\"\n");
  host.forms.UnloadAll();
  EXPECT_EQ(RunOnChild("meanwhile 2 click quit\nclick count\nexpect closed ToyChild\n"), 0) << "nothing runs on";
}

TEST_F(ScriptDriverTest, AStepThatIsNeverDoneMeanwhileStopsTheScript) {
  const std::pair<const char*, const char*> scripts[] = {
      {"meanwhile 11 click stop\nclick count\n", "3: the program was never at work so long"},
      {"meanwhile 1 click nothing\nclick count\n", "3: form ToyChild has no \"nothing\""},
      {"meanwhile 1 dance\nclick count\n", "3: unknown step \"dance\""},
      {"meanwhile 0 click stop\n", "3: \"0\" is no number of times"},
      {"meanwhile 1 # nothing\n", "3: an argument is missing: meanwhile N STEP"},
  };
  for (const auto& [script, problem] : scripts) {
    errors.str("");
    EXPECT_EQ(RunOnChild(script), 2) << script;
    EXPECT_EQ(errors.str(), std::string("toy.txt:") + problem + "\n");
    host.forms.UnloadAll();
  }
}

TEST_F(ScriptDriverTest, TabsAndWindowsClose) {
  EXPECT_EQ(RunOnChild("right tab ToyChild\npopup cancel\nexpect form ToyChild\n"
                       "right tab ToyChild\npopup 关闭\nexpect closed ToyChild\n"
                       "command 302\nclose\nexpect closed ToyChild\n"
                       "tool 药品录入\nexpect form ToyChild\n"),
            0)
      << errors.str();
}

TEST_F(ScriptDriverTest, AFormThatTookTheMemoryOfAClosedOneIsAnother) {
  std::string script = "start\ncommand 302\n";
  for (int round = 0; round < 20; ++round) {
    script += "form mainfrm\nright tab ToyChild\npopup 关闭\ncommand 302\ntype 品名(F3) x\n";
  }
  EXPECT_EQ(Run(script), 0) << errors.str();
}

TEST_F(ScriptDriverTest, ShowPrintsWhatIsThere) {
  host.pages = "page 1\f";
  const std::string pages = (directory / "pages.txt").string();
  EXPECT_EQ(RunOnChild("show lines\nshow PM\nput PM a\nshow sql\nshow box\nclick save\nshow box\nanswer no\n"
                       "open lines 1\nexpect pages age 1\nshow forms\nshow form\npages " +
                       pages + "\nshot x.png\n"),
            0)
      << errors.str();
  EXPECT_EQ(out.str(),
            "编码\t品名\t[内码]\n001\t甲\t多行\\n文本\n\t\t\n"
            "\n"
            "search 'a'\t1 rows\n"
            "no box\n"
            "系统提示\t36\n你确定吗？\n请检查。\n"
            "ToyDialog\t请您输入\tmodal\nToyChild\t药品录入\nmainfrm\t鹿鸣仓管系统\n"
            "ToyDialog\t请您输入\namount\t数  量\t\tenabled focus\ndone\t确定(&Y)\t确定(&Y)\tenabled\n");
  EXPECT_EQ(ReadBytes(pages), "page 1\f");
}

TEST_F(ScriptDriverTest, FilesThatAreNoScriptsAreRefused) {
  const auto run_file = [&](const std::filesystem::path& file) {
    errors.str("");
    ScriptDriver driver(desktop, host, out, errors);
    driver.ReadFile(file);
    return RunHeadless(driver, desktop);
  };
  EXPECT_EQ(run_file(directory / "missing.txt"), 2);
  EXPECT_NE(errors.str(), "");
  EXPECT_EQ(run_file(directory.Path()), 2);
  WriteBytes(directory / "bad.txt", "start\n\x80\n");
  EXPECT_EQ(run_file(directory / "bad.txt"), 2);
  EXPECT_EQ(errors.str(), (directory / "bad.txt").string() + ":2: the line is not UTF-8\n");
  WriteBytes(directory / "empty.txt", "");
  EXPECT_EQ(run_file(directory / "empty.txt"), 0);
}

}  // namespace
}  // namespace luming
