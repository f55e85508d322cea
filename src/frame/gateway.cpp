#include "frame/gateway.h"

#include "frame/connection_dialog.h"
#include "platform/desktop.h"

namespace luming {

namespace {

Connection& OpenableConnection(AppContext& app) {
  if (!app.Cn) throw StandardFailure(failure::kBadConnection);
  return *app.Cn;
}

/// A connection that was lost in the middle of a save has taken the save's transaction with it. What the save still
/// sends goes into a transaction that will never be committed.
void ShieldSaveUnderWay(AppContext& app) {
  if (!app.save.running || !app.Cn || !app.Cn->IsOpen()) return;
  app.save.lost = true;
  app.Cn->BeginTrans();
}

bool IsLostConnection(const Failure& failure) {
  return failure.number() == failure::kClosedObject || failure.number() == failure::kGeneralProvider;
}

/// A rollback after a lost connection fails, too; the server has then undone the work by itself.
void UndoQuietly(Connection& connection) {
  try {
    connection.RollbackTrans();
  } catch (const std::exception&) {
  }
}

Failure SaveLost() {
  return {failure::kGeneralProvider, "保存过程中数据库连接已中断，本次保存的内容已全部撤销，请重新保存。"};
}

/// @param sql a text or a Statement
template <class Sql>
void Read(AppContext& app, Recordset& rs, const Sql& sql) {
  rs = Recordset();
  if (!app.Cn || !app.Cn->IsOpen()) ConnectDb(app);
  try {
    rs = OpenableConnection(app).Execute(sql);
  } catch (const Failure& failure) {
    ShowDbError(app, failure);
    if (!IsLostConnection(failure)) return;
    if (app.Cn) app.Cn->Close();
    ConnectDb(app);
  }
}

template <class Sql>
bool Run(AppContext& app, const Sql& sql) {
  return Trapped(app, [&] {
    ConnectDb(app);
    OpenableConnection(app).Execute(sql);
  });
}

}  // namespace

void ConnectDb(AppContext& app) {
  if (app.Cn && app.Cn->IsOpen()) return;
  try {
    OpenableConnection(app).Open(app.ConnStr);
  } catch (const Failure& failure) {
    RepairConnection(app, failure.description());
  }
  ShieldSaveUnderWay(app);
}

void CloseRs(Recordset& rs) noexcept {
  rs.Close();
}

void OpenRs(AppContext& app, Recordset& rs, std::string_view sql) {
  Read(app, rs, sql);
}

void OpenRs(AppContext& app, Recordset& rs, const Statement& statement) {
  Read(app, rs, statement);
}

bool ExecSql(AppContext& app, std::string_view sql) {
  return Run(app, sql);
}

bool ExecSql(AppContext& app, const Statement& statement) {
  return Run(app, statement);
}

bool GetField(AppContext& app, std::string_view table, std::string_view field, std::string_view value,
              ValueSource source) {
  std::string words = "Select top 1 ";
  words.append(field).append(" From ").append(table).append(" Where ").append(field).append("  Like");
  const Recordset rs = OpenableConnection(app).Execute(std::move(words) + Quoted(value, source));
  return rs.RecordCount() > 0;
}

std::string GetWarehouseStock(AppContext& app, std::string_view drug_code) {
  Recordset rs;
  OpenRs(app, rs, "Select ykkcl From YF_YPML Where YPBM Like" + Quoted(drug_code, "编码"));
  std::string stock = "0";
  if (rs.RecordCount() > 0) stock = rs.Field(0).Text();
  CloseRs(rs);
  return stock;
}

bool ExceedsWarehouseStock(AppContext& app, std::string_view drug_code, double quantity) {
  bool exceeds = false;
  Trapped(app, [&] {
    Recordset rs;
    OpenRs(app, rs, "Select ykkcl from yf_ypml Where YPBM Like" + Quoted(drug_code, "编码"));
    exceeds = quantity > rs.Field(0).Number();
  });
  return exceeds;
}

void ShowDbError(AppContext& app, const Failure& failure) {
  app.desktop.MsgBox({"错误号：  " + std::to_string(failure.number()) + "\r\n\r\n错误描述：" + failure.description() +
                          "\r\n\r\n错误来源：" + failure.source(),
                      box::kWarning, "系统提示"});
}

bool InTransaction(AppContext& app, const std::function<void()>& work) {
  app.save = {};
  try {
    // A save that is tried again after a lost connection finds it closed.
    ConnectDb(app);
    OpenableConnection(app).BeginTrans();
    app.save.running = true;
    work();
    if (app.save.lost) throw SaveLost();
    app.Cn->CommitTrans();
    app.save = {};
    return true;
  } catch (const std::exception& fault) {
    const bool begun = app.save.running;
    app.save = {};
    if (begun && app.Cn) UndoQuietly(*app.Cn);
    ShowDbError(app, AsFailure(fault));
    return false;
  }
}

}  // namespace luming
