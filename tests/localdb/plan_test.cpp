#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "localdb/collation.h"
#include "localdb/engine_functions.h"
#include "localdb/interpreter.h"
#include "localdb/local_connection.h"
#include "localdb/parser/parser.h"
#include "localdb/store_file.h"
#include "localdb/translate/translator.h"
#include "support/temp_directory.h"
#include "util/text.h"

namespace luming::test {
namespace {

using namespace localdb;
using namespace std::chrono_literals;

class PlanTest : public testing::Test {
 protected:
  PlanTest() {
    CreateStore(directory_.Path(), "s");
    session_ = std::make_unique<Session>(OpenStoreFile(StorePath(directory_.Path(), "s"), "s", wait_), clock_, "s");
    Run("Create Table Y(YPBM varchar(30) not null primary key, PYDM varchar(50) null, SP varchar(50) null, SL decimal(18,6), "
        "RQ datetime, N int) "
        "Create Index IX_PYDM On Y(PYDM) Create Index IX_SP On Y(SP) Create Index IX_RQ On Y(RQ)");
  }

  std::vector<Recordset> Run(const std::string& sql) {
    lexed_.Lex(sql);
    auto statements = Parser(lexed_).ParseBatch();
    return Interpreter(*session_).RunBatch(statements, lexed_);
  }

  /// How the engine means to run the statement, one line for each step.
  std::string Explain(const std::string& sql, const Frame& frame) {
    lexed_.Lex(sql);
    auto statements = Parser(lexed_).ParseBatch();
    Translator translator({session_->catalogue, frame, lexed_});
    const auto& node = statements.at(0)->node;
    std::unique_ptr<Plan> plan = std::holds_alternative<SelectStatement>(node)
                                     ? translator.Select(*std::get<SelectStatement>(node).query)
                                     : translator.Update(std::get<UpdateStatement>(node));
    sqlite3_stmt* raw = nullptr;
    std::string explain = "EXPLAIN QUERY PLAN " + plan->sql;
    EXPECT_EQ(sqlite3_prepare_v2(session_->store.get(), explain.c_str(), -1, &raw, nullptr), SQLITE_OK) << plan->sql;
    StatementHandle statement(raw);
    std::string steps;
    while (sqlite3_step(raw) == SQLITE_ROW)
      steps += reinterpret_cast<const char*>(sqlite3_column_text(raw, 3)) + std::string("\n");
    return steps;
  }
  std::string Explain(const std::string& sql) { return Explain(sql, session_->frame); }

