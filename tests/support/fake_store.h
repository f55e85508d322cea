#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/database.h"

namespace luming {

/// What all connections of a test stand on: prepared answers by the statement's exact text, and a record of what was
/// sent. A statement without a prepared answer runs and gives no rows at all.
class FakeStore {
 public:
  using Row = std::vector<Value>;

  void Answer(const std::string& sql, std::vector<std::string> columns, std::vector<Row> rows);
  /// The next run of the statement fails.
  void Fail(const std::string& sql, Failure failure);
  /// The next attempt to open fails.
  void FailOpen(Failure failure) { open_failures_.push_back(std::move(failure)); }

  std::unique_ptr<Connection> Connect();
  int Connections() const { return connections_; }

  /// Statements and connection steps since the last call, "open <connection string>" and "begin", "commit", "rollback",
  /// "close" among them.
  std::vector<std::string> TakeSent();

 private:
  friend class FakeConnection;
  struct Answered {
    std::vector<std::string> columns;
    std::vector<Row> rows;
  };

  std::map<std::string, Answered> answers_;
  std::map<std::string, std::deque<Failure>> failures_;
  std::deque<Failure> open_failures_;
  std::vector<std::string> sent_;
  int connections_ = 0;
};

/// The provider's answer to a server that is gone.
Failure LostServer();

inline Value TextValue(std::string text) {
  return Value(std::move(text));
}
inline Value NumberValue(std::int64_t number) {
  return Value(number);
}

}  // namespace luming
