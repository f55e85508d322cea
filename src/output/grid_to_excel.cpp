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

/// The formula of a grid's cell as it reads `rows` rows further down.
std::string Shifted(const std::string& formula, int rows) {
  std::string shifted;
  for (std::size_t i = 0; i < formula.size();) {
    const std::size_t letters = formula.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", i) - i;
    const std::size_t digits_at = i + std::min(letters, formula.size() - i);
    std::size_t end = digits_at;
    while (end < formula.size() && formula[end] >= '0' && formula[end] <= '9') ++end;
    if (digits_at > i && end > digits_at) {
      shifted += formula.substr(i, digits_at - i);
      shifted += std::to_string(std::stoi(formula.substr(digits_at, end - digits_at)) + rows);
      i = end;
    } else {
      shifted += formula[i++];
    }
  }
  return shifted;
}

/// One column of the grid on its way into a sheet.
class ColumnExport {
 public:
  ColumnExport(const Grid& grid, int col) : grid_(grid), col_(col) {
    bool summed = false;
    bool all_numbers = grid.ColumnHolds(col) != Holds::kCode;
    int widest = WidthOf(grid.Text(0, col));
    for (int row = 1; row <= grid.MaxRows(); ++row) {
      const std::string text = grid.Text(row, col);
      const std::string formula = grid.Formula(row, col);
      summed = summed || !formula.empty();
      if (grid.Span(row, col).second == 1) widest = std::max(widest, WidthOf(text));
      if (formula.empty() && !text.empty() && !grid.Bold(row, col) && grid.Span(row, col).second == 1) {
        all_numbers = all_numbers && CellNumber(text).has_value();
        if (const auto number = CellNumber(text)) {
          const std::string picture = PictureOf(text);
          if (picture.size() > widest_picture_.size()) widest_picture_ = picture;
        }
      }
    }
    as_numbers_ = summed || all_numbers;
    width_ = grid.ColumnWidth(col) > 0 ? grid.ColumnWidth(col) : std::clamp(widest + 2, kNarrowest, kWidest);
  }

  SheetColumn Column() const { return {static_cast<double>(width_), grid_.ColumnHidden(col_)}; }

  SheetCell Header(Sheet& sheet, int row) const {
    const int style = sheet.AddStyle({.bold = true, .align = SheetAlign::kCentre});
    if (grid_.Span(row, col_).second == 0) return {{}, style};
    return {grid_.Text(row, col_), style};
  }

  SheetCell Cell(Sheet& sheet, int row) const {
    SheetStyle style;
    style.bold = grid_.Bold(row, col_);
    const std::string formula = grid_.Formula(row, col_);
    const std::string text = grid_.Text(row, col_);
    if (!formula.empty()) {
      style.picture = widest_picture_;
      return {SheetFormula{Shifted(formula, grid_.HeaderRows()), grid_.Number(row, col_)}, sheet.AddStyle(style)};
    }
    if (text.empty()) return {{}, sheet.AddStyle(style)};
    if (const auto number = NumberIn(text, row)) {
      style.picture = PictureOf(text);
      return {*number, sheet.AddStyle(style)};
    }
    if (grid_.Kind(row, col_) == CellKind::kDate) {
      if (const auto moment = ParseDate(text, DateTime(2000, 1, 1)); moment && !moment->HasTime()) {
        style.picture = "yyyy-mm-dd";
        return {*moment, sheet.AddStyle(style)};
      }
    }
    if (grid_.CellAlign(row, col_) == Align::kCentre) style.align = SheetAlign::kCentre;
    return {text, sheet.AddStyle(style)};
  }

 private:
  static constexpr int kNarrowest = 6;
  static constexpr int kWidest = 50;

  std::optional<double> NumberIn(const std::string& text, int row) const {
    if (grid_.Kind(row, col_) == CellKind::kNumber || as_numbers_) return CellNumber(text);
    return std::nullopt;
  }

  const Grid& grid_;
  int col_;
  bool as_numbers_ = false;
  std::string widest_picture_;
  int width_ = 0;
};

void AddSpans(Sheet& sheet, const Grid& grid) {
  for (int row = 1 - grid.HeaderRows(); row <= grid.MaxRows(); ++row) {
    for (int col = 1; col <= grid.MaxCols(); ++col) {
      const auto [rows, cols] = grid.Span(row, col);
      if (rows > 1 || cols > 1) {
        sheet.merged.push_back({row + grid.HeaderRows(), col, std::min(rows, grid.MaxRows() - row + 1),
                                std::min(cols, grid.MaxCols() - col + 1)});
      }
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

/// The operator's choice; nothing when there was none.
std::optional<std::string> AskForFile(AppContext& app) {
  FileRequest request;
  request.save = true;
  request.title = "保存文件为...";
  request.filter = "*.xls|*.xls|*.xlsx|*.xlsx";
  request.directory = app.AppPath;
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
  std::vector<ColumnExport> columns;
  for (int col = 1; col <= grid.MaxCols(); ++col) columns.emplace_back(grid, col);
  for (const ColumnExport& column : columns) sheet.columns.push_back(column.Column());
  sheet.rows.resize(static_cast<std::size_t>(grid.MaxRows() + heads));
  for (int row = 1 - heads; row <= grid.MaxRows(); ++row) {
    std::vector<SheetCell>& cells = sheet.rows[static_cast<std::size_t>(row + heads - 1)];
    cells.reserve(columns.size());
    for (const ColumnExport& column : columns) {
      cells.push_back(row <= 0 ? column.Header(sheet, row) : column.Cell(sheet, row));
    }
  }
  AddSpans(sheet, grid);
  return sheet;
}

void GridToExcel(AppContext& app, Grid& grid, const std::string& sheetName) {
  const std::optional<std::string> file = AskForFile(app);
  if (!file) return;
  const std::string name = sheetName.empty() ? grid.Owner().Caption() : sheetName;
  {
    ExportProgress progress(app.desktop);
    progress.Tell(0, grid.MaxRows());
    app.workbooks.Save(*file, SheetOf(grid, name), [&](int done, int total) { progress.Tell(done, total); });
  }
  app.desktop.MsgBox({"文件导出成功！    ", box::kInformation, "提示"});
}

}  // namespace luming