  TempDirectory directory_;
  FixedClock clock_{DateTime(2026, 3, 1)};
  LockWait wait_{200ms};
  std::unique_ptr<Session> session_;
  LexedText lexed_;
};

TEST_F(PlanTest, LikeOfAPlainTextSeeksAndOfAPrefixReadsARange) {
  EXPECT_NE(Explain("Select * From Y Where YPBM Like'0001'").find("(YPBM=?)"), std::string::npos);
  EXPECT_NE(Explain("Select * From Y Where PYDM Like'AM%'").find("IX_PYDM (PYDM>? AND PYDM<?)"), std::string::npos);
  EXPECT_NE(Explain("Update Y Set SL=SL+1 Where YPBM Like'0001'").find("(YPBM=?)"), std::string::npos);
  EXPECT_NE(Explain("Select * From Y Where YPBM='0001' And SL>0").find("(YPBM=?)"), std::string::npos);
  std::string either = Explain("Select * From Y Where PYDM Like'A%' Or SP Like'A%'");
  EXPECT_NE(either.find("IX_PYDM"), std::string::npos) << either;
  EXPECT_NE(either.find("IX_SP"), std::string::npos) << either;
  EXPECT_EQ(Explain("Select * From Y Where PYDM Like'%A'").find("USING INDEX"), std::string::npos);
}

TEST_F(PlanTest, PatternsInVariablesAreLookedForByWhatTheyHold) {
  Frame frame(&session_->frame);
  frame.Declare("@p", SqlType::Text(50)).value = "AM%";
  EXPECT_NE(Explain("Select * From Y Where PYDM Like @p", frame).find("PYDM>? AND PYDM<?"), std::string::npos);
  frame.Find("@p")->value = "0001";
  EXPECT_NE(Explain("Select * From Y Where YPBM Like @p", frame).find("YPBM=?"), std::string::npos);
  frame.Find("@p")->value = "%x";
  EXPECT_EQ(Explain("Select * From Y Where YPBM Like @p", frame).find("YPBM="), std::string::npos);
}

/// The statement of a procedure between two of its lines.
std::string StatementBetween(std::string_view text, std::string_view first, std::string_view last) {
  std::size_t start = text.find(first) + first.size();
  return std::string(text.substr(start, text.find(last, start) - start));
}

TEST_F(PlanTest, TheSearchOnEachKeystrokeReadsTheCodeIndexes) {
  std::filesystem::path database = std::filesystem::path(LUMING_SOURCE_DIR) / "database";
  for (const std::string& batch : Split(ReadBytes(database / "schema.sql"), "\nGO\n")) Run(batch);
  std::string text = ReadBytes(database / "procedures.sql");
  text = text.substr(text.find("CREATE PROCEDURE Get_YP_JCTestYK"));
  Frame frame(&session_->frame);
  for (const char* name : {"@LB", "@NR", "@YKC", "@ZY", "@KFMC"}) frame.Declare(name, SqlType::Text(50)).value = "1";
  frame.Find("@NR")->value = "AM%";
  std::string by_pinyin = Explain(StatementBetween(text, "IF @ZD = 'PYDM'", "ELSE IF"), frame);
  EXPECT_NE(by_pinyin.find("IX_YF_YPML_PYDM (PYDM>? AND PYDM<?)"), std::string::npos) << by_pinyin;
  EXPECT_NE(by_pinyin.find("IX_YF_YPML_SP_PYDM (SP_PYDM>? AND SP_PYDM<?)"), std::string::npos) << by_pinyin;
  std::string by_wubi = Explain(StatementBetween(text, "ELSE IF @ZD = 'WBDM'", "ELSE\n"), frame);
  EXPECT_NE(by_wubi.find("IX_YF_YPML_WBDM (WBDM>? AND WBDM<?)"), std::string::npos) << by_wubi;
  std::string by_code = Explain(StatementBetween(text, "ELSE\n", "END\nGO"), frame);
  EXPECT_NE(by_code.find("(YPBM>? AND YPBM<?)"), std::string::npos) << by_code;
}

TEST_F(PlanTest, DatesAndNumbersUseTheirIndexes) {
  std::string between = Explain("Select * From Y Where RQ Between '2026-3-1' And '2026-3-1 23:59:59'");
  EXPECT_NE(between.find("IX_RQ (RQ>? AND RQ<?)"), std::string::npos) << between;
  std::string ordered = Explain("Select Top 1 YPBM From Y Order By PYDM");
  EXPECT_NE(ordered.find("IX_PYDM"), std::string::npos) << ordered;
}

TEST_F(PlanTest, TextsThatDifferInLiteralsAloneShareOnePlan) {
  std::size_t before = session_->plans.size();
  for (int i = 0; i < 50; ++i) {
    std::string n = std::to_string(i);
    Run("Insert into Y(YPBM,PYDM,SL,N) Values('" + n + "','A''" + n + "'," + n + (i % 2 ? ".5" : "") + "," + n + ")");
    Run("Select SL From Y Where YPBM Like'" + n + "'");
    Run("Update Y Set SL=" + n + ",N=" + n + " Where YPBM Like'" + n + "'");
  }
  EXPECT_EQ(session_->plans.size(), before + 3);
  // Where the literal decides the type, the plan is another: 7/2 is 3, 7/2.0 is 3.5.
  Run("Update Y Set N=7 Where YPBM='1'");
  EXPECT_EQ(Run("Select N/2 From Y Where YPBM='1'").at(0).Field(std::size_t{0}).Text(), "3");
  EXPECT_EQ(Run("Select N/2.0 From Y Where YPBM='1'").at(0).Field(std::size_t{0}).Text(), "3.5");
  EXPECT_EQ(Run("Select N/7 From Y Where YPBM='1'").at(0).Field(std::size_t{0}).Text(), "1");
  EXPECT_EQ(Run("Select YPBM From Y Where YPBM Like'4_' And N>47 Order By 1 Desc").at(0).Field(std::size_t{0}).Text(),
            "49");
  EXPECT_EQ(Run("Select YPBM,N From Y Where YPBM Like'4%' And N>47 Order By 2").at(0).Field(std::size_t{0}).Text(),
            "48");
  EXPECT_EQ(Run("Select Top 2 YPBM From Y").at(0).RecordCount(), 2);
  EXPECT_EQ(Run("Select Top 3 YPBM From Y").at(0).RecordCount(), 3);
}

TEST_F(PlanTest, OldPlansMakeRoomForNewOnes) {
  PlanCache small(2);
  LexedText lexed;
  lexed.Lex("x");
  Bindings bindings{lexed, 0, session_->frame};
  small.Insert("a", std::make_unique<Plan>());
  small.Insert("b", std::make_unique<Plan>());
  EXPECT_NE(small.Find("a", bindings), nullptr);
  small.Insert("c", std::make_unique<Plan>());
  EXPECT_EQ(small.Find("b", bindings), nullptr);
  EXPECT_NE(small.Find("a", bindings), nullptr);
  EXPECT_EQ(small.size(), 2U);
}

TEST_F(PlanTest, ManyRowsStayFast) {
  sqlite3* store = session_->store.get();
  Run("Create Table M(code varchar(20) not null, n int) Create Index IX_M On M(code)");
  RunPlain(store,
           "INSERT INTO M(code, n) WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM c WHERE i < 100000) "
           "SELECT printf('D%07d', i), i FROM c");
  auto reads = [&](const std::string& sql) {
    // Steps of the engine's machine are counted in thousands; no clock is asked.
    int thousands = 0;
    sqlite3_progress_handler(
        store, 1000, [](void* count) { return ++*static_cast<int*>(count), 0; }, &thousands);
    Run(sql);
    sqlite3_progress_handler(store, 0, nullptr, nullptr);
    return thousands;
  };
  EXPECT_LT(reads("Select n From M Where code Like'd0050000'"), 2);
  EXPECT_LT(reads("Select n From M Where code Like'd00500%'"), 5);
  EXPECT_LT(reads("Update M Set n=n+1 Where code Like'D0099999'"), 2);
  EXPECT_LT(reads("Select Top 1 code From M Where code Between 'D0000500' And 'D0000600' Order By code Desc"), 2);
}

TEST(Collation, OrdersAndEqualsAsTold) {
  const std::vector<std::string> ascending = {"", "-", "_", "9", "A", "ab", "Z", "α", "阿", "白", "张", "坐", "鼗"};
  for (std::size_t i = 0; i + 1 < ascending.size(); ++i) {
    EXPECT_LT(CompareText(ascending[i], ascending[i + 1]), 0) << ascending[i] << " " << ascending[i + 1];
    EXPECT_GT(CompareText(ascending[i + 1], ascending[i]), 0);
  }
  EXPECT_EQ(CompareText("AbC  ", "aBc"), 0);
  EXPECT_EQ(CompareText("Ω甲", "ω甲 "), 0);
  EXPECT_NE(CompareText("a b", "ab"), 0);
  EXPECT_LT(CompareText("阿莫", "阿莫西"), 0);
  EXPECT_LT(CompareText("zzz", "阿"), 0);
  // The end of a prefix's range lies behind all that begins with it.
  EXPECT_LT(CompareText("甲鼗鼗鼗", "甲\xf4\x8f\xbf\xbf"), 0);
}

TEST(Like, BadPatternsMatchNothingAndCostLittle) {
  EXPECT_FALSE(MatchesLike("[", "a"));
  EXPECT_TRUE(MatchesLike("[", "["));
  EXPECT_FALSE(MatchesLike("a[", "a"));
  EXPECT_FALSE(MatchesLike("[]", "a"));
  EXPECT_TRUE(MatchesLike("[a-]", "-"));
  EXPECT_TRUE(MatchesLike("%%%", ""));
  EXPECT_FALSE(MatchesLike("", "a"));
  std::string pattern;
  for (int i = 0; i < 50; ++i) pattern += "%a";
  EXPECT_FALSE(MatchesLike(pattern + "b", std::string(3000, 'a')));
}

}  // namespace
}  // namespace luming::test
