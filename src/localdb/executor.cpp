#include "localdb/executor.h"

#include <algorithm>
#include <optional>

#include "localdb/errors.h"
#include "util/text.h"

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

// Temporary tables bear the level of their maker behind their name: "#T@2.1f".
std::string_view LogicalName(std::string_view physical) {
  if (physical.starts_with("temp.")) physical.remove_prefix(5);
  return physical.starts_with('#') || physical.starts_with('@') ? physical.substr(0, physical.find('@', 1)) : physical;
}

// "UNIQUE constraint failed: T.A, T.B" names the columns; the catalogue knows whose key they are.
SqlError KeyError(std::string_view message, const Catalogue* catalogue) {
  std::size_t colon = message.find(": ");
  std::vector<std::string> columns;
  std::string table_name;
  if (colon != std::string_view::npos) {
    for (const std::string& name : Split(message.substr(colon + 2), ", ")) {
      std::size_t dot = name.rfind('.');
      table_name = name.substr(0, dot);
      columns.push_back(name.substr(dot + 1));
    }
  }
  const Table* table = catalogue ? catalogue->FindTable(table_name) : nullptr;
  if (!table) return SqlError(native::kDuplicateKey, LogicalName(table_name), Join(columns, ","));
  for (const Key& key : table->keys) {
    bool same = std::equal(key.columns.begin(), key.columns.end(), columns.begin(), columns.end(),
                           [](const std::string& a, const std::string& b) { return EqualsIgnoreCase(a, b); });
    if (same && key.unique) {
      return SqlError(key.constraint ? native::kDuplicateKey : native::kDuplicateIndexKey, table->name, key.name);
    }
  }
  return SqlError(native::kDuplicateKey, table->name, Join(columns, ","));
}

SqlError NullError(std::string_view message) {
  std::string_view name = message.substr(message.find(": ") + 2);
  std::size_t dot = name.rfind('.');
  return SqlError(native::kNull, name.substr(dot + 1), LogicalName(name.substr(0, dot)));
}

SqlError ConstraintError(sqlite3* store, const Catalogue* catalogue) {
  std::string_view message = sqlite3_errmsg(store);
  switch (sqlite3_extended_errcode(store)) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
      return KeyError(message, catalogue);
    case SQLITE_CONSTRAINT_NOTNULL:
      return NullError(message);
    case SQLITE_CONSTRAINT_FOREIGNKEY:
      return SqlError(native::kReference, "引用的记录不存在，或记录仍被引用");
    default:
      return SqlError(native::kReference, "不满足 CHECK 条件");
  }
}

}  // namespace

SqlError EngineError(sqlite3* store, const Catalogue* catalogue) {
  const char* file = sqlite3_db_filename(store, "main");
  switch (sqlite3_errcode(store) & 0xff) {
    case SQLITE_CONSTRAINT:
      return ConstraintError(store, catalogue);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return SqlError(native::kLockTimeout);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return SqlError(native::kDamaged, file ? file : "");
    case SQLITE_FULL:
    case SQLITE_IOERR:
      return SqlError(native::kFull);
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
      return SqlError(native::kReadOnly);
    case SQLITE_TOOBIG:
      return SqlError(native::kTooLong, "", "1000000000");
    default:
      break;
  }
  std::string_view message = sqlite3_errmsg(store);
  constexpr std::string_view kNoTable = "no such table: ";
  if (message.starts_with(kNoTable))
    return SqlError(native::kMissingObject, LogicalName(message.substr(kNoTable.size())));
  bool too_deep =
      message.find("too large") != std::string_view::npos || message.find("overflow") != std::string_view::npos;
  if (too_deep) return SqlError(native::kNestedTooDeep);
  return SqlError(native::kInternal, message);
}

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
    result = sqlite3_step(statement.get());
  } while (result == SQLITE_ROW);
  if (result != SQLITE_DONE) throw EngineError(store);
}

std::int64_t ReadNumber(sqlite3* store, const std::string& sql) {
  StatementHandle statement = PrepareText(store, sql, 0);
  int result = sqlite3_step(statement.get());
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
  int result = sqlite3_step(statement);
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
