#include "util/date_time.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/failure_of.h"

namespace luming {
namespace {

TEST(DateTime, TellsItsParts) {
  const DateTime moment(1753, 1, 1, 23, 59, 58, 999);  // well before the zero of the system's clock
  EXPECT_EQ(moment.Year(), 1753);
  EXPECT_EQ(moment.Month(), 1);
  EXPECT_EQ(moment.Day(), 1);
  EXPECT_EQ(moment.Hour(), 23);
  EXPECT_EQ(moment.Minute(), 59);
  EXPECT_EQ(moment.Second(), 58);
  EXPECT_EQ(moment.Millisecond(), 999);
  EXPECT_EQ(moment.Weekday(), 2);
  EXPECT_EQ(moment.Date(), DateTime(1753, 1, 1));
  EXPECT_TRUE(moment.HasTime());
  EXPECT_FALSE(moment.Date().HasTime());
  EXPECT_EQ(DateTime(), DateTime(1899, 12, 30));
}

TEST(DateTime, ComparesByMoment) {
  EXPECT_LT(DateTime(2026, 3, 1), DateTime(2026, 3, 1, 0, 0, 0, 1));
  EXPECT_GT(DateTime(2026, 3, 1), DateTime(2026, 2, 28, 23, 59, 59));
}

TEST(DateTime, MovesByMonthsToTheLastDayAtMost) {
  EXPECT_EQ(DateTime(2026, 1, 31, 8).AddMonths(1), DateTime(2026, 2, 28, 8));
  EXPECT_EQ(DateTime(2024, 3, 31).AddMonths(-1), DateTime(2024, 2, 29));
  EXPECT_EQ(DateTime(2026, 12, 15).AddMonths(1), DateTime(2027, 1, 15));
  EXPECT_EQ(DateTime(2026, 1, 15).AddMonths(-13), DateTime(2024, 12, 15));
  EXPECT_EQ(DateTime(2024, 2, 29).AddYears(1), DateTime(2025, 2, 28));
}

TEST(DateTime, MovesByDaysAndSecondsAndCountsDates) {
  EXPECT_EQ(DateTime(2024, 2, 28, 9).AddDays(2), DateTime(2024, 3, 1, 9));
  EXPECT_EQ(DateTime(2026, 1, 1).AddSeconds(-1), DateTime(2025, 12, 31, 23, 59, 59));
  EXPECT_EQ(DateTime(2026, 3, 2, 0, 0, 1).DaysSince({2026, 3, 1, 23, 59, 59}), 1);
  EXPECT_EQ(DateTime(2026, 3, 1).DaysSince({2027, 3, 1, 12}), -365);
}

TEST(DateTime, RefusesWhatDoesNotExist) {
  EXPECT_FALSE(IsCivilDate(2026, 2, 29));
  EXPECT_FALSE(IsCivilDate(2026, -1, 1));
  EXPECT_FALSE(IsCivilDate(1752, 12, 31));
  EXPECT_FALSE(IsCivilDate(10000, 1, 1));
  EXPECT_FALSE(IsCivilDate(2026, 3, 257));  // 1 in eight bits
  EXPECT_TRUE(IsCivilDate(2024, 2, 29));
  EXPECT_EQ(FailureOf([] { DateTime(2026, 2, 29); }), failure::kInvalidCall);
  EXPECT_EQ(FailureOf([] { DateTime(2026, 2, 1, 24); }), failure::kInvalidCall);
  EXPECT_EQ(FailureOf([] { DateTime(2026, 2, 1, 0, -1); }), failure::kInvalidCall);
}

TEST(DateTime, RefusesToLeaveItsRange) {
  const DateTime day(2026, 3, 1);
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  constexpr int kMostYears = std::numeric_limits<int>::max();
  EXPECT_EQ(FailureOf([&] { day.AddDays(kMost); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([&] { day.AddDays(-kMost); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([&] { day.AddSeconds(kMost); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([&] { day.AddMonths(kMostYears); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([&] { day.AddYears(kMostYears); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([&] { day.AddYears(-kMostYears); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([&] { day.AddYears(7974); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([] { DateTime(1753, 1, 1).AddSeconds(-1); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([] { DateTime(9999, 12, 31).AddDays(1); }), failure::kOverflow);
  EXPECT_EQ(day.AddYears(7973), DateTime(9999, 3, 1));
}

}  // namespace
}  // namespace luming
