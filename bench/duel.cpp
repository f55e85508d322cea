#include "duel.h"

#include <algorithm>
#include <cstdio>

namespace luming::bench {

double Duel::Undisturbed(const std::vector<Took>& rounds, double Took::*time) {
  constexpr std::size_t kOneIn = 5;
  std::vector<double> seconds;
  for (const Took& took : rounds) seconds.push_back(took.*time);
  const auto quick = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / kOneIn);
  std::nth_element(seconds.begin(), quick, seconds.end());
  return *quick;
}

bool Duel::NextRound() {
  return state_.KeepRunning();
}

void Duel::Report(double goal, int parts, const char* plain_way) {
  if (ours_.empty()) return;
  constexpr double kMilliseconds = 1e3;
  constexpr double kMicroseconds = 1e6;
  const double ours = Undisturbed(ours_, &Took::whole);
  const double plain = Undisturbed(plain_, &Took::whole);
  const double ratio = ours / plain;
  state_.counters["ours_ms"] = ours * kMilliseconds;
  state_.counters["plain_ms"] = plain * kMilliseconds;
  if (parts > 1) state_.counters["us_each"] = ours * kMicroseconds / parts;
  char words[120];
  std::snprintf(words, sizeof words, "%.2f times %s, %.2f of processor time (goal %.1f)%s", ratio, plain_way,
                Undisturbed(ours_, &Took::processor) / Undisturbed(plain_, &Took::processor), goal,
                ratio <= goal ? "" : " MISSED");
  state_.SetLabel(words);
}

}  // namespace luming::bench
