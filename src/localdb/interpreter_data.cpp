#include <algorithm>
#include <utility>

#include "localdb/definition.h"
#include "localdb/errors.h"
#include "localdb/interpreter.h"
#include "localdb/translate/translator.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

// More literals than this are written into the engine's text instead of being bound.
constexpr std::size_t kMostBound = 5000;

bool DependsOnVariables(const Plan& plan) {
  auto of_variable = [](const PlanParameter& p) { return p.source == PlanParameter::Source::kVariable; };
  auto guards_variable = [](const PlanGuard& g) { return g.of_variable; };
  return std::any_of(plan.parameters.begin(), plan.parameters.end(), of_variable) ||
         std::any_of(plan.guards.begin(), plan.guards.end(), guards_variable) || !plan.variables.empty();
}

bool ReadsWhatItAssigns(const Plan& plan) {
  return std::any_of(plan.parameters.begin(), plan.parameters.end(), [&](const PlanParameter& parameter) {
    auto same = [&](const std::string& variable) { return EqualsIgnoreCase(variable, parameter.variable); };
    return std::any_of(plan.variables.begin(), plan.variables.end(), same);
  });
}

/// The stored form of a field and the type that it came in.
std::pair<Datum, SqlType> FieldDatum(const Value& field) {
  const Value::Data& data = field.data();
  if (auto* flag = std::get_if<bool>(&data)) return {std::int64_t{*flag}, SqlType::Bit()};
  if (auto* whole = std::get_if<std::int64_t>(&data)) return {*whole, SqlType::BigInt()};
  if (auto* number = std::get_if<double>(&data)) return {*number, SqlType::Float()};
  if (auto* text = std::get_if<std::string>(&data)) return {*text, SqlType::Text()};
  if (auto* moment = std::get_if<DateTime>(&data)) return {CanonicalDate(*moment), SqlType::DateTime()};
  return {Datum(), SqlType()};
}

}  // namespace

std::unique_ptr<Plan> Interpreter::Translate(const Statement& statement, const Bindings& bindings) {
  const LexedText& lexed = bindings.lexed;
  std::size_t literals = lexed.tokens()[statement.last_token].literal - bindings.first_literal;
  Translator translator({session_.catalogue, bindings.frame, lexed, bindings.first_literal, literals > kMostBound});
  const auto& node = statement.node;
  if (auto* select = std::get_if<SelectStatement>(&node)) return translator.Select(*select->query);
  if (auto* insert = std::get_if<InsertStatement>(&node)) return translator.Insert(*insert);
  if (auto* update = std::get_if<UpdateStatement>(&node)) return translator.Update(*update);
  return translator.Delete(std::get<DeleteStatement>(node));
}

Plan& Interpreter::FindPlan(const Statement& statement, Body& body) {
  const LexedText& lexed = body.lexed;
  Bindings bindings = BindingsOf(body, lexed.tokens()[statement.first_token].literal);
  std::string_view key = lexed.KeyOf(statement.first_token, statement.last_token);
  Plan* known = body.is_procedure ? session_.plans.Find(&statement, bindings) : session_.plans.Find(key, bindings);
  if (known) return *known;
  session_.RefreshCatalogue();
  std::unique_ptr<Plan> plan = Translate(statement, bindings);
  if (body.is_procedure) return *session_.plans.Insert(&statement, std::move(plan));
  bool inlined = plan->parameters.empty() && lexed.tokens()[statement.last_token].literal > bindings.first_literal;
  if (!DependsOnVariables(*plan) && !inlined) return *session_.plans.Insert(key, std::move(plan));
  return *transient_plans_.emplace_back(std::move(plan));
}

Plan& Interpreter::Ready(Plan& plan) {
  if (plan.uses_system_tables && !session_.system_tables_filled) {
    FillSystemTables(session_.store.get(), session_.catalogue);
    session_.system_tables_filled = true;
  }
  return plan;
}

void Interpreter::RunData(const Statement& statement, Body& body) {
  if (auto* select = std::get_if<SelectStatement>(&statement.node)) {
    if (!select->query->cores[0].into.empty()) return RunSelectInto(statement, *select, body);
  }
  if (auto* insert = std::get_if<InsertStatement>(&statement.node)) {
    if (insert->exec) return RunInsertExec(*insert, body);
  }
  Plan& plan = FindPlan(statement, body);
  Bindings bindings = BindingsOf(body, body.lexed.tokens()[statement.first_token].literal);
  if (!plan.is_query) return RunChange(plan, bindings);
  if (!plan.variables.empty()) return RunAssigning(plan, bindings, body);
  RunQuery(plan, bindings);
}

void Interpreter::TellChanged(std::int64_t count) {
  if (listener_ && !session_.no_count) listener_->Changed(count);
}

void Interpreter::RunQuery(Plan& plan, const Bindings& bindings) {
  Recordset rows = session_.executor.Query(Ready(plan), bindings);
  SetRowCount(rows.RecordCount());
  if (listener_) {
    listener_->Rows(plan.outputs, rows);
  } else {
    results_.push_back(std::move(rows));
  }
}

void Interpreter::RunChange(Plan& plan, const Bindings& bindings) {
  bool refused = !plan.identity_table.empty() && !EqualsIgnoreCase(plan.identity_table, session_.identity_insert);
  if (refused) throw SqlError(native::kExplicitIdentity, plan.identity_table);
  const std::int64_t count = session_.executor.Change(Ready(plan), bindings);
  SetRowCount(count);
  if (plan.sets_identity) {
    session_.identity.value = std::int64_t{sqlite3_last_insert_rowid(session_.store.get())};
  }
  TellChanged(count);
}

