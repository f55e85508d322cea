#include <algorithm>
#include <filesystem>

#include "app/store_check.h"
#include "app/store_copy.h"
#include "app/store_install.h"
#include "app/store_maker.h"
#include "app/store_place.h"
#include "platform/editable_recordset.h"
#include "support/admin_run.h"
#include "util/text.h"
#include "wire_test.h"

namespace luming {
namespace {

namespace fs = std::filesystem;
using tds::FaultKind;

/// A server with an empty database, database files without the long phonetic table, and luming-admin.
class ServerStoreTest : public WireTest {
 protected:
  ServerStoreTest() {
    fs::copy(LUMING_DATABASE_DIR, data, fs::copy_options::recursive);
    WriteBytes(data / "seed/GY_HZBM.tsv", "HZ\tPY\tWB\n药\tY\tAXQ\n库\tK\tYLK\n");
  }

  AdminRun Install(std::vector<std::string> further = {}, const std::string& secret = {}) {
    further.insert(further.begin(), {"install", Address(), "--data", data.string()});
    return RunAdminLine(further, secret);
  }
  AdminRun Copy(const std::string& from, const std::string& to) {
    return RunAdminLine({"copy", from, to, "--data", data.string()});
  }
  std::string Tables() {
    connection.Open(Address());
    return First("Select Count(*) From sysobjects Where xtype='U'");
  }
  /// A demonstration store in a directory of its own.
  std::string DemoHome() {
    const fs::path home = place / "demo";
    MakeApplicationDirectory({home, data, true, {}}, clock);
    return home.string();
  }
  /// Every row of every table, one line each, sorted within the table.
  std::vector<std::string> Everything(const std::string& home) {
    const auto store = OpenStore(home, clock);
    std::vector<std::string> lines;
    for (const std::string& table : TablesOf(ReadStoreFiles(data, false))) {
      const auto begin = static_cast<std::ptrdiff_t>(lines.size());
      for (Recordset row = store->Execute("Select * From " + table); !row.Eof(); row.MoveNext()) {
        std::string line = table;
        for (std::size_t i = 0; i < row.ColumnCount(); ++i) line += "|" + SqlLiteral(row.Field(i));
        lines.push_back(line);
      }
      std::sort(lines.begin() + begin, lines.end());
    }
    return lines;
  }

