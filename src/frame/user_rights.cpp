#include "frame/user_rights.h"

#include <algorithm>
#include <array>

#include "frame/app_context.h"
#include "frame/gateway.h"

namespace luming {

namespace {

constexpr std::array kRights = {
    OperatorRight{"YPGL_CKYPML", &User_qx::YPGL_CKYPML}, OperatorRight{"YPGL_AddYP", &User_qx::YPGL_AddYP},
    OperatorRight{"YPGL_EditYP", &User_qx::YPGL_EditYP}, OperatorRight{"YPGL_DelYP", &User_qx::YPGL_DelYP},
    OperatorRight{"YPGL_CKJCML", &User_qx::YPGL_CKJCML}, OperatorRight{"YPGL_AddJCXM", &User_qx::YPGL_AddJCXM},
    OperatorRight{"YPGL_XGJCXM", &User_qx::YPGL_XGJCXM}, OperatorRight{"YPGL_DelJCXM", &User_qx::YPGL_DelJCXM},
    OperatorRight{"YPGL_YKJYLR", &User_qx::YPGL_YKJYLR}, OperatorRight{"YPGL_YKJYCX", &User_qx::YPGL_YKJYCX},
    OperatorRight{"YPGL_KSLYLR", &User_qx::YPGL_KSLYLR}, OperatorRight{"YPGL_KSLYCX", &User_qx::YPGL_KSLYCX},
    OperatorRight{"YPGL_SFXMGL", &User_qx::YPGL_SFXMGL}, OperatorRight{"YPGL_ADDZHXM", &User_qx::YPGL_ADDZHXM},
    OperatorRight{"YPGL_ZHXMGL", &User_qx::YPGL_ZHXMGL}, OperatorRight{"YPGL_YPTJ", &User_qx::YPGL_YPTJ},
    OperatorRight{"YPGL_JCXMTJ", &User_qx::YPGL_JCXMTJ}, OperatorRight{"YPGL_YPJCXMTJCX", &User_qx::YPGL_YPJCXMTJCX},
    OperatorRight{"YPGL_YPPD", &User_qx::YPGL_YPPD},     OperatorRight{"YPGL_YPPDCX", &User_qx::YPGL_YPPDCX},
    OperatorRight{"YPGL_BSBFLR", &User_qx::YPGL_BSBFLR}, OperatorRight{"YPGL_BSBFCX", &User_qx::YPGL_BSBFCX},
    OperatorRight{"YPGL_YPXHCX", &User_qx::YPGL_YPXHCX}, OperatorRight{"YPGL_CKFY", &User_qx::YPGL_CKFY},
    OperatorRight{"YPGL_CKFYCX", &User_qx::YPGL_CKFYCX}, OperatorRight{"YPGL_YPDCCX", &User_qx::YPGL_YPDCCX},
    OperatorRight{"YPGL_YPGCCX", &User_qx::YPGL_YPGCCX}, OperatorRight{"YPGL_SXYPCX", &User_qx::YPGL_SXYPCX},
    OperatorRight{"YPGL_EDITJG", &User_qx::YPGL_EDITJG}, OperatorRight{"YPGL_EDITKC", &User_qx::YPGL_EDITKC},
    OperatorRight{"YPGL_FSYP", &User_qx::YPGL_FSYP},     OperatorRight{"YPGL_XYKIN", &User_qx::XYKIN},
    OperatorRight{"YPGL_ZYKIN", &User_qx::ZYKIN},        OperatorRight{"YPGL_SeeReport", &User_qx::YPGL_SeeReport},
};

}  // namespace

std::span<const OperatorRight> AllRights() {
  return kRights;
}

const OperatorRight* FindRight(std::string_view key) {
  const auto found = std::ranges::find(kRights, key, &OperatorRight::key);
  return found == kRights.end() ? nullptr : &*found;
}

bool HasRight(const AppContext& app, std::string_view key) {
  const OperatorRight* right = FindRight(key);
  return right && app.CurUser.*right->flag;
}

void CheckRight(AppContext& app, const std::string& key) {
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

}  // namespace luming
