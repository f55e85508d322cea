#include "office/xlsx_writer.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <array>
#include <vector>

#include "office/scratch_directory.h"
#include "office/sheet_rules.h"
#include "util/failure.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

namespace {

constexpr const char* kSource = "电子表格";
constexpr int kRowsBetweenTelling = 100;

/// The library does not notice when its working files no longer fit, so room is asked for ahead.
void DemandRoom(const Sheet& sheet, const std::filesystem::path& directory) {
  constexpr std::uintmax_t kBytesOfACell = 80, kLeast = 1 << 20;
  std::uintmax_t bytes = kLeast;
  for (const std::vector<SheetCell>& row : sheet.rows) {
    for (const SheetCell& cell : row) {
      const auto* text = std::get_if<std::string>(&cell.value);
      bytes += kBytesOfACell + (text ? text->size() : 0);
    }
  }
  std::error_code unknown;
  const std::filesystem::space_info space = std::filesystem::space(directory, unknown);
  if (!unknown && space.available < 2 * bytes) {
    throw Failure(failure::kFileAccess, "临时目录 " + directory.parent_path().string() + " 的磁盘空间不足。", kSource);
  }
}

std::uint8_t Across(SheetAlign align) {
  switch (align) {
    case SheetAlign::kLeft:
      return LXW_ALIGN_LEFT;
    case SheetAlign::kCentre:
      return LXW_ALIGN_CENTER;
    case SheetAlign::kRight:
      return LXW_ALIGN_RIGHT;
    case SheetAlign::kGeneral:
      break;
  }
  return LXW_ALIGN_NONE;
}

lxw_format* AddFormat(lxw_workbook* workbook, const SheetStyle& style) {
  lxw_format* format = workbook_add_format(workbook);
  format_set_font_name(format, "宋体");
  format_set_font_size(format, style.points);
  if (style.bold) format_set_bold(format);
  if (style.wrap) format_set_text_wrap(format);
  if (style.ruled) format_set_border(format, LXW_BORDER_THIN);
  if (!style.picture.empty()) format_set_num_format(format, style.picture.c_str());
  format_set_align(format, Across(style.align));
  format_set_align(format, LXW_ALIGN_VERTICAL_CENTER);
  return format;
}

class SheetWriter {
 public:
  SheetWriter(const Sheet& sheet, lxw_workbook* workbook)
      : sheet_(sheet), out_(workbook_add_worksheet(workbook, ValidSheetName(sheet.name).c_str())) {
    if (!out_) throw Failure(failure::kFileAccess, "无法生成工作簿文件。", kSource);
    for (const SheetStyle& style : sheet.styles) formats_.push_back(AddFormat(workbook, style));
  }

  void Write(const Progress& progress) {
    WritePage();
    WriteMerged();
    const auto rows = static_cast<int>(sheet_.rows.size());
    for (int row = 0; row < rows; ++row) {
      const std::vector<SheetCell>& cells = sheet_.rows[static_cast<std::size_t>(row)];
      for (std::size_t col = 0; col < cells.size(); ++col) {
        WriteCell(static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(col), cells[col]);
      }
      if (progress && (row % kRowsBetweenTelling == 0 || row + 1 == rows)) progress(row + 1, rows);
    }
  }

 private:
  void WritePage() {
    constexpr std::uint8_t kA4 = 9;
    worksheet_set_paper(out_, kA4);
    if (sheet_.landscape) worksheet_set_landscape(out_);
    if (sheet_.repeated_rows > 0) worksheet_repeat_rows(out_, 0, static_cast<lxw_row_t>(sheet_.repeated_rows - 1));
    worksheet_fit_to_pages(out_, 1, 0);
    worksheet_center_horizontally(out_);
    worksheet_set_margins(out_, kSideMargin, kSideMargin, kEndMargin, kEndMargin);
    if (sheet_.page_numbers) worksheet_set_footer(out_, kPageNumbers);
    if (sheet_.frozen_rows > 0) worksheet_freeze_panes(out_, static_cast<lxw_row_t>(sheet_.frozen_rows), 0);
    for (std::size_t col = 0; col < sheet_.columns.size(); ++col) {
      constexpr double kWidest = 255;
      lxw_row_col_options options{};
      options.hidden = sheet_.columns[col].hidden ? LXW_TRUE : LXW_FALSE;
      const auto at = static_cast<lxw_col_t>(col);
      worksheet_set_column_opt(out_, at, at, std::clamp(sheet_.columns[col].width, 0.0, kWidest), nullptr, &options);
    }
    for (const auto& [row, points] : sheet_.row_heights) {
      worksheet_set_row(out_, static_cast<lxw_row_t>(row - 1), points, nullptr);
    }
  }

