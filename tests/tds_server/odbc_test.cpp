#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "localdb/local_connection.h"
#include "support/temp_directory.h"
#include "tds_server/odbc_client.h"
#include "tds_server/tds_server.h"

namespace luming::test {
namespace {

using Rows = std::vector<std::vector<std::string>>;

/// A server over a store 库房 with one table, and the real driver.
class OdbcTest : public testing::Test {
 protected:
  OdbcTest() {
    CreateStore(directory_.Path(), "库房");
    OdbcClient client;
    EXPECT_EQ(client.Open(server_.Port(), "库房"), "");
    EXPECT_EQ(client.Run("Create Table T(编号 int not null primary key, 名称 varchar(20) null)").error, 0);
  }

  void Connect(OdbcClient& client, const std::string& version = "7.4") {
    ASSERT_EQ(client.Open(server_.Port(), "库房", version), "");
  }

  TempDirectory directory_;
  FixedClock clock_{DateTime(2026, 3, 1, 8, 5, 0)};
  tds::TdsServer server_{directory_.Path(), clock_};
};

TEST_F(OdbcTest, TypesAndValuesComeAsTheyAreStored) {
  OdbcClient client;
  Connect(client);
  EXPECT_EQ(client
                .Run("Create Table V(文本 varchar(20), 宽 nvarchar(20), 整 int, 大 bigint, 小 smallint, 位 bit, "
                     "浮 float, 数 decimal(18,6), 钱 money, 日 datetime, 定 char(3))")
                .error,
            0);
  EXPECT_EQ(client
                .Run("Insert into V Values('阿莫西林','宽𠀀',-7,9007199254740993,-2,1,0.1,-12.345678,-3.5,"
                     "'2026-03-01 08:05:01','ab')")
                .counts,
            std::vector<long>{1});
  EXPECT_EQ(client.Run("Insert into V(整) Values(Null)").counts, std::vector<long>{1});
  const Rows wanted = {{"阿莫西林", "宽𠀀", "-7", "9007199254740993", "-2", "1", "0.10000000000000001", "-12.345678",
                        "-3.5000", "2026-03-01 08:05:01.000", "ab "},
                       std::vector<std::string>(11, "NULL")};
  for (const char* version : {"7.2", "7.3", "7.4"}) {
    Connect(client, version);
    const OdbcOutcome outcome = client.Run("Select * From V");
    EXPECT_EQ(outcome.rows, wanted) << version;
    EXPECT_EQ(outcome.columns, (std::vector<std::string>{"文本:12", "宽:-9", "整:4", "大:-5", "小:5", "位:-7", "浮:8",
                                                         "数:2", "钱:3", "日:93", "定:1"}));
  }
}

TEST_F(OdbcTest, ErrorsComeWithTheServersNumbers) {
  OdbcClient client;
  Connect(client);
  EXPECT_EQ(client.Run("Select 1 +").error, 102);
  EXPECT_EQ(client.Run("Select * From 没有").error, 208);
  EXPECT_EQ(client.Run("Select 没有 From T").error, 207);
  EXPECT_EQ(client.Run("Insert into T Values(1,'甲') Insert into T Values(1,'乙')").error, 2627);
  EXPECT_EQ(client.Run("Insert into T Values(Null,'甲')").error, 515);
  EXPECT_EQ(client.Run("Select Cast('x' as datetime)").error, 241);
  OdbcOutcome outcome = client.Run("Select 名称 From T Insert into T Values(1,'丙') Select 2");
  EXPECT_EQ(outcome.rows, (Rows{{"甲"}, {"2"}}));
  EXPECT_EQ(outcome.error, 2627);
  EXPECT_NE(outcome.message.find("不能在表“T”中插入重复的键"), std::string::npos) << outcome.message;
}

TEST_F(OdbcTest, DatesTextsAndNumbersAtTheirEnds) {
  OdbcClient client;
  Connect(client);
  OdbcOutcome outcome = client.Run(
      "Select Cast('1753-01-01' as datetime), Cast('9999-12-31 23:59:59.997' as datetime), Cast('2026-03-01' as date), "
      "Cast('1900-01-01 23:59' as smalldatetime), Cast(123456789.654321 as decimal(18,6)), "
      "Cast(-0.000001 as decimal(18,6)), '', Len(Replicate('药',5000)), Sum(0.1) From T");
  ASSERT_EQ(outcome.message, "");
  EXPECT_EQ(outcome.rows, (Rows{{"1753-01-01 00:00:00.000", "9999-12-31 23:59:59.997", "2026-03-01",
                                 "1900-01-01 23:59:00", "123456789.654321", "-0.000001", "", "5000", "NULL"}}));
  outcome = client.Run("Select Replicate('药',5000) 长 Union Select Null Union Select 'x'");
  ASSERT_EQ(outcome.rows.size(), 3U);
  EXPECT_EQ(outcome.rows[0][0], "NULL");
  EXPECT_EQ(outcome.rows[1][0], "x");
  EXPECT_EQ(outcome.rows[2][0].size(), 15000U);
}

TEST_F(OdbcTest, ManyRowsGoInManyPackets) {
  OdbcClient client;
  Connect(client);
  std::string sql = "Begin Transaction ";
  for (int i = 0; i < 3000; ++i)
    sql += "Insert into T Values(" + std::to_string(i) + ",'第" + std::to_string(i) + "行')";
  EXPECT_EQ(client.Run(sql + " Commit").counts.size(), 3000U);
  const OdbcOutcome outcome = client.Run("Select * From T Order By 编号");
  ASSERT_EQ(outcome.rows.size(), 3000U);
  EXPECT_EQ(outcome.rows.back(), (std::vector<std::string>{"2999", "第2999行"}));
}

TEST_F(OdbcTest, TransactionsOfTheDriverAndOfTexts) {
  OdbcClient client;
  OdbcClient other;
  Connect(client);
  Connect(other);
  client.SetAutoCommit(false);
  EXPECT_EQ(client.Run("Insert into T Values(1,'甲')").error, 0);
  EXPECT_EQ(other.Run("Select * From T").rows.size(), 0U);
  client.EndTransaction(true);
  EXPECT_EQ(other.Run("Select * From T").rows.size(), 1U);
  EXPECT_EQ(client.Run("Insert into T Values(2,'乙')").error, 0);
  client.EndTransaction(false);
  client.SetAutoCommit(true);
  EXPECT_EQ(client.Run("Begin Transaction Insert into T Values(3,'丙')").error, 0);
  EXPECT_EQ(client.Run("Select Cast('x' as int)").error, 245);
  EXPECT_EQ(client.Run("Commit").error, 3902);
  EXPECT_EQ(other.Run("Select 编号 From T").rows, (Rows{{"1"}}));
}

}  // namespace
}  // namespace luming::test
