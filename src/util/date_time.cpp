#include "util/date_time.h"

#include "util/failure.h"

namespace luming {

namespace {

using std::chrono::days;
using std::chrono::local_days;
using std::chrono::milliseconds;
using std::chrono::year_month_day;
using Point = std::chrono::local_time<milliseconds>;

constexpr int kFirstYear = 1753;
constexpr int kLastYear = 9999;
constexpr Point kFirst = local_days{std::chrono::year{kFirstYear} / 1 / 1};
constexpr Point kEnd = local_days{std::chrono::year{kLastYear + 1} / 1 / 1};

local_days DayOf(Point point) {
  return std::chrono::floor<days>(point);
}
year_month_day CivilOf(Point point) {
  return year_month_day{DayOf(point)};
}
std::chrono::hh_mm_ss<milliseconds> TimeOf(Point point) {
  return std::chrono::hh_mm_ss<milliseconds>{point - DayOf(point)};
}

Point Within(Point point) {
  if (point < kFirst || point >= kEnd) throw StandardFailure(failure::kOverflow);
  return point;
}

/// The point moved by a count of units, where no count, however great, wraps round.
template <class Unit>
Point Moved(Point point, std::int64_t count) {
  constexpr std::int64_t kSpan = std::chrono::duration_cast<Unit>(kEnd - kFirst).count();
  if (count > kSpan || count < -kSpan) throw StandardFailure(failure::kOverflow);
  return Within(point + Unit{count});
}

}  // namespace

bool IsCivilDate(int year, int month, int day) {
  if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1 || day > 31) return false;
  return year_month_day{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                        std::chrono::day{static_cast<unsigned>(day)}}
      .ok();
}

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second, int millisecond) {
  const bool is_time = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60 &&
                       millisecond >= 0 && millisecond < 1000;
  if (!is_time || !IsCivilDate(year, month, day)) throw StandardFailure(failure::kInvalidCall);
  point_ = local_days{std::chrono::year{year} / month / day} + std::chrono::hours{hour} + std::chrono::minutes{minute} +
           std::chrono::seconds{second} + milliseconds{millisecond};
}

int DateTime::Year() const {
  return static_cast<int>(CivilOf(point_).year());
}
int DateTime::Month() const {
  return static_cast<int>(static_cast<unsigned>(CivilOf(point_).month()));
}
int DateTime::Day() const {
  return static_cast<int>(static_cast<unsigned>(CivilOf(point_).day()));
}
int DateTime::Hour() const {
  return static_cast<int>(TimeOf(point_).hours().count());
}
int DateTime::Minute() const {
  return static_cast<int>(TimeOf(point_).minutes().count());
}
int DateTime::Second() const {
  return static_cast<int>(TimeOf(point_).seconds().count());
}
int DateTime::Millisecond() const {
  return static_cast<int>(TimeOf(point_).subseconds().count());
}
int DateTime::Weekday() const {
  return static_cast<int>(std::chrono::weekday{DayOf(point_)}.c_encoding()) + 1;
}
DateTime DateTime::Date() const {
  return DateTime{DayOf(point_)};
}
bool DateTime::HasTime() const {
  return point_ != DayOf(point_);
}

DateTime DateTime::AddDays(std::int64_t count) const {
  return DateTime{Moved<days>(point_, count)};
}
DateTime DateTime::AddSeconds(std::int64_t seconds) const {
  return DateTime{Moved<std::chrono::seconds>(point_, seconds)};
}

DateTime DateTime::AddMonths(int months) const {
  constexpr int kSpan = (kLastYear - kFirstYear + 1) * 12;
  if (months > kSpan || months < -kSpan) throw StandardFailure(failure::kOverflow);
  year_month_day civil = CivilOf(point_) + std::chrono::months{months};
  if (!civil.ok()) civil = civil.year() / civil.month() / std::chrono::last;
  return DateTime{Within(local_days{civil} + (point_ - DayOf(point_)))};
}

DateTime DateTime::AddYears(int years) const {
  if (years > kLastYear || years < -kLastYear) throw StandardFailure(failure::kOverflow);
  return AddMonths(years * 12);
}

std::int64_t DateTime::DaysSince(const DateTime& other) const {
  return (DayOf(point_) - DayOf(other.point_)).count();
}

}  // namespace luming
