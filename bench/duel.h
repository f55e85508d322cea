#pragma once

#include <benchmark/benchmark.h>

#include <vector>

#include "rounds.h"

namespace luming::bench {

/// The same work done in two ways, by turns in one run, so that whatever else the machine does meanwhile hits both. The
/// benchmark's time is that of our way; the plain way and the ratio stand beside it, and the same ratio
/// of the processor's time alone, which neither a busy machine nor a slow disk moves.
///
///   Duel duel(state);
///   while (duel.NextRound()) duel.Fight([&] { ours(); }, [&] { plain(); });
///   duel.Report(1.5);
class Duel {
 public:
  explicit Duel(benchmark::State& state) : state_(state) {}

  bool NextRound();
  /// Times both; who begins changes from round to round. What is not to be timed comes before.
  template <class Ours, class Plain>
  void Fight(Ours ours, Plain plain) {
    const bool we_begin = ours_.size() % 2 == 0;
    if (we_begin) ours_.push_back(Timed(ours));
    plain_.push_back(Timed(plain));
    if (!we_begin) ours_.push_back(Timed(ours));
    state_.SetIterationTime(ours_.back().whole);
  }
  /// @param goal  the highest ratio that is good
  /// @param parts of which the work consists, such as lines; their share of the time is told, too
  /// @param plain what the plain way is
  void Report(double goal, int parts = 1, const char* plain = "plain SQLite");

 private:
  template <class Work>
  static Seconds Timed(Work work) {
    const Seconds begin = Now();
    work();
    return Now() - begin;
  }

  benchmark::State& state_;
  std::vector<Seconds> ours_;
  std::vector<Seconds> plain_;
};

/// Settings of every benchmark that is a duel.
inline void AsDuel(benchmark::internal::Benchmark* benchmark) {
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace luming::bench
