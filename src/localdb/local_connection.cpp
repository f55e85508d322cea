#include "localdb/local_connection.h"

#include "localdb/errors.h"
#include "localdb/interpreter.h"
#include "localdb/parser/parser.h"
#include "localdb/store_file.h"
#include "platform/connection_string.h"
#include "platform/recordset_chain.h"
#include "util/text.h"

namespace luming {
namespace {

using localdb::SqlError;

bool IsStoreName(std::string_view name) {
  bool forbidden =
      name.find_first_of("/\\:*?\"<>|") != std::string_view::npos || name.find('\0') != std::string_view::npos;
  return !name.empty() && name.front() != '.' && !forbidden;
}

}  // namespace

std::filesystem::path StorePath(const std::filesystem::path& directory, const std::string& name) {
  if (!IsStoreName(name)) throw SqlError(localdb::native::kNoStore, name);
  std::u8string file(name.begin(), name.end());
  return directory / (file + u8".db");
}

void CreateStore(const std::filesystem::path& directory, const std::string& name) {
  localdb::CreateStoreFile(StorePath(directory, name));
}

LocalConnection::LocalConnection(std::filesystem::path directory, const Clock& clock,
                                 std::chrono::milliseconds busy_timeout)
    : directory_(std::move(directory)),
      clock_(clock),
      wait_(std::make_unique<localdb::LockWait>(localdb::LockWait{busy_timeout})),
      lexed_(std::make_unique<localdb::LexedText>()) {}

LocalConnection::~LocalConnection() = default;

void LocalConnection::Open(std::string_view connection_string) {
  Close();
  std::string name = ConnectionString(connection_string).Database();
  std::filesystem::path path = StorePath(directory_, name);
  session_ = std::make_unique<localdb::Session>(localdb::OpenStoreFile(path, name, *wait_), clock_, name);
}

void LocalConnection::WaitWhile(std::function<bool()> goes_on) {
  wait_->goes_on = std::move(goes_on);
}

// The engine rolls back what is open when its file is closed.
void LocalConnection::Close() {
  session_.reset();
}

localdb::Session& LocalConnection::RequireOpen() const {
  if (!session_) throw StandardFailure(failure::kClosedObject);
  return *session_;
}

Recordset LocalConnection::Run(std::string_view sql, localdb::ResultListener* listener) {
  localdb::Session& session = RequireOpen();
  session.transaction.RequireAlive();
  if (session.rolled_back) session.RefreshCatalogue();
  lexed_->Skim(sql);
  localdb::Interpreter interpreter(session, listener);
  localdb::Bindings bindings{*lexed_, 0, session.frame};
  localdb::Plan* plan = session.plans.Find(lexed_->key(), bindings);
  if (plan) return Chained(interpreter.RunPlan(*plan, bindings));
  lexed_->Lex(sql);
  auto statements = localdb::Parser(*lexed_).ParseBatch();
  return Chained(interpreter.RunBatch(statements, *lexed_));
}

Recordset LocalConnection::Execute(std::string_view sql) {
  if (IsValidUtf8(sql)) return Run(sql, nullptr);
  std::string repaired = ToValidUtf8(sql);
  return Run(repaired, nullptr);
}

void LocalConnection::Execute(std::string_view sql, localdb::ResultListener& listener) {
  std::string repaired = ToValidUtf8(sql);
  Run(repaired, &listener);
}

bool LocalConnection::InTransaction() const {
  return RequireOpen().transaction.IsOpen();
}

void LocalConnection::BeginTrans() {
  RequireOpen().transaction.BeginByClient();
}

void LocalConnection::CommitTrans() {
  RequireOpen().transaction.CommitByClient();
}

void LocalConnection::RollbackTrans() {
  RequireOpen().transaction.RollbackByClient();
}

/// Without full synchronisation the log reaches the disk only now and then. A commit with it takes along all that
/// stands in the log before it, so one that changes nothing makes up for the rest.
void LocalConnection::SetHurry(bool hurry) {
  if (!session_ || session_->transaction.IsOpen()) return;
  sqlite3* const store = session_->store.get();
  localdb::RunPlain(store, hurry ? "PRAGMA synchronous = NORMAL" : "PRAGMA synchronous = FULL");
  if (hurry) return;
  localdb::RunPlain(store, "UPDATE \"luming$state\" SET catalogue_version = catalogue_version");
  localdb::RunPlain(store, "PRAGMA wal_checkpoint(PASSIVE)");
}

}  // namespace luming
