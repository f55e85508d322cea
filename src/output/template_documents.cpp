#include "output/template_documents.h"

#include <algorithm>
#include <vector>

#include "frame/gateway.h"
#include "platform/workbook.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming {

namespace {

constexpr const char* kDay = "yyyy-mm-dd";
constexpr const char* kMoney = "0.00";

void Append(Workbook& book, const char* address, const std::string& text) {
  book.SetCell(address, book.Cell(address) + text);
}
void Append(Workbook& book, char column, int row, const std::string& text) {
  Append(book, (column + std::to_string(row)).c_str(), text);
}

void PrintOrPreview(Workbook& book, bool direct) {
  if (direct) {
    book.PrintOut();
  } else {
    book.PrintPreview();
  }
}

/// A text that looks like a date as its day; any other as it is.
std::string DayOf(const AppContext& app, const std::string& text) {
  const auto moment = ParseDate(text, app.clock.Today());
  return moment ? FormatDate(*moment, kDay) : text;
}

struct IssueHead {
  std::string date, unit, sent_by, received_by;
};

struct IssueLines {
  std::vector<std::vector<std::string>> cells;
  double sum = 0;
};

IssueLines ReadIssueLines(AppContext& app, const std::string& number) {
  Recordset rs;
  OpenRs(app, rs,
         "Select A.PH,A.XQ,B.YPMC,B.GG,A.DW,A.CD,A.LSJ,A.SFSL,A.LSJ*A.SFSL AS 'LSJJE' From YPSLMX A Left join YF_YPML "
         "B ON A.YPBM=B.YPBM  Where SLDH Like" +
             Quoted(number, "单号"));
  IssueLines lines;
  for (; !rs.Eof(); rs.MoveNext()) {
    const Value& amount = rs.Field("LSJJE");
    lines.sum += amount.NumberOr(0);
    lines.cells.push_back({rs.Field("YPMC").TextOrEmpty(), rs.Field("GG").TextOrEmpty(), rs.Field("DW").TextOrEmpty(),
                           rs.Field("CD").TextOrEmpty(), rs.Field("SFSL").TextOrEmpty(), rs.Field("LSJ").Format(kMoney),
                           "'" + amount.Format(kMoney), rs.Field("PH").TextOrEmpty(), rs.Field("XQ").Format(kDay)});
  }
  CloseRs(rs);
  return lines;
}

void FillIssueNote(AppContext& app, Workbook& book, const std::string& number, const IssueHead& head) {
  constexpr int kFirstLine = 7;
  book.SetCell("A1", app.ReportUnit + book.Cell("A1"));
  Append(book, "A4", head.unit);
  Append(book, "D4", head.date);
  Append(book, "E4", app.KFMC);

  const IssueLines lines = ReadIssueLines(app, number);
  const int count = static_cast<int>(lines.cells.size());
  book.InsertRows(kFirstLine, count);
  book.SetCells(kFirstLine, 1, lines.cells);

  const int total = kFirstLine + count;
  book.SetCell("A" + std::to_string(total), "合计:");
  book.SetCell("G" + std::to_string(total), "'" + FormatNumber(lines.sum, kMoney));
  book.SetCell("D" + std::to_string(total), "单号:" + number);

  const int foot = total + 1;
  Append(book, 'A', foot, head.sent_by);
  Append(book, 'C', foot, head.received_by);
  Append(book, 'G', foot, FormatDate(app.clock.Today(), kDay));
}

/// A note filled from the grids of a query: its table begins in row 5, ruled for two lines; the detail grid's last row
/// closes it over the whole width.
struct GridNote {
  const char* file;  ///< below the application's directory
  const char* title;
  int first_col;  ///< of the detail grid
  int cols;       ///< of the sheet's table
  int text_col;   ///< of the sheet: kept as text; 0 for none
  int day_col;    ///< of the sheet: a day; 0 for none
};

std::vector<std::string> NoteLine(const AppContext& app, const GridNote& note, const Grid& detail, int row) {
  std::vector<std::string> cells;
  for (int col = 1; col <= note.cols; ++col) {
    std::string text = detail.Text(row, note.first_col + col - 1);
    if (col == note.day_col && !text.empty()) text = DayOf(app, text);
    if (col == note.text_col) text.insert(0, "'");
    cells.push_back(std::move(text));
  }
  return cells;
}

/// The row that spans the grid has its text in column 1, whatever the first printed column is.
std::vector<std::string> ClosingLine(const GridNote& note, const Grid& detail) {
  std::vector<std::string> cells(static_cast<std::size_t>(note.cols));
  for (int col = 1; col <= detail.MaxCols() && cells.front().empty(); ++col) {
    cells.front() = detail.Text(detail.MaxRows(), col);
  }
  return cells;
}

void FillGridNote(const AppContext& app, Workbook& book, const GridNote& note, const Grid& detail) {
  constexpr int kFirstLine = 5, kRuledLines = 2;
  const int rows = detail.MaxRows();
  if (rows == 0) return;
  const int lines = rows - 1;
  if (lines > kRuledLines) book.InsertRows(kFirstLine, lines - kRuledLines);
  std::vector<std::vector<std::string>> cells;
  for (int row = 1; row <= lines; ++row) cells.push_back(NoteLine(app, note, detail, row));
  cells.push_back(ClosingLine(note, detail));
  book.SetCells(kFirstLine, 1, cells);
  book.JoinCells(kFirstLine + lines, 1, note.cols);
}

/// Opens the working copy of a template.
std::unique_ptr<Workbook> OpenCopy(AppContext& app, const GridNote& note) {
  const std::filesystem::path working_copy = app.AppPath / "temp.xls";
  std::error_code error;
  std::filesystem::copy_file(app.AppPath / note.file, working_copy, std::filesystem::copy_options::overwrite_existing,
                             error);
  if (error == std::errc::no_such_file_or_directory) {
    throw Failure(failure::kFileNotFound, "没有找到模板文件：" + (app.AppPath / note.file).string());
  }
  if (error) throw Failure(failure::kFileAccess, "无法写入工作副本：" + working_copy.string());
  return app.workbooks.Open(working_copy, note.title);
}

constexpr GridNote kReceiptNote{"MB/RKD.xls", "药品入库单", 1, 12, 11, 12};
constexpr GridNote kWholesaleNote{"MB/批发打印模板.xls", "药品批发单", 2, 11, 11, 0};

}  // namespace

