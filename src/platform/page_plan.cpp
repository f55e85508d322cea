#include "platform/page_plan.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "platform/print_columns.h"
#include "platform/print_items.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr double kGap = 4;  // between header, table and footer

/// Heights of a grid's rows, and how many text lines each is high.
class RowHeights {
 public:
  RowHeights(const PrintGrid& grid, const ColumnPlan& columns, const TextMetrics& metrics)
      : columns_(columns), metrics_(metrics) {
    for (const std::vector<PrintCell>& cells : grid.heads) head_lines.push_back(LinesOf(cells));
    for (const std::vector<PrintCell>& cells : grid.rows) row_lines.push_back(LinesOf(cells));
  }

  std::vector<int> head_lines;
  std::vector<int> row_lines;

 private:
  /// The width of a cell differs only where a span is parted by a page's edge; the narrowest part counts.
  int LinesOf(const std::vector<PrintCell>& cells) const {
    int most = 1;
    for (const std::vector<ColumnPlace>& group : columns_.groups) {
      for (std::size_t at = 0; at < group.size(); ++at) {
        const PrintCell& cell = cells[static_cast<std::size_t>(group[at].col)];
        if (cell.cols == 0 || cell.text.empty()) continue;
        const PrintFont font{columns_.body.name, columns_.body.points, cell.bold};
        const double width = SpannedWidth(group, at, cell.cols) - 2 * columns_.padding;
        const int lines = static_cast<int>(WrapText(cell.text, width, font, metrics_).size());
        // Rows that the cell covers, too, share what it needs.
        most = std::max(most, (lines + cell.rows - 1) / std::max(cell.rows, 1));
      }
    }
    return most;
  }

  const ColumnPlan& columns_;
  const TextMetrics& metrics_;
};

/// Fills pages with the rows of the grid.
class Planner {
 public:
  Planner(const PrintJob& job, const Paper& paper, const TextMetrics& metrics) : job_(job), metrics_(metrics) {
    plan_.paper = paper;
  }

  PagePlan Plan() {
    const PrintGrid& grid = job_.grid;
    columns_ = PlanColumns(grid, plan_.paper, metrics_);
    plan_.paper = columns_.paper;
    plan_.body = columns_.body;
    plan_.padding = columns_.padding;
    const double width = plan_.paper.width - 2 * plan_.paper.margin;
    const PrintFont item_font{columns_.body.name, 9, false};
    head_ = ItemLines(job_, PrintItem::kHeader, width, item_font, metrics_);
    foot_ = ItemLines(job_, PrintItem::kFooter, width, item_font, metrics_);
    top_ = plan_.paper.margin + HeightOf(head_) + kGap;
    bottom_ = plan_.paper.height - plan_.paper.margin - HeightOf(foot_) - kGap;
    line_height_ = metrics_.LineHeight(plan_.body);

    PlaceRows(grid, RowHeights(grid, columns_, metrics_));
    WriteItems();
    return std::move(plan_);
  }

 private:
  double HeightOfLines(int lines) const { return lines * line_height_ + 2 * plan_.padding; }

  /// Starts a page for each group of columns; the rows that follow go on all of them.
  void NewPages(const std::vector<int>& head_lines) {
    y_ = top_;
    pages_now_ = plan_.pages.size();
    for (const std::vector<ColumnPlace>& group : columns_.groups) {
      plan_.pages.emplace_back();
      plan_.pages.back().columns = group;
    }
    for (std::size_t head = 0; head < head_lines.size(); ++head) {
      Append({static_cast<int>(head), true, 0, head_lines[head], y_, HeightOfLines(head_lines[head])});
    }
    first_row_y_ = y_;
  }

  void Append(const RowPiece& piece) {
    for (std::size_t page = pages_now_; page < plan_.pages.size(); ++page) plan_.pages[page].rows.push_back(piece);
    y_ += piece.height;
  }

  void PlaceRows(const PrintGrid& grid, const RowHeights& heights) {
    NewPages(heights.head_lines);
    for (std::size_t row = 0; row < grid.rows.size(); ++row) {
      int first = 0;
      while (first < heights.row_lines[row]) {
        const int left = heights.row_lines[row] - first;
        const bool fits = y_ + HeightOfLines(left) <= bottom_;
        if (!fits && y_ > first_row_y_) {
          NewPages(heights.head_lines);
          continue;
        }
        // A row higher than a page is the only one that is parted.
        const int room = static_cast<int>((bottom_ - y_ - 2 * plan_.padding) / line_height_);
        const int lines = fits ? left : std::clamp(room, 1, left);
        Append({static_cast<int>(row), false, first, lines, y_, HeightOfLines(lines)});
        first += lines;
      }
    }
    if (y_ + line_height_ > bottom_ + kGap) NewPages(heights.head_lines);
    plan_.pages.back().count_note = "共 " + std::to_string(grid.counted_rows) + " 行";
    plan_.pages.back().note_y = y_ + plan_.padding;
  }

