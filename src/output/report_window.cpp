#include "output/report_window.h"

#include <utility>

#include "output/grid_command.h"
#include "output/grid_routines.h"

namespace luming {

namespace {

constexpr const char* kPrint = "print";
constexpr const char* kExport = "export";
constexpr const char* kClose = "close";

std::vector<ToolButton> Buttons(std::vector<ToolButton> buttons, const char* print) {
  const bool grouped = !buttons.empty();
  buttons.push_back({print, kPrint, grouped});
  buttons.push_back({"导出到Excel", kExport});
  buttons.push_back({"关闭(&Q)", kClose, true});
  return buttons;
}

}  // namespace

ReportWindow::ReportWindow(AppContext& app, const Kind& kind, std::vector<GridColumn> columns)
    : Form(app.forms, kind.name, kind.caption, WindowKind::kChild),
      bar(this, "标准工具条", Buttons(kind.further, kind.print)),
      fpSpread1(this, "fpSpread1", std::move(columns)),
      app_(app) {
  bar.button_click.Connect(this, &ReportWindow::Bar_Click);
  fpSpread1.SetReadOnly(true);
}

void ReportWindow::Load() {
  GridInit(fpSpread1);
}

Layout ReportWindow::Arranged(std::vector<Layout> fields) const {
  std::vector<Layout> rows = {bar};
  if (!fields.empty()) rows.push_back(Row(std::move(fields)));
  rows.push_back(fpSpread1);
  return Column(std::move(rows));
}

void ReportWindow::Bar_Click(const std::string& key) {
  if (key == kPrint) {
    PrintTrapped(app_, fpSpread1, PrintTitle(), PrintOptions());
  } else if (key == kExport) {
    ExportTrapped(app_, fpSpread1);
  } else if (key == kClose) {
    Unload();
  } else {
    BarPressed(key);
  }
}

}  // namespace luming