void PrintCKD(AppContext& app, bool direct, const std::string& number) {
  Trapped(app, [&] {
    Recordset rs;
    OpenRs(app, rs, "Select SLRQ,LYDW,YKQRR,YFQRR From YPSLD Where SLDH Like" + Quoted(number, "单号"));
    if (rs.RecordCount() == 0) {
      CloseRs(rs);
      app.desktop.MsgBox({"请选择您要打印的单据", box::kWarning, "系统提示"});
      return;
    }
    const IssueHead head{rs.Field("SLRQ").Format(kDay), rs.Field("LYDW").TextOrEmpty(), rs.Field("YKQRR").TextOrEmpty(),
                         rs.Field("YFQRR").TextOrEmpty()};
    CloseRs(rs);
    const std::unique_ptr<Workbook> book = app.workbooks.Open(app.AppPath / "MB/CKD.xls", "药品出库单");
    FillIssueNote(app, *book, number, head);
    PrintOrPreview(*book, direct);
  });
}

void PrintRKD(AppContext& app, bool direct, const Grid& list, const Grid& detail) {
  Trapped(app, [&] {
    const int document = list.ActiveRow();
    const std::unique_ptr<Workbook> book = OpenCopy(app, kReceiptNote);
    Append(*book, "A1", list.Text(document, 1));
    Append(*book, "A3", list.Text(document, 5));
    Append(*book, "D3", DayOf(app, list.Text(document, 3)));
    FillGridNote(app, *book, kReceiptNote, detail);
    PrintOrPreview(*book, direct);
  });
}

void PrintPFD(AppContext& app, bool direct, const Grid& list, const Grid& detail) {
  Trapped(app, [&] {
    const std::unique_ptr<Workbook> book = OpenCopy(app, kWholesaleNote);
    Append(*book, "A3", list.Text(list.ActiveRow(), 3));
    FillGridNote(app, *book, kWholesaleNote, detail);
    PrintOrPreview(*book, direct);
  });
}

}  // namespace luming
