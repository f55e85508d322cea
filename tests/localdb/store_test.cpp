#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "localdb/local_connection.h"
#include "platform/sql_script.h"
#include "support/failure_of.h"
#include "support/temp_directory.h"

namespace luming::test {
namespace {

using namespace std::chrono_literals;

constexpr long kGeneral = failure::kGeneralProvider;

class StoreTest : public testing::Test {
 protected:
  LocalConnection Connect(std::chrono::milliseconds wait = 200ms) { return {directory_.Path(), clock_, wait}; }
  static std::string ConnectionString(const std::string& name) {
    return "Provider=sqloledb;Data Source=(localdb);Initial Catalog=" + name + ";User ID=sa;Password=a=b;";
  }
  /// A store `name` with the table T(a) that holds one row 'kept'.
  void MakeStore(const std::string& name) {
    CreateStore(directory_.Path(), name);
    LocalConnection connection = Connect();
    connection.Open(ConnectionString(name));
    connection.Execute("Create Table T(a varchar(20) not null primary key) Insert into T Values('kept')");
  }
  static std::string RowCount(Connection& connection) {
    return connection.Execute("Select count(*) From T").Field(std::size_t{0}).Text();
  }
  long OpenFailure(const std::string& name, std::string* text = nullptr) {
    LocalConnection connection = Connect();
    const Failure refused = Caught([&] { connection.Open(ConnectionString(name)); });
    EXPECT_FALSE(connection.IsOpen());
    if (text) *text = refused.description();
    return refused.number();
  }

  TempDirectory directory_;
  FixedClock clock_{DateTime(2026, 3, 1)};
};

long FailureOf(Connection& connection, const std::string& sql) {
  return luming::FailureOf([&] { connection.Execute(sql); });
}

/// While it lives the process has the rights of nobody in particular, as an operator's has.
class NoPrivileges {
 public:
  NoPrivileges() { EXPECT_TRUE(geteuid() != 0 || seteuid(65534) == 0); }
  ~NoPrivileges() { EXPECT_EQ(seteuid(getuid()), 0); }
  NoPrivileges(const NoPrivileges&) = delete;
  NoPrivileges& operator=(const NoPrivileges&) = delete;
};

/// While it lives no file grows beyond so many bytes, as on a disk that is full.
class SmallFiles {
 public:
  explicit SmallFiles(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit small{bytes, before_.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  }
  ~SmallFiles() { setrlimit(RLIMIT_FSIZE, &before_); }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;

 private:
  rlimit before_{};
};

/// With the store "s" and a connection to it.
class OpenStoreTest : public StoreTest {
 protected:
  OpenStoreTest() {
    MakeStore("s");
    connection.Open(ConnectionString("s"));
  }

