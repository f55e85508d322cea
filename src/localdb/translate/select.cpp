#include "localdb/errors.h"
#include "localdb/translate/translator.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

std::string_view OperatorSql(SetOperator op) {
  switch (op) {
    case SetOperator::kUnion:
      return " UNION ";
    case SetOperator::kUnionAll:
      return " UNION ALL ";
    case SetOperator::kExcept:
      return " EXCEPT ";
    default:
      return " INTERSECT ";
  }
}

std::string_view JoinSql(JoinKind join) {
  switch (join) {
    case JoinKind::kInner:
      return " JOIN ";
    case JoinKind::kLeft:
      return " LEFT JOIN ";
    case JoinKind::kRight:
      return " RIGHT JOIN ";
    case JoinKind::kFull:
      return " FULL JOIN ";
    case JoinKind::kCross:
      return " CROSS JOIN ";
    default:
      return ", ";
  }
}

}  // namespace

Translator::QuerySql Translator::TranslateQuery(const Query& query, const Scope* parent, const Targets* targets) {
  std::size_t outer_common_tables = common_tables_.size();
  std::string prefix = CommonTablesSql(query, parent);
  QuerySql out = TranslateCore(query.cores[0], query, parent, targets);
  for (std::size_t i = 1; i < query.cores.size(); ++i) {
    QuerySql next = TranslateCore(query.cores[i], query, parent, targets);
    if (next.columns.size() != out.columns.size()) throw SqlError(native::kUnionColumns);
    out.sql += std::string(OperatorSql(query.operators[i - 1])) + next.sql;
    for (std::size_t c = 0; c < out.columns.size(); ++c) {
      out.columns[c].type = CommonType(out.columns[c].type, next.columns[c].type);
    }
  }
  if (query.cores.size() > 1) out.sql += TranslateOrderBy(query.order_by, Scope(), out);
  out.sql = prefix + out.sql;
  common_tables_.resize(outer_common_tables);
  return out;
}

std::string Translator::CommonTablesSql(const Query& query, const Scope* parent) {
  std::string sql;
  for (const CommonTable& table : query.common_tables) {
    QuerySql inner = TranslateQuery(*table.query, parent);
    for (std::size_t i = 0; i < table.columns.size() && i < inner.columns.size(); ++i) {
      inner.columns[i].name = table.columns[i];
    }
    std::vector<std::string> names;
    for (const Column& column : inner.columns) names.push_back(QuoteName(column.name));
    sql +=
        (sql.empty() ? "WITH " : ", ") + QuoteName(table.name) + "(" + Join(names, ", ") + ") AS (" + inner.sql + ")";
    common_tables_.push_back({table.name, Keep(std::move(inner.columns))});
  }
  return sql.empty() ? sql : sql + " ";
}

Translator::QuerySql Translator::TranslateCore(const SelectCore& core, const Query& query, const Scope* parent,
                                               const Targets* targets) {
  Scope scope;
  scope.parent = parent;
  QuerySql out;
  bool compound = query.cores.size() > 1;
  std::string from = TranslateFrom(core.from, scope);
  std::string list;
  TranslateItems(core, scope, targets, out, list);
  CheckGrouping(core, scope);
  out.sql = (core.distinct ? "SELECT DISTINCT " : "SELECT ") + list + from;
  if (core.where) out.sql += " WHERE " + TranslateCondition(*core.where, scope);
  std::string groups;
  for (const ExprPtr& group : core.group_by) {
    groups += (groups.empty() ? " GROUP BY " : ", ") + Collated(Translate(*group, scope));
  }
  out.sql += groups;
  if (core.having) out.sql += " HAVING " + TranslateCondition(*core.having, scope);
  if (!compound) out.sql += TranslateOrderBy(query.order_by, scope, out);
  if (!core.top) return out;
  out.sql += TranslateTop(*core.top, scope);
  if (compound) out.sql = "SELECT * FROM (" + out.sql + ")";
  return out;
}

std::string Translator::TranslateTop(const Expr& top, const Scope& scope) {
  Fragment limit = Translate(top, scope);
  Coerce(limit, SqlType::BigInt(), Purpose::kCast);
  return " LIMIT " + limit.sql;
}

// Makes a selected value one of the column that it is inserted into.
void Translator::StoreIn(const Targets* targets, std::size_t place, Fragment& value) {
  if (targets && place < targets->size()) Coerce(value, (*targets)[place]->type, Purpose::kStore);
}

