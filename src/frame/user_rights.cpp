#include "frame/user_rights.h"

#include "frame/app_context.h"
#include "frame/gateway.h"

namespace luming {

bool HasRight(const AppContext& app, RightKey key) {
  return app.CurUser.*(key->flag);
}

namespace {

void Refuse(AppContext& app, std::string_view key) {
  Trapped(app, [&] {
    Recordset rs = app.Cn->Execute("Select MoudelName From Qx_Temp Where MoudelKey=" + Quoted(key));
    std::string text = "系统提示您：  \r\n\r\n      ";
    if (rs.RecordCount() > 0) {
      text += "你没有【" + rs.Field("MoudelName").Text() + "】的权限,请您给系统管理员联系。";
    } else {
      text += "您没有操作该功能的权限,请您给系统管理员联系。";
    }
    app.desktop.MsgBox({text, box::kWarning, "系统提示"});
    CloseRs(rs);
  });
}

}  // namespace

void CheckRight(AppContext& app, RightKey key) {
  Refuse(app, key->key);
}

void CheckRight(AppContext& app) {
  Refuse(app, {});
}

}  // namespace luming
