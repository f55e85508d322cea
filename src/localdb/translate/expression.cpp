#include "localdb/errors.h"
#include "localdb/translate/translator.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

std::string QuoteText(std::string_view text) {
  return "'" + Replace(text, "'", "''") + "'";
}

std::string Call(std::string_view function, std::string_view arguments) {
  return std::string(function) + "(" + std::string(arguments) + ")";
}

}  // namespace

Translator::Fragment Translator::Translate(const Expr& expr, const Scope& scope) {
  switch (expr.kind) {
    case ExprKind::kLiteral:
      return TranslateLiteral(expr);
    case ExprKind::kNull:
      return {"NULL", SqlType(), -1, false};
    case ExprKind::kVariable:
      return TranslateVariable(expr);
    case ExprKind::kColumn:
      return TranslateColumn(expr, scope);
    case ExprKind::kNegate:
      return TranslateNegate(expr, scope);
    case ExprKind::kArithmetic:
      return TranslateArithmetic(expr, scope);
    case ExprKind::kFunction:
      return TranslateFunction(expr, scope);
    case ExprKind::kCase:
      return TranslateCase(expr, scope);
    case ExprKind::kCast:
      return TranslateCast(expr, scope);
    case ExprKind::kSubquery:
      return TranslateSubquery(expr, scope);
    case ExprKind::kDefault:
      throw SqlError(native::kSyntaxKeyword, "DEFAULT");
    default:
      throw SqlError(native::kSyntax, expr.name);
  }
}

std::vector<Translator::Fragment> Translator::TranslateAll(const std::vector<ExprPtr>& exprs, const Scope& scope) {
  std::vector<Fragment> fragments;
  for (const ExprPtr& expr : exprs) fragments.push_back(Translate(*expr, scope));
  return fragments;
}

Translator::Fragment Translator::TranslateLiteral(const Expr& expr) {
  const Literal& literal = LiteralOf(expr);
  SqlType type = literal.is_string ? SqlType::Text() : NumberLiteralType(literal.text);
  if (context_.inline_literals) {
    if (literal.is_string) return {QuoteText(literal.Unquoted()), type, -1, false};
    bool point = type.IsDecimal() && literal.text.find('.') == std::string_view::npos;
    return {std::string(literal.text) + (point ? ".0" : ""), type, -1, false};
  }
  PlanParameter parameter;
  parameter.literal = expr.literal - context_.first_literal;
  // A number with a point is stored as one, whatever its digits: 5.0 is a decimal and no whole number.
  if (!literal.is_string && !type.IsInteger()) {
    parameter.converts = true;
    parameter.type = SqlType::Float();
  }
  return AddParameter(std::move(parameter), type);
}

Translator::Fragment Translator::TranslateVariable(const Expr& expr) {
  const Variable* variable = context_.frame.Find(expr.name);
  if (!variable) throw SqlError(native::kMustDeclare, expr.name);
  PlanParameter parameter;
  parameter.source = PlanParameter::Source::kVariable;
  parameter.variable = variable->name;
  return AddParameter(std::move(parameter), variable->type);
}

Translator::Fragment Translator::TranslateColumn(const Expr& expr, const Scope& scope) {
  bool qualifier_known = false;
  for (const Scope* level = &scope; level; level = level->parent) {
    const ScopeTable* owner = nullptr;
    const Column* column = nullptr;
    for (const ScopeTable& table : level->tables) {
      if (!expr.qualifier.empty() && !EqualsIgnoreCase(table.alias, expr.qualifier)) continue;
      qualifier_known = true;
      for (const Column& candidate : *table.columns) {
        if (!EqualsIgnoreCase(candidate.name, expr.name)) continue;
        if (column) throw SqlError(native::kAmbiguousColumn, expr.name);
        column = &candidate;
        owner = &table;
        break;
      }
    }
    if (column) return {QuoteName(owner->alias) + "." + QuoteName(column->name), column->type, -1, true};
  }
  if (!expr.qualifier.empty() && !qualifier_known) throw SqlError(native::kPrefix, expr.qualifier + "." + expr.name);
  throw SqlError(native::kMissingColumn, expr.name);
}

Translator::Fragment Translator::TranslateNegate(const Expr& expr, const Scope& scope) {
  Fragment value = Translate(*expr.args[0], scope);
  if (value.type.IsText()) throw SqlError(native::kBadOperand, TypeName(value.type.kind), "-");
  bool literal = value.parameter >= 0 && expr.args[0]->kind == ExprKind::kLiteral;
  if (literal) {
    PlanParameter& parameter = plan_->parameters[static_cast<std::size_t>(value.parameter)];
    parameter.negative = !parameter.negative;
    return value;
  }
  return {"(-" + value.sql + ")", value.type, -1, false};
}

Translator::Fragment Translator::Concatenate(Fragment left, Fragment right) {
  SqlType type = CommonType(left.type, right.type);
  bool limited = left.type.length != SqlType::kMaxLength && right.type.length != SqlType::kMaxLength;
  type.kind = type.IsWide() ? TypeKind::kNVarChar : TypeKind::kVarChar;
  type.length = limited ? left.type.length + right.type.length : SqlType::kMaxLength;
  return {"(" + left.sql + " || " + right.sql + ")", type, -1, false};
}

