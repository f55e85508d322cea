#include "localdb/local_connection.h"

#include "localdb/errors.h"
#include "localdb/interpreter.h"
#include "localdb/parser/parser.h"
#include "localdb/store_file.h"
#include "util/text.h"

namespace luming {
namespace {

using localdb::SqlError;

std::string ConnectionPart(std::string_view connection_string, std::string_view key) {
  for (const std::string& part : Split(connection_string, ";")) {
    std::size_t equals = part.find('=');
    if (equals == std::string::npos) continue;
    if (EqualsIgnoreCase(Trim(part.substr(0, equals)), key)) return Trim(part.substr(equals + 1));
  }
  return "";
}

bool IsStoreName(std::string_view name) {
  bool forbidden =
      name.find_first_of("/\\:*?\"<>|") != std::string_view::npos || name.find('\0') != std::string_view::npos;
  return !name.empty() && name.front() != '.' && !forbidden;
}

bool IsSeparator(std::string_view line) {
  while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == ';')) line.remove_suffix(1);
  return EqualsIgnoreCase(Trim(line), "GO");
}

Recordset Chain(std::vector<Recordset> results) {
  std::unique_ptr<Recordset> next;
  for (auto result = results.rbegin(); result != results.rend(); ++result) {
    auto current = std::make_unique<Recordset>(std::move(*result));
    if (next) current->SetNext(std::move(next));
    next = std::move(current);
  }
  return next ? std::move(*next) : Recordset();
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
      busy_timeout_(busy_timeout),
      lexed_(std::make_unique<localdb::LexedText>()) {}

LocalConnection::~LocalConnection() = default;

void LocalConnection::Open(std::string_view connection_string) {
  Close();
  std::string name = ConnectionPart(connection_string, "Initial Catalog");
  std::filesystem::path path = StorePath(directory_, name);
  session_ = std::make_unique<localdb::Session>(localdb::OpenStoreFile(path, name, busy_timeout_), clock_, name);
}

// The engine rolls back what is open when its file is closed.
void LocalConnection::Close() {
  session_.reset();
}

localdb::Session& LocalConnection::RequireOpen() const {
  if (!session_) throw StandardFailure(failure::kClosedObject);
  return *session_;
}

Recordset LocalConnection::Run(std::string_view sql) {
  localdb::Session& session = RequireOpen();
  session.transaction.RequireAlive();
  if (session.rolled_back) session.RefreshCatalogue();
  lexed_->Lex(sql);
  localdb::Interpreter interpreter(session);
  localdb::Bindings bindings{*lexed_, 0, session.frame};
  localdb::Plan* plan = session.plans.Find(lexed_->KeyOf(0, lexed_->tokens().size() - 1), bindings);
  if (plan) return Chain(interpreter.RunPlan(*plan, bindings));
  auto statements = localdb::Parser(*lexed_).ParseBatch();
  return Chain(interpreter.RunBatch(statements, *lexed_));
}

Recordset LocalConnection::Execute(std::string_view sql) {
  if (IsValidUtf8(sql)) return Run(sql);
  std::string repaired = ToValidUtf8(sql);
  return Run(repaired);
}

void LocalConnection::RunScript(std::string_view text) {
  bool own_transaction = !RequireOpen().transaction.IsOpen();
  if (own_transaction) BeginTrans();
  std::size_t line_number = 1;
  std::size_t batch_line = 1;
  std::string batch;
  auto run_batch = [&] {
    if (!Trim(batch).empty()) Execute(batch);
    batch.clear();
    batch_line = line_number + 1;
  };
  try {
    for (const std::string& line : Split(text, "\n")) {
      if (IsSeparator(line)) {
        run_batch();
      } else {
        batch += line + "\n";
      }
      ++line_number;
    }
    run_batch();
    if (own_transaction) CommitTrans();
  } catch (const Failure& error) {
    if (own_transaction) RollbackTrans();
    std::string place = "脚本第 " + std::to_string(batch_line) + " 行起的一批语句：";
    throw Failure(error.number(), place + error.description(), error.source());
  }
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

}  // namespace luming
