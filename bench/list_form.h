#pragma once

#include <string>
#include <vector>

#include "screen/form.h"
#include "screen/grid.h"

namespace luming::bench {

/// A screen with a list of drugs: codes, names, prices and quantities by turns, a total row at the end.
class ListForm : public Form {
 public:
  ListForm(Forms& forms, int rows, int cols)
      : Form(forms, "ListForm", "药品目录", WindowKind::kChild), grid(this, "grid", Columns(cols)) {
    grid.SetMaxRows(rows + 1);
    for (int row = 1; row <= rows; ++row) {
      for (int col = 1; col <= cols; ++col) grid.SetText(row, col, CellText(row, col));
    }
    grid.SetTotalRow(rows + 1, true);
    grid.SetText(rows + 1, 1, "合计：");
    for (int col = 4; col <= cols; col += 4) {
      const std::string letters = ColumnName(col);
      grid.SetFormula(rows + 1, col, "SUM(" + letters + "1:" + letters + std::to_string(rows) + ")");
    }
  }
  Layout Arrange() const override { return grid; }

  Grid grid;

 private:
  static std::vector<GridColumn> Columns(int cols) {
    std::vector<GridColumn> columns;
    for (int col = 1; col <= cols; ++col) columns.emplace_back("列" + std::to_string(col));
    return columns;
  }
  static std::string ColumnName(int col) {
    const std::string last(1, static_cast<char>('A' + (col - 1) % 26));
    return col > 26 ? static_cast<char>('A' + (col - 1) / 26 - 1) + last : last;
  }
  static std::string CellText(int row, int col) {
    switch (col % 4) {
      case 0:
        return std::to_string(row * col % 9973) + ".50";
      case 1:
        return "0" + std::to_string(100000 + row);
      case 2:
        return row % 7 ? "阿莫西林胶囊" : "盐酸左氧氟沙星氯化钠注射液（塑瓶，双阀）";
      default:
        return "0.25g*24粒";
    }
  }
};

}  // namespace luming::bench