  LocalConnection connection = Connect();
};

TEST_F(OpenStoreTest, ADefinitionOfOthersIsSeenBehindOnesOwnUndoneOne) {
  connection.BeginTrans();
  connection.Execute("Create Table U(mine int)");
  EXPECT_EQ(FailureOf(connection, "Select mine From U"), 0);
  connection.RollbackTrans();
  EXPECT_EQ(FailureOf(connection, "Select mine From U"), failure::kMissingObject);
  connection.BeginTrans();
  connection.Execute("Create Table U(mine int)");
  connection.RollbackTrans();
  LocalConnection other = Connect();
  other.Open(ConnectionString("s"));
  other.Execute("Create Table U(theirs int)");
  EXPECT_EQ(FailureOf(connection, "Select theirs From U"), 0);
  EXPECT_NE(FailureOf(connection, "Select mine From U"), 0);
  EXPECT_NE(FailureOf(connection, "Insert into T Values('kept')"), 0);
  EXPECT_EQ(FailureOf(connection, "Select theirs From U"), 0) << "a statement that failed changes nothing";
}

TEST_F(StoreTest, WhatWasDoneInAHurryIsSafeWhenTheHurryEnds) {
  MakeStore("main");
  LocalConnection connection = Connect();
  connection.SetHurry(true);  // closed: nothing happens
  connection.Open(ConnectionString("main"));
  connection.SetHurry(true);
  connection.Execute("Insert into T Values('one')");
  LocalConnection other = Connect();
  other.Open(ConnectionString("main"));
  EXPECT_EQ(RowCount(other), "2") << "each statement counts at once";
  other.Close();
  connection.SetHurry(false);
  // Nothing waits in the log: the store's file by itself holds all.
  std::filesystem::copy_file(StorePath(directory_.Path(), "main"), StorePath(directory_.Path(), "copy"));
  LocalConnection copy = Connect();
  copy.Open(ConnectionString("copy"));
  EXPECT_EQ(RowCount(copy), "2");
}

TEST_F(StoreTest, RefusesWhatIsNoStoreAndLeavesItAlone) {
  std::string text;
  EXPECT_EQ(OpenFailure("missing", &text), kGeneral);
  EXPECT_NE(text.find("missing"), std::string::npos) << text;
  EXPECT_FALSE(std::filesystem::exists(directory_ / "missing.db"));
  for (const char* name : {"", "../up", "a/b", "a\\b", ".", "..", "C:x"})
    EXPECT_EQ(OpenFailure(name), kGeneral) << name;

  WriteBytes(directory_ / "text.db", std::string(5000, 'x'));
  EXPECT_EQ(OpenFailure("text", &text), kGeneral);
  EXPECT_NE(text.find("text.db”已损坏"), std::string::npos) << text;
  EXPECT_EQ(ReadBytes(directory_ / "text.db"), std::string(5000, 'x'));

  WriteBytes(directory_ / "empty.db", "");
  EXPECT_EQ(OpenFailure("empty"), kGeneral);

  sqlite3* foreign = nullptr;
  ASSERT_EQ(sqlite3_open((directory_ / "foreign.db").c_str(), &foreign), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(foreign, "CREATE TABLE t(a)", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(foreign);
  EXPECT_EQ(OpenFailure("foreign", &text), kGeneral);
  EXPECT_NE(text.find("不是"), std::string::npos) << text;
}

TEST_F(StoreTest, TellsDamageAndNeverCrashesOnIt) {
  MakeStore("good");
  {
    LocalConnection connection = Connect();
    connection.Open(ConnectionString("good"));
    for (int i = 0; i < 300; ++i) connection.Execute("Insert into T Values('row" + std::to_string(i) + "')");
  }
  std::string bytes = ReadBytes(directory_ / "good.db");
  for (std::size_t page = 0; page * 4096 < bytes.size(); ++page) {
    std::string damaged = bytes;
    for (std::size_t i = 100; i < 1000; ++i) damaged[page * 4096 + i] = static_cast<char>(i * 7);
    WriteBytes(directory_ / "bad.db", damaged);
    std::filesystem::remove(directory_ / "bad.db-wal");
    LocalConnection connection = Connect();
    const Failure told = Caught([&] {
      connection.Open(ConnectionString("bad"));
      connection.Execute("Select * From T Order By a");
      connection.Execute("Insert into T Values('new')");
    });
    EXPECT_EQ(told.number() == 0, told.description().empty());
  }
  WriteBytes(directory_ / "short.db", bytes.substr(0, bytes.size() / 2));
  LocalConnection connection = Connect();
  const Failure told = Caught([&] {
    connection.Open(ConnectionString("short"));
    connection.Execute("Select Max(a), Count(*) From T");
  });
  EXPECT_EQ(told.number(), kGeneral);
  EXPECT_NE(told.description().find("损坏"), std::string::npos) << told.description();
}

TEST_F(StoreTest, AnUntouchableFileIsNoDamagedOne) {
  using std::filesystem::perms;
  MakeStore("s");
  const std::filesystem::path file = directory_ / "s.db";
  std::string text;
  const auto refused_to_nobody = [&](const std::filesystem::path& what, perms rights) {
    std::filesystem::permissions(directory_.Path(), perms(0755));
    std::filesystem::permissions(file, perms(0644));
    std::filesystem::permissions(what, rights);
    const NoPrivileges nobody;
    return OpenFailure("s", &text) == kGeneral;
  };
  EXPECT_TRUE(refused_to_nobody(directory_.Path(), perms(0555)));
  EXPECT_EQ(text, "不能写数据库文件“" + file.string() + "”：没有权限。");
  EXPECT_TRUE(refused_to_nobody(file, perms(0)));
  EXPECT_EQ(text, "系统不能打开数据库文件“" + file.string() + "”：没有权限。");
  EXPECT_TRUE(refused_to_nobody(directory_.Path(), perms(0)));
  EXPECT_EQ(text, "系统不能打开数据库文件“" + file.string() + "”：没有权限。");
  std::filesystem::permissions(directory_.Path(), perms(0755));
}

TEST_F(OpenStoreTest, AFileThatMayNotGrowIsToldAndTheNextSaveHolds) {
  connection.BeginTrans();
  connection.Execute("Insert into T Values('lost')");
  {
    const SmallFiles full(std::filesystem::file_size(directory_ / "s.db-wal"));
    const Failure told = Caught([&] { connection.CommitTrans(); });
    EXPECT_EQ(told.description(),
              "读写数据库文件“" + (directory_ / "s.db").string() + "”时系统报错：文件太大。本次操作没有完成。");
    connection.RollbackTrans();
  }
  EXPECT_EQ(RowCount(connection), "1");
  connection.Execute("Insert into T Values('next')");
  EXPECT_EQ(RowCount(connection), "2");
}

TEST_F(StoreTest, IsMadeOnceAndKeepsWhatIsWritten) {
  MakeStore("库");
  EXPECT_THROW(CreateStore(directory_.Path(), "库"), Failure);
  LocalConnection connection = Connect();
  connection.Open(ConnectionString("库"));
  EXPECT_EQ(connection.Execute("Select a From T").Field("A").Text(), "kept");
  EXPECT_EQ(connection.Execute("Select DB_Name()").Field(std::size_t{0}).Text(), "库");
}

TEST_F(StoreTest, ClosedConnectionsRefuseWork) {
  LocalConnection connection = Connect();
  EXPECT_EQ(FailureOf(connection, "Select 1"), failure::kClosedObject);
  EXPECT_THROW(connection.BeginTrans(), Failure);
  connection.Close();
  MakeStore("s");
  connection.Open(ConnectionString("s"));
  connection.Close();
  connection.Close();
  EXPECT_FALSE(connection.IsOpen());
  EXPECT_EQ(FailureOf(connection, "Select 1"), failure::kClosedObject);
}

TEST_F(OpenStoreTest, ClosingDropsAnOpenTransaction) {
  connection.BeginTrans();
  connection.Execute("Insert into T Values('lost')");
  EXPECT_EQ(RowCount(connection), "2");
  connection.Close();
  connection.Open(ConnectionString("s"));
  EXPECT_EQ(RowCount(connection), "1");
  connection.BeginTrans();
  connection.Execute("Insert into T Values('found')");
  connection.CommitTrans();
  EXPECT_EQ(RowCount(connection), "2");
  EXPECT_THROW(connection.CommitTrans(), Failure);
  connection.RollbackTrans();
}

TEST_F(OpenStoreTest, WaitsForAnotherTransactionThenFailsClearly) {
  LocalConnection second = Connect(150ms);
  second.Open(ConnectionString("s"));
  connection.BeginTrans();
  connection.Execute("Insert into T Values('first')");

  // Readers are not held up, and do not see what is not committed.
  EXPECT_EQ(RowCount(second), "1");
  const Failure told = Caught([&] { second.Execute("Insert into T Values('second')"); });
  EXPECT_EQ(told.description(), "数据库文件“" + (directory_ / "s.db").string() + "”正被另一个程序使用，请稍后重试。");
  EXPECT_THROW(second.BeginTrans(), Failure);
  EXPECT_TRUE(second.IsOpen());

  std::thread commit([this] {
    std::this_thread::sleep_for(50ms);
    connection.CommitTrans();
  });
  LocalConnection patient = Connect(5000ms);
  patient.Open(ConnectionString("s"));
  patient.BeginTrans();
  commit.join();
  EXPECT_EQ(RowCount(patient), "2");
  patient.Execute("Insert into T Values('patient')");
  patient.CommitTrans();
  EXPECT_EQ(RowCount(connection), "3");
}

TEST_F(OpenStoreTest, ErrorThatRollsBackHoldsTheRestOfTheDocumentBack) {
  connection.Execute("Create Table N(n int null)");
  connection.BeginTrans();
  connection.Execute("Insert into T Values('head')");
  EXPECT_EQ(FailureOf(connection, "Insert into T Values('KEPT')"), failure::kKeyViolation);
  EXPECT_EQ(RowCount(connection), "2");
  EXPECT_EQ(FailureOf(connection, "Insert into N Values('x')"), failure::kConversion);
  EXPECT_EQ(FailureOf(connection, "Insert into T Values('line')"), kGeneral);
  EXPECT_THROW(connection.CommitTrans(), Failure);
  connection.RollbackTrans();
  EXPECT_EQ(RowCount(connection), "1");
  connection.Execute("Insert into T Values('next')");
  EXPECT_EQ(RowCount(connection), "2");
}

TEST_F(OpenStoreTest, SeesTheDefinitionsThatAnotherProgramMakes) {
  LocalConnection second = Connect();
  second.Open(ConnectionString("s"));
  EXPECT_EQ(FailureOf(second, "Exec P"), failure::kSyntax);
  connection.Execute("Create Procedure P As Select 1 AS n");
  EXPECT_EQ(second.Execute("Exec P").Field("n").Text(), "1");
  connection.Execute("Alter Procedure P As Select 2 AS n");
  EXPECT_EQ(second.Execute("Exec P").Field("n").Text(), "2");
  connection.Execute("Create Table New(a int)");
  second.Execute("Insert into New Values(1)");
  EXPECT_EQ(second.Execute("Select a From New").RecordCount(), 1);
  connection.Execute("Drop Table New");
  EXPECT_EQ(FailureOf(second, "Select a From New"), failure::kMissingObject);
}

TEST_F(OpenStoreTest, DefinitionsAreUndoneWithTheirTransaction) {
  connection.BeginTrans();
  connection.Execute("Create Table Gone(a int) Insert into Gone Values(1)");
  connection.RollbackTrans();
  EXPECT_EQ(FailureOf(connection, "Select * From Gone"), failure::kMissingObject);
  connection.Execute("Create Table Gone(b int)");
  EXPECT_EQ(connection.Execute("Select b From Gone").RecordCount(), 0);
}

TEST_F(OpenStoreTest, TemporaryTablesGoWithTheirTransactionOrTheirConnection) {
  connection.Execute("Create Table #Kept(a int) Insert into #Kept Values(1)");
  connection.BeginTrans();
  connection.Execute("Create Table #Gone(a int) Insert into #Gone Values(1)");
  connection.RollbackTrans();
  EXPECT_EQ(FailureOf(connection, "Select * From #Gone"), failure::kMissingObject);
  connection.Execute("Create Table #Gone(b varchar(5)) Insert into #Gone Values('x')");
  EXPECT_EQ(connection.Execute("Select b From #Gone").Field("b").Text(), "x");
  EXPECT_EQ(connection.Execute("Select a From #Kept").RecordCount(), 1);
  connection.Close();
  connection.Open(ConnectionString("s"));
  EXPECT_EQ(FailureOf(connection, "Select * From #Kept"), failure::kMissingObject);
}

TEST_F(OpenStoreTest, ScriptsRunWholeOrNotAtAll) {
  RunScript(
      connection,
      "Insert into T Values('1')\r\nGO\r\nCreate Procedure P As Select 'x' AS x\r\ngo\n\nInsert into T Values('2')");
  EXPECT_EQ(RowCount(connection), "3");
  EXPECT_EQ(connection.Execute("Exec P").Field("x").Text(), "x");
  const Failure told =
      Caught([&] { RunScript(connection, "Insert into T Values('3')\nGO\n\nSelect * From Missing\nGO\n"); });
  EXPECT_EQ(told.number(), failure::kMissingObject);
  EXPECT_NE(told.description().find("第 3 行"), std::string::npos) << told.description();
  EXPECT_EQ(told.source(), "鹿鸣内嵌数据库");
  EXPECT_EQ(RowCount(connection), "3");
}

TEST_F(OpenStoreTest, FieldsComeInTheTypesOfTheirColumns) {
  Recordset rows = connection.Execute(
      "Select Cast(1 as bit) b, Cast(2 as smallint) i, Cast(3 as decimal(18,2)) d, Cast(4 as float) f, 'x' t, "
      "Cast('2026-03-01' as datetime) m, Null n, Count(*) c, Sum(1.5) s From T");
  using Data = Value::Data;
  EXPECT_EQ(rows.Field("b").data(), Data(true));
  EXPECT_EQ(rows.Field("i").data(), Data(std::int64_t{2}));
  EXPECT_EQ(rows.Field("d").data(), Data(3.0));
  EXPECT_EQ(rows.Field("f").data(), Data(4.0));
  EXPECT_EQ(rows.Field("t").data(), Data(std::string("x")));
  EXPECT_EQ(rows.Field("m").data(), Data(DateTime(2026, 3, 1)));
  EXPECT_TRUE(rows.Field("n").IsNull());
  EXPECT_EQ(rows.Field("c").data(), Data(std::int64_t{1}));
  EXPECT_EQ(rows.Field("s").data(), Data(1.5));
  EXPECT_FALSE(connection.Execute("Update T Set a=a").IsOpen());
}

TEST_F(OpenStoreTest, BadBytesInATextAreNoTrouble) {
  connection.Execute("Insert into T Values('a\xff\xfe')");
  EXPECT_EQ(connection.Execute("Select a From T Where a Like'a%'").RecordCount(), 1);
  std::string with_zero = "Select 'a" + std::string(1, '\0') + "b'";
  EXPECT_EQ(connection.Execute(with_zero).Field(std::size_t{0}).Text().size(), 3U);
  EXPECT_NE(FailureOf(connection, "Select " + std::string(1, '\0')), 0);
}

}  // namespace
}  // namespace luming::test
