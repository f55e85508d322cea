#include <benchmark/benchmark.h>

#include <filesystem>

#include "app/absent_output.h"
#include "list_form.h"
#include "office/office_workbooks.h"
#include "output/grid_to_excel.h"
#include "script/headless_desktop.h"
#include "util/clock.h"

namespace luming::bench {
namespace {

/// From the grid to the file that stands whole on the disk.
void ExportList(benchmark::State& state, const char* name) {
  HeadlessDesktop desktop;
  const FixedClock clock{DateTime(2026, 3, 1)};
  Forms forms(desktop, clock);
  const ListForm form(forms, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  OfficeWorkbooks workbooks(NoPrinter::Instance(), {});
  const std::filesystem::path file = std::filesystem::temp_directory_path() / name;
  int told = 0;
  for (auto _ : state) {
    workbooks.Save(file, SheetOf(form.grid, "药品目录"), [&](int, int) { ++told; });
  }
  state.counters["progress"] = static_cast<double>(told) / static_cast<double>(state.iterations());
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file));
  std::filesystem::remove(file);
}

BENCHMARK_CAPTURE(ExportList, xls, "luming-bench.xls")->Args({5000, 45})->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ExportList, xlsx, "luming-bench.xlsx")->Args({5000, 45})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace luming::bench
