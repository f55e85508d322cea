#include "output/grid_command.h"

#include "frame/gateway.h"
#include "output/grid_print.h"
#include "output/grid_to_excel.h"

namespace luming {

namespace {

std::string TitleOf(const AppContext& app, const Grid& grid) {
  return (app.KFMC.empty() ? "" : "【" + app.KFMC + "】") + grid.Owner().Caption();
}

}  // namespace

void RunGridCommand(AppContext& app, Grid& grid, GridCommand command) {
  Trapped(app, [&] {
    if (command == GridCommand::kPreview) {
      GridPrint(app, grid, TitleOf(app, grid));
    } else {
      GridToExcel(app, grid);
    }
  });
}

}  // namespace luming