Translator::Fragment Translator::TranslateArithmetic(const Expr& expr, const Scope& scope) {
  char op = expr.name[0];
  Fragment left = Translate(*expr.args[0], scope);
  Fragment right = Translate(*expr.args[1], scope);
  if (left.type.IsNull() || right.type.IsNull()) {
    SqlType type = left.type.IsNull() ? right.type : left.type;
    return {"(" + left.sql + (type.IsText() ? " || " : " + ") + right.sql + ")", type, -1, false};
  }
  if (left.type.IsText() && right.type.IsText()) {
    if (op == '+') return Concatenate(std::move(left), std::move(right));
    throw SqlError(native::kBadOperand, "varchar", expr.name);
  }
  if (left.type.IsDate() || right.type.IsDate()) {
    bool days = left.type.IsDate() && right.type.IsNumber() && (op == '+' || op == '-');
    if (!days) throw SqlError(native::kBadOperand, "datetime", expr.name);
    std::string sign = op == '-' ? "-" : "";
    return {Call("t_dateadd", "'day', " + sign + right.sql + ", " + left.sql), left.type, -1, false};
  }
  if (left.type.IsText()) Coerce(left, right.type, Purpose::kCompare);
  if (right.type.IsText()) Coerce(right, left.type, Purpose::kCompare);
  SqlType type = ArithmeticType(op, left.type, right.type);
  if (!type.IsInteger() && left.type.IsInteger()) Coerce(left, SqlType::Float(), Purpose::kCompare);
  std::string sql;
  if (op == '%' && !type.IsInteger()) {
    sql = Call("t_mod", left.sql + ", " + right.sql);
  } else if (op == '/' || op == '%') {
    sql = left.sql + " " + op + " " + Call("t_divisor", right.sql);
  } else {
    sql = left.sql + " " + op + " " + right.sql;
  }
  if (type.IsDecimal()) return {Call("t_round", sql + ", " + std::to_string(type.scale)), type, -1, false};
  return {"(" + sql + ")", type, -1, false, type.IsInteger()};
}

Translator::Fragment Translator::TranslateCase(const Expr& expr, const Scope& scope) {
  std::size_t first = expr.flag ? 1 : 0;
  std::size_t pairs = (expr.args.size() - first - (expr.has_else ? 1 : 0)) / 2;
  std::vector<std::string> conditions;
  std::vector<Fragment> results;
  for (std::size_t i = 0; i < pairs; ++i) {
    const Expr& when = *expr.args[first + 2 * i];
    if (expr.flag) {
      Fragment operand = Translate(*expr.args[0], scope);
      Fragment value = Translate(when, scope);
      std::string_view collation = MakeComparable(operand, value);
      conditions.push_back(operand.sql + " = " + value.sql + std::string(collation));
    } else {
      conditions.push_back(TranslateCondition(when, scope));
    }
    results.push_back(Translate(*expr.args[first + 2 * i + 1], scope));
  }
  if (expr.has_else) results.push_back(Translate(*expr.args.back(), scope));
  SqlType type;
  for (const Fragment& result : results) type = CommonType(type, result.type);
  std::string sql = "CASE";
  for (std::size_t i = 0; i < results.size(); ++i) {
    Coerce(results[i], type, Purpose::kCast);
    sql += i < pairs ? " WHEN " + conditions[i] + " THEN " + results[i].sql : " ELSE " + results[i].sql;
  }
  return {"(" + sql + " END)", type, -1, false};
}

Translator::Fragment Translator::TranslateCast(const Expr& expr, const Scope& scope) {
  Fragment value = Translate(*expr.args[0], scope);
  // Not at binding: the cast may stand in a branch that is not taken, and its result may be converted again.
  value.parameter = -1;
  if (expr.args.size() == 1) {
    Coerce(value, expr.type, Purpose::kCast);
    return {value.sql, expr.type, -1, false};
  }
  Fragment style = Translate(*expr.args[1], scope);
  std::string types = std::to_string(value.type.Pack()) + ", " + std::to_string(expr.type.Pack());
  return {Call("t_cast", value.sql + ", " + types + ", " + style.sql), expr.type, -1, false};
}

// A total without groups has one row, and TOP 1 no more than one; such a query needs no test.
bool Translator::HasOneRow(const Query& query) const {
  if (query.cores.size() != 1) return false;
  const SelectCore& core = query.cores[0];
  bool total = core.group_by.empty() && core.items[0].value && HoldsAggregate(*core.items[0].value);
  bool top_one = core.top && core.top->kind == ExprKind::kLiteral && LiteralOf(*core.top).text == "1";
  return total || top_one || core.from.empty();
}

Translator::Fragment Translator::TranslateSubquery(const Expr& expr, const Scope& scope) {
  QuerySql query = TranslateQuery(*expr.query, &scope);
  if (query.columns.size() != 1) throw SqlError(native::kSyntax, "SELECT");
  SqlType type = query.columns[0].type;
  const ExprPtr& top = expr.query->cores[0].top;
  if (top && top->kind == ExprKind::kLiteral) GuardText(*top);
  if (HasOneRow(*expr.query)) return {"(" + query.sql + ")", type, -1, false};
  return {"(WITH subquery(value) AS (" + query.sql + ") SELECT t_only(value) FROM subquery)", type, -1, false};
}

}  // namespace luming::localdb