  TempDirectory place;
  const fs::path data = place / "database";
};

TEST_F(ServerStoreTest, AnEmptyDatabaseIsInstalledOnceAndThenLeftAsItIs) {
  const AdminRun first = Install({"--demo"});
  EXPECT_EQ(first.exit, kAdminDone) << first.err;
  EXPECT_NE(first.out.find("已建立表 43 个"), std::string::npos) << first.out;
  EXPECT_NE(first.out.find("  GY_HZBM  2 行\n"), std::string::npos) << first.out;
  bool agree = false;
  CheckStore(Address(), agree);
  EXPECT_TRUE(agree);

  Connect();
  EXPECT_NE(First("Select Count(*) From YK_YPRKMX"), "0") << "the opening stock came through the receipt screen";
  connection.Execute("Update CS Set DMMC='改过' Where ID=1 Drop Procedure GET_ZHXM");
  const AdminRun second = Install({"--demo"});
  EXPECT_EQ(second.exit, kAdminDisagrees);
  EXPECT_NE(second.out.find("没有做任何改动。\n缺少存储过程：GET_ZHXM"), std::string::npos) << second.out;
  EXPECT_EQ(Install({"--procedures"}).exit, kAdminDone);
  const AdminRun third = Install();
  EXPECT_EQ(third.exit, kAdminDone);
  EXPECT_EQ(third.err, "") << "no password is asked for what is there already";
  EXPECT_EQ(First("Select DMMC From CS Where ID=1"), "改过");
}

TEST_F(ServerStoreTest, TheAdministratorsPasswordIsAskedForAndSet) {
  EXPECT_EQ(Install({}, "a'b").exit, kAdminFailed) << "no login would take it";
  EXPECT_EQ(Tables(), "0");
  const AdminRun run = Install({}, "k3%y");
  EXPECT_EQ(run.exit, kAdminDone) << run.err;
  EXPECT_NE(run.err.find("管理员的密码："), std::string::npos);
  EXPECT_EQ(First("Select password From userdb Where username='管理员'"), "k3%y");
  EXPECT_EQ(First("Select Count(*) From YF_YPML"), "0");
}

TEST_F(ServerStoreTest, TheDatabasePasswordIsAskedForWhereTheStringHasNone) {
  tds::TdsServer guarded(directory.Path(), clock, {.user = "sa", .password = "a\";b"});
  const std::string address =
      "Data Source=127.0.0.1," + std::to_string(guarded.Port()) + ";Initial Catalog=lumndata;User ID=sa";
  const AdminRun run = RunAdminLine({"install", address, "--demo", "--data", data.string()}, "a\";b");
  EXPECT_EQ(run.exit, kAdminDone) << run.err;
  EXPECT_NE(run.err.find("数据库用户“sa”的密码："), std::string::npos) << run.err;
}

TEST_F(ServerStoreTest, WhatIsNotEmptyIsRefusedWithWhatStandsThere) {
  Connect();
  connection.Execute("Create Table CS(ID int)");
  connection.Execute("Create Table 别家(ID int)");
  for (const AdminRun& run : {Install({"--demo"}), Copy(DemoHome(), Address())}) {
    EXPECT_EQ(run.exit, kAdminFailed);
    EXPECT_NE(run.err.find("没有做任何改动。\n已有本系统的表：CS\n缺少的表：userdb、"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("其他程序的表：别家"), std::string::npos) << run.err;
  }
  EXPECT_EQ(Tables(), "2");
}

TEST_F(ServerStoreTest, AnInstallationThatFailsLeavesNothing) {
  WriteBytes(data / "seed/CS.tsv", "Controlid\tNoSuchColumn\nGHDW\tx\n");
  EXPECT_NE(Install({"--demo"}).err.find("CS.tsv 第 2 行无法导入"), std::string::npos);
  EXPECT_EQ(Tables(), "0");
  fs::copy_file(fs::path(LUMING_DATABASE_DIR) / "seed/CS.tsv", data / "seed/CS.tsv",
                fs::copy_options::overwrite_existing);
  for (const char* statement : {"Create Table YK_YPRK", "Insert Into ZD_Tabel", "Insert into YK_YPRKMX"}) {
    server.Misbehave({.kind = FaultKind::kCutBefore, .statement = statement});
    EXPECT_EQ(Install({"--demo"}).exit, kAdminFailed) << statement;
    EXPECT_EQ(Tables(), "0") << statement;
  }
  EXPECT_EQ(Install({"--demo"}).exit, kAdminDone);
}

TEST_F(ServerStoreTest, EveryRowGoesToTheServerAndBack) {
  const std::string home = DemoHome();
  {
    const auto store = OpenStore(home, clock);
    store->Execute(
        "Insert Into YPCRK(YPBM,SL,CLB,KCL,LB,MS,RQ,KFBM,BZ) Values('x''y',-0.000001,32767,123456789.123456,1,'',"
        "'2026-03-01 23:59:59.997',Null,'两行\r\n 尾部空格  ')");
    store->Execute("Insert Into YPCRK(YPBM,SL,CLB,KCL,LB,RQ) Values('后',0,1,0,0,'1753-01-01')");
    store->Execute("Delete YPCRK Where id=3");
    store->Execute("Update YF_YPML Set CLB=0.1,KCXX=1e-7,YKKCSX=123456789012345 Where YPBM='100001'");
    for (int i = 0; i < 3; ++i) store->Execute("Insert Into Yf_sq(username,SQBH) Values('同','同')");
  }
  const AdminRun there = Copy(home, Address());
  ASSERT_EQ(there.exit, kAdminDone) << there.err;
  EXPECT_NE(there.out.find("已逐行核对，与来源一致"), std::string::npos) << there.out;
  const std::string again = (place / "again").string();
  const AdminRun back = Copy(Address(), again);
  ASSERT_EQ(back.exit, kAdminDone) << back.err;
  EXPECT_EQ(Everything(again), Everything(home));
  bool agree = false;
  EXPECT_EQ(CheckStore(again, agree), CheckStore(home, agree));

  const AdminRun onto = Copy(home, Address());
  EXPECT_EQ(onto.exit, kAdminFailed);
  EXPECT_NE(onto.err.find("目标不是空的：表 userdb 已有"), std::string::npos) << onto.err;
}

TEST_F(ServerStoreTest, ACopyThatFailsLeavesTheTargetAsItWas) {
  const std::string home = DemoHome();
  // The third to be committed is the copy itself, behind the two scripts within it.
  const std::pair<const char*, int> cuts[] = {{"Insert Into [YK_CurryPH]", 0}, {"From [YPCRK]", 0}, {"Commit", 2}};
  for (const auto& [statement, skip] : cuts) {
    server.Misbehave({.kind = FaultKind::kCutBefore, .statement = statement, .skip = skip});
    EXPECT_EQ(Copy(home, Address()).exit, kAdminFailed) << statement;
    EXPECT_EQ(Tables(), "0") << statement;
  }
  EXPECT_EQ(Copy(home, Address()).exit, kAdminDone);
  server.Misbehave({.kind = FaultKind::kCutInResult, .statement = "From [YPCRK]", .rows = 5});
  const fs::path away = place / "away";
  EXPECT_EQ(Copy(Address(), (away / "yk").string()).exit, kAdminFailed);
  EXPECT_FALSE(fs::exists(away / "yk"));
  EXPECT_TRUE(!fs::exists(away) || fs::is_empty(away));
}

TEST_F(ServerStoreTest, ARowThatTheServerCannotKeepIsFoundAndNothingStays) {
  const std::string home = DemoHome();
  OpenStore(home, clock)->Execute("Update YK_YPRKMX Set PM='𠮷药' Where id=7");
  const AdminRun run = Copy(home, Address());
  EXPECT_EQ(run.exit, kAdminFailed);
  EXPECT_NE(run.err.find("表 YK_YPRKMX 与来源不一致，全部内容已撤销。\n来源：id=7，"), std::string::npos) << run.err;
  EXPECT_EQ(Tables(), "0");

  OpenStore(home, clock)
      ->Execute("Update YK_YPRKMX Set PM='药' Where id=7 Update YF_YPML Set SPMC='𠮷' Where YPBM='100001'");
  const AdminRun keyless = Copy(home, Address());
  EXPECT_NE(keyless.err.find("表 YF_YPML 与来源不一致"), std::string::npos) << keyless.err;
  EXPECT_EQ(Tables(), "0");
}

TEST_F(ServerStoreTest, TablesThatDifferAreNotCopied) {
  const std::string home = DemoHome();
  OpenStore(home, clock)->Execute("Alter Table CS Add 加列 varchar(20)");
  EXPECT_NE(Copy(home, Address()).err.find("表 CS 在来源和目标中的列不同"), std::string::npos);
  EXPECT_EQ(Tables(), "0");
  OpenStore(home, clock)->Execute("Drop Table item");
  EXPECT_NE(Copy(home, Address()).err.find("来源缺少本系统的表：item"), std::string::npos);
}

TEST_F(ServerStoreTest, ADirectoryIsTurnedToAServerThatAnswers) {
  const fs::path home = place / "workstation";
  MakeApplicationDirectory({home, data, false, "1"}, clock);
  const std::string before = ReadBytes(home / "DatabaseSet.data");
  tds::TdsServer guarded(directory.Path(), clock, {.user = "库管", .password = "p w"});
  const std::string address = "Data Source=127.0.0.1," + std::to_string(guarded.Port()) + ";Database=lumndata;UID=库管";
  EXPECT_EQ(RunAdminLine({"connect", home.string(), address}, "wrong").exit, kAdminFailed);
  EXPECT_EQ(RunAdminLine({"connect", home.string(), address}, "p;w").exit, kAdminFailed);
  EXPECT_EQ(RunAdminLine({"connect", (place / "none").string(), address}, "p w").exit, kAdminFailed);
  EXPECT_EQ(RunAdminLine({"connect", home.string(), home.string()}).exit, kAdminFailed);
  EXPECT_EQ(ReadBytes(home / "DatabaseSet.data"), before);

  const AdminRun run = RunAdminLine({"connect", home.string(), address}, "p w");
  ASSERT_EQ(run.exit, kAdminDone) << run.err;
  EXPECT_EQ(run.out.find("p w"), std::string::npos) << "the password is not shown";
  EXPECT_EQ(ConnectionFile(home).Read(ConnectionFile::kUser), "库管");
  EXPECT_EQ(OpenStore(home.string(), clock)->Execute("Select DB_NAME()").Field(0).Text(), "lumndata");
  EXPECT_EQ(fs::status(home / "DatabaseSet.data").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ServerStoreTest, WhatBelongsToALostTransactionIsNotKeptByANewConnection) {
  const auto store = OpenStore(Address(), clock);
  store->Execute("Create Table T(n int)");
  store->BeginTrans();
  store->BeginTrans();
  store->Execute("Insert into T Values(1)");
  store->CommitTrans();
  server.CutAll();
  EXPECT_NE(FailureOf([&] { store->Execute("Insert into T Values(2)"); }), 0);
  EXPECT_NE(FailureOf([&] { store->Execute("Insert into T Values(3)"); }), 0) << "the outer transaction still stands";
  EXPECT_NE(FailureOf([&] { store->RollbackTrans(); }), 0);
  EXPECT_EQ(store->Execute("Select * From T").RecordCount(), 0);
}

TEST_F(ServerStoreTest, CommandLinesThatMakeNoSenseAreExplained) {
  EXPECT_NE(RunAdminLine({"install", place.Path().string(), "--data", data.string()}).err.find("连接字符串"),
            std::string::npos);
  EXPECT_EQ(RunAdminLine({"install"}).exit, kAdminFailed);
  EXPECT_EQ(RunAdminLine({"copy", "a"}).exit, kAdminFailed);
  EXPECT_NE(Copy((place / "none").string(), Address()).err.find("不是应用程序目录"), std::string::npos);
}

TEST_F(ServerStoreTest, OperatorsGroupsAndStorehousesAreAdministeredOnTheServer) {
  ASSERT_EQ(Install({"--password", "k3y"}).exit, kAdminDone);
  const auto run = [this](std::vector<std::string> line) {
    line.insert(line.begin() + 2, Address());
    return RunAdminLine(line);
  };
  EXPECT_EQ(run({"group", "add", "库管", "--grant", "进入中药库"}).err, "");
  EXPECT_EQ(run({"operator", "add", "林晓梅", "--group", "库管", "--password", "1"}).err, "");
  EXPECT_EQ(run({"storehouse", "change", "中药库", "--unlink", "中草药费"}).err, "");
  EXPECT_EQ(run({"storehouse", "add", "草药库", "--link", "中草药费"}).err, "");
  const std::string operators = run({"operator", "list"}).out;
  EXPECT_NE(operators.find("林晓梅  库管    拼音码              中药库、草药库\n"), std::string::npos) << operators;

  const AdminRun refused = run({"operator", "change", "管理员", "--search", "编码", "--group", "库管"});
  EXPECT_EQ(refused.exit, kAdminFailed);
  EXPECT_NE(refused.err.find("至少要留一个"), std::string::npos) << refused.err;
  Connect();
  EXPECT_EQ(First("Select SearchType From userdb Where username='管理员'"), "拼音码") << "taken back as a whole";
}

}  // namespace
}  // namespace luming
