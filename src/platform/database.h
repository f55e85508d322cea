#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/recordset.h"
#include "util/failure.h"

namespace luming {

class Statement;

/// One connection to a store. Not thread-safe; used by the user-interface thread alone. All operations throw Failure
/// with the numbers an ADO client shows.
class Connection {
 public:
  virtual ~Connection() = default;

  /// @param connection_string "Provider=sqloledb;Data Source=…;Initial Catalog=…;User ID=…;Password=…;"
  virtual void Open(std::string_view connection_string) = 0;
  virtual void Close() = 0;  ///< an open transaction is rolled back; closing twice is nothing
  virtual bool IsOpen() const = 0;

  /// Runs the T-SQL text as it stands and returns its first result that has columns; a closed recordset when none has.
  virtual Recordset Execute(std::string_view sql) = 0;
  /// The same for a text that was put together, unless a value in it must not be sent: that one is refused with the
  /// number that the server gives for a broken statement.
  Recordset Execute(const Statement& statement);

  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void RollbackTrans() = 0;

  /// While it is on, a statement outside a transaction is committed without waiting for the disk: it counts at once and
  /// outlives the program, but a loss of power may undo the last ones. When it is turned off all of them are safe. For
  /// long work that can be done again. A store may take no notice.
  virtual void SetHurry(bool) {}

  /// Throws `reason` where a statement would be sent. A connection that tells its statements tells this one, too.
  [[noreturn]] virtual void Refuse(std::string_view sql, const Failure& reason);
};

/// A connection is in a hurry while this lives. A failure to take its time again is met by the next statement.
class Hurry {
 public:
  explicit Hurry(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {
    if (connection_) connection_->SetHurry(true);
  }
  ~Hurry() {
    try {
      if (connection_) connection_->SetHurry(false);
    } catch (const std::exception&) {
    }
  }
  Hurry(const Hurry&) = delete;
  Hurry& operator=(const Hurry&) = delete;

 private:
  std::shared_ptr<Connection> connection_;
};

/// One statement as it was sent, for the trace.
struct TracedStatement {
  std::string sql;
  int rows;  ///< of the first result; -1 when it had none or failed
  std::chrono::microseconds took;
  std::string failure;  ///< description; empty when it ran
};

using StatementTrace = std::function<void(const TracedStatement&)>;

}  // namespace luming
