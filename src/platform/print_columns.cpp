#include "platform/print_columns.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "util/text.h"

namespace luming {

namespace {

constexpr double kBodyPoints = 9;
constexpr double kPadding = 2.5;
constexpr double kStepsOfAPoint = 20;
constexpr double kLeastUpright = 0.85;  // of the body's size, before the paper is turned
constexpr double kLeastTurned = 0.72;   // before columns continue on further pages
constexpr double kContinued = 0.85;     // size of a table whose columns continue
constexpr double kMostStretch = 1.6;    // of a table that is narrower than the page
constexpr int kWidestByContents = 32;   // in average characters; longer texts wrap
constexpr int kNarrowest = 4;
constexpr double kMostLeading = 0.4;  // of the page's width

double TextWidth(const PrintCell& cell, const PrintFont& font, const TextMetrics& metrics) {
  const PrintFont own{font.name, font.points, cell.bold};
  double widest = 0;
  double width = 0;
  for (std::size_t position = 0; position < cell.text.size();) {
    const char32_t c = NextCodePoint(cell.text, position);
    width = c == U'\n' ? 0 : width + metrics.Advance(c, own);
    widest = std::max(widest, width);
  }
  return widest;
}

/// The widest piece of a text that is not broken gladly: a code, a date, a number, a single ideograph.
double WordWidth(const PrintCell& cell, const PrintFont& font, const TextMetrics& metrics) {
  constexpr char32_t kFirstIdeograph = 0x2E80;
  const PrintFont own{font.name, font.points, cell.bold};
  double widest = 0;
  double width = 0;
  for (std::size_t position = 0; position < cell.text.size();) {
    const char32_t c = NextCodePoint(cell.text, position);
    const double advance = metrics.Advance(c, own);
    const bool breaks = c == U' ' || c == U'\n' || c >= kFirstIdeograph;
    width = breaks ? 0 : width + advance;
    widest = std::max(widest, breaks ? advance : width);
  }
  return widest;
}

/// Widths at the body's full size.
std::vector<double> NaturalWidths(const PrintGrid& grid, const PrintFont& font, const TextMetrics& metrics) {
  const double character = metrics.Advance(U'0', font);
  std::vector<double> widths;
  for (std::size_t col = 0; col < grid.widths.size(); ++col) {
    const bool given = grid.widths[col] > 0;
    double widest = (given ? grid.widths[col] : kNarrowest) * character;
    const auto look = [&](const std::vector<PrintCell>& cells) {
      if (cells[col].cols != 1) return;
      widest = std::max(widest, given ? WordWidth(cells[col], font, metrics) : TextWidth(cells[col], font, metrics));
    };
    std::ranges::for_each(grid.heads, look);
    std::ranges::for_each(grid.rows, look);
    const double most = std::max<double>(kWidestByContents, grid.widths[col]) * character;
    widths.push_back(std::min(widest, most) + 2 * kPadding);
  }
  return widths;
}

std::vector<ColumnPlace> Places(const std::vector<int>& cols, const std::vector<double>& widths, double scale,
                                double left, double room) {
  std::vector<ColumnPlace> places;
  double x = left;
  for (const int col : cols) {
    const double width = std::min(widths[static_cast<std::size_t>(col)] * scale, room);
    places.push_back({col, x, width});
    x += width;
  }
  return places;
}

/// Columns of each page: the leading ones, then as many of the rest as fit.
std::vector<std::vector<int>> Continue(const std::vector<double>& widths, int leading, double room) {
  const auto width_of = [&](int col) { return std::min(widths[static_cast<std::size_t>(col)], room); };
  double lead_width = 0;
  for (int col = 0; col < leading; ++col) lead_width += width_of(col);
  if (lead_width > room * kMostLeading) {
    leading = 0;
    lead_width = 0;
  }
  std::vector<int> lead(static_cast<std::size_t>(leading));
  std::iota(lead.begin(), lead.end(), 0);

  std::vector<std::vector<int>> groups{lead};
  double used = lead_width;
  for (int col = leading; col < static_cast<int>(widths.size()); ++col) {
    if (used + width_of(col) > room && static_cast<int>(groups.back().size()) > leading) {
      groups.push_back(lead);
      used = lead_width;
    }
    groups.back().push_back(col);
    used += width_of(col);
  }
  return groups;
}

}  // namespace

ColumnPlan PlanColumns(const PrintGrid& grid, const Paper& paper, const TextMetrics& metrics) {
  ColumnPlan plan;
  plan.paper = paper;
  plan.body = {"宋体", kBodyPoints, false};
  const std::vector<double> widths = NaturalWidths(grid, plan.body, metrics);
  const double total = std::accumulate(widths.begin(), widths.end(), 0.0);
  const auto room = [&] { return plan.paper.width - 2 * plan.paper.margin; };

  double least = kLeastUpright;
  if (total * least > room() && plan.paper.width < plan.paper.height) {
    std::swap(plan.paper.width, plan.paper.height);
    least = kLeastTurned;
  }
  const bool fits = total * least <= room();
  const double scale = total == 0 ? 1 : fits ? std::min(room() / total, kMostStretch) : kContinued;
  const double font_scale = std::min(scale, 1.0);
  // Rounded down to what fonts come in, so that what fitted at full size still fits.
  plan.body.points = std::floor(kBodyPoints * font_scale * kStepsOfAPoint) / kStepsOfAPoint;
  plan.padding = kPadding * font_scale;

  std::vector<double> scaled;
  for (const double width : widths) scaled.push_back(width * scale);
  const double whole_line = fits ? total * scale + 1 : room();
  for (const std::vector<int>& cols : Continue(scaled, grid.leading, whole_line)) {
    plan.groups.push_back(Places(cols, widths, scale, plan.paper.margin, room()));
  }
  return plan;
}

double SpannedWidth(const std::vector<ColumnPlace>& columns, std::size_t at, int cols) {
  double width = columns[at].width;
  for (std::size_t i = at + 1; i < columns.size() && columns[i].col < columns[at].col + cols; ++i) {
    width += columns[i].width;
  }
  return width;
}

}  // namespace luming
