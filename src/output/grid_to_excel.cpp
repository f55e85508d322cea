#include "output/grid_to_excel.h"

#include <algorithm>
#include <optional>

#include "util/date_text.h"
#include "util/text.h"

namespace luming {

namespace {

/// "0.00" for "12.50", "￥0.0000" for "￥1.2000": the number keeps the look that it has in the grid.
std::string PictureOf(std::string_view text) {
  std::string picture = text.find("￥") != std::string_view::npos  ? "￥"
                        : text.find("¥") != std::string_view::npos ? "¥"
                                                                   : "";
  picture += '0';
  const std::size_t point = text.find('.');
  if (point != std::string_view::npos) picture += "." + std::string(text.size() - point - 1, '0');
  return picture;
}

/// How wide a text is, in average characters.
int WidthOf(std::string_view text) {
  int width = 0;
  for (std::size_t position = 0; position < text.size();) width += NextCodePoint(text, position) < 0x2E80 ? 1 : 2;
  return width;
}

/// "2026-03-01" as a day; nothing for any other text.
std::optional<DateTime> DayIn(std::string_view text) {
  constexpr std::string_view kPicture = "0000-00-00";
  if (text.size() != kPicture.size()) return std::nullopt;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool digit = text[i] >= '0' && text[i] <= '9';
    if (digit != (kPicture[i] == '0')) return std::nullopt;
  }
  return ParseDate(text, DateTime(2000, 1, 1));
}

/// Where the columns of a grid stand in the sheet: hidden ones do not come along.
class SheetPlaces {
 public:
  explicit SheetPlaces(const Grid& grid) : places_(static_cast<std::size_t>(grid.MaxCols()) + 1) {
    for (int col = 1; col <= grid.MaxCols(); ++col) {
      if (grid.ColumnHidden(col)) continue;
      shown_.push_back(col);
      places_[static_cast<std::size_t>(col)] = static_cast<int>(shown_.size());
    }
  }

  const std::vector<int>& Shown() const { return shown_; }
  /// How many of so many columns from `col` on are in the sheet.
  int CountOf(int col, int cols) const {
    return static_cast<int>(
        std::ranges::count_if(shown_, [&](int shown) { return shown >= col && shown < col + cols; }));
  }

  /// The formula as it reads `rows` rows further down; empty when a column of it has stayed behind.
  std::string Moved(const std::string& formula, int rows) const {
    std::string moved;
    for (std::size_t i = 0; i < formula.size();) {
      const std::size_t letters = formula.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", i) - i;
      const std::size_t digits_at = i + std::min(letters, formula.size() - i);
      std::size_t end = digits_at;
      while (end < formula.size() && formula[end] >= '0' && formula[end] <= '9') ++end;
      if (digits_at > i && end > digits_at) {
        const auto cell = ParseAddress(std::string_view(formula).substr(i, end - i));
        const int place =
            cell && cell->col < static_cast<int>(places_.size()) ? places_[static_cast<std::size_t>(cell->col)] : 0;
        if (place == 0) return {};
        moved += ColumnLetters(place) + std::to_string(cell->row + rows);
        i = end;
      } else {
        moved += formula[i++];
      }
    }
    return moved;
  }

 private:
  std::vector<int> shown_;
  std::vector<int> places_;
};

/// One column of the grid on its way into a sheet.
class ColumnExport {
 public:
  ColumnExport(const Grid& grid, const SheetPlaces& places, int col) : grid_(grid), places_(places), col_(col) {
    const Holds holds = grid.ColumnHolds(col);
    bool summed = false;
    bool all_numbers = holds == Holds::kAnything;
    bool all_days = holds == Holds::kAnything;
    int widest = WidthOf(grid.Text(0, col));
    for (int row = 1; row <= grid.MaxRows(); ++row) {
      const std::string text = grid.Text(row, col);
      const std::string formula = grid.Formula(row, col);
      summed = summed || !formula.empty();
      if (grid.Span(row, col).second == 1) widest = std::max(widest, WidthOf(text));
      if (formula.empty() && !text.empty() && !grid.Bold(row, col) && grid.Span(row, col).second == 1) {
        const auto number = CellNumber(text);
        all_numbers = all_numbers && number;
        all_days = all_days && DayIn(text);
        if (number) {
          const std::string picture = PictureOf(text);
          if (picture.size() > widest_picture_.size()) widest_picture_ = picture;
        }
      }
    }
    as_numbers_ = summed || all_numbers || holds == Holds::kFigure;
    as_days_ = all_days || holds == Holds::kDate;
    width_ = grid.ColumnWidth(col) > 0 ? grid.ColumnWidth(col) : std::clamp(widest + 2, kNarrowest, kWidest);
  }

  SheetColumn Column() const { return {static_cast<double>(width_)}; }

  SheetCell Header(Sheet& sheet, int row) const {
    const int style = sheet.AddStyle({.bold = true, .align = SheetAlign::kCentre});
    const int col = Source(row);
    if (col == 0) return {{}, style};
    return {grid_.Text(row, col), style};
  }

