#include "script/headless_printing.h"

#include "platform/page_plan.h"

namespace luming {

void HeadlessPrinting::Print(const PrintJob& job) {
  const PlainMetrics metrics;
  pages_ = PagesAsText(job, PlanPages(job, Paper{}, metrics), metrics);
}

void HeadlessPrinting::Print(const PrintDocument& document) {
  pages_ = document.text + "\f";
}

}  // namespace luming
