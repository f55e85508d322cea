#include "platform/editable_recordset.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "util/date_text.h"
#include "util/text.h"

namespace luming {

namespace {

std::string Literal(std::monostate) {
  return "Null";
}
std::string Literal(bool flag) {
  return flag ? "1" : "0";
}
std::string Literal(std::int64_t number) {
  return std::to_string(number);
}
/// The shortest text that reads as this very number.
std::string Literal(double number) {
  std::array<char, 32> text{};
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}
std::string Literal(const std::string& text) {
  return "'" + Replace(text, "'", "''") + "'";
}
std::string Literal(const DateTime& moment) {
  const int beyond = moment.Millisecond();
  const std::string fraction = beyond == 0 ? "" : "." + std::to_string(1000 + beyond).substr(1);
  return "'" + FormatDate(moment, "yyyy-mm-dd hh:nn:ss") + fraction + "'";
}

std::string Equals(const std::string& column, const Value& value) {
  return value.IsNull() ? column + " Is Null" : column + "=" + SqlLiteral(value);
}

}  // namespace

std::string SqlLiteral(const Value& value) {
  return std::visit([](const auto& data) { return Literal(data); }, value.data());
}

EditableRecordset::EditableRecordset(std::shared_ptr<Connection> connection, const Statement& statement,
                                     EditableTable table)
    : connection_(std::move(connection)), table_(std::move(table)) {
  if (!connection_) throw StandardFailure(failure::kBadConnection);
  Recordset read = connection_->Execute(statement);
  columns_ = read.ColumnNames();
  ColumnIndex(table_.key);
  rows_.reserve(static_cast<std::size_t>(read.RecordCount()));
  for (; !read.Eof(); read.MoveNext()) {
    Row& row = rows_.emplace_back();
    for (std::size_t column = 0; column < columns_.size(); ++column) row.push_back(std::move(read.Field(column)));
  }
  position_ = rows_.empty() ? 0 : 1;
}

void EditableRecordset::DemandOpen() const {
  if (!connection_) throw StandardFailure(failure::kClosedObject);
}

int EditableRecordset::RecordCount() const {
  DemandOpen();
  return static_cast<int>(rows_.size());
}

void EditableRecordset::MoveTo(int position) {
  if (position < 1 || position > RecordCount()) throw StandardFailure(failure::kNoCurrentRow);
  CancelUpdate();
  position_ = position;
}

const EditableRecordset::Row& EditableRecordset::CurrentRow() const {
  DemandOpen();
  if (position_ == 0) throw StandardFailure(failure::kNoCurrentRow);
  return rows_[static_cast<std::size_t>(position_) - 1];
}

std::size_t EditableRecordset::ColumnIndex(std::string_view name) const {
  const auto found = std::ranges::find_if(columns_, [&](const auto& column) { return EqualsIgnoreCase(column, name); });
  if (found == columns_.end()) throw StandardFailure(failure::kNoSuchField);
  return static_cast<std::size_t>(found - columns_.begin());
}

const Value& EditableRecordset::Field(std::string_view name) const {
  const Row& row = CurrentRow();
  return row[ColumnIndex(name)];
}

void EditableRecordset::AddNew() {
  DemandOpen();
  CancelUpdate();
  adding_ = true;
}

void EditableRecordset::CancelUpdate() {
  adding_ = false;
  changes_.clear();
}

void EditableRecordset::SetField(std::string_view name, Value value) {
  if (!adding_) CurrentRow();
  changes_.push_back({ColumnIndex(name), std::move(value)});
}

void EditableRecordset::Update() {
  DemandOpen();
  if (changes_.empty()) return CancelUpdate();
  adding_ ? Insert() : Rewrite();
  CancelUpdate();
}

void EditableRecordset::Insert() {
  std::vector<std::string> names;
  std::vector<std::string> values;
  Row row(columns_.size());
  for (const Change& change : changes_) {
    names.push_back(columns_[change.column]);
    values.push_back(SqlLiteral(change.value));
    row[change.column] = change.value;
  }
  const Recordset made = connection_->Execute("Insert Into " + table_.name + "(" + Join(names, ",") + ") Values(" +
                                              Join(values, ",") + ") Select @@IDENTITY");
  row[ColumnIndex(table_.key)] = made.Field(0);
  rows_.push_back(std::move(row));
  position_ = RecordCount();
}

void EditableRecordset::Rewrite() {
  const Row& row = CurrentRow();
  std::vector<std::string> assignments;
  std::string condition = KeyCondition(row);
  for (const Change& change : changes_) {
    const std::string& name = columns_[change.column];
    assignments.push_back(name + "=" + SqlLiteral(change.value));
    condition += " And " + Equals(name, row[change.column]);
  }
  RunOnRow("Update " + table_.name + " Set " + Join(assignments, ",") + condition);
  for (Change& change : changes_) {
    rows_[static_cast<std::size_t>(position_) - 1][change.column] = std::move(change.value);
  }
}

void EditableRecordset::Delete() {
  CancelUpdate();
  RunOnRow("Delete From " + table_.name + KeyCondition(CurrentRow()));
  rows_.erase(rows_.begin() + position_ - 1);
  position_ = std::min(position_, RecordCount());
}

std::string EditableRecordset::KeyCondition(const Row& row) const {
  return " Where " + Equals(table_.key, row[ColumnIndex(table_.key)]);
}

void EditableRecordset::RunOnRow(const std::string& sql) {
  const Recordset done = connection_->Execute(sql + " Select @@ROWCOUNT");
  if (done.Field(0).Number() == 0) throw Failure(kRowChanged, "该记录已被其他用户修改或删除，请重新查询后再操作。");
}

}  // namespace luming
