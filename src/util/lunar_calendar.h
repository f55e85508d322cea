#pragma once

#include <string>

#include "util/date_time.h"

namespace luming {

/// A day as the lunar calendar names it.
struct LunarNames {
  std::string year;            ///< "丙午年(马)"
  std::string month;           ///< "正月", "闰六月"
  std::string day;             ///< "初一"
  std::string civil_festival;  ///< empty for none, as the next
  std::string lunar_festival;
};

/// Knows lunar years 1921 to 2100. Throws failure 9 (subscript) for a day outside them.
LunarNames NamesOf(const DateTime& day);

/// The line of status panel 3: civil date, weekday, year in the cycle of sixty with its animal, lunar month and day,
/// and the festivals of the day.
class LunarCalendar {
 public:
  explicit LunarCalendar(DateTime today) : today_(today) {}
  /// Fails as NamesOf.
  std::string GET_NL() const;

 private:
  DateTime today_;
};

}  // namespace luming
