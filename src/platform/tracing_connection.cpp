#include "platform/tracing_connection.h"

namespace luming {

namespace {
constexpr int kNoRows = -1;
}

TracingConnection::TracingConnection(std::unique_ptr<Connection> inner, StatementTrace trace)
    : inner_(std::move(inner)), trace_(std::move(trace)) {}

/// @param work gives the number of rows
template <class Work>
void TracingConnection::Traced(std::string_view sql, Work&& work) {
  const auto start = std::chrono::steady_clock::now();
  TracedStatement statement{std::string(sql), kNoRows, {}, {}};
  const auto tell = [&] {
    statement.took = std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    trace_(statement);
  };
  try {
    statement.rows = work();
  } catch (const Failure& failure) {
    statement.failure = failure.description();
    tell();
    throw;
  }
  tell();
}

Recordset TracingConnection::Execute(std::string_view sql) {
  Recordset rs;
  Traced(sql, [&] {
    rs = inner_->Execute(sql);
    return rs.IsOpen() ? rs.RecordCount() : kNoRows;
  });
  return rs;
}

void TracingConnection::Refuse(std::string_view sql, const Failure& reason) {
  Traced(sql, [&]() -> int { throw reason; });
  throw reason;
}

void TracingConnection::BeginTrans() {
  Traced("BEGIN TRANSACTION", [&] { return inner_->BeginTrans(), kNoRows; });
}

void TracingConnection::CommitTrans() {
  Traced("COMMIT TRANSACTION", [&] { return inner_->CommitTrans(), kNoRows; });
}

void TracingConnection::RollbackTrans() {
  Traced("ROLLBACK TRANSACTION", [&] { return inner_->RollbackTrans(), kNoRows; });
}

}  // namespace luming
