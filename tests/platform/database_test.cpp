#include "platform/database.h"

#include <gtest/gtest.h>

#include "support/failure_of.h"

namespace luming {
namespace {

TEST(Value, ShowsItsDefaultText) {
  EXPECT_EQ(Value(true).Text(), "True");
  EXPECT_EQ(Value(std::int64_t{-9'007'199'254'740'993}).Text(), "-9007199254740993");
  EXPECT_EQ(Value(0.1 + 0.2).Text(), "0.3");
  EXPECT_EQ(Value("片 ").Text(), "片 ");
  EXPECT_EQ(Value(DateTime(2026, 3, 1, 8, 5)).Text(), "2026/3/1 8:05:00");
  EXPECT_EQ(Value().TextOrEmpty(), "");
  EXPECT_EQ(Value(3).TextOrEmpty(), "3");
}

TEST(Value, NullIsRefusedWhereAValueIsNeeded) {
  const Value null;
  EXPECT_TRUE(null.IsNull());
  EXPECT_FALSE(Value("").IsNull());
  EXPECT_EQ(FailureOf([&] { null.Text(); }), failure::kInvalidNull);
  EXPECT_EQ(FailureOf([&] { null.Number(); }), failure::kInvalidNull);
  EXPECT_EQ(FailureOf([&] { null.Long(); }), failure::kInvalidNull);
  EXPECT_EQ(FailureOf([&] { null.Bool(); }), failure::kInvalidNull);
  EXPECT_EQ(FailureOf([&] { null.Date(); }), failure::kInvalidNull);
  EXPECT_EQ(null.NumberOr(1), 1);
  EXPECT_EQ(null.Format("0.00"), "");
}

TEST(Value, ConvertsBetweenKinds) {
  EXPECT_EQ(Value("￥12.50").Number(), 12.5);
  EXPECT_EQ(Value(true).Number(), -1);
  EXPECT_EQ(Value(DateTime(1900, 1, 1, 12)).Number(), 2.5);
  EXPECT_EQ(Value("2.5").Long(), 2);
  EXPECT_EQ(Value(std::int64_t{0}).Bool(), false);
  EXPECT_EQ(Value(0.5).Bool(), true);
  EXPECT_EQ(Value("true").Bool(), true);
  EXPECT_EQ(Value("0").Bool(), false);
  EXPECT_EQ(Value("2026年3月1日").Date(), DateTime(2026, 3, 1));
  EXPECT_EQ(Value(46082.25).Date(), DateTime(2026, 3, 1, 6));
  EXPECT_EQ(FailureOf([] { Value("片").Number(); }), failure::kTypeMismatch);
  EXPECT_EQ(FailureOf([] { Value("是").Bool(); }), failure::kTypeMismatch);
  EXPECT_EQ(FailureOf([] { Value("12.5").Date(); }), failure::kTypeMismatch);
  EXPECT_EQ(FailureOf([] { Value(1e300).Date(); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([] { Value(std::int64_t{1} << 40).Long(); }), failure::kOverflow);
}

TEST(Value, FormatsByItsKind) {
  EXPECT_EQ(Value(1.2345).Format("0.000"), "1.235");
  EXPECT_EQ(Value(7).Format("00"), "07");
  EXPECT_EQ(Value("7.5").Format("￥0.0000"), "￥7.5000");
  EXPECT_EQ(Value("片").Format("0.00"), "片");
  EXPECT_EQ(Value(DateTime(2026, 3, 1, 8)).Format("yyyy-mm-dd"), "2026-03-01");
  EXPECT_EQ(Value("2026/3/1").Format("YYYY-MM-DD"), "2026-03-01");
  EXPECT_EQ(Value("2-29").Format("yyyy-mm-dd"), "2-29");
  EXPECT_EQ(Value("").Format("yyyy-mm-dd"), "");
}

TEST(Value, GivesItsTextAway) {
  Value name("阿莫西林胶囊 0.25g*24粒");
  EXPECT_EQ(name.TakeText(), "阿莫西林胶囊 0.25g*24粒");
  EXPECT_EQ(Value(2.5).TakeText(), "2.5");
  EXPECT_EQ(Value().TakeText(), "");
}

Recordset Drugs() {
  Recordset drugs({"YPBM", "YPMC", "KCL"});
  Value* row = drugs.AppendRow();
  row[0] = Value("001000");
  row[1] = Value("阿莫西林");
  drugs.AppendRow({Value("001001"), Value("头孢"), Value(12)});
  return drugs;
}

TEST(Recordset, IsWalkedFromItsFirstRow) {
  Recordset drugs = Drugs();
  EXPECT_EQ(drugs.RecordCount(), 2);
  EXPECT_EQ(drugs.Field("ypmc").Text(), "阿莫西林");
  EXPECT_TRUE(drugs.Field("KCL").IsNull());
  drugs.MoveNext();
  EXPECT_FALSE(drugs.Eof());
  EXPECT_EQ(drugs.Field(2).Long(), 12);
  drugs.MoveNext();
  EXPECT_TRUE(drugs.Eof());
  EXPECT_EQ(FailureOf([&] { drugs.Field(0); }), failure::kNoCurrentRow);
  EXPECT_EQ(FailureOf([&] { drugs.MoveNext(); }), failure::kNoCurrentRow);
  drugs.MoveFirst();
  EXPECT_EQ(drugs.Field("YPBM").Text(), "001000");
}

TEST(Recordset, KnowsItsColumns) {
  const Recordset drugs = Drugs();
  EXPECT_EQ(drugs.ColumnCount(), 3u);
  EXPECT_EQ(drugs.ColumnIndex("kcl"), 2u);
  EXPECT_EQ(FailureOf([&] { drugs.Field("GG"); }), failure::kNoSuchField);
  EXPECT_EQ(FailureOf([&] { drugs.Field(3); }), failure::kNoSuchField);
  EXPECT_EQ(FailureOf([] { Drugs().AppendRow({Value(1)}); }), failure::kInvalidCall);
  // Of two columns of one name the first is meant.
  EXPECT_EQ(Recordset({"A", "a"}).ColumnIndex("a"), 0u);
}

TEST(Recordset, WithoutRowsIsOpenAndAtItsEnd) {
  Recordset empty({"YPBM"});
  EXPECT_TRUE(empty.IsOpen());
  EXPECT_EQ(empty.RecordCount(), 0);
  EXPECT_TRUE(empty.Eof());
  EXPECT_EQ(FailureOf([&] { empty.MoveFirst(); }), failure::kNoCurrentRow);
  EXPECT_EQ(FailureOf([&] { empty.Field("YPBM"); }), failure::kNoCurrentRow);
}

TEST(Recordset, ClosedRefusesAll) {
  Recordset closed = Drugs();
  closed.Close();
  EXPECT_FALSE(closed.IsOpen());
  EXPECT_EQ(FailureOf([&] { closed.RecordCount(); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.Eof(); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.MoveFirst(); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.MoveNext(); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.Field("YPBM"); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.Field(0); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.AppendRow(); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.Find("YPBM='1'"); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.Filter(""); }), failure::kClosedObject);
  EXPECT_EQ(closed.ColumnCount(), 0u);
  closed.Close();
}

TEST(Recordset, HoldsManyRowsInOrder) {
  constexpr int kRows = 3000;  // several blocks and a piece of one
  Recordset rows({"N", "TEXT"});
  for (int i = 0; i < kRows; ++i) {
    Value* row = rows.AppendRow();
    row[0] = Value(i);
    row[1] = Value("第" + std::to_string(i));
  }
  ASSERT_EQ(rows.RecordCount(), kRows);
  Recordset moved = std::move(rows);
  for (int i = 0; i < kRows; ++i, moved.MoveNext()) {
    ASSERT_EQ(moved.Field(0).Long(), i);
    ASSERT_EQ(moved.Field(1).TakeText(), "第" + std::to_string(i));
  }
  EXPECT_TRUE(moved.Eof());
}

std::string CodesFromHere(Recordset& rows) {
  std::string codes;
  for (; !rows.Eof(); rows.MoveNext()) codes += " " + rows.Field("CODE").Text();
  return codes;
}

/// Each field of another kind, the last row without any.
Recordset Batches() {
  Recordset rows({"CODE", "PH", "SL", "XQ"});
  rows.AppendRow({Value("a"), Value("Ab ω "), Value(5), Value(DateTime(2026, 3, 1))});
  rows.AppendRow({Value("b"), Value("it's"), Value(2.5), Value(DateTime(2027, 3, 1))});
  rows.AppendRow({Value("c"), Value("AB Ω"), Value(std::int64_t{5}), Value(DateTime(2026, 3, 1, 8))});
  rows.AppendRow({Value("d"), Value(), Value(), Value()});
  return rows;
}

TEST(Recordset, FilterShowsTheRowsThatMeetIt) {
  const std::pair<const char*, const char*> cases[] = {
      {"PH='aB Ω'", " a c"},       {"PH<>'aB Ω'", " b d"}, {"ph = 'it''s'", " b"},
      {" [PH] <> ''", " a b c d"}, {"SL=5", " a c"},       {"SL<>'2.50'", " a c d"},
      {"XQ='2026-3-1'", " a"},     {"PH='Ab'", ""},        {"", " a b c d"},
  };
  Recordset rows = Batches();
  for (const auto& [criteria, codes] : cases) {
    rows.Filter(criteria);
    const std::string wanted = codes;
    EXPECT_EQ(rows.RecordCount(), static_cast<int>(wanted.size() / 2)) << criteria;
    EXPECT_EQ(CodesFromHere(rows), wanted) << criteria;
  }
  rows.Filter("CODE<>'a'");
  CodesFromHere(rows);
  rows.MoveFirst();
  EXPECT_EQ(CodesFromHere(rows), " b c d");
  rows.Filter("CODE='x'");
  EXPECT_TRUE(rows.Eof());
  EXPECT_EQ(FailureOf([&] { rows.MoveFirst(); }), failure::kNoCurrentRow);
}

TEST(Recordset, FindGoesToTheFirstRowThatMeetsIt) {
  Recordset rows = Batches();
  CodesFromHere(rows);
  rows.Find("PH='AB ω'");
  EXPECT_EQ(CodesFromHere(rows), " a b c d");
  rows.Filter("CODE<>'a'");
  rows.Find("PH='AB ω'");
  EXPECT_EQ(CodesFromHere(rows), " c d") << "a row that the filter holds back is not found";
  rows.Find("PH='none'");
  EXPECT_TRUE(rows.Eof());
  Recordset empty({"PH"});
  EXPECT_EQ(FailureOf([&] { empty.Find("PH='A1'"); }), failure::kNoCurrentRow);
}

TEST(Recordset, CriteriaThatCannotBeReadChangeNothing) {
  Recordset rows = Batches();
  rows.Filter("CODE<>'a'");
  for (const char* criteria : {"PH", "='x'", "[]='x'", "PH='x", "PH=x", "PH='it's'", "PH>'x'", "PH<'x'", "PH=", "PH='",
                               "PH Like 'x'", "SL='x'", "XQ='x'"}) {
    EXPECT_EQ(FailureOf([&] { rows.Find(criteria); }), failure::kBadArgument) << criteria;
    EXPECT_EQ(FailureOf([&] { rows.Filter(criteria); }), failure::kBadArgument) << criteria;
  }
  EXPECT_EQ(FailureOf([&] { rows.Find("GG='x'"); }), failure::kNoSuchField);
  EXPECT_EQ(FailureOf([&] { rows.Filter("GG='x'"); }), failure::kNoSuchField);
  EXPECT_EQ(rows.RecordCount(), 3);
  EXPECT_EQ(CodesFromHere(rows), " b c d");
}

TEST(Recordset, FurtherResultsComeInOrder) {
  Recordset first({"A"});
  auto second = std::make_unique<Recordset>(std::vector<std::string>{"B"});
  second->SetNext(std::make_unique<Recordset>(std::vector<std::string>{"C"}));
  first.SetNext(std::move(second));
  Recordset next = first.NextRecordset();
  EXPECT_EQ(next.ColumnNames(), std::vector<std::string>{"B"});
  EXPECT_FALSE(first.NextRecordset().IsOpen());
  Recordset last = next.NextRecordset();
  EXPECT_EQ(last.ColumnNames(), std::vector<std::string>{"C"});
  EXPECT_FALSE(last.NextRecordset().IsOpen());
}

}  // namespace
}  // namespace luming