void Translator::TranslateStar(const SelectItem& item, const Scope& scope, const Targets* targets, QuerySql& out,
                               std::string& list) {
  bool found = false;
  for (const ScopeTable& table : scope.tables) {
    if (!item.star_qualifier.empty() && !EqualsIgnoreCase(item.star_qualifier, table.alias)) continue;
    found = true;
    for (const Column& column : *table.columns) {
      Fragment value{QuoteName(table.alias) + "." + QuoteName(column.name), column.type, -1, true};
      StoreIn(targets, out.columns.size(), value);
      list += (list.empty() ? "" : ", ") + Collated(value);
      out.columns.push_back(column);
    }
  }
  if (!found)
    throw SqlError(item.star_qualifier.empty() ? native::kSyntax : native::kPrefix, item.star_qualifier + "*");
}

void Translator::TranslateItems(const SelectCore& core, const Scope& scope, const Targets* targets, QuerySql& out,
                                std::string& list) {
  for (const SelectItem& item : core.items) {
    if (!item.value) {
      TranslateStar(item, scope, targets, out, list);
      continue;
    }
    Fragment value = Translate(*item.value, scope);
    StoreIn(targets, out.columns.size(), value);
    Column column;
    column.type = value.type;
    column.name = !item.alias.empty() ? item.alias : item.value->kind == ExprKind::kColumn ? item.value->name : "";
    list += (list.empty() ? "" : ", ") + Collated(value);
    if (!column.name.empty()) list += " AS " + QuoteName(column.name);
    out.columns.push_back(std::move(column));
    if (!item.variable.empty()) out.variables.push_back(item.variable);
  }
  bool mixed = !out.variables.empty() && out.variables.size() != out.columns.size();
  if (mixed) throw SqlError(native::kSyntax, out.variables[0]);
}

std::string Translator::TranslateFrom(const std::vector<TableRef>& from, Scope& scope) {
  std::string sql;
  for (const TableRef& ref : from) {
    sql += sql.empty() ? " FROM " : std::string(JoinSql(ref.join));
    sql += TranslateTable(ref, scope);
    if (ref.on) sql += " ON " + TranslateCondition(*ref.on, scope);
  }
  return sql;
}

std::string Translator::TranslateTable(const TableRef& ref, Scope& scope) {
  std::string alias = " AS " + QuoteName(ref.alias);
  if (ref.derived) {
    QuerySql inner = TranslateQuery(*ref.derived, scope.parent);
    for (std::size_t i = 0; i < ref.derived_columns.size() && i < inner.columns.size(); ++i) {
      inner.columns[i].name = ref.derived_columns[i];
    }
    if (!ref.derived_columns.empty()) {
      std::vector<std::string> names;
      for (const Column& column : inner.columns) names.push_back(QuoteName(column.name));
      inner.sql = "WITH renamed(" + Join(names, ", ") + ") AS (" + inner.sql + ") SELECT * FROM renamed";
    }
    scope.tables.push_back({ref.alias, Keep(std::move(inner.columns))});
    return "(" + inner.sql + ")" + alias;
  }
  for (auto common = common_tables_.rbegin(); common != common_tables_.rend(); ++common) {
    if (!EqualsIgnoreCase(common->name, ref.name)) continue;
    scope.tables.push_back({ref.alias, common->columns});
    return QuoteName(common->name) + alias;
  }
  const Table& table = RequireTable(ref.name);
  scope.tables.push_back({ref.alias, &table.columns});
  return Physical(table) + alias;
}

std::string Translator::TranslateOrderBy(const std::vector<OrderItem>& items, const Scope& scope,
                                         const QuerySql& select) {
  std::string sql;
  for (const OrderItem& item : items) {
    sql += (sql.empty() ? " ORDER BY " : ", ") + TranslateOrderItem(*item.value, scope, select);
    if (item.descending) sql += " DESC";
  }
  return sql;
}

// A whole number or the name of a selected column stands for that column; else it is a value of its own.
std::string Translator::TranslateOrderItem(const Expr& value, const Scope& scope, const QuerySql& select) {
  std::size_t place = 0;
  if (value.kind == ExprKind::kLiteral && !LiteralOf(value).is_string) {
    Datum number = NumberLiteral(LiteralOf(value).text);
    auto* whole = std::get_if<std::int64_t>(&number);
    bool known = whole && *whole >= 1 && *whole <= static_cast<std::int64_t>(select.columns.size());
    if (!known) throw SqlError(native::kSyntax, LiteralOf(value).text);
    place = static_cast<std::size_t>(*whole);
    GuardText(value);
  } else if (value.kind == ExprKind::kColumn && value.qualifier.empty()) {
    for (std::size_t i = 0; i < select.columns.size() && place == 0; ++i) {
      if (EqualsIgnoreCase(select.columns[i].name, value.name)) place = i + 1;
    }
  }
  if (place > 0) return std::to_string(place) + (select.columns[place - 1].type.IsText() ? " COLLATE TSQL" : "");
  return Collated(Translate(value, scope));
}

}  // namespace luming::localdb
