#pragma once

#include <string>

#include "frame/app_context.h"
#include "platform/database.h"
#include "screen/form.h"
#include "screen/grid.h"

namespace luming {

/// 药品产地查询: the producers that match what is being typed as a drug's place of origin. Floats above all windows and
/// remembers where it stood.
class Frm_Check : public Form {
 public:
  static constexpr const char* kName = "Frm_Check";
  explicit Frm_Check(AppContext& app);

  Grid fpSpread1{
      this, "fpSpread1", {GridColumn("产地名称", 22), GridColumn("产地全称", 34), GridColumn("拼音代码", 14).Code()}};

  /// The operator took that producer; the list hides when its handler is through.
  Event<const std::string&> taken;

  Layout Arrange() const override;

  /// Shows the rows, the first of them active, and how many they are.
  void Fill_JB(Recordset& rows);
  /// The keyboard comes to the first row.
  void EnterList();

 protected:
  void Load() override;
  void Unloading() override;
  void ClosedByFrame() override { Hide(); }

 private:
  void fpSpread1_Click(int row, int col);
  void fpSpread1_KeyDown(KeyEvent& event);
  void Take(int row);

  AppContext& app_;
};

}  // namespace luming
