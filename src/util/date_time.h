#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace luming {

/// A civil date and time of the workstation, without time zone, to the millisecond. Years 1753 to 9999, the range of
/// the database's date columns.
class DateTime {
 public:
  DateTime() = default;  ///< 1899-12-30 00:00:00, the zero of date values
  /// Failure 5 (invalid argument) for a day or a time that does not exist.
  DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int millisecond = 0);
  explicit DateTime(std::chrono::local_time<std::chrono::milliseconds> point) : point_(point) {}

  int Year() const;
  int Month() const;
  int Day() const;
  int Hour() const;
  int Minute() const;
  int Second() const;
  int Millisecond() const;
  int Weekday() const;    ///< 1 is Sunday, 7 is Saturday
  DateTime Date() const;  ///< the same day at midnight
  bool HasTime() const;   ///< false at midnight exactly

  // Moving past the range is failure 6 (overflow).
  DateTime AddDays(std::int64_t count) const;
  DateTime AddMonths(int months) const;  ///< a day past the end of the month becomes its last day
  DateTime AddYears(int years) const;
  DateTime AddSeconds(std::int64_t seconds) const;
  /// Whole days from the other's date to this date.
  std::int64_t DaysSince(const DateTime& other) const;

  std::chrono::local_time<std::chrono::milliseconds> Point() const { return point_; }
  auto operator<=>(const DateTime&) const = default;

 private:
  std::chrono::local_time<std::chrono::milliseconds> point_ =
      std::chrono::local_days{std::chrono::year{1899} / 12 / 30};
};

/// True if the day exists in the calendar and lies within DateTime's range.
bool IsCivilDate(int year, int month, int day);

}  // namespace luming
