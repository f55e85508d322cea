#include "platform/recordset.h"

#include <algorithm>

#include "platform/row_criteria.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {

Recordset::Recordset(std::vector<std::string> columns) : open_(true), columns_(std::move(columns)) {}

void Recordset::Close() {
  *this = Recordset();
}

void Recordset::DemandOpen() const {
  if (!open_) throw StandardFailure(failure::kClosedObject);
}

int Recordset::RecordCount() const {
  DemandOpen();
  return static_cast<int>(rows_ - hidden_count_);
}

bool Recordset::Eof() const {
  DemandOpen();
  return current_ >= rows_;
}

void Recordset::MoveFirst() {
  if (RecordCount() == 0) throw StandardFailure(failure::kNoCurrentRow);
  MoveTo(0);
}

void Recordset::MoveNext() {
  if (Eof()) throw StandardFailure(failure::kNoCurrentRow);
  MoveTo(current_ + 1);
}

void Recordset::MoveTo(std::size_t row) {
  while (IsHidden(row)) ++row;
  current_ = row;
}

void Recordset::Find(std::string_view text) {
  const RowCriteria criteria(text);
  const std::size_t column = ColumnIndex(criteria.Field());
  if (RecordCount() == 0) throw StandardFailure(failure::kNoCurrentRow);
  std::size_t row = 0;
  while (row < rows_ && (IsHidden(row) || !criteria.Holds(Cell(row, column)))) ++row;
  current_ = row;
}

void Recordset::Filter(std::string_view text) {
  DemandOpen();
  std::vector<bool> hidden;
  if (!text.empty()) {
    const RowCriteria criteria(text);
    const std::size_t column = ColumnIndex(criteria.Field());
    hidden.resize(rows_);
    for (std::size_t row = 0; row < rows_; ++row) hidden[row] = !criteria.Holds(Cell(row, column));
  }
  hidden_ = std::move(hidden);
  hidden_count_ = static_cast<std::size_t>(std::ranges::count(hidden_, true));
  MoveTo(0);
}

void Recordset::DemandCell(std::size_t column) const {
  DemandOpen();
  if (column >= columns_.size()) throw StandardFailure(failure::kNoSuchField);
  if (current_ >= rows_) throw StandardFailure(failure::kNoCurrentRow);
}

const Value& Recordset::Field(std::string_view name) const {
  return Field(ColumnIndex(name));
}

const Value& Recordset::Cell(std::size_t row, std::size_t column) const {
  return blocks_[row / kBlockRows][row % kBlockRows * columns_.size() + column];
}

const Value& Recordset::Field(std::size_t index) const {
  DemandCell(index);
  return Cell(current_, index);
}

Value& Recordset::Field(std::size_t index) {
  DemandCell(index);
  return blocks_[current_ / kBlockRows][current_ % kBlockRows * columns_.size() + index];
}

std::size_t Recordset::ColumnIndex(std::string_view name) const {
  DemandOpen();
  const auto found =
      std::ranges::find_if(columns_, [name](const std::string& column) { return EqualsIgnoreCase(column, name); });
  if (found == columns_.end()) throw StandardFailure(failure::kNoSuchField);
  return static_cast<std::size_t>(found - columns_.begin());
}

Recordset Recordset::NextRecordset() {
  const std::unique_ptr<Recordset> next = std::move(next_);
  return next ? std::move(*next) : Recordset();
}

Value* Recordset::AppendRow() {
  DemandOpen();
  if (rows_ % kBlockRows == 0) {
    blocks_.emplace_back();
    // The first block grows by need, since most statements give a handful of rows.
    if (rows_ > 0) blocks_.back().reserve(kBlockRows * columns_.size());
  }
  ++rows_;
  std::vector<Value>& block = blocks_.back();
  block.resize(block.size() + columns_.size());
  return block.data() + (block.size() - columns_.size());
}

void Recordset::AppendRow(std::vector<Value> row) {
  if (row.size() != columns_.size()) throw StandardFailure(failure::kInvalidCall);
  std::ranges::move(row, AppendRow());
}

void Recordset::SetNext(std::unique_ptr<Recordset> next) {
  next_ = std::move(next);
}

}  // namespace luming
