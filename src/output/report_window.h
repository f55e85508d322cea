#pragma once

#include <string>
#include <vector>

#include "frame/app_context.h"
#include "output/grid_print.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "screen/tool_bar.h"

namespace luming {

/// A list that is read, printed and exported: a grid under the bar "标准工具条" with print, export and close, ahead of
/// which a window may set buttons of its own.
class ReportWindow : public Form {
 public:
  ToolBar bar;
  Grid fpSpread1;

  Layout Arrange() const override { return Arranged({}); }

 protected:
  struct Kind {
    const char* name;
    const char* caption;
    const char* print = "打印";            ///< caption of the print button
    std::vector<ToolButton> further = {};  ///< buttons ahead of it; BarPressed gets their keys
  };

  ReportWindow(AppContext& app, const Kind& kind, std::vector<GridColumn> columns);

  /// What the bar's print sends; a window without a title of its own prints under its caption.
  virtual std::string PrintTitle() const { return Caption(); }
  virtual GridPrintOptions PrintOptions() const { return {}; }
  virtual void BarPressed(const std::string&) {}

  /// The bar above the fields of the window above the grid.
  Layout Arranged(std::vector<Layout> fields) const;
  void Load() override;

  AppContext& app_;

 private:
  void Bar_Click(const std::string& key);
};

}  // namespace luming
