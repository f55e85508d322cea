#include "platform/database.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "platform/statement.h"
#include "util/date_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr double kMillisecondsOfDay = 86'400'000;
const DateTime kZeroDate;

double SerialOf(const DateTime& moment) {
  return static_cast<double>((moment.Point() - kZeroDate.Point()).count()) / kMillisecondsOfDay;
}

DateTime DateOfSerial(double serial) {
  const DateTime day = kZeroDate.AddDays(CLng(std::floor(serial)));
  const auto rest = std::llround((serial - std::floor(serial)) * kMillisecondsOfDay);
  return DateTime{day.Point() + std::chrono::milliseconds{rest}};
}

std::string TextOf(std::monostate) {
  throw StandardFailure(failure::kInvalidNull);
}
std::string TextOf(bool flag) {
  return flag ? "True" : "False";
}
std::string TextOf(std::int64_t number) {
  return std::to_string(number);
}
std::string TextOf(double number) {
  return NumberText(number);
}
std::string TextOf(const std::string& text) {
  return text;
}
std::string TextOf(const DateTime& moment) {
  return DateText(moment);
}

double NumberOf(std::monostate) {
  throw StandardFailure(failure::kInvalidNull);
}
double NumberOf(bool flag) {
  return flag ? -1 : 0;
}
double NumberOf(std::int64_t number) {
  return static_cast<double>(number);
}
double NumberOf(double number) {
  return number;
}
double NumberOf(const std::string& text) {
  return CDbl(text);
}
double NumberOf(const DateTime& moment) {
  return SerialOf(moment);
}

bool IsDatePicture(std::string_view picture) {
  return picture.find_first_of("ymdhnsYMDHNS") != std::string_view::npos;
}

}  // namespace

std::string Value::Text() const {
  return std::visit([](const auto& value) { return TextOf(value); }, data_);
}

std::string Value::TextOrEmpty() const {
  return IsNull() ? std::string() : Text();
}

double Value::Number() const {
  return std::visit([](const auto& value) { return NumberOf(value); }, data_);
}

std::int32_t Value::Long() const {
  return CLng(Number());
}

bool Value::Bool() const {
  if (const auto* text = std::get_if<std::string>(&data_)) {
    if (EqualsIgnoreCase(*text, "True")) return true;
    if (EqualsIgnoreCase(*text, "False")) return false;
  }
  return Number() != 0;
}

DateTime Value::Date() const {
  if (const auto* moment = std::get_if<DateTime>(&data_)) return *moment;
  if (const auto* text = std::get_if<std::string>(&data_)) return CDate(*text, kZeroDate);
  return DateOfSerial(Number());
}

std::string Value::Format(std::string_view picture) const {
  if (IsNull()) return {};
  if (const auto* stored = std::get_if<DateTime>(&data_)) return FormatDate(*stored, picture);
  const auto* text = std::get_if<std::string>(&data_);
  if (text == nullptr) return FormatNumber(Number(), picture);
  if (!IsDatePicture(picture)) return FormatNumberText(*text, picture);
  const auto moment = ParseDate(*text, kZeroDate);
  return moment ? FormatDate(*moment, picture) : *text;
}

std::string Value::TakeText() {
  if (auto* text = std::get_if<std::string>(&data_)) return std::move(*text);
  return TextOrEmpty();
}

Recordset::Recordset(std::vector<std::string> columns) : open_(true), columns_(std::move(columns)) {}

void Recordset::Close() {
  *this = Recordset();
}

void Recordset::DemandOpen() const {
  if (!open_) throw StandardFailure(failure::kClosedObject);
}

int Recordset::RecordCount() const {
  DemandOpen();
  return static_cast<int>(rows_);
}

bool Recordset::Eof() const {
  DemandOpen();
  return current_ >= rows_;
}

void Recordset::MoveFirst() {
  DemandOpen();
  if (rows_ == 0) throw StandardFailure(failure::kNoCurrentRow);
  current_ = 0;
}

void Recordset::MoveNext() {
  if (Eof()) throw StandardFailure(failure::kNoCurrentRow);
  ++current_;
}

void Recordset::DemandCell(std::size_t column) const {
  DemandOpen();
  if (column >= columns_.size()) throw StandardFailure(failure::kNoSuchField);
  if (current_ >= rows_) throw StandardFailure(failure::kNoCurrentRow);
}

const Value& Recordset::Field(std::string_view name) const {
  return Field(ColumnIndex(name));
}

const Value& Recordset::Field(std::size_t index) const {
  DemandCell(index);
  return blocks_[current_ / kBlockRows][current_ % kBlockRows * columns_.size() + index];
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

Recordset Connection::Execute(const Statement& statement) {
  if (!statement.flaw().empty()) {
    Refuse(statement.text(), {failure::kSyntax, statement.flaw(), StandardFailure(failure::kSyntax).source()});
  }
  return Execute(std::string_view(statement.text()));
}

void Connection::Refuse(std::string_view, const Failure& reason) {
  throw reason;
}

}  // namespace luming
