#include "localdb/executor.h"

#include <optional>

#include "localdb/engine_error.h"

namespace luming::localdb {
namespace {

/// Leaves a statement ready for its next run.
class ResetOnExit {
 public:
  explicit ResetOnExit(sqlite3_stmt* statement) : statement_(statement) {}
  ~ResetOnExit() { sqlite3_reset(statement_); }
  ResetOnExit(const ResetOnExit&) = delete;
  ResetOnExit& operator=(const ResetOnExit&) = delete;

 private:
  sqlite3_stmt* statement_;
};

StatementHandle PrepareText(sqlite3* store, std::string_view sql, unsigned flags) {
  sqlite3_stmt* raw = nullptr;
  int result = sqlite3_prepare_v3(store, sql.data(), static_cast<int>(sql.size()), flags, &raw, nullptr);
  StatementHandle statement(raw);
  if (result != SQLITE_OK) throw EngineError(store);
  return statement;
}

std::string_view TextOf(sqlite3_value* field) {
  auto* text = reinterpret_cast<const char*>(sqlite3_value_text(field));
  return {text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(field))};
}

Datum ColumnDatum(sqlite3_stmt* statement, int column) {
  sqlite3_value* field = sqlite3_column_value(statement, column);
  switch (sqlite3_value_type(field)) {
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_value_int64(field)};
    case SQLITE_FLOAT:
      return sqlite3_value_double(field);
    case SQLITE_NULL:
      return {};
    default:
      return std::string(TextOf(field));
  }
}

/// Makes the cell, which is NULL, what the client sees of a field. Lists have many cells: each is made in its place.
void Fetch(sqlite3_value* field, const SqlType& type, Value& cell) {
  const int stored = sqlite3_value_type(field);
  if (stored == SQLITE_NULL) return;
  if (stored == SQLITE_TEXT) {
    if (type.IsDate()) {
      cell.Become<DateTime>(FromCanonicalDate(TextOf(field)));
    } else {
      cell.Become<std::string>(TextOf(field));
    }
  } else if (type.kind == TypeKind::kBit) {
    cell.Become<bool>(sqlite3_value_double(field) != 0);
  } else if (stored == SQLITE_INTEGER && !type.IsDecimal() && type.kind != TypeKind::kFloat) {
    cell.Become<std::int64_t>(sqlite3_value_int64(field));
  } else {
    cell.Become<double>(sqlite3_value_double(field));
  }
}

}  // namespace

void RunPlain(sqlite3* store, const std::string& sql) {
  RunBound(store, sql, {});
}

