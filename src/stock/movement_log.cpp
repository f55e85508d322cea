#include "stock/movement_log.h"

#include "frame/gateway.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming {

bool AddMoveLog(AppContext& app, const Movement& movement) {
  return ExecSql(app, "Insert into YPCRK (YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY) Values('" + movement.YPBM + "'," +
                          NumberText(movement.SL) + "," + std::to_string(movement.CLB) + "," +
                          NumberText(movement.KCL) + ",'" + movement.DW + (movement.in ? "',0,'" : "',1,'") +
                          movement.MS + "','" + movement.RQ + "','" + movement.KFBM + "','" + movement.BZ + "','" +
                          app.CurUser.GetUserName + "')");
}

bool AddServerLog(AppContext& app, const std::string& kind, const std::string& information) {
  try {
    if (!app.Cn) throw StandardFailure(failure::kBadConnection);
    app.Cn->Execute("Insert into UploadToServerLog(RQ,LX,INFO,CZY) Values ('" + DateText(app.clock.Now()) + "','" +
                    kind + "','" + information + "','" + app.CurUser.GetUserName + "')");
    return true;
  } catch (const Failure& failure) {
    ShowDbError(app, failure);
    return false;
  }
}

}  // namespace luming
