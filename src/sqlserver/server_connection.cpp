#include "sqlserver/server_connection.h"

#include <optional>

#include "platform/server_errors.h"
#include "sqlserver/odbc_driver.h"
#include "sqlserver/odbc_handle.h"
#include "sqlserver/result_reader.h"
#include "sqlserver/server_failure.h"
#include "sqlserver/server_login.h"
#include "util/utf16.h"

namespace luming {

using namespace sqlserver;

namespace {

/// A connection handle whose connection ends with it; the server then rolls back what is open.
class OdbcConnection : public OdbcHandle {
 public:
  explicit OdbcConnection(const OdbcEnvironment& environment) : OdbcHandle(SQL_HANDLE_DBC, environment.get()) {}
  ~OdbcConnection() { Odbc().Disconnect(get()); }
  OdbcConnection(const OdbcConnection&) = delete;
  OdbcConnection& operator=(const OdbcConnection&) = delete;

  void Connect(const std::string& text, std::chrono::seconds patience, const std::string& server) {
    Odbc().SetConnectAttr(get(), SQL_ATTR_LOGIN_TIMEOUT, AttributeValue(static_cast<SQLULEN>(patience.count())), 0);
    std::u16string units = ToUtf16(text);
    const SQLRETURN result =
        Odbc().DriverConnect(get(), nullptr, reinterpret_cast<SQLWCHAR*>(units.data()),
                             static_cast<SQLSMALLINT>(units.size()), nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) throw FailureOfOpening(Diagnostics(), server);
  }

  bool IsDead() const {
    SQLUINTEGER dead = SQL_CD_FALSE;
    const SQLRETURN result = Odbc().GetConnectAttr(get(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr);
    return SQL_SUCCEEDED(result) && dead == SQL_CD_TRUE;
  }
};

bool IsNothing(std::string_view sql) {
  return sql.find_first_not_of(" \t\r\n;") == std::string_view::npos;
}

Failure Doomed() {
  return {failure::kGeneralProvider, "此前的错误已使事务回滚，本次操作的内容没有保存。",
          "Microsoft OLE DB Provider for SQL Server"};
}

/// A commit that was not answered may have been carried out.
Failure UnsureOfCommit() {
  return {failure::kGeneralProvider,
          "提交时与数据库服务器的连接中断，不能确定本次操作的内容是否已经保存，请先查询，再决定是否重新保存。",
          "Microsoft OLE DB Provider for SQL Server"};
}

}  // namespace

struct ServerConnection::Session {
  OdbcEnvironment environment;
  OdbcConnection connection{environment};
};

ServerConnection::ServerConnection() : ServerConnection(Patience()) {}
ServerConnection::ServerConnection(Patience patience) : patience_(patience) {}
ServerConnection::~ServerConnection() = default;

void ServerConnection::Open(std::string_view connection_string) {
  Close();
  const ServerLogin login = ReadServerLogin(connection_string);
  const std::string text = OdbcConnectionString(login, FindDriver());
  auto session = std::make_unique<Session>();
  session->connection.Connect(text, patience_.opening, login.Shown());
  session_ = std::move(session);
  try {
    // The language of the server's login would else say how "2026-03-01" is read; in some the day comes second.
    Run("SET DATEFORMAT ymd");
  } catch (const Failure&) {
    Close();
    throw;
  }
}

void ServerConnection::Close() {
  session_.reset();
  transactions_ = 0;
  doomed_ = false;
}

ServerConnection::Session& ServerConnection::RequireOpen() const {
  if (!session_) throw StandardFailure(failure::kClosedObject);
  return *session_;
}

void ServerConnection::RequireAlive() const {
  RequireOpen();
  if (doomed_) throw Doomed();
}

Recordset ServerConnection::Run(std::string_view sql) {
  Session& session = RequireOpen();
  if (IsNothing(sql)) return {};
  std::optional<StatementFailure> failed;
  {
    const OdbcHandle statement(SQL_HANDLE_STMT, session.connection.get());
    const auto patience = static_cast<SQLULEN>(patience_.statement.count());
    Odbc().SetStmtAttr(statement.get(), SQL_ATTR_QUERY_TIMEOUT, AttributeValue(patience), 0);
    Odbc().SetStmtAttr(statement.get(), SQL_ATTR_NOSCAN, AttributeValue(SQL_NOSCAN_ON), 0);
    TextResults results = RunText(statement, sql);
    const bool dead = session.connection.IsDead();
    if (!results.failed && !dead) return std::move(results.first);
    failed = results.failed ? FailureOfStatement(results.said, dead) : StatementFailure{LostConnection(), After::kLost};
  }
  if (failed->after == After::kLost) Close();
  throw std::move(failed->failure);
}

Recordset ServerConnection::Execute(std::string_view sql) {
  RequireAlive();
  try {
    return Run(sql);
  } catch (const Failure&) {
    CheckTransaction();
    throw;
  }
}

bool ServerConnection::IsInTransaction() {
  return Run("Select @@TRANCOUNT").Field(0).Number() > 0;
}

void ServerConnection::CheckTransaction() {
  if (!IsOpen() || transactions_ == 0) return;
  try {
    doomed_ = !IsInTransaction();
  } catch (const Failure&) {
    doomed_ = true;
  }
}

void ServerConnection::BeginTrans() {
  RequireAlive();
  try {
    Run("BEGIN TRANSACTION");
  } catch (const Failure&) {
    // One that was given up may have begun all the same, and would hold everybody up.
    if (IsOpen() && transactions_ == 0) RollbackTrans();
    throw;
  }
  ++transactions_;
}

void ServerConnection::CommitTrans() {
  RequireOpen();
  if (doomed_) {
    transactions_ = 0;
    doomed_ = false;
    throw Doomed();
  }
  try {
    Run("COMMIT TRANSACTION");
  } catch (const Failure& failure) {
    if (!IsOpen()) throw UnsureOfCommit();
    // One that was given up may have been carried out all the same; the server knows.
    if (failure.number() != failure::kTimeout || transactions_ > 1 || IsInTransaction()) throw;
  }
  if (transactions_ > 0) --transactions_;
}

void ServerConnection::RollbackTrans() {
  RequireOpen();
  transactions_ = 0;
  doomed_ = false;
  try {
    Run("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION");
  } catch (const Failure&) {
    // What stays open would hold everybody up, and swallow the next save: the server undoes what a lost client leaves.
    Close();
    throw;
  }
}

}  // namespace luming
