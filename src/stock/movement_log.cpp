#include "stock/movement_log.h"

#include "frame/gateway.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming {

bool AddMoveLog(AppContext& app, const Movement& movement) {
  return ExecSql(app, "Insert into YPCRK (YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY) Values(" +
                          Quoted(movement.YPBM, "编码") + "," + NumberText(movement.SL) + "," +
                          std::to_string(movement.CLB) + "," + NumberText(movement.KCL) + "," +
                          Quoted(movement.DW, "单位") + (movement.in ? ",0," : ",1,") + Quoted(movement.MS) + "," +
                          Quoted(movement.RQ) + "," + Quoted(movement.KFBM, "库房") + "," +
                          Quoted(movement.BZ, "备注") + "," + Quoted(app.CurUser.GetUserName, "操作员") + ")");
}

bool AddServerLog(AppContext& app, const std::string& kind, const std::string& information) {
  return Trapped(app, [&] {
    if (!app.Cn) throw StandardFailure(failure::kBadConnection);
    app.Cn->Execute("Insert into UploadToServerLog(RQ,LX,INFO,CZY) Values (" + Quoted(DateText(app.clock.Now())) + "," +
                    Quoted(kind) + "," + Quoted(information) + "," + Quoted(app.CurUser.GetUserName, "操作员") + ")");
  });
}

}  // namespace luming
