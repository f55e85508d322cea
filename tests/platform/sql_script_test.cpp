#include "platform/sql_script.h"

#include <gtest/gtest.h>

#include "platform/editable_recordset.h"

namespace luming {
namespace {

TEST(SqlScriptTest, LinesWithGoAloneSetBatchesApart) {
  const auto batches = SplitScript("a\nb\nGO\n\n\n  go ; \r\nc Go d\r\nGO\r\n\ne GO\nGOOD");
  ASSERT_EQ(batches.size(), 3U);
  EXPECT_EQ(batches[0].text, "a\nb\n");
  EXPECT_EQ(batches[0].first_line, 1U);
  EXPECT_EQ(batches[1].text, "c Go d\r\n");
  EXPECT_EQ(batches[1].first_line, 7U);
  EXPECT_EQ(batches[2].text, "\ne GO\nGOOD\n");
  EXPECT_EQ(batches[2].first_line, 9U);
  for (const char* nothing : {"", "\n\n", "GO", "GO\nGO\n  \nGO"}) EXPECT_TRUE(SplitScript(nothing).empty()) << nothing;
}

TEST(SqlLiteralTest, LiteralsReadAsTheVeryValue) {
  const std::pair<Value, const char*> cases[] = {
      {Value(), "Null"},
      {Value(true), "1"},
      {Value(std::int64_t{-9007199254740993}), "-9007199254740993"},
      {Value(0.1), "0.1"},
      {Value(-123456789.123456), "-123456789.123456"},
      {Value(0.1 + 0.2), "0.30000000000000004"},
      {Value(1e-7), "1e-07"},
      {Value("it's 药"), "'it''s 药'"},
      {Value(DateTime(2026, 3, 1)), "'2026-03-01 00:00:00'"},
      {Value(DateTime(2026, 3, 1, 8, 5, 0, 7)), "'2026-03-01 08:05:00.007'"},
  };
  for (const auto& [value, literal] : cases) EXPECT_EQ(SqlLiteral(value), literal);
}

}  // namespace
}  // namespace luming
