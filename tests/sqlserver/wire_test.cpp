#include "wire_test.h"

#include "platform/server_errors.h"

namespace luming {
namespace {

using tds::FaultKind;

// ---- Values ----

TEST_F(WireTest, EveryColumnTypeComesAsAnAdoClientSeesIt) {
  Connect();
  connection.Execute(
      "Create Table V(id int identity(1,1) not null primary key, 整 int, 大 bigint, 小 smallint, 微 tinyint, 位 bit, "
      "浮 float, 数 decimal(18,6), 钱 money, 时 datetime, 文 varchar(200), 宽 nvarchar(50), 定 char(3), 短 real, 日 date, "
      "分 smalldatetime, 零钱 smallmoney, 长 numeric(15,0), 宽定 nchar(2))");
  connection.Execute(
      "Insert into V Values(-2147483648,9007199254740993,-32768,255,1,0.1,-123456.654321,3.5,'2026-03-01 08:05:01',"
      "'阿莫西林胶囊','㐂𠮷','ab',0.1,'2026-03-01','2026-03-01 08:05:00',-0.5,123456789012345,'药')");
  connection.Execute("Insert into V(整) Values(Null)");
  Recordset row = connection.Execute("Select * From V Order by id");
  ASSERT_EQ(row.RecordCount(), 2);
  const auto text = [&row](const char* name) { return row.Field(name).Text(); };
  EXPECT_EQ(text("整"), "-2147483648");
  EXPECT_EQ(text("大"), "9007199254740993");
  EXPECT_EQ(text("小"), "-32768");
  EXPECT_EQ(text("微"), "255");
  EXPECT_EQ(text("位"), "True");
  EXPECT_EQ(text("浮"), "0.1");
  EXPECT_EQ(text("数"), "-123456.654321");
  EXPECT_EQ(text("钱"), "3.5");
  EXPECT_EQ(text("时"), "2026/3/1 8:05:01");
  EXPECT_EQ(text("文"), "阿莫西林胶囊");
  EXPECT_EQ(text("宽"), "㐂𠮷");
  EXPECT_EQ(text("定"), "ab ");
  EXPECT_EQ(text("短"), "0.1");
  EXPECT_EQ(text("日"), "2026/3/1");
  EXPECT_EQ(text("分"), "2026/3/1 8:05:00");
  EXPECT_EQ(text("零钱"), "-0.5");
  EXPECT_EQ(text("长"), "123456789012345");
  EXPECT_EQ(text("宽定"), "药 ");
  row.MoveNext();
  for (std::size_t column = 1; column < row.ColumnCount(); ++column) EXPECT_TRUE(row.Field(column).IsNull()) << column;
  EXPECT_EQ(row.Field("ID").Text(), "2") << "names match without regard to case";
}

TEST_F(WireTest, TextsOfAnyLengthComeWhole) {
  Connect();
  connection.Execute("Create Table L(id int, 文 varchar(8000), 无 varchar(max))");
  for (const int count : {0, 1, 511, 512, 1023, 1024, 1025, 3999}) {
    std::string text;
    for (int i = 0; i < count; ++i) text += i % 7 == 0 ? "a" : "药";
    connection.Execute("Delete L Insert into L Values(1,'" + text + "','" + text + text + text + "')");
    EXPECT_EQ(First("Select 文 From L"), text) << count;
    EXPECT_EQ(First("Select 无 From L"), text + text + text) << count;
  }
}

TEST_F(WireTest, SeveralResultsOfOneTextFollowEachOther) {
  Connect();
  connection.Execute("Create Table T(n int)");
  Recordset first = connection.Execute("Insert into T Values(7) Select n From T Update T Set n=8 Select n,n+1 From T");
  EXPECT_EQ(first.Field(0).Text(), "7");
  Recordset second = first.NextRecordset();
  EXPECT_EQ(second.Field(1).Text(), "9");
  EXPECT_FALSE(second.NextRecordset().IsOpen());
  EXPECT_FALSE(connection.Execute("Update T Set n=9 Where n=0").IsOpen()) << "no row was changed, none came";
  for (const char* nothing : {"", "  \r\n ", ";"}) EXPECT_FALSE(connection.Execute(nothing).IsOpen());
}

TEST_F(WireTest, MessagesAreNoFailures) {
  Connect();
  connection.Execute("Create Table T(n int)");
  EXPECT_EQ(First("Set NoCount On Insert into T Values(7) Print '已登记' Select n From T"), "7");
  EXPECT_EQ(First("Raiserror('提醒',10,1) Select 1"), "1");
}

// ---- Failures ----

TEST_F(WireTest, TheFirstFailureOfATextIsToldAndItsRestHasRun) {
  Connect();
  connection.Execute("Create Table K(n int not null primary key)");
  const Failure first = Caught([&] {
    connection.Execute("Insert into K Values(1) Insert into K Values(1) Insert into K Values(2) Raiserror('后',16,1)");
  });
  EXPECT_EQ(first.number(), failure::kKeyViolation);
  EXPECT_NE(first.description().find("不能在表“K”中插入重复的键"), std::string::npos) << first.description();
  EXPECT_EQ(First("Select Count(*) From K"), "2");
}

TEST_F(WireTest, ClosedConnectionsSayTheyAreClosed) {
  EXPECT_FALSE(connection.IsOpen());
  EXPECT_EQ(NumberOf("Select 1"), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { connection.BeginTrans(); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { connection.CommitTrans(); }), failure::kClosedObject);
  connection.Close();
  Connect();
  connection.Close();
  connection.Close();
  EXPECT_EQ(NumberOf("Select 1"), failure::kClosedObject);
}

// ---- Opening ----

TEST_F(WireTest, ChinesePasswordsAndOnesThatLookLikePartsAreTaken) {
  for (const std::string password :
       {"鹿鸣１", "p}w", "p}", "{p}", "{p", "a}b;c", "a;UID=x", "a=b", "x@y!", " pw ", "[a](b)", "it's"}) {
    tds::TdsServer guarded(directory.Path(), clock, {.user = "库管", .password = password});
    const std::string quoted = "\"" + password + "\"";
    ASSERT_NO_THROW(connection.Open("Data Source=127.0.0.1," + std::to_string(guarded.Port()) +
                                    ";Initial Catalog=lumndata;User ID=库管;Password=" + quoted))
        << password;
    EXPECT_EQ(First("Select 1"), "1") << password;
    connection.Close();
  }
}

TEST_F(WireTest, RefusalsNameWhatTheOperatorCanMend) {
  const auto open = [this](const std::string& address) { return Caught([&] { connection.Open(address); }); };
  EXPECT_EQ(open(Address("lumndata", "sa", "wrong")).number(), failure::kLoginRefused);
  const Failure no_database = open(Address("没有"));
  EXPECT_EQ(no_database.number(), failure::kGeneralProvider);
  EXPECT_NE(no_database.description().find("没有"), std::string::npos) << no_database.description();
  server.Stop();
  const Failure stopped = open(Address());
  EXPECT_EQ(stopped.number(), failure::kGeneralProvider);
  EXPECT_NE(stopped.description().find("无法连接数据库服务器“127.0.0.1,"), std::string::npos) << stopped.description();
  EXPECT_FALSE(connection.IsOpen());
  server.Start();
  Connect();
  EXPECT_EQ(First("Select 1"), "1");
}

TEST_F(WireTest, DatesAreReadInOneOrderOrTheServerIsNotOpened) {
  server.Misbehave({.kind = FaultKind::kCutBefore, .statement = "SET DATEFORMAT ymd"});
  EXPECT_EQ(FailureOf([&] { Connect(); }), failure::kGeneralProvider);
  EXPECT_FALSE(connection.IsOpen());
  Connect();
  EXPECT_EQ(connection.Execute("Select Cast('2026-03-01' as datetime)").Field(0).Text(), "2026/3/1");
}

TEST_F(WireTest, AServerThatKeepsSilentDoesNotHoldTheProgramUp) {
  ServerConnection hurried({.opening = std::chrono::seconds(2)});
  const auto start = std::chrono::steady_clock::now();
  for (const FaultKind kind : {FaultKind::kSilentLogin, FaultKind::kGarbageLogin, FaultKind::kCutLogin}) {
    server.Misbehave({.kind = kind});
    EXPECT_EQ(FailureOf([&] { hurried.Open(Address()); }), failure::kGeneralProvider) << static_cast<int>(kind);
    EXPECT_FALSE(hurried.IsOpen());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(14));
}

// ---- Lost connections and time-outs ----

TEST_F(WireTest, ALostConnectionIsToldAndCanBeOpenedAgain) {
  Connect();
  connection.Execute("Create Table T(n int, 文 varchar(100))");
  for (int n = 1; n <= 50; ++n) connection.Execute("Insert into T Values(" + std::to_string(n) + ",'药品')");
  for (const FaultKind kind : {FaultKind::kCutBefore, FaultKind::kCutDuring, FaultKind::kCutInResult,
                               FaultKind::kCutInsideRow, FaultKind::kGarbage}) {
    server.Misbehave({.kind = kind, .statement = "From T", .rows = 20});
    EXPECT_EQ(NumberOf("Select * From T"), failure::kGeneralProvider) << static_cast<int>(kind);
    EXPECT_FALSE(connection.IsOpen()) << static_cast<int>(kind);
    Connect();
    EXPECT_EQ(connection.Execute("Select * From T").RecordCount(), 50) << static_cast<int>(kind);
  }
  server.CutAll();
  EXPECT_EQ(NumberOf("Select 1"), failure::kGeneralProvider);
  Connect();
  server.Stop();
  EXPECT_EQ(NumberOf("Select 1"), failure::kGeneralProvider);
  EXPECT_EQ(NumberOf("Select 1"), failure::kClosedObject);
}

TEST_F(WireTest, ASlowStatementIsGivenUpAndTheConnectionGoesOn) {
  ServerConnection hurried({.statement = std::chrono::seconds(1)});
  hurried.Open(Address());
  server.Misbehave({.kind = FaultKind::kSlow, .statement = "Select 7", .delay = std::chrono::seconds(20)});
  EXPECT_EQ(FailureOf([&] { hurried.Execute("Select 7"); }), failure::kTimeout);
  EXPECT_TRUE(hurried.IsOpen());
  EXPECT_EQ(hurried.Execute("Select 8").Field(0).Text(), "8");
}

// ---- Transactions ----

class WireTransactionTest : public WireTest {
 protected:
  WireTransactionTest() {
    Connect();
    connection.Execute("Create Table T(n int not null primary key)");
  }
  std::string Count() { return First("Select Count(*) From T"); }
};

TEST_F(WireTransactionTest, WhatWasBegunIsKeptOrUndoneWhole) {
  connection.BeginTrans();
  connection.Execute("Insert into T Values(1)");
  connection.RollbackTrans();
  EXPECT_EQ(Count(), "0");
  connection.BeginTrans();
  connection.Execute("Insert into T Values(1)");
  connection.Execute("Insert into T Values(2)");
  connection.CommitTrans();
  EXPECT_EQ(Count(), "2");
  connection.BeginTrans();
  connection.Execute("Delete T");
  connection.Close();
  Connect();
  EXPECT_EQ(Count(), "2") << "closing rolls back";
}

TEST_F(WireTransactionTest, AFailedStatementLeavesTheTransactionToTheClient) {
  connection.BeginTrans();
  connection.Execute("Insert into T Values(1)");
  EXPECT_EQ(NumberOf("Insert into T Values(1)"), failure::kKeyViolation);
  connection.Execute("Insert into T Values(2)");
  connection.CommitTrans();
  EXPECT_EQ(Count(), "2");
}

TEST_F(WireTransactionTest, BehindARollbackOfTheServerNothingIsKept) {
  for (const bool commits : {true, false}) {
    connection.BeginTrans();
    connection.Execute("Insert into T Values(1)");
    EXPECT_EQ(NumberOf("Insert into T Values('x')"), failure::kConversion);
    EXPECT_EQ(NumberOf("Insert into T Values(2)"), failure::kGeneralProvider);
    EXPECT_EQ(FailureOf([&] { connection.BeginTrans(); }), failure::kGeneralProvider);
    const long ended = FailureOf([&] { commits ? connection.CommitTrans() : connection.RollbackTrans(); });
    EXPECT_EQ(ended, commits ? failure::kGeneralProvider : 0);
    EXPECT_EQ(Count(), "0");
  }
  server.Misbehave({.kind = FaultKind::kDeadlock, .statement = "Values(3)"});
  connection.BeginTrans();
  EXPECT_EQ(NumberOf("Insert into T Values(3)"), failure::kGeneralProvider);
  EXPECT_EQ(NumberOf("Insert into T Values(4)"), failure::kGeneralProvider);
  connection.RollbackTrans();
  connection.Execute("Insert into T Values(5)");
  EXPECT_EQ(Count(), "1");
}

TEST_F(WireTransactionTest, ALostConnectionTakesItsTransactionWithIt) {
  connection.BeginTrans();
  connection.Execute("Insert into T Values(1)");
  server.CutAll();
  EXPECT_EQ(NumberOf("Insert into T Values(2)"), failure::kGeneralProvider);
  EXPECT_EQ(FailureOf([&] { connection.RollbackTrans(); }), failure::kClosedObject);
  Connect();
  EXPECT_EQ(Count(), "0");
  connection.Execute("Insert into T Values(3)");
  EXPECT_EQ(Count(), "1");
}

}  // namespace
}  // namespace luming