  SheetCell Cell(Sheet& sheet, int row) const {
    const int col = Source(row);
    SheetStyle style;
    style.bold = grid_.Bold(row, std::max(col, 1));
    const std::string text = grid_.Text(row, col);
    if (const std::string formula = grid_.Formula(row, col); !formula.empty()) {
      style.picture = widest_picture_;
      const std::string moved = places_.Moved(formula, grid_.HeaderRows());
      const double result = grid_.Number(row, col);
      if (moved.empty()) return {result, sheet.AddStyle(style)};
      return {SheetFormula{moved, result}, sheet.AddStyle(style)};
    }
    if (text.empty()) return {{}, sheet.AddStyle(style)};
    if (const auto number = NumberIn(text, row)) {
      style.picture = PictureOf(text);
      return {*number, sheet.AddStyle(style)};
    }
    if (as_days_ || grid_.Kind(row, col) == CellKind::kDate) {
      if (const auto day = DayIn(text)) {
        style.picture = "yyyy-mm-dd";
        return {*day, sheet.AddStyle(style)};
      }
    }
    if (grid_.CellAlign(row, col) == Align::kCentre) style.align = SheetAlign::kCentre;
    return {text, sheet.AddStyle(style)};
  }

 private:
  static constexpr int kNarrowest = 6;
  static constexpr int kWidest = 50;

  /// The column whose text stands here, 0 for none: a cell that spans others gives it to the first in the sheet.
  int Source(int row) const {
    if (grid_.Span(row, col_).second > 0) return col_;
    int first = col_;
    while (first > 1 && grid_.Span(row, first).second == 0) --first;
    const bool covered_from_there = first + grid_.Span(row, first).second > col_;
    return covered_from_there && places_.CountOf(first, col_ - first) == 0 ? first : 0;
  }

  std::optional<double> NumberIn(const std::string& text, int row) const {
    if (grid_.Kind(row, col_) == CellKind::kNumber || as_numbers_) return CellNumber(text);
    return std::nullopt;
  }

  const Grid& grid_;
  const SheetPlaces& places_;
  int col_;
  bool as_numbers_ = false;
  bool as_days_ = false;
  std::string widest_picture_;
  int width_ = 0;
};

void AddSpans(Sheet& sheet, const Grid& grid, const SheetPlaces& places) {
  for (int row = 1 - grid.HeaderRows(); row <= grid.MaxRows(); ++row) {
    for (int col = 1; col <= grid.MaxCols(); ++col) {
      const auto [rows, cols] = grid.Span(row, col);
      const int shown = places.CountOf(col, cols);
      if (shown == 0 || (rows <= 1 && shown <= 1)) continue;
      const int first = places.CountOf(1, col - 1) + 1;
      sheet.merged.push_back({row + grid.HeaderRows(), first, std::min(rows, grid.MaxRows() - row + 1), shown});
    }
  }
}

/// Tells the desktop how far the export has come, and that it is over, however it ends.
class ExportProgress {
 public:
  explicit ExportProgress(Desktop& desktop) : desktop_(desktop) {}
  ~ExportProgress() { desktop_.ShowProgress(kWhat, 1, 1); }
  ExportProgress(const ExportProgress&) = delete;
  ExportProgress& operator=(const ExportProgress&) = delete;
  void Tell(int done, int total) { desktop_.ShowProgress(kWhat, done, total); }

 private:
  static constexpr const char* kWhat = "正在导出到 Excel……";
  Desktop& desktop_;
};

/// A file name of the list's name and today's date, without what no file system takes.
std::string ProposedName(const AppContext& app, std::string name) {
  std::ranges::replace_if(
      name, [](char letter) { return std::string_view("<>:\"/\\|?*").find(letter) != std::string_view::npos; }, '_');
  return Trim(name) + " " + FormatDate(app.clock.Today(), "yyyy-mm-dd") + ".xls";
}

/// The operator's choice; nothing when there was none.
/// @param name of what is written
std::optional<std::string> AskForFile(AppContext& app, const std::string& name) {
  FileRequest request;
  request.save = true;
  request.title = "保存文件为...";
  request.filter = "*.xls|*.xls|*.xlsx|*.xlsx";
  request.directory = app.AppPath;
  request.name = ProposedName(app, name);
  const std::optional<std::string> file = app.desktop.ChooseFile(request);
  return file && !file->empty() ? file : std::nullopt;
}

}  // namespace

Sheet SheetOf(const Grid& grid, const std::string& name) {
  Sheet sheet;
  sheet.name = name;
  const int heads = grid.HeaderRows();
  sheet.frozen_rows = heads;
  sheet.repeated_rows = heads;
  sheet.landscape = true;
  const SheetPlaces places(grid);
  std::vector<ColumnExport> columns;
  for (const int col : places.Shown()) columns.emplace_back(grid, places, col);
  for (const ColumnExport& column : columns) sheet.columns.push_back(column.Column());
  sheet.rows.resize(static_cast<std::size_t>(grid.MaxRows() + heads));
  for (int row = 1 - heads; row <= grid.MaxRows(); ++row) {
    std::vector<SheetCell>& cells = sheet.rows[static_cast<std::size_t>(row + heads - 1)];
    cells.reserve(columns.size());
    for (const ColumnExport& column : columns) {
      cells.push_back(row <= 0 ? column.Header(sheet, row) : column.Cell(sheet, row));
    }
  }
  AddSpans(sheet, grid, places);
  return sheet;
}

void GridToExcel(AppContext& app, Grid& grid, const std::string& sheetName) {
  const std::string name = sheetName.empty() ? grid.Owner().Caption() : sheetName;
  const std::optional<std::string> file = AskForFile(app, name);
  if (!file) return;
  {
    ExportProgress progress(app.desktop);
    progress.Tell(0, grid.MaxRows());
    app.workbooks.Save(*file, SheetOf(grid, name), [&](int done, int total) { progress.Tell(done, total); });
  }
  app.desktop.MsgBox({"文件导出成功！    ", box::kInformation, "提示"});
}

}  // namespace luming
