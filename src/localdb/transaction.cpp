#include "localdb/transaction.h"

#include "localdb/errors.h"
#include "localdb/executor.h"

namespace luming::localdb {

Transaction::Transaction(sqlite3* store, Frame& session) : store_(store), session_(session) {
  session_.Declare("@@TRANCOUNT", SqlType::Int());
  SetCount(0);
}

void Transaction::SetCount(int count) {
  count_ = count;
  session_.Find("@@TRANCOUNT")->value = std::int64_t{count};
}

void Transaction::RequireAlive() const {
  if (doomed_) throw SqlError(native::kDoomed);
}

void Transaction::Begin() {
  // The lock is taken at once, so that two programs wait for each other here and not halfway through.
  if (count_ == 0) RunPlain(store_, "BEGIN IMMEDIATE");
  SetCount(count_ + 1);
}

void Transaction::End(const char* statement) {
  if (sqlite3_get_autocommit(store_) == 0) RunPlain(store_, statement);
}

void Transaction::Commit() {
  if (count_ == 0) throw SqlError(native::kCommitWithout);
  if (count_ == 1) End("COMMIT");
  SetCount(count_ - 1);
}

void Transaction::Rollback() {
  if (count_ == 0) throw SqlError(native::kRollbackWithout);
  End("ROLLBACK");
  doomed_ = of_client_;
  SetCount(0);
}

void Transaction::BeginByClient() {
  RequireAlive();
  Begin();
  of_client_ = true;
}

void Transaction::CommitByClient() {
  bool doomed = doomed_;
  doomed_ = false;
  of_client_ = of_client_ && !doomed;
  if (doomed) throw SqlError(native::kDoomed);
  Commit();
  if (count_ == 0) of_client_ = false;
}

void Transaction::RollbackByClient() {
  if (count_ > 0) Rollback();
  of_client_ = doomed_ = false;
}

void Transaction::CheckEngine() {
  if (count_ == 0 || sqlite3_get_autocommit(store_) == 0) return;
  doomed_ = of_client_;
  SetCount(0);
}

}  // namespace luming::localdb
