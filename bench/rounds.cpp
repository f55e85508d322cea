#include "rounds.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace luming::bench {

namespace {

double Undisturbed(const std::vector<Seconds>& rounds, double Seconds::*time) {
  constexpr std::size_t kOneIn = 5;
  std::vector<double> seconds;
  for (const Seconds& round : rounds) seconds.push_back(round.*time);
  const auto quick = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / kOneIn);
  std::nth_element(seconds.begin(), quick, seconds.end());
  return *quick;
}

}  // namespace

Seconds Now() {
  timespec processor{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &processor);
  const std::chrono::duration<double> whole = std::chrono::steady_clock::now().time_since_epoch();
  return {whole.count(), static_cast<double>(processor.tv_sec) + static_cast<double>(processor.tv_nsec) * 1e-9};
}

Seconds Undisturbed(const std::vector<Seconds>& rounds) {
  return {Undisturbed(rounds, &Seconds::whole), Undisturbed(rounds, &Seconds::processor)};
}

}  // namespace luming::bench