void RunBound(sqlite3* store, const std::string& sql, const std::vector<std::string_view>& values) {
  StatementHandle statement = PrepareText(store, sql, 0);
  int place = 0;
  for (std::string_view value : values) {
    sqlite3_bind_text(statement.get(), ++place, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
  }
  int result;
  do {
    result = StepEngine(statement.get());
  } while (result == SQLITE_ROW);
  if (result != SQLITE_DONE) throw EngineError(store);
}

std::int64_t ReadNumber(sqlite3* store, const std::string& sql) {
  StatementHandle statement = PrepareText(store, sql, 0);
  int result = StepEngine(statement.get());
  if (result == SQLITE_ROW) return sqlite3_column_int64(statement.get(), 0);
  if (result != SQLITE_DONE) throw EngineError(store);
  return 0;
}

void Executor::Prepare(Plan& plan) {
  if (!plan.statement) plan.statement = PrepareText(store_, plan.sql, SQLITE_PREPARE_PERSISTENT);
}

Datum Executor::ValueOf(const PlanParameter& parameter, const Bindings& bindings, const Clock& clock) {
  using Source = PlanParameter::Source;
  Datum value;
  SqlType type = SqlType::DateTime();
  if (parameter.source == Source::kNow) {
    value = CanonicalDate(clock.Now());
  } else if (parameter.source == Source::kVariable) {
    const Variable* variable = bindings.frame.Find(parameter.variable);
    if (!variable) throw SqlError(native::kMustDeclare, parameter.variable);
    value = variable->value;
    type = variable->type;
  } else {
    const Literal& literal = bindings.lexed.literals()[bindings.first_literal + parameter.literal];
    if (literal.is_string) {
      value = literal.Unquoted();
      type = SqlType::Text();
    } else {
      value = NumberLiteral(literal.text);
      // A number becomes another number by its value alone.
      type = parameter.converts && parameter.type.IsNumber() ? parameter.type : NumberLiteralType(literal.text);
    }
  }
  if (parameter.negative) {
    if (auto* whole = std::get_if<std::int64_t>(&value)) value = -*whole;
    if (auto* number = std::get_if<double>(&value)) value = -*number;
  }
  return parameter.converts ? Convert(value, type, parameter.type, parameter.overlong) : value;
}

void Executor::BindOne(sqlite3_stmt* statement, int place, const PlanParameter& parameter, const Bindings& bindings) {
  if (parameter.source == PlanParameter::Source::kLiteral) {
    // A text that goes in as it stands is bound without a copy: the statement runs while its text lives.
    const Literal& literal = bindings.lexed.literals()[bindings.first_literal + parameter.literal];
    bool plain = literal.is_string && !literal.has_quotes &&
                 (!parameter.converts || (parameter.type.IsText() && !parameter.type.IsFixed()));
    if (plain && !(parameter.converts && CutPosition(literal.text, parameter.type))) {
      sqlite3_bind_text64(statement, place, literal.text.data(), literal.text.size(), SQLITE_STATIC, SQLITE_UTF8);
      return;
    }
  }
  Datum value = ValueOf(parameter, bindings, *functions_.clock);
  if (auto* whole = std::get_if<std::int64_t>(&value)) {
    sqlite3_bind_int64(statement, place, *whole);
  } else if (auto* number = std::get_if<double>(&value)) {
    sqlite3_bind_double(statement, place, *number);
  } else if (auto* text = std::get_if<std::string>(&value)) {
    sqlite3_bind_text64(statement, place, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  } else {
    sqlite3_bind_null(statement, place);
  }
}

void Executor::Bind(Plan& plan, const Bindings& bindings) {
  int place = 0;
  for (const PlanParameter& parameter : plan.parameters) BindOne(plan.statement.get(), ++place, parameter, bindings);
}

bool Executor::Step(sqlite3_stmt* statement) {
  int result = StepEngine(statement);
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) return false;
  if (functions_.error) {
    SqlError error = *functions_.error;
    functions_.error.reset();
    throw error;
  }
  throw EngineError(store_, functions_.catalogue);
}

Recordset Executor::Query(Plan& plan, const Bindings& bindings) {
  Prepare(plan);
  sqlite3_stmt* statement = plan.statement.get();
  ResetOnExit reset(statement);
  Bind(plan, bindings);
  std::vector<std::string> names;
  for (const Column& column : plan.outputs) names.push_back(column.name);
  Recordset rows(std::move(names));
  while (Step(statement)) {
    Value* cells = rows.AppendRow();
    for (std::size_t i = 0; i < plan.outputs.size(); ++i) {
      Fetch(sqlite3_column_value(statement, static_cast<int>(i)), plan.outputs[i].type, cells[i]);
    }
  }
  return rows;
}

std::vector<Datum> Executor::LastRow(Plan& plan, const Bindings& bindings, std::int64_t& count) {
  Prepare(plan);
  sqlite3_stmt* statement = plan.statement.get();
  ResetOnExit reset(statement);
  Bind(plan, bindings);
  std::vector<Datum> row;
  for (count = 0; Step(statement); ++count) {
    row.clear();
    for (std::size_t i = 0; i < plan.outputs.size(); ++i) row.push_back(ColumnDatum(statement, static_cast<int>(i)));
  }
  return row;
}

std::int64_t Executor::Change(Plan& plan, const Bindings& bindings) {
  Prepare(plan);
  sqlite3_stmt* statement = plan.statement.get();
  ResetOnExit reset(statement);
  Bind(plan, bindings);
  while (Step(statement)) continue;
  return sqlite3_changes64(store_);
}

}  // namespace luming::localdb
