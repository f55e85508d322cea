#include "util/clock.h"

#include <chrono>
#include <ctime>

namespace luming {

DateTime SystemClock::Now() const {
  const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
  const std::time_t whole = std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(now));
  std::tm local{};
  localtime_r(&whole, &local);
  // A leap second, which some zones tell as 60, has no place in a civil time.
  const int second = local.tm_sec < 60 ? local.tm_sec : 59;
  const auto millisecond = static_cast<int>((now.time_since_epoch() % std::chrono::seconds{1}).count());
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, second, millisecond};
}

}  // namespace luming
