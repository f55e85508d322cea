#include "sqlserver/server_failure.h"

#include <gtest/gtest.h>

#include "platform/server_errors.h"

namespace luming::sqlserver {
namespace {

using Said = std::vector<Diagnostic>;

TEST(ServerFailureTest, StatementsFailWithTheNumbersOfAnAdoClient) {
  struct Case {
    Said said;
    long number;
    After after;
  };
  const Case cases[] = {
      {{{"42000", 102, "“From”附近有语法错误。"}}, failure::kSyntax, After::kUsable},
      {{{"42S02", 208, "对象名“T”无效。"}}, failure::kMissingObject, After::kUsable},
      {{{"01000", 0, "PRINT"}, {"23000", 2627, "重复"}, {"01000", 3621, "语句已终止"}},
       failure::kKeyViolation,
       After::kUsable},
      {{{"01000", 3621, "语句已终止"}, {"22007", 241, "日期"}}, failure::kConversion, After::kUsable},
      {{{"42000", 50000, "没有保存"}, {"23000", 2627, "重复"}}, failure::kKeyViolation, After::kUsable},
      {{{"42000", 229, "没有权限"}}, failure::kNoPermission, After::kUsable},
      {{{"40001", 1205, "死锁"}}, failure::kGeneralProvider, After::kUsable},
      {{{"HYT00", 20003, "Timeout expired"}}, failure::kTimeout, After::kUsable},
      {{{"HY008", 0, "Operation was cancelled"}}, failure::kTimeout, After::kUsable},
      {{{"HYT00", 20003, "Timeout expired"}, {"08S01", 20006, "Write failed"}},
       failure::kGeneralProvider,
       After::kLost},
      {{{"08S01", 20006, "Write to the server failed"}}, failure::kGeneralProvider, After::kLost},
      {{{"01000", 20017, "Unexpected EOF"}}, failure::kGeneralProvider, After::kLost},
      {{{"HY000", 0, "Unknown error"}, {"08S01", 0, "Communication link failure"}},
       failure::kGeneralProvider,
       After::kLost},
      {{{"08S01", 104, "Communication link failure"}}, failure::kGeneralProvider, After::kLost},
      {{}, failure::kGeneralProvider, After::kUsable},
  };
  for (const Case& c : cases) {
    const std::string name = c.said.empty() ? "nothing" : c.said.front().state + " " + c.said.front().text;
    const StatementFailure failed = FailureOfStatement(c.said, false);
    EXPECT_EQ(failed.failure.number(), c.number) << name;
    EXPECT_EQ(failed.after == After::kLost, c.after == After::kLost) << name;
    EXPECT_EQ(failed.failure.source(), "Microsoft OLE DB Provider for SQL Server");
  }
  EXPECT_EQ(FailureOfStatement({{"42000", 50000, "出库单没有确认"}}, true).after, After::kLost);
}

TEST(ServerFailureTest, TheServersOwnWordsAreKept) {
  const auto words = [](Said said) { return FailureOfStatement(said, false).failure.description(); };
  EXPECT_EQ(words({{"42000", 50000, "库存不足，没有出库。"}}), "库存不足，没有出库。");
  EXPECT_EQ(words({{"23000", 2627, "Violation of PRIMARY KEY constraint."}}),
            "违反了数据的完整性约束。（Violation of PRIMARY KEY constraint.）");
  EXPECT_EQ(words({{"42000", 229, "The SELECT permission was denied."}}),
            "数据库用户没有执行该操作的权限。（The SELECT permission was denied.）");
}

TEST(ServerFailureTest, OpeningTellsWhatTheOperatorCanMend) {
  const auto failed = [](Said said) { return FailureOfOpening(said, "SQL1"); };
  const Failure refused = failed({{"42000", 18456, "Login failed for user 'sa'."}, {"08001", 0, "Unable to connect"}});
  EXPECT_EQ(refused.number(), failure::kLoginRefused);
  EXPECT_NE(refused.description().find("用户名和登陆密码"), std::string::npos) << refused.description();
  const Failure no_database = failed({{"42000", 4060, "无法打开数据库“x”"}, {"08001", 0, "Unable to connect"}});
  EXPECT_EQ(no_database.number(), failure::kGeneralProvider);
  EXPECT_EQ(no_database.description(), "无法打开数据库“x”");
  const Failure silent = failed({{"08S01", 20009, "Adaptive Server is unavailable"}});
  EXPECT_EQ(silent.number(), failure::kGeneralProvider);
  EXPECT_NE(silent.description().find("“SQL1”：服务器没有运行"), std::string::npos) << silent.description();
  const Failure broken = failed({{"01000", 0, "Can't open lib 'libmsodbcsql-18.so' : file not found"}});
  EXPECT_NE(broken.description().find("驱动程序无法使用"), std::string::npos) << broken.description();
  EXPECT_NE(failed({{"HYT00", 20003, "Timeout"}}).description().find("规定的时间"), std::string::npos);
}

}  // namespace
}  // namespace luming::sqlserver
