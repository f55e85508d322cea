#include <string>

#include "documents/issue_note.h"
#include "documents/screens.h"
#include "frame/gateway.h"
#include "output/grid_routines.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/grid.h"
#include "screen/text_box.h"

namespace luming {

/// 从药库入库单中选择: the receipt whose lines an issue note takes over, so that a whole delivery can be passed on.
class Frm_CheckYPRKD : public Form {
 public:
  static constexpr const char* kName = "Frm_CheckYPRKD";
  explicit Frm_CheckYPRKD(AppContext& app);

  TextBox DH{this, "DH", "按入库单号搜索", {.ime = Ime::kOff, .select_on_focus = true}};
  Grid Spd_RKD{this,
               "Spd_RKD",
               {GridColumn("入库单号", 16).Code(), GridColumn("供货单位", 30), GridColumn("发票号", 14).Code(),
                GridColumn("复核人", 10), GridColumn("验收人", 10), GridColumn("入库日期", 12).Date()}};
  Button Com_Check{this, "Com_Check", "选择(&C)", &Frm_CheckYPRKD::Com_Check_Click};

  Layout Arrange() const override {
    return Column(
        {Row({Layout(DH).Width(16), Space()}), Layout(Spd_RKD).Width(106).Height(18), Row({Space(), Com_Check})});
  }

 protected:
  void Load() override;

 private:
  void DH_Change();
  void DH_KeyDown(KeyEvent& event);
  void Spd_RKD_KeyDown(KeyEvent& event);
  void Spd_RKD_DoubleClick(int, int) { Com_Check_Click(); }
  void Com_Check_Click();

  AppContext& app_;
};

Frm_CheckYPRKD::Frm_CheckYPRKD(AppContext& app)
    : Form(app.forms, kName, "从药库入库单中选择", WindowKind::kDialog), app_(app) {
  Spd_RKD.SetReadOnly(true);
  Spd_RKD.SetRowMode(true);
  DH.change.Connect(this, &Frm_CheckYPRKD::DH_Change);
  DH.key_down.Connect(this, &Frm_CheckYPRKD::DH_KeyDown);
  Spd_RKD.key_down.Connect(this, &Frm_CheckYPRKD::Spd_RKD_KeyDown);
  Spd_RKD.double_click.Connect(this, &Frm_CheckYPRKD::Spd_RKD_DoubleClick);
}

void Frm_CheckYPRKD::Load() {
  GridInit(Spd_RKD);
  DH_Change();
}

void Frm_CheckYPRKD::DH_Change() {
  Trapped(app_, [this] {
    Recordset receipts;
    OpenRs(app_, receipts,
           "Select Top 50 * From YK_YPRK Where RKDH Like" + Quoted(CleanSearchText(DH.Text()) + "%", DH.Caption()) +
               " Order By ID Desc");
    Spd_RKD.Fill(std::move(receipts), {{"RKDH"}, {"GHDW"}, {"FPH"}, {"FHR"}, {"YSR"}, {"RKRQ", "YYYY-MM-DD"}});
  });
}

void Frm_CheckYPRKD::DH_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  Spd_RKD.SetFocus();
  event.handled = true;
}

void Frm_CheckYPRKD::Spd_RKD_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  Com_Check_Click();
}

void Frm_CheckYPRKD::Com_Check_Click() {
  if (Spd_RKD.MaxRows() == 0) return;
  app_.forms.Get<Frm_YFYPSL>(app_).FromRKD(Spd_RKD.Text(Spd_RKD.ActiveRow(), 1));
  Unload();
}

const Screen kReceiptChoice = DialogScreen<Frm_CheckYPRKD, Frm_YFYPSL, &Frm_YFYPSL::Com_Check>();

}  // namespace luming
