#include "duel.h"

#include <cstdio>

namespace luming::bench {

bool Duel::NextRound() {
  return state_.KeepRunning();
}

void Duel::Report(double goal, int parts, const char* plain_way) {
  if (ours_.empty()) return;
  constexpr double kMilliseconds = 1e3;
  constexpr double kMicroseconds = 1e6;
  const Seconds ours = Undisturbed(ours_);
  const Seconds plain = Undisturbed(plain_);
  const double ratio = ours.whole / plain.whole;
  state_.counters["ours_ms"] = ours.whole * kMilliseconds;
  state_.counters["plain_ms"] = plain.whole * kMilliseconds;
  if (parts > 1) state_.counters["us_each"] = ours.whole * kMicroseconds / parts;
  char words[120];
  std::snprintf(words, sizeof words, "%.2f times %s, %.2f of processor time (goal %.1f)%s", ratio, plain_way,
                ours.processor / plain.processor, goal, ratio <= goal ? "" : " MISSED");
  state_.SetLabel(words);
}

}  // namespace luming::bench
