#include "output/column_widths.h"

#include <string>

#include "frame/ini_file.h"
#include "screen/form.h"

namespace luming {

namespace {

constexpr int kWidest = 200;

CIniFile WidthsFile(const AppContext& app) {
  CIniFile file;
  file.SpecifyIni((app.AppPath / "ColumnWidths.ini").string());
  return file;
}

std::string SectionOf(const Grid& grid) {
  return grid.Owner().Name() + "." + grid.Name();
}

}  // namespace

void RestoreColumnWidths(const AppContext& app, Grid& grid) {
  CIniFile file = WidthsFile(app);
  for (int col = 1; col <= grid.MaxCols(); ++col) {
    const int width = file.ReadInt(SectionOf(grid), std::to_string(col));
    if (width > 0 && width <= kWidest) grid.UserColumnWidth(col, width);
  }
}

void KeepColumnWidths(const AppContext& app, const Grid& grid) {
  CIniFile file = WidthsFile(app);
  for (int col = 1; col <= grid.MaxCols(); ++col) {
    const std::string key = std::to_string(col);
    const int width = grid.ColumnWidth(col);
    if (!grid.WidthIsOperators(col) || file.ReadInt(SectionOf(grid), key) == width) continue;
    file.WriteString(SectionOf(grid), key, std::to_string(width));
  }
}

}  // namespace luming
