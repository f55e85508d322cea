#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "util/date_time.h"
#include "util/failure.h"

namespace luming {

/// One field of a row as an ADO client sees it: NULL, flag (bit), whole number (int, smallint, bigint), number (float,
/// decimal, money), text, date and time.
class Value {
 public:
  Value() = default;  ///< NULL
  explicit Value(bool flag) : data_(flag) {}
  explicit Value(int number) : data_(std::int64_t{number}) {}
  explicit Value(std::int64_t number) : data_(number) {}
  explicit Value(double number) : data_(number) {}
  explicit Value(std::string text) : data_(std::move(text)) {}
  explicit Value(const char* text) : data_(std::string(text)) {}
  explicit Value(DateTime moment) : data_(moment) {}

  bool IsNull() const { return std::holds_alternative<std::monostate>(data_); }

  /// The default text: numbers with 15 digits, flags "True" and "False", dates "2026/3/1 8:05:00". NULL is failure 94.
  std::string Text() const;
  /// The same with an empty text for NULL: what a grid cell shows.
  std::string TextOrEmpty() const;
  /// As a number; a text is converted, true is -1, a date is its days since 1899-12-30. NULL is failure 94, a text that
  /// is no number 13.
  double Number() const;
  double NumberOr(double fallback) const { return IsNull() ? fallback : Number(); }
  std::int32_t Long() const;  ///< as CLng of Number()
  bool Bool() const;      ///< any number but 0 is true; NULL is failure 94, a text that is neither number nor flag 13
  DateTime Date() const;  ///< a text needs its year; NULL is failure 94, what is no date 13
  /// As FormatNumber, FormatNumberText or FormatDate of the value by its kind, a text that reads as a date under a
  /// picture of date codes being a date; an empty text for NULL.
  std::string Format(std::string_view picture) const;

  /// The value itself, for adapters and for code that is fast because it looks.
  using Data = std::variant<std::monostate, bool, std::int64_t, double, std::string, DateTime>;
  const Data& data() const { return data_; }
  /// Moves a text out without a copy; any other value gives TextOrEmpty().
  std::string TakeText();

 private:
  Data data_;
};

/// The rows of a statement, all fetched (client cursor): RecordCount is exact from the start. Positioned on the first
/// row when it is filled. A recordset that was never filled, or whose statement gave no rows at all (an update), is
/// closed: whatever asks it for rows gets failure 3704.
class Recordset {
 public:
  Recordset() = default;
  explicit Recordset(std::vector<std::string> columns);  ///< open, without rows

  bool IsOpen() const { return open_; }
  void Close();

  int RecordCount() const;
  bool Eof() const;
  void MoveFirst();  ///< without rows this is failure 3021
  void MoveNext();   ///< past the end is failure 3021

  /// The current row's field. Names match without regard to case. Failure 3265 without such a field, 3021 without row.
  const Value& Field(std::string_view name) const;
  const Value& Field(std::size_t index) const;  ///< 0 is the first column
  Value& Field(std::size_t index);              ///< to move a text out

  std::size_t ColumnCount() const { return columns_.size(); }  ///< 0 when closed
  const std::vector<std::string>& ColumnNames() const { return columns_; }
  std::size_t ColumnIndex(std::string_view name) const;  ///< failure 3265 without such a field

  /// Rows of the further results of one text, in order; closed when there is none left.
  Recordset NextRecordset();

  // For the adapters that fill it.
  /// A new last row of NULLs: its first of ColumnCount() cells, to be filled in place. Valid until the next AppendRow.
  Value* AppendRow();
  void AppendRow(std::vector<Value> row);  ///< as many values as there are columns
  void SetNext(std::unique_ptr<Recordset> next);

 private:
  static constexpr std::size_t kBlockRows = 512;

  void DemandOpen() const;
  void DemandCell(std::size_t column) const;

  bool open_ = false;
  std::vector<std::string> columns_;
  std::vector<std::vector<Value>> blocks_;  ///< cells row by row; a block holds kBlockRows rows, the last one fewer
  std::size_t rows_ = 0;
  std::size_t current_ = 0;
  std::unique_ptr<Recordset> next_;
};

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
    } catch (const Failure&) {
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
