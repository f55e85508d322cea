#pragma once

#include "localdb/frame.h"
#include "localdb/sqlite.h"

namespace luming::localdb {

/// The one transaction of a connection, with the counting that BEGIN TRAN and COMMIT nest by. When an error has rolled
/// back a transaction that the client began, nothing more runs until the client ends it: statements behind the rollback
/// would otherwise be kept one by one, and half a document stored.
class Transaction {
 public:
  Transaction(sqlite3* store, Frame& session);

  void BeginByClient();
  void CommitByClient();
  void RollbackByClient();
  void Begin();
  void Commit();
  void Rollback();

  bool IsOpen() const { return count_ > 0; }
  /// Throws SqlError 3998 inside a client's transaction that was rolled back.
  void RequireAlive() const;
  /// Takes note when the engine itself has ended the transaction, as it does when the disk is full.
  void CheckEngine();

 private:
  void SetCount(int count);
  void End(const char* statement);

  sqlite3* store_;
  Frame& session_;
  int count_ = 0;
  bool of_client_ = false;
  bool doomed_ = false;
};

}  // namespace luming::localdb