void Interpreter::RunAssigning(Plan& plan, const Bindings& bindings, Body& body) {
  std::int64_t count = 0;
  std::vector<Datum> row = session_.executor.LastRow(Ready(plan), bindings, count);
  // The engine sees the variables as they were; a sum over rows in a variable would hold the last row alone.
  if (count > 1 && ReadsWhatItAssigns(plan)) throw SqlError(native::kInternal, "SELECT 不能用多行记录累加变量");
  for (std::size_t i = 0; i < row.size(); ++i) Assign(plan.variables[i], row[i], plan.outputs[i].type, body);
  SetRowCount(count);
}

// SELECT … INTO #T makes a temporary table with the columns of the query.
void Interpreter::RunSelectInto(const Statement& statement, const SelectStatement& select, Body& body) {
  const std::string& name = select.query->cores[0].into;
  if (!name.starts_with('#')) throw SqlError(native::kSyntaxKeyword, "INTO");
  Bindings bindings = BindingsOf(body, body.lexed.tokens()[statement.first_token].literal);
  std::unique_ptr<Plan> plan = Translate(statement, bindings);
  TableDefinition definition;
  for (const Column& column : plan->outputs) {
    if (column.name.empty()) throw SqlError(native::kSyntaxKeyword, "INTO");
    ColumnDefinition copy;
    copy.name = column.name;
    copy.type = column.type.IsNull() ? SqlType::Int() : column.type;
    copy.type_name = TypeName(copy.type.kind);
    definition.columns.push_back(std::move(copy));
  }
  Frame& owner = depth_ == 0 ? session_.frame : body.frame;
  Ready(*plan);
  CreateTemporary(name, definition, body.lexed, owner);
  plan->sql = "INSERT INTO " + QuoteName(owner.FindTemporary(name)->physical) + " " + plan->sql;
  plan->is_query = false;
  RunChange(*plan, bindings);
}

// The rows come from a procedure, already fetched; each goes in as the values of variables.
void Interpreter::InsertRow(const Table& table, const std::vector<const Column*>& columns, Recordset& row,
                            const Body& body) {
  Plan plan;
  Frame values;
  std::string names;
  std::string marks;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    auto [value, type] = FieldDatum(row.Field(i));
    PlanParameter parameter;
    parameter.source = PlanParameter::Source::kVariable;
    parameter.variable = "@" + std::to_string(i);
    values.Declare(parameter.variable, columns[i]->type).value =
        Convert(value, type, columns[i]->type, Overlong::kRefuse);
    plan.parameters.push_back(parameter);
    names += (i > 0 ? ", " : "") + QuoteName(columns[i]->name);
    marks += i > 0 ? ", ?" : "?";
  }
  plan.sql = "INSERT INTO " + QuoteName(table.physical) + "(" + names + ") VALUES(" + marks + ")";
  session_.executor.Change(plan, {body.lexed, 0, values});
}

void Interpreter::RunInsertExec(const InsertStatement& insert, Body& body) {
  std::vector<Recordset> outer = std::move(results_);
  results_.clear();
  ResultListener* listener = std::exchange(listener_, nullptr);
  try {
    RunExec(*insert.exec, body);
  } catch (const SqlError&) {
    listener_ = listener;
    throw;
  }
  listener_ = listener;
  std::vector<Recordset> results = std::move(results_);
  results_ = std::move(outer);
  bool temporary = insert.table.starts_with('#') || insert.table.starts_with('@');
  const Table* table = temporary ? body.frame.FindTemporary(insert.table) : session_.catalogue.FindTable(insert.table);
  if (!table) throw SqlError(native::kMissingObject, insert.table);
  std::vector<const Column*> columns;
  for (const std::string& name : insert.columns) {
    columns.push_back(table->FindColumn(name));
    if (!columns.back()) throw SqlError(native::kMissingColumn, name);
  }
  for (const Column& column : table->columns) {
    if (insert.columns.empty() && !column.identity) columns.push_back(&column);
  }
  std::int64_t count = 0;
  for (Recordset& rows : results) {
    if (rows.ColumnCount() != columns.size()) throw SqlError(native::kColumnCount, insert.table);
    for (; !rows.Eof(); rows.MoveNext(), ++count) InsertRow(*table, columns, rows, body);
  }
  SetRowCount(count);
  TellChanged(count);
}

Plan& Interpreter::ExpressionPlan(const Expr& expr, const SqlType* type, Body& body) {
  Bindings bindings = BindingsOf(body, 0);
  Plan* known = body.is_procedure ? session_.plans.Find(&expr, bindings) : nullptr;
  if (known) return *known;
  Translator translator({session_.catalogue, body.frame, body.lexed, 0, false});
  std::unique_ptr<Plan> plan = type ? translator.Value(expr, type) : translator.Condition(expr);
  if (body.is_procedure) return *session_.plans.Insert(&expr, std::move(plan));
  return *transient_plans_.emplace_back(std::move(plan));
}

Datum Interpreter::Evaluate(const Expr& expr, const SqlType& type, Body& body) {
  std::int64_t count = 0;
  Plan& plan = ExpressionPlan(expr, &type, body);
  return session_.executor.LastRow(Ready(plan), BindingsOf(body, 0), count).at(0);
}

std::string Interpreter::EvaluateText(const Expr& expr, Body& body) {
  Datum value = Evaluate(expr, SqlType::Text(), body);
  auto* text = std::get_if<std::string>(&value);
  return text ? *text : "";
}

bool Interpreter::Holds(const Expr& condition, Body& body) {
  std::int64_t count = 0;
  Plan& plan = ExpressionPlan(condition, nullptr, body);
  return std::get<std::int64_t>(session_.executor.LastRow(Ready(plan), BindingsOf(body, 0), count).at(0)) != 0;
}

}  // namespace luming::localdb
