#include <gtest/gtest.h>

#include <algorithm>

#include "app/admin/opened_store.h"
#include "app/store_maker.h"
#include "frame/user_rights.h"
#include "support/admin_run.h"
#include "support/rows_text.h"
#include "support/temp_directory.h"
#include "util/text.h"

namespace luming {
namespace {

namespace fs = std::filesystem;
using Line = std::vector<std::string>;

/// The empty store that the seed makes, once for all tests.
const fs::path& SeedStore() {
  static const TempDirectory directory;
  static const fs::path store = [] {
    const fs::path data = directory / "data";
    fs::copy(LUMING_DATABASE_DIR, data, fs::copy_options::recursive);
    fs::remove(data / "seed/GY_HZBM.tsv");  // twenty thousand rows that nobody asks for here
    const FixedClock clock{DateTime(2026, 3, 1)};
    MakeApplicationDirectory({directory / "yk", data, false, "k3y"}, clock);
    return directory / "yk";
  }();
  return store;
}

/// Runs command lines on a copy of the seed's store; "." in them is its directory.
class AdminPeopleTest : public ::testing::Test {
 protected:
  AdminPeopleTest() { fs::copy(SeedStore(), home, fs::copy_options::recursive); }

  AdminRun Run(Line line, const std::string& secret = {}) {
    std::ranges::replace(line, std::string("."), home.string());
    return RunAdminLine(line, secret);
  }
  void Do(const Line& line) {
    const AdminRun run = Run(line);
    EXPECT_EQ(run.exit, kAdminDone) << Join(line, " ") << ": " << run.err;
    EXPECT_EQ(run.err, "");
  }
  /// What is said when the line is refused; the store stays as it was.
  std::string Refusal(const Line& line) {
    const std::string before = Everything();
    const AdminRun run = Run(line);
    EXPECT_EQ(run.exit, kAdminFailed) << Join(line, " ");
    EXPECT_EQ(Everything(), before) << Join(line, " ");
    return run.err;
  }
  void ExpectRefusals(const std::vector<std::pair<Line, std::string>>& cases) {
    for (const auto& [line, words] : cases) {
      const std::string said = Refusal(line);
      EXPECT_NE(said.find(words), std::string::npos) << said;
    }
  }
  std::string Query(const std::string& sql) { return RowsText(OpenedStore(home.string()).Run(sql)); }
  void Sql(const std::string& sql) { OpenedStore(home.string()).Run(sql); }
  std::string Everything() {
    const OpenedStore store(home.string());
    std::string text;
    for (const char* table : {"userdb", "QX_Temp2", "Yf_sq", "YF_YKLX", "YFYK_LinkItem"}) {
      text += RowsText(store.Run("Select * From " + std::string(table))) + "\n\n";
    }
    return text;
  }
  void Book(const std::string& storehouse, const std::string& clerk) {
    Sql("Insert Into YPCRK(YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY) Values('1',1,1,1,'盒',0,'入库记录',"
        "'2026-03-01','" +
        storehouse + "','','" + clerk + "')");
  }

