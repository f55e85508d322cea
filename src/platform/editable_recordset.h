#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "platform/statement.h"

namespace luming {

/// The table whose rows are edited, and its identity column, which tells them apart.
struct EditableTable {
  std::string name;
  std::string key;
};

/// The rows of one table, read at once, with a current row that can be changed, added to and deleted. What is written
/// goes out as one INSERT, UPDATE or DELETE statement at each Update or Delete, so that any connection does it. Texts
/// are escaped. All operations throw Failure; after one, rows and current row are as they were.
class EditableRecordset {
 public:
  EditableRecordset() = default;  ///< closed: whatever asks it for rows is failure 3704
  /// @param statement reads rows of `table`, the key column among the fields; positioned on the first row
  EditableRecordset(std::shared_ptr<Connection> connection, const Statement& statement, EditableTable table);

  bool IsOpen() const { return connection_ != nullptr; }
  int RecordCount() const;
  /// The current row from 1; 0 when there is none.
  int AbsolutePosition() const { return position_; }
  void MoveTo(int position);  ///< failure 3021 for a row that is not there

  /// Of the current row. Failure 3265 without such a field, 3021 without a current row.
  const Value& Field(std::string_view name) const;

  /// What is set from here on belongs to a new row, until Update or CancelUpdate.
  void AddNew();
  /// Takes effect at Update.
  void SetField(std::string_view name, Value value);
  /// Writes the fields that were set. A new row becomes the last and current one. A row that was changed or deleted
  /// meanwhile by someone else is failure kRowChanged.
  void Update();
  void CancelUpdate();
  /// The row behind it becomes the current one, else the last.
  void Delete();

  static constexpr long kRowChanged = -2147217864;

 private:
  using Row = std::vector<Value>;
  struct Change {
    std::size_t column;
    Value value;
  };

  void DemandOpen() const;
  const Row& CurrentRow() const;
  std::size_t ColumnIndex(std::string_view name) const;
  void Insert();
  void Rewrite();
  std::string KeyCondition(const Row& row) const;
  /// Runs a change of one row.
  void RunOnRow(const std::string& sql);

  std::shared_ptr<Connection> connection_;
  EditableTable table_;
  std::vector<std::string> columns_;
  std::vector<Row> rows_;
  int position_ = 0;
  bool adding_ = false;
  std::vector<Change> changes_;
};

/// The value as T-SQL text.
std::string SqlLiteral(const Value& value);

}  // namespace luming
