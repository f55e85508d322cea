#include "output/note_templates.h"

#include <utility>
#include <vector>

namespace luming {

namespace {

struct FormColumn {
  const char* head;
  double width;  ///< in average characters
  SheetAlign align = SheetAlign::kLeft;
  const char* picture = "";
};

constexpr const char* kMoney = "0.00";

/// A form in the making: title over the whole width, labels, a ruled table head and ruled rows under it.
class NoteForm {
 public:
  NoteForm(std::string name, std::vector<FormColumn> columns) : columns_(std::move(columns)) {
    sheet_.name = std::move(name);
    sheet_.landscape = true;
    sheet_.page_numbers = true;
    for (const FormColumn& column : columns_) sheet_.columns.push_back({column.width});
  }

  NoteForm& Title(const std::string& text) {
    Put(1, 1, text, {.bold = true, .align = SheetAlign::kCentre, .points = 18});
    sheet_.merged.push_back({1, 1, 1, Columns()});
    sheet_.row_heights[1] = 34;
    return *this;
  }

  /// Labels to which the print routines append; each reaches to the column ahead of the next one.
  NoteForm& Labels(int row, const std::vector<std::pair<int, std::string>>& labels, double height = 22) {
    for (std::size_t i = 0; i < labels.size(); ++i) {
      const int col = labels[i].first;
      const int end = i + 1 < labels.size() ? labels[i + 1].first : Columns() + 1;
      Put(row, col, labels[i].second, {.align = SheetAlign::kLeft, .points = 11});
      if (end - col > 1) sheet_.merged.push_back({row, col, 1, end - col});
    }
    sheet_.row_heights[row] = height;
    return *this;
  }

  /// They and all above them stand again on every page.
  NoteForm& Heads(int row) {
    for (int col = 1; col <= Columns(); ++col) {
      const SheetStyle style{.bold = true, .align = SheetAlign::kCentre, .wrap = true, .ruled = true, .points = 11};
      Put(row, col, columns_[static_cast<std::size_t>(col - 1)].head, style);
    }
    sheet_.row_heights[row] = 24;
    sheet_.repeated_rows = row;
    return *this;
  }

  /// Empty rows of the table.
  NoteForm& Lines(int row, int count) {
    for (int line = row; line < row + count; ++line) {
      for (int col = 1; col <= Columns(); ++col) {
        const FormColumn& column = columns_[static_cast<std::size_t>(col - 1)];
        Put(line, col, "",
            {.align = column.align, .wrap = true, .ruled = true, .points = 10, .picture = column.picture});
      }
      sheet_.row_heights[line] = 20;
    }
    return *this;
  }

  NoteForm& Height(int row, double points) {
    sheet_.row_heights[row] = points;
    return *this;
  }

  Sheet Take() { return std::move(sheet_); }

 private:
  int Columns() const { return static_cast<int>(columns_.size()); }

  void Put(int row, int col, const std::string& text, const SheetStyle& style) {
    const auto r = static_cast<std::size_t>(row);
    const auto c = static_cast<std::size_t>(col);
    if (sheet_.rows.size() < r) sheet_.rows.resize(r);
    std::vector<SheetCell>& cells = sheet_.rows[r - 1];
    if (cells.size() < c) cells.resize(c);
    if (!text.empty()) cells[c - 1].value = text;
    cells[c - 1].style = sheet_.AddStyle(style);
  }

  std::vector<FormColumn> columns_;
  Sheet sheet_;
};

constexpr SheetAlign kRight = SheetAlign::kRight;
constexpr SheetAlign kCentre = SheetAlign::kCentre;

}  // namespace

Sheet IssueNoteTemplate() {
  return NoteForm("出库单", {{"药品名称", 28},
                             {"规格", 18},
                             {"单位", 7, kCentre},
                             {"产地", 24},
                             {"数量", 9, kRight},
                             {"零售价", 10, kRight, kMoney},
                             {"零售金额", 12, kRight},
                             {"批号", 13, kCentre},
                             {"有效期", 12, kCentre}})
      .Title("药品出库单")
      .Height(2, 6)
      .Height(3, 6)
      .Labels(4, {{1, "领用单位："}, {4, "日期："}, {5, "药库："}})
      .Height(5, 6)
      .Heads(6)
      .Lines(7, 1)
      .Labels(8, {{1, "发货人："}, {3, "收货人："}, {7, "打印日期："}}, 28)
      .Take();
}

Sheet ReceiptNoteTemplate() {
  return NoteForm("入库单", {{"品名", 24},
                             {"规格", 16},
                             {"单位", 6, kCentre},
                             {"产地", 20},
                             {"入库数量", 9, kRight},
                             {"进价", 9, kRight, kMoney},
                             {"进价金额", 11, kRight, kMoney},
                             {"零售价", 9, kRight, kMoney},
                             {"零售金额", 11, kRight, kMoney},
                             {"进销差价", 11, kRight, kMoney},
                             {"批号", 12, kCentre},
                             {"有效期", 12, kCentre}})
      .Title("药品入库单  № ")
      .Height(2, 6)
      .Labels(3, {{1, "供货单位："}, {4, "入库日期："}})
      .Heads(4)
      .Lines(5, 2)
      .Height(7, 20)
      .Labels(8, {{1, "验收人签字："}, {4, "仓库主管签字："}, {8, "财务签字："}}, 34)
      .Take();
}

Sheet WholesaleNoteTemplate() {
  return NoteForm("批发单", {{"品名", 26},
                             {"规格", 17},
                             {"单位", 7, kCentre},
                             {"数量", 9, kRight},
                             {"批发价", 10, kRight, kMoney},
                             {"批发金额", 12, kRight, kMoney},
                             {"零售价", 10, kRight, kMoney},
                             {"零售金额", 12, kRight, kMoney},
                             {"产地", 22},
                             {"有效期", 12, kCentre},
                             {"批号", 13, kCentre}})
      .Title("药品批发单")
      .Height(2, 6)
      .Labels(3, {{1, "购货单位："}})
      .Heads(4)
      .Lines(5, 2)
      .Height(7, 20)
      .Labels(8, {{1, "发货人签字："}, {4, "收货人签字："}, {9, "财务签字："}}, 34)
      .Take();
}

void WriteTemplate(Workbooks& workbooks, const std::filesystem::path& app_path, const std::string& name,
                   const Sheet& sheet) {
  const std::filesystem::path directory = app_path / "MB";
  std::error_code shown_by_the_write;
  std::filesystem::create_directories(directory, shown_by_the_write);
  if (!std::filesystem::exists(directory / name)) workbooks.Save(directory / name, sheet, {});
}

void WriteNoteTemplates(Workbooks& workbooks, const std::filesystem::path& app_path) {
  WriteTemplate(workbooks, app_path, "CKD.xls", IssueNoteTemplate());
  WriteTemplate(workbooks, app_path, "RKD.xls", ReceiptNoteTemplate());
  WriteTemplate(workbooks, app_path, "批发打印模板.xls", WholesaleNoteTemplate());
}

}  // namespace luming
