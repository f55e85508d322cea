#include "util/date_text.h"

#include <gtest/gtest.h>

#include "support/failure_of.h"

namespace luming {
namespace {

const DateTime kToday(2026, 5, 6);

struct Reading {
  const char* text;
  DateTime value;
};

TEST(DateText, ReadsWhatADesktopTakesForADate) {
  const Reading readings[] = {
      {"2026-03-01", {2026, 3, 1}},
      {"2026-3-1", {2026, 3, 1}},
      {"2026/3/1", {2026, 3, 1}},
      {"2026.3.1", {2026, 3, 1}},
      {"2026年3月1日", {2026, 3, 1}},
      {"2026 年 3 月 1 日", {2026, 3, 1}},
      {"2026年3月", {2026, 3, 1}},
      {"2026-3", {2026, 3, 1}},
      {"3月1日", {2026, 3, 1}},
      {"3-1", {2026, 3, 1}},
      {"26-3-1", {2026, 3, 1}},
      {"29-3-1", {2029, 3, 1}},
      {"30-3-1", {1930, 3, 1}},
      {"99年3月1日", {1999, 3, 1}},
      {"3/1/2026", {2026, 3, 1}},
      {"  2026-3-1  ", {2026, 3, 1}},
      {"2026 - 3 - 1", {2026, 3, 1}},
      {"2024-2-29", {2024, 2, 29}},
      {"2000-02-29", {2000, 2, 29}},
      {"1753-01-01", {1753, 1, 1}},
      {"9999-12-31 23:59:59", {9999, 12, 31, 23, 59, 59}},
      {"2026-03-01 08:05:09", {2026, 3, 1, 8, 5, 9}},
      {"2026-03-01  08:05:09", {2026, 3, 1, 8, 5, 9}},
      {"2026/3/1 8:05", {2026, 3, 1, 8, 5}},
      {"2026年3月1日8:05:00", {2026, 3, 1, 8, 5}},
      {"2026-3-1 00:00:00", {2026, 3, 1}},
      {"2026-03-01 08:05:09.5", {2026, 3, 1, 8, 5, 9, 500}},
      {"2026-03-01 08:05:09.250", {2026, 3, 1, 8, 5, 9, 250}},
      {"2026-03-01 08:05:09.1239999", {2026, 3, 1, 8, 5, 9, 123}},
      {"2026-3-1 上午 12:30", {2026, 3, 1, 0, 30}},
      {"2026-3-1 下午 3:05:00", {2026, 3, 1, 15, 5}},
      {"2026-3-1 12:05 PM", {2026, 3, 1, 12, 5}},
      {"8:05", {1899, 12, 30, 8, 5}},
      {" 23:59:59 ", {1899, 12, 30, 23, 59, 59}},
  };
  for (const Reading& c : readings) {
    EXPECT_EQ(ParseDate(c.text, kToday), c.value) << '[' << c.text << ']';
    EXPECT_TRUE(IsDate(c.text)) << '[' << c.text << ']';
  }
}

TEST(DateText, RefusesOtherTexts) {
  const char* const refused[] = {
      // Numbers, prices, batch numbers and names that stand beside dates on the screens.
      "", " ", "片", "5", "12.5", "3.1", "20260301", "260301", "003-1", "-1", "1-", "A-1", "0.25g*24", "1-2-3-4",
      // Days and times that do not exist.
      "2026-2-29", "1900-2-29", "2026-13-1", "2026-0-1", "2026-3-0", "2026-4-31", "2026-03-32", "13-1",
      "2026-3-1 24:00:00", "2026-3-1 8:60", "2026-3-1 8:05:60", "2026-3-1 下午 13:00", "2026-3-1 0:30 AM",
      // Out of the range of a date column.
      "1752-12-31", "0000-00-00", "100-1-1", "10000-1-1",
      // Broken forms.
      "2026-3-1x", "2026-3/1", "2026--3", "2026-3-", "2026年", "3月", "2026年3月1", "2026-3-1 8",
      "2026-3-1 8:", "2026-3-1 8:05:", "2026-3-1 8:05:09.", "8:05 2026-3-1", "2026-03-01T08:05:09", "2026-03-0a",
      "2026-03-01 0x:05:09", "2026-99999999999999999999-1", "2026-3-1 :05", "\xB0\xB1"};
  for (const char* text : refused) {
    EXPECT_EQ(ParseDate(text, kToday), std::nullopt) << '[' << text << ']';
    EXPECT_FALSE(IsDate(text)) << '[' << text << ']';
  }
}

TEST(DateText, TheLeapDayOfNoYearIsADateOnlyWhereTheYearHasIt) {
  EXPECT_EQ(ParseDate("2-29", DateTime(2024, 1, 1)), DateTime(2024, 2, 29));
  EXPECT_EQ(ParseDate("2-29", kToday), std::nullopt);
  EXPECT_TRUE(IsDate("2-29"));
}

TEST(DateText, ConversionOfOtherTextsIsATypeMismatch) {
  EXPECT_EQ(CDate("2026-3-1", kToday), DateTime(2026, 3, 1));
  EXPECT_EQ(FailureOf([] { CDate("片", kToday); }), failure::kTypeMismatch);
}

TEST(DateText, DefaultTextShowsATimeOnlyWhereThereIsOne) {
  EXPECT_EQ(DateText({2026, 3, 1}), "2026/3/1");
  EXPECT_EQ(DateText({2026, 12, 31, 8, 5, 9, 250}), "2026/12/31 8:05:09");
  EXPECT_EQ(DateText({2026, 3, 1, 0, 0, 1}), "2026/3/1 0:00:01");
  EXPECT_EQ(DateText({1899, 12, 30, 8, 5}), "8:05:00");
  EXPECT_EQ(DateText({}), "0:00:00");
}

TEST(DateText, DefaultTextReadsBackAsTheSameSecond) {
  DateTime moment(1753, 1, 1);
  for (int i = 0; i < 3000; ++i, moment = moment.AddDays(997).AddSeconds(7919)) {
    ASSERT_EQ(ParseDate(DateText(moment), kToday), moment) << DateText(moment);
    ASSERT_EQ(ParseDate(FormatDate(moment, "yyyy-mm-dd hh:mm:ss"), kToday), moment);
  }
}

TEST(FormatDate, FollowsTheCodes) {
  const DateTime moment(2026, 3, 1, 8, 5, 9, 999);
  const std::pair<const char*, const char*> cases[] = {
      {"yyyy-mm-dd", "2026-03-01"},
      {"YYYY-MM-DD", "2026-03-01"},
      {"yyyy-mm-dd  hh:mm:ss", "2026-03-01  08:05:09"},
      {"hh:mm yyyy-mm", "08:05 2026-03"},
      {"yy/m/d h:n:s", "26/3/1 8:5:9"},
      {"nn.ss", "05.09"},
      {"dddddd", "2026年3月1日"},
      {"yyyy年m月d日", "2026年3月1日"},
      {"mmdd", "0301"},
      {"", ""},
      {"单号", "单号"},
  };
  for (const auto& [format, text] : cases) EXPECT_EQ(FormatDate(moment, format), text) << format;
}

TEST(DateText, NamesTheWeekday) {
  EXPECT_EQ(WeekdayName({2026, 3, 1}), "星期日");
  EXPECT_EQ(WeekdayName({2026, 3, 7}), "星期六");
  EXPECT_EQ(WeekdayName({1899, 12, 30}), "星期六");
}

}  // namespace
}  // namespace luming
