#include "util/lunar_calendar.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "util/date_text.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr int kFirstYear = 1921;

// One lunar year each. Bit n tells the length of a month, the first month in the highest bit: set for 30 days, clear
// for
// 29. A value above 4095 has thirteen months, and divided by 65536 it gives the month that is doubled.
constexpr std::array<std::int32_t, 180> kYears = {
    // clang-format off
    2635, 333387, 1701, 1748, 267701, 694, 2391, 133423, 1175, 396438,  // 1921
    3402, 3749, 331177, 1453, 694, 201326, 2350, 465197, 3221, 3402,  // 1931
    400202, 2901, 1386, 267611, 605, 2349, 137515, 2709, 464533, 1738,  // 1941
    2901, 330421, 1242, 2651, 199255, 1323, 529706, 3733, 1706, 398762,  // 1951
    2741, 1206, 267438, 2647, 1318, 204070, 3477, 461653, 1386, 2413,  // 1961
    330077, 1197, 2637, 268877, 3365, 531109, 2900, 2922, 398042, 2395,  // 1971
    1179, 267415, 2635, 661067, 1701, 1748, 398772, 2742, 2391, 330031,  // 1981
    1175, 1611, 200010, 3749, 527717, 1452, 2742, 332397, 2350, 3222,  // 1991
    268949, 3402, 3493, 133973, 1386, 464219, 605, 2349, 334123, 2709,  // 2001
    2890, 267946, 2773, 592565, 1210, 2651, 395863, 1323, 2707, 265877,  // 2011
    1706, 2773, 133557, 1206, 398510, 2638, 3366, 335142, 3411, 1450,  // 2021
    200042, 2413, 723293, 1197, 2637, 399947, 3365, 3410, 334676, 2906,  // 2031
    1389, 133467, 1179, 464023, 2635, 2725, 333477, 1746, 2778, 199350,  // 2041
    2359, 526639, 1175, 1611, 396618, 3749, 1714, 267628, 2734, 2350,  // 2051
    203054, 3222, 465557, 3402, 3493, 330581, 1386, 2669, 264797, 1325,  // 2061
    529707, 2709, 2890, 399018, 2773, 1370, 267450, 2651, 1323, 202023,  // 2071
    1683, 462419, 1706, 2773, 330165, 1206, 2647, 264782, 3350, 531750,  // 2081
    3410, 3498, 396650, 1389, 1198, 267421, 2605, 3349, 138021, 3410,  // 2091
    // clang-format on
};

constexpr std::array<int, 12> kDaysBeforeMonth = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

using Texts = std::string_view;
constexpr std::array<Texts, 10> kStems = {"甲", "乙", "丙", "丁", "戊", "己", "庚", "辛", "壬", "癸"};
constexpr std::array<Texts, 12> kBranches = {"子", "丑", "寅", "卯", "辰", "巳", "午", "未", "申", "酉", "戌", "亥"};
constexpr std::array<Texts, 12> kAnimals = {"鼠", "牛", "虎", "兔", "龙", "蛇", "马", "羊", "猴", "鸡", "狗", "猪"};
constexpr std::array<Texts, 12> kMonths = {"正", "二", "三", "四", "五", "六", "七", "八", "九", "十", "十一", "腊"};
constexpr std::array<Texts, 30> kDays = {
    "初一", "初二", "初三", "初四", "初五", "初六", "初七", "初八", "初九", "初十",  //
    "十一", "十二", "十三", "十四", "十五", "十六", "十七", "十八", "十九", "二十",  //
    "廿一", "廿二", "廿三", "廿四", "廿五", "廿六", "廿七", "廿八", "廿九", "三十"};

struct Festival {
  std::string_view day;
  std::string_view name;
};

constexpr std::array<Festival, 20> kCivilFestivals = {{
    {"0101", "元旦"},   {"0214", "情人节"}, {"0308", "妇女节"},   {"0312", "植树节"},   {"0315", "权益日"},
    {"0401", "愚人节"}, {"0405", "清明节"}, {"0501", "劳动节"},   {"0504", "青年节"},   {"0512", "护士节"},
    {"0601", "儿童节"}, {"0701", "建党节"}, {"0801", "建军节"},   {"0808", "父亲节"},   {"0910", "教师节"},
    {"1001", "国庆节"}, {"1006", "老人节"}, {"1024", "联合国日"}, {"1220", "澳门回归"}, {"1225", "圣诞节"},
}};

