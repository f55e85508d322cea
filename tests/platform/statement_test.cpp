#include "platform/statement.h"

#include <gtest/gtest.h>

#include "support/fake_store.h"

namespace luming {
namespace {

TEST(StatementTest, PutsWordsAndValuesTogetherAsTheyStand) {
  const std::string table = "K";
  Statement values = Quoted("阿莫灵") + "," + Bare(" -1.50e+3 ");
  values += "," + DayOrNull("2027-12-31") + "," + DayOrNull("长期");
  const Statement whole = "Insert Into " + table + " Values(" + values + ")" + Less(3) + Less(-0.5);
  EXPECT_EQ(whole.text(), "Insert Into K Values('阿莫灵', -1.50e+3 ,'2027-12-31',Null)-3-(-0.5)");
  EXPECT_EQ(whole.flaw(), "");
}

TEST(StatementTest, KnowsTheTextsThatWouldEndTheirLiteral) {
  for (const char* text : {"", "5%", "''", "a''b", "''''", "--", "a\"b"}) EXPECT_EQ(Statement(Quoted(text)).flaw(), "");
  for (const char* text : {"'", "a'", "'a'", "a'b'c", "'''", "x') Delete YPCRK Select ('", "'' '"}) {
    EXPECT_NE(Statement(Quoted(text)).flaw(), "") << text;
  }
}

TEST(StatementTest, KnowsTheFiguresThatAreNone) {
  for (const char* figure : {"0", "+5", "-5", ".5", "5.", "1E+15", "1e-5", " 7 "}) {
    EXPECT_EQ(Statement(Bare(figure)).flaw(), "") << figure;
  }
  for (const char* figure : {"", " ", ".", "-", "--5", "- 5", "1,234", "￥5", "１２", "5-", "1e", "0x1F", "5 5", "null",
                             "1;2", "1/*", "2026/3/1", "1 Or 1=1"}) {
    EXPECT_NE(Statement(Bare(figure)).flaw(), "") << figure;
  }
}

TEST(StatementTest, NamesTheFirstValueThatMustNotBeSent) {
  const Statement text = "Update K Set A=" + Quoted("x'y", "备注") + ",B=" + Bare("abc", {"数量", 3});
  EXPECT_EQ(text.flaw(), "“备注”的内容“x'y”含有不成对的单引号，语句无法执行。");
  const Statement figure = Statement("B=") + Bare("abc", {std::string("数量"), 3}) + ",A=" + Quoted("x'y");
  EXPECT_EQ(figure.flaw(), "“第3行 数量”的内容“abc”不是数字，语句无法执行。");
  EXPECT_EQ(("A=" + Quoted("1234567890123456789012345678901'")).flaw(),
            "内容“123456789012345678901234567890…”含有不成对的单引号，语句无法执行。");
}

TEST(StatementTest, IsRefusedByTheConnectionAndNothingIsSent) {
  FakeStore store;
  const std::unique_ptr<Connection> connection = store.Connect();
  connection->Open("x");
  connection->Execute("Delete K Where A Like" + Quoted("a''b%"));
  try {
    connection->Execute("Delete K Where A Like" + Quoted("a'b%", "编码"));
    FAIL() << "it should have been refused";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), failure::kSyntax);
    EXPECT_EQ(failure.description(), "“编码”的内容“a'b%”含有不成对的单引号，语句无法执行。");
  }
  EXPECT_EQ(store.TakeSent(), (std::vector<std::string>{"open x", "Delete K Where A Like'a''b%'"}));
}

}  // namespace
}  // namespace luming
