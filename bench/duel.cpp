#include "duel.h"

#include <algorithm>
#include <cstdio>

namespace luming::bench {

double Duel::Median(const std::vector<Took>& rounds, double Took::*time) {
  std::vector<double> seconds;
  for (const Took& took : rounds) seconds.push_back(took.*time);
  const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
  std::nth_element(seconds.begin(), middle, seconds.end());
  return *middle;
}

bool Duel::NextRound() {
  return state_.KeepRunning();
}

void Duel::Report(double goal, int parts) {
  if (ours_.empty()) return;
  constexpr double kMilliseconds = 1e3;
  constexpr double kMicroseconds = 1e6;
  const double ours = Median(ours_, &Took::whole);
  const double plain = Median(plain_, &Took::whole);
  const double ratio = ours / plain;
  state_.counters["ours_ms"] = ours * kMilliseconds;
  state_.counters["plain_ms"] = plain * kMilliseconds;
  if (parts > 1) state_.counters["us_each"] = ours * kMicroseconds / parts;
  char words[120];
  std::snprintf(words, sizeof words, "%.2f times plain SQLite, %.2f of processor time (goal %.1f)%s", ratio,
                Median(ours_, &Took::processor) / Median(plain_, &Took::processor), goal,
                ratio <= goal ? "" : " MISSED");
  state_.SetLabel(words);
}

}  // namespace luming::bench
