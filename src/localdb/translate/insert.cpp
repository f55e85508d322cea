#include <algorithm>

#include "localdb/errors.h"
#include "localdb/translate/translator.h"
#include "util/text.h"

namespace luming::localdb {

Translator::Targets Translator::InsertTargets(const InsertStatement& insert, const Table& table) {
  Targets targets;
  for (const std::string& name : insert.columns) {
    const Column* column = table.FindColumn(name);
    if (!column) throw SqlError(native::kMissingColumn, name);
    if (column->identity) plan_->identity_table = table.name;
    targets.push_back(column);
  }
  if (!insert.columns.empty()) return targets;
  for (const Column& column : table.columns) {
    if (!column.identity) targets.push_back(&column);
  }
  return targets;
}

std::string Translator::DefaultsOf(const Targets& columns) {
  std::string sql;
  for (const Column* column : columns) sql += ", " + column->default_sql;
  return sql;
}

std::string Translator::InsertRow(const std::vector<ExprPtr>& row, const Targets& targets, const Targets& defaults) {
  if (row.size() < targets.size()) throw SqlError(native::kTooFewValues);
  if (row.size() > targets.size()) throw SqlError(native::kTooManyValues);
  std::string sql;
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (i > 0) sql += ", ";
    if (row[i]->kind == ExprKind::kDefault) {
      sql += targets[i]->default_sql.empty() ? "NULL" : targets[i]->default_sql;
      continue;
    }
    Fragment value = Translate(*row[i], Scope());
    Coerce(value, targets[i]->type, Purpose::kStore);
    sql += value.sql;
  }
  return sql + DefaultsOf(defaults);
}

std::unique_ptr<Plan> Translator::Insert(const InsertStatement& insert) {
  const Table& table = RequireTable(insert.table);
  Targets targets = InsertTargets(insert, table);
  Targets defaults;
  for (const Column& column : table.columns) {
    bool named = std::find(targets.begin(), targets.end(), &column) != targets.end();
    bool left_out = !named || (insert.rows.empty() && !insert.query);
    if (left_out && !column.default_sql.empty()) defaults.push_back(&column);
  }
  if (insert.rows.empty() && !insert.query) targets.clear();
  std::vector<std::string> names;
  for (const Column* column : targets) names.push_back(QuoteName(column->name));
  for (const Column* column : defaults) names.push_back(QuoteName(column->name));
  plan_->sets_identity = table.Identity() != nullptr;
  std::string sql = "INSERT INTO " + Physical(table);
  if (names.empty()) return Finish(sql + " DEFAULT VALUES");
  sql += "(" + Join(names, ", ") + ")";
  if (insert.query) {
    bool simple = insert.query->cores.size() == 1;
    QuerySql query = TranslateQuery(*insert.query, nullptr, &targets);
    if (query.columns.size() < targets.size()) throw SqlError(native::kTooFewValues);
    if (query.columns.size() > targets.size()) throw SqlError(native::kTooManyValues);
    if (simple && defaults.empty() && !insert.query->cores[0].distinct) return Finish(sql + " " + query.sql);
    return Finish(sql + " SELECT *" + DefaultsOf(defaults) + " FROM (" + query.sql + ")");
  }
  std::string rows;
  for (const auto& row : insert.rows) {
    rows += (rows.empty() ? " VALUES (" : ", (") + InsertRow(row, targets, defaults) + ")";
  }
  if (insert.rows.empty()) rows = " VALUES (" + DefaultsOf(defaults).substr(2) + ")";
  return Finish(sql + rows);
}

}  // namespace luming::localdb
