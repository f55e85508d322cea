#pragma once

#include <string>

#include "util/date_time.h"

namespace luming {

/// The line of status panel 3: civil date, weekday, year in the cycle of sixty with its animal, lunar month and day,
/// and the festivals of the day.
class LunarCalendar {
 public:
  explicit LunarCalendar(DateTime today) : today_(today) {}
  /// Knows lunar years 1921 to 2100. Throws failure 9 (subscript) for a day outside them.
  std::string GET_NL() const;

 private:
  DateTime today_;
};

}  // namespace luming
