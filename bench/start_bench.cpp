#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "stores.h"

namespace luming::bench {

namespace {

/// Runs a program to its end. Gives the most memory that it held, in MB; less than 0 when it failed.
double PeakMemoryOf(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t process = 0;
  if (posix_spawn(&process, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) return -1;
  int status = 0;
  rusage used{};
  wait4(process, &status, 0, &used);
  constexpr double kKilobytes = 1024;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? static_cast<double>(used.ru_maxrss) / kKilobytes : -1;
}

/// The whole process, without a display: from its first instruction to the login form with its operators, and out
/// again.
void BM_StartToLogin(benchmark::State& state) {
  const StoreCopy store;
  const std::string script = (store.Home() / "start.script").string();
  WriteBytes(script, "start\nexpect form password\n");
  double peak = 0;
  for (auto _ : state) {
    peak = PeakMemoryOf({LUMING_SCRIPT, "--home", store.Home().string(), script});
    if (peak < 0) return state.SkipWithError("the login form did not come");
  }
  state.counters["peak_MB"] = peak;
}
BENCHMARK(BM_StartToLogin)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

}  // namespace luming::bench
