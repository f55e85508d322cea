#include "util/lunar_calendar.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "support/failure_of.h"
#include "util/date_text.h"
#include "util/text.h"

namespace luming {
namespace {

std::string LineOf(DateTime day) {
  return LunarCalendar(day).GET_NL();
}

TEST(LunarCalendar, ShowsTheWholeLine) {
  const std::pair<DateTime, const char*> cases[] = {
      {{2026, 2, 17}, "今天是：2026年2月17日 星期二  丙午年(马)正月初一    春节"},
      // The days ahead of the lunar new year are of the year before.
      {{2026, 1, 1}, "今天是：2026年1月1日 星期四  乙巳年(蛇)十一月十三  元旦  "},
      {{2026, 2, 16}, "今天是：2026年2月16日 星期一  乙巳年(蛇)腊月廿九    除夕"},
      {{2026, 3, 2}, "今天是：2026年3月2日 星期一  丙午年(马)正月十四    "},
      {{2020, 10, 1}, "今天是：2020年10月1日 星期四  庚子年(鼠)八月十五  国庆节  中秋节"},
      {{1921, 2, 8}, "今天是：1921年2月8日 星期二  辛酉年(鸡)正月初一    春节"},
      // The time of day plays no part.
      {{2024, 2, 29, 23, 59, 59}, "今天是：2024年2月29日 星期四  甲辰年(龙)正月二十    "},
  };
  for (const auto& [day, line] : cases) EXPECT_EQ(LineOf(day), line);
}

TEST(LunarCalendar, ALeapMonthIsNamedAndHasNoFestival) {
  EXPECT_EQ(LineOf({2025, 7, 25}), "今天是：2025年7月25日 星期五  乙巳年(蛇)闰六月初一    ");
  EXPECT_EQ(LineOf({2025, 8, 23}), "今天是：2025年8月23日 星期六  乙巳年(蛇)七月初一    ");
  // 七夕 comes once in a year that doubles the seventh month.
  EXPECT_EQ(LineOf({2006, 7, 31}), "今天是：2006年7月31日 星期一  丙戌年(狗)七月初七    七夕节");
  EXPECT_EQ(LineOf({2006, 8, 30}), "今天是：2006年8月30日 星期三  丙戌年(狗)闰七月初七    ");
}

TEST(LunarCalendar, ALastMonthOfThirtyDaysHasTwoEves) {
  EXPECT_TRUE(LineOf({2024, 2, 8}).ends_with("腊月廿九    除夕"));
  EXPECT_TRUE(LineOf({2024, 2, 9}).ends_with("腊月三十    除夕"));
  EXPECT_TRUE(LineOf({2024, 2, 10}).ends_with("正月初一    春节"));
}

TEST(LunarCalendar, NamesTheFestivals) {
  const std::pair<DateTime, const char*> cases[] = {
      {{2026, 2, 14}, "情人节"},    {{2026, 3, 8}, "妇女节"},   {{2026, 3, 12}, "植树节"}, {{2026, 3, 15}, "权益日"},
      {{2026, 4, 1}, "愚人节"},     {{2026, 4, 5}, "清明节"},   {{2026, 5, 1}, "劳动节"},  {{2026, 5, 4}, "青年节"},
      {{2026, 5, 12}, "护士节"},    {{2026, 6, 1}, "儿童节"},   {{2026, 7, 1}, "建党节"},  {{2026, 8, 1}, "建军节"},
      {{2026, 8, 8}, "父亲节"},     {{2026, 9, 10}, "教师节"},  {{2026, 10, 6}, "老人节"}, {{2026, 10, 24}, "联合国日"},
      {{2026, 12, 20}, "澳门回归"}, {{2026, 12, 25}, "圣诞节"}, {{2026, 3, 3}, "元宵节"},  {{2026, 6, 19}, "端午节"},
      {{2026, 8, 27}, "中元节"},    {{2026, 10, 18}, "重阳节"}, {{2026, 1, 26}, "腊八节"}, {{2026, 2, 11}, "小年"},
  };
  for (const auto& [day, festival] : cases) {
    EXPECT_NE(LineOf(day).find("  " + std::string(festival)), std::string::npos) << LineOf(day);
  }
}

TEST(LunarCalendar, RefusesDaysOutsideItsTable) {
  for (const DateTime day :
       {DateTime(1921, 2, 7), DateTime(1753, 1, 1), DateTime(2101, 1, 29), DateTime(9999, 12, 31)}) {
    EXPECT_EQ(FailureOf([&] { LineOf(day); }), failure::kSubscript) << DateText(day);
  }
}

struct Year {
  DateTime first_day;
  int leap_month;
  std::string lengths;  ///< one letter for each month: L of 30 days, S of 29
};

std::vector<Year> ReadYears() {
  std::vector<Year> years;
  std::ifstream file(TEST_DATA_DIR "/lunar_years.tsv");
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with('#')) continue;
    const std::vector<std::string> parts = Split(line, "\t");
    years.push_back({CDate(parts.at(1), {}), std::stoi(parts.at(2)), parts.at(3)});
  }
  return years;
}

/// The names of a year's months in order.
std::vector<std::string> MonthNames(int leap_month) {
  std::vector<std::string> names = Split("正 二 三 四 五 六 七 八 九 十 十一 腊", " ");
  if (leap_month > 0) names.insert(names.begin() + leap_month, "闰" + names[static_cast<std::size_t>(leap_month) - 1]);
  return names;
}

TEST(LunarCalendar, AgreesWithAnIndependentCalendarInEveryMonth) {
  const std::vector<Year> years = ReadYears();
  ASSERT_EQ(years.size(), 180u);
  DateTime day = years.front().first_day;
  for (const Year& year : years) {
    ASSERT_EQ(day, year.first_day) << "the years of the table do not follow one another";
    const std::vector<std::string> names = MonthNames(year.leap_month);
    ASSERT_EQ(names.size(), year.lengths.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
      const int length = year.lengths[i] == 'L' ? 30 : 29;
      EXPECT_NE(LineOf(day).find(")" + names[i] + "月初一  "), std::string::npos) << LineOf(day);
      const std::string last = LineOf(day.AddDays(length - 1));
      EXPECT_NE(last.find(")" + names[i] + (length == 30 ? "月三十  " : "月廿九  ")), std::string::npos) << last;
      day = day.AddDays(length);
    }
  }
  EXPECT_EQ(day, DateTime(2101, 1, 29));
}

/// "丙午年(马)" out of the line of a lunar new year's day.
std::string CycleYear(const DateTime& new_years_day) {
  const std::string line = LineOf(new_years_day);
  const std::size_t end = line.find("正月初一");
  const std::size_t begin = line.rfind("  ", end) + 2;
  return line.substr(begin, end - begin);
}

TEST(LunarCalendar, TheYearsRunInACycleOfSixty) {
  std::vector<std::string> names;
  for (const Year& year : ReadYears()) names.push_back(CycleYear(year.first_day));
  ASSERT_EQ(names.size(), 180u);
  for (std::size_t i = 0; i < 120; ++i) EXPECT_EQ(names[i], names[i + 60]);
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 60u);
  EXPECT_EQ(names[1984 - 1921], "甲子年(鼠)");
  EXPECT_EQ(names[2000 - 1921], "庚辰年(龙)");
  EXPECT_EQ(names[2043 - 1921], "癸亥年(猪)");
}

}  // namespace
}  // namespace luming
