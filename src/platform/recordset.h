#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/value.h"

namespace luming {

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

  /// @name By criteria, see RowCriteria: failure 3001 for a text that cannot be read, 3265 without such a field;
  /// nothing has changed then.
  /// @{
  /// Makes the first row that meets them the current one, looking from the first row on; past the end when none does.
  /// Without rows this is failure 3021.
  void Find(std::string_view criteria);
  /// From now on there are only the rows that meet them, whoever counts, walks or looks; the first of them becomes the
  /// current one. It takes the place of the filter before; an empty text lifts that.
  void Filter(std::string_view criteria);
  /// @}

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
  static constexpr std::size_t kBlockRows = 64;

  void DemandOpen() const;
  void DemandCell(std::size_t column) const;
  const Value& Cell(std::size_t row, std::size_t column) const;
  bool IsHidden(std::size_t row) const { return row < hidden_.size() && hidden_[row]; }
  void MoveTo(std::size_t row);  ///< or to the next one that is not hidden

  bool open_ = false;
  std::vector<std::string> columns_;
  std::vector<std::vector<Value>> blocks_;  ///< cells row by row; a block holds kBlockRows rows, the last one fewer
  std::size_t rows_ = 0;
  std::size_t current_ = 0;
  std::vector<bool> hidden_;  ///< the rows that the filter holds back; empty without one
  std::size_t hidden_count_ = 0;
  std::unique_ptr<Recordset> next_;
};

}  // namespace luming
