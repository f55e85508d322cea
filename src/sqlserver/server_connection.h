#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"

namespace luming {

/// Microsoft SQL Server through ODBC: the server maker's own driver when it is installed, else FreeTDS. A connection
/// that is lost is closed by the failure that tells it; it can be opened again.
class ServerConnection : public Connection {
 public:
  /// How long to wait; the defaults are those of an ADO client.
  struct Patience {
    std::chrono::seconds opening{15};
    std::chrono::seconds statement{30};
  };

  ServerConnection();
  explicit ServerConnection(Patience patience);
  ~ServerConnection() override;

  /// Failure kGeneralProvider when there is no driver, when the server does not answer or has no such database;
  /// kLoginRefused when it refuses user and password.
  void Open(std::string_view connection_string) override;
  void Close() override;
  bool IsOpen() const override { return session_ != nullptr; }

  /// The whole text runs even if a statement of it fails; then the failure of the first such statement is thrown. When
  /// the server rolled the client's transaction back with it, all that is sent until the client ends the transaction is
  /// refused: what stood behind the rollback would otherwise be kept, and half a document stored.
  Recordset Execute(std::string_view sql) override;

  void BeginTrans() override;
  /// A commit whose answer is lost with the connection says that nobody knows whether it was carried out.
  void CommitTrans() override;
  /// One that fails closes the connection, with which the server undoes the transaction.
  void RollbackTrans() override;

 private:
  struct Session;

  Session& RequireOpen() const;
  void RequireAlive() const;
  /// Runs a text whatever became of the transaction.
  Recordset Run(std::string_view sql);
  bool IsInTransaction();
  /// Takes note when the server has ended the client's transaction by itself.
  void CheckTransaction();

  Patience patience_;
  std::unique_ptr<Session> session_;
  int transactions_ = 0;  ///< begun by the client and not ended yet, one within the other
  bool doomed_ = false;   ///< the server has rolled them back
};

}  // namespace luming
