#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QPainter>

#include "desktop/paged_document.h"
#include "list_form.h"
#include "output/grid_print.h"
#include "script/headless_desktop.h"
#include "util/clock.h"

namespace luming::bench {
namespace {

PrintJob JobOf(int rows, int cols) {
  HeadlessDesktop desktop;
  const FixedClock clock{DateTime(2026, 3, 1)};
  Forms forms(desktop, clock);
  const ListForm form(forms, rows, cols);
  PrintJob job;
  job.title = "药品目录表";
  job.items = {{PrintItem::kHeader, PrintItem::kCentre, 1, "{报表名}", "宋体", 16, true},
               {PrintItem::kFooter, PrintItem::kCentre, 1, "{页码}", "宋体", 9, false}};
  job.grid = PrintedGrid(form.grid);
  return job;
}

/// What passes before the preview shows its first page: all pages laid out, the first one painted.
void FirstPage(benchmark::State& state) {
  const PrintJob job = JobOf(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  int pages = 0;
  for (auto _ : state) {
    const auto document = MakePages(job);
    QImage screen(1200, 900, QImage::Format_RGB32);
    QPainter painter(&screen);
    document->Paint(painter, 0, 1);
    pages = document->Pages();
  }
  state.counters["pages"] = pages;
}

void TakeGridForPrinting(benchmark::State& state) {
  HeadlessDesktop desktop;
  const FixedClock clock{DateTime(2026, 3, 1)};
  Forms forms(desktop, clock);
  const ListForm form(forms, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  for (auto _ : state) benchmark::DoNotOptimize(PrintedGrid(form.grid));
}

void WholePdf(benchmark::State& state) {
  const auto document = MakePages(JobOf(static_cast<int>(state.range(0)), static_cast<int>(state.range(1))));
  for (auto _ : state) benchmark::DoNotOptimize(document->Pdf({}));
  state.counters["pages"] = document->Pages();
}

BENCHMARK(TakeGridForPrinting)->Args({3000, 45})->Unit(benchmark::kMillisecond);
BENCHMARK(FirstPage)->Args({3000, 45})->Args({3000, 10})->Args({20, 12})->Unit(benchmark::kMillisecond);
BENCHMARK(WholePdf)->Args({3000, 45})->Args({3000, 10})->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace luming::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
