#include "platform/print_items.h"

#include <algorithm>
#include <array>
#include <map>

#include "util/text.h"

namespace luming {

namespace {

constexpr std::string_view kEmptyLine = "{空行}";
constexpr std::string_view kPageNumber = "{页码}";

std::string Filled(const PrintJob& job, std::string text) {
  text = Replace(text, "{报表名}", job.title);
  text = Replace(text, "{单位名称}", job.unit_name);
  for (const PrintValue& value : job.values) text = Replace(text, "{" + value.Name + "}", value.Value);
  return text;
}

std::string PageText(int page, int pages) {
  return "第 " + std::to_string(page) + " 页 共 " + std::to_string(pages) + " 页";
}

double WidthOf(std::string_view text, const PrintFont& font, const TextMetrics& metrics) {
  double width = 0;
  for (std::size_t position = 0; position < text.size();) width += metrics.Advance(NextCodePoint(text, position), font);
  return width;
}

PrintAlign AlignOf(const PrintItem& item) {
  if (item.Align == PrintItem::kRight) return PrintAlign::kRight;
  return item.Align == PrintItem::kCentre ? PrintAlign::kCentre : PrintAlign::kLeft;
}

/// Whether the parts of one line leave room between each other.
bool FitBeside(const ItemLine& line, double width, const TextMetrics& metrics) {
  std::array<double, 3> widths{};  // left, right, centre
  double gap = 0;
  for (const ItemLine::Part& part : line.parts) {
    // A page number may grow to four digits on either side.
    const std::string text = Replace(part.text, kPageNumber, PageText(9999, 9999));
    widths[static_cast<std::size_t>(part.align)] += WidthOf(text, part.font, metrics);
    gap = std::max(gap, part.font.points);
  }
  const auto [left, right, centre] = widths;
  if (centre == 0) return left + right + (left > 0 && right > 0 ? gap : 0) <= width;
  return std::max(left, right) + (std::max(left, right) > 0 ? gap : 0) <= (width - centre) / 2;
}

void AppendWrapped(std::vector<ItemLine>& lines, const ItemLine& line, double width, const TextMetrics& metrics) {
  for (const ItemLine::Part& part : line.parts) {
    for (std::string& text : WrapText(part.text, width, part.font, metrics)) {
      lines.push_back({{{std::move(text), part.align, part.font}}, 0, metrics.LineHeight(part.font)});
    }
  }
}

}  // namespace

std::vector<ItemLine> ItemLines(const PrintJob& job, int area, double width, const PrintFont& body,
                                const TextMetrics& metrics) {
  std::map<int, ItemLine> by_number;
  for (const PrintItem& item : job.items) {
    if (item.Area != area || item.Text.empty()) continue;
    ItemLine& line = by_number[item.Line];
    const PrintFont font{item.FontName.empty() ? body.name : item.FontName,
                         item.FontSize > 0 ? item.FontSize : body.points, item.Bold};
    line.height = std::max(line.height, metrics.LineHeight(font));
    std::string text = item.Text == kEmptyLine ? "" : Filled(job, item.Text);
    if (!text.empty()) line.parts.push_back({std::move(text), AlignOf(item), font});
  }
  std::vector<ItemLine> lines;
  for (const auto& [number, line] : by_number) {
    if (FitBeside(line, width, metrics)) {
      lines.push_back(line);
      std::ranges::stable_sort(lines.back().parts, [](const ItemLine::Part& a, const ItemLine::Part& b) {
        const auto place = [](PrintAlign align) {
          return align == PrintAlign::kLeft ? 0 : align == PrintAlign::kCentre ? 1 : 2;
        };
        return place(a.align) < place(b.align);
      });
    } else {
      AppendWrapped(lines, line, width, metrics);
    }
  }
  double y = 0;
  for (ItemLine& line : lines) {
    line.y = y;
    y += line.height;
  }
  return lines;
}

double HeightOf(const std::vector<ItemLine>& lines) {
  return lines.empty() ? 0 : lines.back().y + lines.back().height;
}

std::vector<ItemLine> OnPage(std::vector<ItemLine> lines, double y, int page, int pages) {
  for (ItemLine& line : lines) {
    line.y += y;
    for (ItemLine::Part& part : line.parts) part.text = Replace(part.text, kPageNumber, PageText(page, pages));
  }
  return lines;
}

}  // namespace luming
