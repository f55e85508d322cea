#include "output/grid_command.h"

#include "frame/gateway.h"
#include "output/grid_to_excel.h"

namespace luming {

namespace {

std::string TitleOf(const AppContext& app, const Grid& grid) {
  return (app.KFMC.empty() ? "" : "【" + app.KFMC + "】") + grid.Owner().Caption();
}

}  // namespace

void PrintTrapped(AppContext& app, Grid& grid, const std::string& title, const GridPrintOptions& options) {
  Trapped(app, [&] { GridPrint(app, grid, title, options); });
}

void ExportTrapped(AppContext& app, Grid& grid, const std::string& sheetName) {
  Trapped(app, [&] { GridToExcel(app, grid, sheetName); });
}

void RunGridCommand(AppContext& app, Grid& grid, GridCommand command) {
  if (command == GridCommand::kPreview) {
    PrintTrapped(app, grid, TitleOf(app, grid));
  } else {
    ExportTrapped(app, grid);
  }
}

}  // namespace luming