  void WriteItems() {
    const int pages = static_cast<int>(plan_.pages.size());
    for (int page = 0; page < pages; ++page) {
      std::vector<ItemLine>& items = plan_.pages[static_cast<std::size_t>(page)].items;
      items = OnPage(head_, plan_.paper.margin, page + 1, pages);
      const double foot_y = plan_.paper.height - plan_.paper.margin - HeightOf(foot_);
      const std::vector<ItemLine> foot = OnPage(foot_, foot_y, page + 1, pages);
      items.insert(items.end(), foot.begin(), foot.end());
    }
  }

  const PrintJob& job_;
  const TextMetrics& metrics_;
  PagePlan plan_;
  ColumnPlan columns_;
  std::vector<ItemLine> head_;
  std::vector<ItemLine> foot_;
  double top_ = 0;
  double bottom_ = 0;
  double line_height_ = 0;
  double y_ = 0;
  double first_row_y_ = 0;
  std::size_t pages_now_ = 0;
};

bool IsWide(char32_t c) {
  return c >= 0x1100 &&
         (c <= 0x115F || (c >= 0x2E80 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE6F) ||
          (c >= 0xFF00 && c <= 0xFF60) || (c >= 0xFFE0 && c <= 0xFFE6) || c >= 0x1F300 || (c >= 0x2010 && c <= 0x2E7F));
}

}  // namespace

double PlainMetrics::Advance(char32_t character, const PrintFont& font) const {
  return IsWide(character) ? font.points : font.points / 2;
}

std::vector<std::string> WrapText(std::string_view text, double width, const PrintFont& font,
                                  const TextMetrics& metrics) {
  std::vector<std::string> lines;
  std::size_t start = 0;     // of the line
  std::size_t break_at = 0;  // where it may be broken: behind a blank or a wide character
  double used = 0;           // from start on
  double used_at_break = 0;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t here = position;
    const char32_t c = NextCodePoint(text, position);
    if (c == U'\n' || c == U'\r') {
      lines.emplace_back(text.substr(start, here - start));
      if (c == U'\r' && position < text.size() && text[position] == '\n') ++position;
      start = break_at = position;
      used = 0;
      continue;
    }
    const double advance = metrics.Advance(c, font);
    if (IsWide(c)) {
      break_at = here;
      used_at_break = used;
    }
    if (used + advance > width + 0.01 && here > start && c != U' ') {
      if (break_at <= start) {
        break_at = here;
        used_at_break = used;
      }
      lines.emplace_back(TrimRight(text.substr(start, break_at - start)));
      start = break_at;
      used -= used_at_break;
      used_at_break = 0;
    }
    used += advance;
    if (c == U' ' || IsWide(c)) {
      break_at = position;
      used_at_break = used;
    }
  }
  lines.emplace_back(text.substr(start));
  return lines;
}

PagePlan PlanPages(const PrintJob& job, const Paper& paper, const TextMetrics& metrics) {
  return Planner(job, paper, metrics).Plan();
}

const PrintCell& CellAt(const PrintGrid& grid, const RowPiece& piece, int col) {
  const auto& rows = piece.is_head ? grid.heads : grid.rows;
  return rows[static_cast<std::size_t>(piece.row)][static_cast<std::size_t>(col)];
}

CellBox BoxOf(const PrintGrid& grid, const PlannedPage& page, std::size_t piece, std::size_t column) {
  const RowPiece& row = page.rows[piece];
  const PrintCell& cell = CellAt(grid, row, page.columns[column].col);
  CellBox box{page.columns[column].x, row.y, SpannedWidth(page.columns, column, cell.cols), 0};
  for (std::size_t i = piece; i < page.rows.size(); ++i) {
    const RowPiece& covered = page.rows[i];
    if (covered.is_head != row.is_head || covered.row >= row.row + std::max(cell.rows, 1)) break;
    box.height += covered.height;
    if (cell.rows <= 1) break;
  }
  return box;
}

}  // namespace luming