// Both last days of the year are its eve, whether the month has 29 days or 30.
constexpr std::array<Festival, 11> kLunarFestivals = {{
    {"正月初一", "春节"},
    {"正月十五", "元宵节"},
    {"五月初五", "端午节"},
    {"七月初七", "七夕节"},
    {"七月十五", "中元节"},
    {"八月十五", "中秋节"},
    {"九月初九", "重阳节"},
    {"腊月初八", "腊八节"},
    {"腊月廿四", "小年"},
    {"腊月三十", "除夕"},
    {"腊月廿九", "除夕"},
}};

template <std::size_t kCount>
std::string_view FestivalOf(const std::array<Festival, kCount>& festivals, std::string_view day) {
  for (const Festival& festival : festivals) {
    if (festival.day == day) return festival.name;
  }
  return {};
}

struct LunarDay {
  int year;
  int month;  ///< negative for a leap month
  int day;
};

/// Days from the eve of the first lunar year: its first day is 1.
int DaysSinceStart(int year, int month, int day) {
  const int years = year - kFirstYear;
  int days = years * 365 + years / 4 + day + kDaysBeforeMonth[static_cast<std::size_t>(month) - 1] - 38;
  if (year % 4 == 0 && month > 2) ++days;
  // Every fourth year is a leap year up to 2100, which the calendar leaves out.
  if (year > 2100 || (year == 2100 && month > 2)) --days;
  return days;
}

/// @param position which month of the year it is, the leap month counted, from 1
int MonthNumber(int position, std::int32_t packed) {
  const int leap_position = packed / 65536 + 1;
  if (packed < 4095 || position < leap_position) return position;
  return position == leap_position ? 1 - position : position - 1;
}

LunarDay LunarDayOf(int year, int month, int day) {
  int days = DaysSinceStart(year, month, day);
  if (days < 1) throw StandardFailure(failure::kSubscript);
  int lunar_year = kFirstYear;
  for (const std::int32_t packed : kYears) {
    const int months = packed < 4095 ? 12 : 13;
    for (int position = 1; position <= months; ++position) {
      const int length = 29 + ((packed >> (months - position)) & 1);
      if (days <= length) return {lunar_year, MonthNumber(position, packed), days};
      days -= length;
    }
    ++lunar_year;
  }
  throw StandardFailure(failure::kSubscript);
}

std::string YearText(int lunar_year) {
  const int place = (lunar_year - 4) % 60;
  const auto branch = static_cast<std::size_t>(place % 12);
  return Join({std::string(kStems[static_cast<std::size_t>(place % 10)]), std::string(kBranches[branch]), "年(",
               std::string(kAnimals[branch]), ")"},
              "");
}

std::string MonthText(const LunarDay& lunar) {
  std::string text = lunar.month < 0 ? "闰" : "";
  text += kMonths[static_cast<std::size_t>(std::abs(lunar.month)) - 1];
  text += "月";
  return text;
}

}  // namespace

LunarNames NamesOf(const DateTime& day) {
  const LunarDay lunar = LunarDayOf(day.Year(), day.Month(), day.Day());
  LunarNames names;
  names.year = YearText(lunar.year);
  names.month = MonthText(lunar);
  names.day = kDays[static_cast<std::size_t>(lunar.day) - 1];
  names.civil_festival = FestivalOf(kCivilFestivals, FormatDate(day, "mmdd"));
  names.lunar_festival = FestivalOf(kLunarFestivals, names.month + names.day);
  return names;
}

std::string LunarCalendar::GET_NL() const {
  const LunarNames names = NamesOf(today_);
  return "今天是：" + FormatDate(today_, "dddddd") + " " + std::string(WeekdayName(today_)) + "  " + names.year +
         names.month + names.day + "  " + names.civil_festival + "  " + names.lunar_festival;
}

}  // namespace luming