  TempDirectory directory;
  fs::path home = directory / "yk";
};

TEST(TableTextTest, ColumnsStandInLineWhateverTheirWidth) {
  EXPECT_EQ(TableText({{"组", "n"}, {"管理员", "34/34"}, {"ab", ""}}), "组      n\n管理员  34/34\nab\n");
  EXPECT_EQ(ListOf("西药费， 中成药费、x,,"), (Line{"西药费", "中成药费", "x"}));
}

// ---- Operators ----

TEST_F(AdminPeopleTest, AnOperatorIsAddedChangedListedAndRemoved) {
  Do({"group", "add", ".", "库管", "--grant", "进入中药库"});
  Do({"operator", "add", ".", "林晓梅", "--group", "库管", "--password", "7", "--unit", "SQ01"});
  EXPECT_EQ(Query("Select username,password,group_name,IME,SearchType From userdb Where username='林晓梅'"),
            "林晓梅\t7\t库管\t0\t拼音码");
  EXPECT_EQ(Run({"operator", "list", "."}).out,
            "操作员  组      搜索方式  社区编号  可以进入的药库\n"
            "管理员  管理员  拼音码              西药库、中药库\n"
            "林晓梅  库管    拼音码    SQ01      中药库\n");

  Do({"operator", "change", ".", "林晓梅", "--name", "林 小梅", "--search", "五笔码", "--group", "管理员"});
  EXPECT_EQ(Query("Select username,password,group_name,SearchType From userdb Where username Like '林%'"),
            "林 小梅\t7\t管理员\t五笔码");
  EXPECT_EQ(Query("Select username,SQBH From Yf_sq"), "林 小梅\tSQ01");
  Do({"operator", "change", ".", "林 小梅", "--unit", ""});
  EXPECT_EQ(Query("Select * From Yf_sq"), "");
  Do({"operator", "remove", ".", "林 小梅"});
  EXPECT_EQ(Query("Select username From userdb"), "管理员");
}

TEST_F(AdminPeopleTest, PasswordsAreAskedForWhenTheyAreNotGiven) {
  const AdminRun run = Run({"operator", "add", ".", "甲", "--group", "管理员"}, "s%ret");
  EXPECT_EQ(run.exit, kAdminDone);
  EXPECT_EQ(run.err, "操作员“甲”的密码：");
  Run({"operator", "change", ".", "管理员", "--ask-password"}, "other");
  EXPECT_EQ(Query("Select username,password From userdb Order by id"), "管理员\tother\n甲\ts%ret");
  EXPECT_EQ(Run({"operator", "add", ".", "乙", "--group", "管理员"}, "").exit, kAdminFailed);
}

TEST_F(AdminPeopleTest, OperatorsThatCannotBeAreRefused) {
  const std::string long_name = "一二三四五六七八九十一二三四五六七八九十一二三四五六";
  const auto add = [](const std::string& name) {
    return Line{"operator", "add", ".", name, "--group", "管理员", "--password", "1"};
  };
  ExpectRefusals({
      {add(long_name), "太长：共 52 个字节"},
      {add("O'Neil"), "引号"},
      {add("100%"), "百分号"},
      {add("[甲]"), "方括号"},
      {add(" 甲"), "空格"},
      {add(""), "不能为空"},
      {add("甲\n乙"), "控制字符"},
      {add("𠮷田"), "代码页 936"},
      {add("\xff"), "UTF-8"},
      {add("管理员"), "已经有操作员“管理员”"},
      {{"operator", "add", ".", "甲", "--group", "没有", "--password", "1"}, "没有组“没有”。现有的组：管理员"},
      {{"operator", "add", ".", "甲", "--group", "管理员", "--password", "a'b"}, "密码不能包含单引号"},
      {{"operator", "add", ".", "甲", "--group", "管理员", "--password", "1", "--search", "笔画"},
       "没有搜索方式“笔画”"},
      {{"operator", "add", ".", "甲", "--password", "1"}, "没有用 --group 指定组"},
      {{"operator", "change", ".", "甲", "--group", "管理员"}, "没有操作员“甲”。现有的操作员：管理员"},
      {{"operator", "change", ".", "管理员", "--name", "a_b"}, "下划线"},
      {{"operator", "change", ".", "管理员", "--search", "编码", "--group", "没有"}, "没有组"},
      {{"operator", "remove", ".", "甲"}, "没有操作员“甲”"},
      {{"operator", "remove", "."}, "没有指定操作员姓名"},
      {{"operator", "list", ".", "甲"}, "不认识的参数：甲"},
      {{"operator", "drop", "."}, "不认识的操作：drop"},
      {{"operator"}, "没有指定操作：list、add、change、remove"},
      {{"operator", "list"}, "没有指定目录或连接字符串"},
      {{"operator", "list", "/nowhere"}, "不是应用程序目录"},
  });
}

TEST_F(AdminPeopleTest, AChangeMustSayWhat) {
  const std::string said = "没有写出要修改什么";
  ExpectRefusals({
      {{"operator", "change", ".", "管理员"}, said},
      {{"operator", "change", ".", "管理员", "--force"}, said},
      {{"group", "change", ".", "管理员"}, said},
      {{"storehouse", "change", ".", "西药库"}, said},
  });
}

TEST_F(AdminPeopleTest, AnOperatorWhoCannotEnterAnyStorehouseIsToldAtOnce) {
  Do({"group", "add", ".", "空"});
  const AdminRun added = Run({"operator", "add", ".", "甲", "--group", "空", "--password", "1"});
  EXPECT_TRUE(added.out.starts_with("已添加操作员：甲\n注意：组“空”不能进入任何药库")) << added.out;
  EXPECT_EQ(Run({"operator", "change", ".", "甲", "--group", "管理员"}).out, "已修改操作员：甲\n");
}

TEST_F(AdminPeopleTest, SomebodyKeepsEveryRight) {
  Do({"group", "add", ".", "空"});
  const std::string last = "至少要留一个";
  ExpectRefusals({
      {{"operator", "remove", ".", "管理员"}, last},
      {{"operator", "change", ".", "管理员", "--group", "空"}, last},
      {{"group", "change", ".", "管理员", "--revoke", "输入负数数量"}, last},
      {{"group", "change", ".", "管理员", "--none"}, last},
  });
  Do({"operator", "add", ".", "甲", "--group", "管理员", "--password", "1"});
  Do({"operator", "remove", ".", "管理员"});
  ExpectRefusals({{{"operator", "change", ".", "甲", "--group", "空"}, last}});
  // A store in which nobody has every right is not held to it.
  Sql("Update QX_Temp2 Set QX=0 Where MoudelKey='YPGL_FSYP'");
  Do({"operator", "change", ".", "甲", "--group", "空"});
}

TEST_F(AdminPeopleTest, AnOperatorWhoHasBookedIsKeptUnlessForced) {
  Do({"operator", "add", ".", "甲", "--group", "管理员", "--password", "1"});
  Book("西药库", "甲");
  ExpectRefusals({
      {{"operator", "remove", ".", "甲"}, "已经有 1 笔出入库流水，删除后"},
      {{"operator", "change", ".", "甲", "--name", "乙"}, "已经有 1 笔出入库流水，改名后"},
  });
  Do({"operator", "change", ".", "甲", "--name", "乙", "--force"});
  Book("西药库", "乙");
  Do({"operator", "remove", ".", "乙", "--force"});
  EXPECT_EQ(Query("Select CZY From YPCRK"), "甲\n乙");
}

// ---- Groups ----

TEST_F(AdminPeopleTest, AGroupHasARowForEveryRight) {
  Do({"group", "add", ".", "库管", "--grant", "药库入库录入,YPGL_xykin、药品盘点"});
  EXPECT_EQ(Query("Select Count(*) From QX_Temp2 Where Groupname='库管'"), std::to_string(kAllRights.size()));
  EXPECT_EQ(Query("Select MoudelKey From QX_Temp2 Where Groupname='库管' And QX=1 Order by MoudelKey"),
            "YPGL_XYKIN\nYPGL_YKJYLR\nYPGL_YPPD");
  Do({"group", "add", ".", "库管二", "--like", "库管", "--revoke", "药品盘点"});
  Do({"group", "add", ".", "全权", "--all", "--revoke", "输入负数数量"});
  EXPECT_EQ(Run({"group", "list", "."}).out.find("库管二  2/34") == std::string::npos, false);
  EXPECT_NE(Run({"group", "list", "."}).out.find("全权    33/34  （无）"), std::string::npos);
  EXPECT_NE(Run({"group", "list", "."}).out.find("管理员  34/34  管理员"), std::string::npos);

  const std::string rights = Run({"group", "list", ".", "库管"}).out;
  EXPECT_NE(rights.find("药品盘点      YPGL_YPPD        有\n"), std::string::npos) << rights;
  EXPECT_NE(rights.find("药品调价      YPGL_YPTJ        －\n"), std::string::npos) << rights;
}

TEST_F(AdminPeopleTest, AChangedGroupTakesItsOperatorsAlong) {
  Do({"group", "add", ".", "库管", "--grant", "药品盘点"});
  Do({"operator", "add", ".", "甲", "--group", "库管", "--password", "1"});
  // A right that the group did not name gets its row, too.
  Sql("Delete QX_Temp2 Where Groupname='库管' And MoudelKey='YPGL_YPTJ'");
  Do({"group", "change", ".", "库管", "--name", "仓管", "--none", "--grant", "药品调价"});
  EXPECT_EQ(Query("Select group_name From userdb Where username='甲'"), "仓管");
  EXPECT_EQ(Query("Select MoudelKey From QX_Temp2 Where Groupname='仓管' And QX=1"), "YPGL_YPTJ");
  EXPECT_EQ(Query("Select Count(*) From QX_Temp2 Where Groupname='库管'"), "0");
  ExpectRefusals({{{"group", "remove", ".", "仓管"}, "还有操作员：甲"}});
  Do({"operator", "remove", ".", "甲"});
  Do({"group", "remove", ".", "仓管"});
  EXPECT_EQ(Query("Select Distinct Groupname From QX_Temp2"), "管理员");
}

TEST_F(AdminPeopleTest, GroupsThatCannotBeAreRefused) {
  Do({"group", "add", ".", "空"});
  ExpectRefusals({
      {{"group", "add", ".", "空"}, "已经有组“空”"},
      {{"group", "add", ".", "x'y"}, "引号"},
      {{"group", "add", ".", "新", "--like", "没有"}, "没有组“没有”。现有的组："},
      {{"group", "add", ".", "新", "--grant", "药品盘点,飞行"}, "没有权限“飞行”"},
      {{"group", "add", ".", "新", "--all", "--none"}, "只能用一个"},
      {{"group", "change", ".", "空", "--revoke", "飞行"}, "没有权限“飞行”"},
      {{"group", "change", ".", "空", "--name", "管理员"}, "已经有组“管理员”"},
      {{"group", "change", ".", "没有", "--all"}, "没有组“没有”"},
      {{"group", "remove", ".", "管理员"}, "还有操作员：管理员"},
      {{"group", "list", ".", "没有"}, "没有组“没有”"},
      {{"group", "add", "."}, "没有指定组名"},
  });
}

// ---- Storehouses ----

TEST_F(AdminPeopleTest, AStorehouseIsAddedLinkedRenamedAndRemoved) {
  Sql("Insert Into eK_ChargeItem(sItemName,YPBZ,SFJKC) Values('器械费',1,1)");
  const AdminRun added = Run({"storehouse", "add", ".", "器械库", "--link", "器械费"});
  EXPECT_EQ(added.out,
            "已添加药库：器械库，关联的收费项目：器械费\n"
            "注意：只有“西药库”和“中药库”要有权限才能进入，“器械库”每个操作员都可以进入。\n");
  Do({"storehouse", "add", ".", "病区药房", "--pharmacy", "--link", "西药费、器械费"});
  Do({"storehouse", "change", ".", "器械库", "--name", "材料库"});
  EXPECT_EQ(Query("Select sInvItemName From YFYK_LinkItem Where sChargeItemName='器械费'"), "材料库\n病区药房");
  Sql("Insert Into YF_YPML(YPBM,YPMC,SFXM,YKKCL,KCL) Values('1','绷带','器械费',3,0)");
  const std::string list = Run({"storehouse", "list", "."}).out;
  EXPECT_NE(list.find("材料库    药库  1             器械费\n"), std::string::npos) << list;
  EXPECT_NE(list.find("病区药房  药房  0             器械费、西药费\n"), std::string::npos) << list;
  Do({"storehouse", "change", ".", "病区药房", "--unlink", "器械费"});
  Sql("Update YF_YPML Set YKKCL=0");
  Do({"storehouse", "remove", ".", "材料库"});
  EXPECT_EQ(Query("Select Sname From YF_YKLX Where SLX='药库' Order by Sname"), "西药库\n中药库");
  EXPECT_EQ(Query("Select * From YFYK_LinkItem Where sInvItemName='材料库'"), "");
}

TEST_F(AdminPeopleTest, StorehousesThatCannotBeAreRefused) {
  Sql("Insert Into YF_YPML(YPBM,YPMC,SFXM,YKKCL,KCL) Values('1','阿司匹林片','西药费',3,0)");
  Book("中药库", "管理员");
  ExpectRefusals({
      {{"storehouse", "add", ".", "西药库"}, "已经有药库或药房“西药库”"},
      {{"storehouse", "add", ".", "库'房"}, "引号"},
      {{"storehouse", "add", ".", "新库", "--link", "检查费"}, "没有药品收费项目“检查费”。现有的药品收费项目："},
      {{"storehouse", "add", ".", "新库", "--link", "西药费"}, "已经由“西药库”保管"},
      {{"storehouse", "change", ".", "西药库", "--unlink", "西药费"}, "还有 1 种药品有库存"},
      {{"storehouse", "change", ".", "西药库", "--unlink", "中草药费"}, "没有关联收费项目“中草药费”"},
      {{"storehouse", "change", ".", "中药库", "--name", "草药库"}, "不能改名"},
      {{"storehouse", "change", ".", "西药库", "--name", "中药库"}, "已经有药库或药房“中药库”"},
      {{"storehouse", "remove", ".", "西药库"}, "还有 1 种药品有库存"},
      {{"storehouse", "remove", ".", "中药库"}, "不能删除"},
      {{"storehouse", "remove", ".", "没有"}, "没有药库或药房“没有”。现有的："},
      {{"storehouse", "add", "."}, "没有指定药库名称"},
  });
}

}  // namespace
}  // namespace luming
