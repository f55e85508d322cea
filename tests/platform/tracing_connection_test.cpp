#include "platform/tracing_connection.h"

#include <gtest/gtest.h>

#include "platform/statement.h"
#include "support/fake_store.h"

namespace luming {
namespace {

TEST(TracingConnectionTest, TellsEachStatementWithItsRowsOrItsFailure) {
  FakeStore store;
  store.Answer("list", {"a"}, {{NumberValue(1)}, {NumberValue(2)}});
  store.Fail("broken", Failure(failure::kSyntax, "语法错误"));
  std::vector<std::string> told;
  TracingConnection connection(store.Connect(), [&](const TracedStatement& sent) {
    told.push_back(sent.sql + " " + std::to_string(sent.rows) + " " + sent.failure);
  });
  connection.Open("x");
  EXPECT_TRUE(connection.IsOpen());
  connection.BeginTrans();
  EXPECT_EQ(connection.Execute("list").RecordCount(), 2);
  EXPECT_FALSE(connection.Execute("write").IsOpen());
  connection.CommitTrans();
  EXPECT_THROW(connection.RollbackTrans(), Failure);
  EXPECT_THROW(connection.Execute("broken"), Failure);
  EXPECT_THROW(connection.Execute("Delete K Where N=" + Bare("1 Or 1", "数量")), Failure);
  connection.Close();
  EXPECT_FALSE(connection.IsOpen());
  EXPECT_EQ(store.TakeSent().size(), 8U) << "what is refused is told, but not sent";
  EXPECT_EQ(told,
            (std::vector<std::string>{"BEGIN TRANSACTION -1 ", "list 2 ", "write -1 ", "COMMIT TRANSACTION -1 ",
                                      "ROLLBACK TRANSACTION -1 没有活动的事务。", "broken -1 语法错误",
                                      "Delete K Where N=1 Or 1 -1 “数量”的内容“1 Or 1”不是数字，语句无法执行。"}));
}

}  // namespace
}  // namespace luming