  void WriteMerged() {
    for (const SheetBlock& block : sheet_.merged) {
      worksheet_merge_range(out_, static_cast<lxw_row_t>(block.row - 1), static_cast<lxw_col_t>(block.col - 1),
                            static_cast<lxw_row_t>(block.row + block.rows - 2),
                            static_cast<lxw_col_t>(block.col + block.cols - 2), "", nullptr);
    }
  }

  void WriteCell(lxw_row_t row, lxw_col_t col, const SheetCell& cell) {
    lxw_format* format = formats_[static_cast<std::size_t>(cell.style)];
    lxw_error error = LXW_NO_ERROR;
    if (const auto* text = std::get_if<std::string>(&cell.value)) {
      error = worksheet_write_string(out_, row, col, ToValidUtf8(*text).c_str(), format);
    } else if (const auto* number = std::get_if<double>(&cell.value)) {
      error = worksheet_write_number(out_, row, col, *number, format);
    } else if (const auto* moment = std::get_if<DateTime>(&cell.value)) {
      error = worksheet_write_number(out_, row, col, DateSerial(*moment), format);
    } else if (const auto* formula = std::get_if<SheetFormula>(&cell.value)) {
      error = worksheet_write_formula_num(out_, row, col, ("=" + formula->text).c_str(), format, formula->result);
    } else if (cell.style != 0) {
      error = worksheet_write_blank(out_, row, col, format);
    }
    if (error != LXW_NO_ERROR) throw Failure(failure::kInvalidCall, lxw_strerror(error), kSource);
  }

  const Sheet& sheet_;
  lxw_worksheet* out_;
  std::vector<lxw_format*> formats_;
};

/// A workbook of the library: closing it writes the file; a failure on the way frees it unwritten.
class OpenWorkbook {
 public:
  explicit OpenWorkbook(const std::filesystem::path& file) : file_(file.string()), directory_(file.parent_path()) {
    lxw_workbook_options options{};
    options.tmpdir = directory_.data();
    workbook_ = workbook_new_opt(file_.c_str(), &options);
    if (!workbook_) throw Failure(failure::kFileAccess, "无法生成工作簿文件。", kSource);
  }
  ~OpenWorkbook() {
    if (workbook_) lxw_workbook_free(workbook_);
  }
  OpenWorkbook(const OpenWorkbook&) = delete;
  OpenWorkbook& operator=(const OpenWorkbook&) = delete;

  lxw_workbook* get() { return workbook_; }
  void Close() {
    const lxw_error error = workbook_close(std::exchange(workbook_, nullptr));
    if (error != LXW_NO_ERROR) throw Failure(failure::kFileAccess, "无法生成工作簿文件，磁盘空间可能不足。", kSource);
  }

 private:
  std::string file_;
  std::string directory_;
  lxw_workbook* workbook_ = nullptr;
};

}  // namespace

std::string XlsxBytes(const Sheet& sheet, const Progress& progress) {
  DemandFits(sheet, kXlsxLimits);
  const ScratchDirectory scratch;
  DemandRoom(sheet, scratch.path());
  const std::filesystem::path file = scratch.path() / "sheet.xlsx";
  OpenWorkbook workbook(file);
  SheetWriter(sheet, workbook.get()).Write(progress);
  workbook.Close();
  return ReadWholeFile(file).value_or("");
}

}  // namespace luming
