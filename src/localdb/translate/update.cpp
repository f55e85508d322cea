#include "localdb/errors.h"
#include "localdb/translate/translator.h"
#include "util/text.h"

namespace luming::localdb {

Translator::Fragment Translator::AssignedValue(const Assignment& assignment, const Column& column, const Scope& scope) {
  if (assignment.value->kind == ExprKind::kDefault) {
    return {column.default_sql.empty() ? "NULL" : column.default_sql, column.type, -1, false};
  }
  Fragment value = Translate(*assignment.value, scope);
  Coerce(value, column.type, Purpose::kStore);
  return value;
}

const Table& Translator::JoinedTarget(const std::string& target, const std::vector<TableRef>& from,
                                      std::string& alias) {
  for (const TableRef& ref : from) {
    if (ref.derived || !EqualsIgnoreCase(ref.alias, target)) continue;
    alias = ref.alias;
    return RequireTable(ref.name);
  }
  for (const TableRef& ref : from) {
    if (ref.derived || !EqualsIgnoreCase(ref.name, target)) continue;
    alias = ref.alias;
    return RequireTable(ref.name);
  }
  throw SqlError(native::kMissingObject, target);
}

std::unique_ptr<Plan> Translator::Update(const UpdateStatement& update) {
  for (const Assignment& assignment : update.assignments) {
    if (!assignment.variable.empty()) throw SqlError(native::kSyntax, assignment.variable);
  }
  if (!update.from.empty()) return Finish(JoinedUpdate(update));
  const Table& table = RequireTable(update.target);
  Scope scope;
  scope.tables.push_back({table.name, &table.columns});
  std::string sql = "UPDATE " + Physical(table) + " AS " + QuoteName(table.name) + " SET ";
  bool first = true;
  for (const Assignment& assignment : update.assignments) {
    const Column* column = table.FindColumn(assignment.column);
    if (!column) throw SqlError(native::kMissingColumn, assignment.column);
    if (column->identity) throw SqlError(native::kExplicitIdentity, table.name);
    sql += (first ? "" : ", ") + QuoteName(column->name) + " = " + AssignedValue(assignment, *column, scope).sql;
    first = false;
  }
  std::string where = update.where ? TranslateCondition(*update.where, scope) : "";
  if (update.top) {
    std::string rows = "SELECT rowid FROM " + Physical(table) + " AS " + QuoteName(table.name);
    if (!where.empty()) rows += " WHERE " + where;
    where = "rowid IN (" + rows + TranslateTop(*update.top, scope) + ")";
  }
  return Finish(where.empty() ? sql : sql + " WHERE " + where);
}

// The rows and their new values are worked out by a query over the joined tables, then written by row number.
std::string Translator::JoinedUpdate(const UpdateStatement& update) {
  std::string alias;
  const Table& table = JoinedTarget(update.target, update.from, alias);
  Scope scope;
  std::string from = TranslateFrom(update.from, scope);
  std::string values = QuoteName(alias) + ".rowid AS row_number";
  std::string sets;
  for (std::size_t i = 0; i < update.assignments.size(); ++i) {
    const Assignment& assignment = update.assignments[i];
    const Column* column = table.FindColumn(assignment.column);
    if (!column) throw SqlError(native::kMissingColumn, assignment.column);
    if (column->identity) throw SqlError(native::kExplicitIdentity, table.name);
    std::string value_name = "value_" + std::to_string(i);
    values += ", " + AssignedValue(assignment, *column, scope).sql + " AS " + value_name;
    sets += (i > 0 ? ", " : "") + QuoteName(column->name) + " = new_values." + value_name;
  }
  std::string rows = "SELECT " + values + from;
  if (update.where) rows += " WHERE " + TranslateCondition(*update.where, scope);
  if (update.top) rows += TranslateTop(*update.top, scope);
  return "UPDATE " + Physical(table) + " AS changed SET " + sets + " FROM (" + rows +
         ") AS new_values WHERE changed.rowid = new_values.row_number";
}

}  // namespace luming::localdb
