#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>
#include <vector>

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
  /// Seconds.
  struct Took {
    double whole;
    double processor;
  };

  static double ProcessorNow() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
  }
  template <class Work>
  static Took Timed(Work work) {
    const double processor = ProcessorNow();
    const auto begin = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - begin;
    return {whole.count(), ProcessorNow() - processor};
  }
  /// The time that one round in five stays under: what else the machine does only ever makes a round longer, by whole
  /// slices of the scheduler.
  static double Undisturbed(const std::vector<Took>& rounds, double Took::*time);

  benchmark::State& state_;
  std::vector<Took> ours_;
  std::vector<Took> plain_;
};

/// Settings of every benchmark that is a duel.
inline void AsDuel(benchmark::internal::Benchmark* benchmark) {
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace luming::bench
