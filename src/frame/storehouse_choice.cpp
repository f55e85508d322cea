#include "frame/storehouse_choice.h"

#include "frame/gateway.h"
#include "frame/main_window.h"
#include "frame/screens.h"
#include "frame/startup.h"
#include "screen/grid_init.h"

namespace luming {

Frm_CheckYK::Frm_CheckYK(AppContext& app)
    : Form(app.forms, kName, "请选择你要进入的药库", WindowKind::kDialog), app_(app) {
  fpSpread1.SetRowMode(true);
  fpSpread1.double_click.Connect(this, &Frm_CheckYK::fpSpread1_DblClick);
  fpSpread1.key_down.Connect(this, &Frm_CheckYK::fpSpread1_KeyDown);
}

void Frm_CheckYK::Load() {
  GridInit(fpSpread1);
  Trapped(app_, [this] {
    Recordset rs;
    OpenRs(app_, rs, "Select Sname From YF_YKLX Where SLX Like'药库'");
    if (rs.RecordCount() > 0) {
      fpSpread1.Fill(std::move(rs), {{"Sname"}});
    } else {
      app_.desktop.MsgBox({"请先在配置系统添加好药库并且关联好收费类型", box::kWarning, "系统提示"});
    }
    CloseRs(rs);
  });
}

void Frm_CheckYK::Choose() {
  if (fpSpread1.MaxRows() == 0) {
    app_.desktop.MsgBox({"请选择您要进入的药库", 0, AppContext::kTitle});
    return;
  }
  app_.KFMC = fpSpread1.Text(fpSpread1.ActiveRow(), 1);
  if (app_.KFMC == "西药库") RefuseWithout(app_.CurUser.XYKIN, app_.KFMC);
  if (app_.KFMC == "中药库") RefuseWithout(app_.CurUser.ZYKIN, app_.KFMC);
  chosen_ = true;
  if (auto* frame = app_.forms.FindAs<mainfrm>()) frame->SetCaption(app_.KFMC + "管理系统");
  Unload();
}

/// An operator without the right is put out of the program, not back to the list.
void Frm_CheckYK::RefuseWithout(bool right, const std::string& storehouse) {
  if (right) return;
  app_.desktop.MsgBox({"你没有进入" + storehouse + "的权限，请给系统管理员联系。", 0, AppContext::kTitle});
  ExitApp(app_);
}

void Frm_CheckYK::fpSpread1_DblClick(int, int) {
  Choose();
}

void Frm_CheckYK::fpSpread1_KeyDown(KeyEvent& event) {
  if (event.code != key::kEnter) return;
  event.handled = true;
  Choose();
}

void Frm_CheckYK::Command2_Click() {
  chosen_ = false;
  Unload();
}

Layout Frm_CheckYK::Arrange() const {
  return Column({fpSpread1, Row({Space(), Command1, Command2})});
}

const Screen kStorehouseChoice = ModalScreen<Frm_CheckYK>();

}  // namespace luming
