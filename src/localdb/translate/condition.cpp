#include "localdb/errors.h"
#include "localdb/translate/translator.h"

namespace luming::localdb {
namespace {

std::string Negated(bool negated, std::string condition) {
  return negated ? "NOT (" + condition + ")" : condition;
}

}  // namespace

LikeClass ClassifyPattern(std::string_view pattern) {
  std::size_t wildcard = pattern.find_first_of("%_[");
  if (wildcard == std::string_view::npos) return pattern.ends_with(' ') ? LikeClass::kGeneral : LikeClass::kPlain;
  if (wildcard == 0) return LikeClass::kGeneral;
  // A blank before the % must be there, but counts for nothing at the end of a key.
  const bool start = wildcard + 1 == pattern.size() && pattern.back() == '%' && pattern[wildcard - 1] != ' ';
  return start ? LikeClass::kStart : LikeClass::kPrefix;
}

std::string Translator::TranslateCondition(const Expr& expr, const Scope& scope) {
  switch (expr.kind) {
    case ExprKind::kAnd:
    case ExprKind::kOr: {
      std::string sql;
      for (const ExprPtr& arg : expr.args) {
        if (!sql.empty()) sql += expr.kind == ExprKind::kAnd ? " AND " : " OR ";
        sql += TranslateCondition(*arg, scope);
      }
      return "(" + sql + ")";
    }
    case ExprKind::kNot:
      return "NOT (" + TranslateCondition(*expr.args[0], scope) + ")";
    case ExprKind::kCompare:
      return TranslateCompare(expr, scope);
    case ExprKind::kIn:
      return TranslateIn(expr, scope);
    case ExprKind::kBetween:
      return TranslateBetween(expr, scope);
    case ExprKind::kLike:
      return TranslateLike(expr, scope);
    case ExprKind::kIsNull:
      return "(" + Translate(*expr.args[0], scope).sql + (expr.flag ? " IS NOT NULL)" : " IS NULL)");
    case ExprKind::kExists:
      return "EXISTS (" + TranslateQuery(*expr.query, &scope).sql + ")";
    default:
      throw SqlError(native::kSyntax, expr.name);
  }
}

std::string Translator::TranslateCompare(const Expr& expr, const Scope& scope) {
  Fragment left = Translate(*expr.args[0], scope);
  Fragment right = Translate(*expr.args[1], scope);
  std::string_view collation = MakeComparable(left, right);
  // The engine works out once what is the same for all rows, but not a bare comparison.
  std::string_view once = left.parameter >= 0 && right.parameter >= 0 ? "+" : "";
  return std::string(once) + "(" + left.sql + " " + expr.name + " " + right.sql + std::string(collation) + ")";
}

std::string Translator::TranslateIn(const Expr& expr, const Scope& scope) {
  Fragment operand = Translate(*expr.args[0], scope);
  if (expr.query) {
    QuerySql query = TranslateQuery(*expr.query, &scope);
    if (query.columns.size() != 1) throw SqlError(native::kSyntax, "SELECT");
    Fragment item{query.sql, query.columns[0].type, -1, true};
    SqlType type = CommonType(operand.type, item.type);
    bool alike = operand.type.IsNumber() == item.type.IsNumber() && operand.type.IsDate() == item.type.IsDate();
    if (!alike) Coerce(operand, type, Purpose::kCompare);
    return Negated(expr.flag, Collated(operand) + " IN (" + query.sql + ")");
  }
  std::string list;
  std::string any;
  bool one_list = true;
  for (std::size_t i = 1; i < expr.args.size(); ++i) {
    Fragment left = i == 1 ? operand : Translate(*expr.args[0], scope);
    Fragment right = Translate(*expr.args[i], scope);
    std::string_view collation = MakeComparable(left, right);
    one_list = one_list && left.sql == operand.sql;
    list += (list.empty() ? "" : ", ") + right.sql;
    any += (any.empty() ? "" : " OR ") + left.sql + " = " + right.sql + std::string(collation);
  }
  if (!one_list) return Negated(expr.flag, "(" + any + ")");
  return Negated(expr.flag, Collated(operand) + " IN (" + list + ")");
}

std::string Translator::TranslateBetween(const Expr& expr, const Scope& scope) {
  Fragment value = Translate(*expr.args[0], scope);
  Fragment low = Translate(*expr.args[1], scope);
  Fragment high = Translate(*expr.args[2], scope);
  Fragment second_value = value;
  if (value.parameter >= 0) second_value = Translate(*expr.args[0], scope);
  std::string low_test = std::string(MakeComparable(value, low));
  std::string high_test = std::string(MakeComparable(second_value, high));
  return Negated(expr.flag, "(" + value.sql + " >= " + low.sql + low_test + " AND " + second_value.sql +
                                " <= " + high.sql + high_test + ")");
}

LikeClass Translator::ClassOfPattern(const Expr& pattern) {
  PlanGuard guard;
  guard.kind = PlanGuard::Kind::kLike;
  if (pattern.kind == ExprKind::kLiteral && LiteralOf(pattern).is_string && !context_.inline_literals) {
    guard.like = ClassifyPattern(LiteralOf(pattern).text);
    Guard(pattern, guard);
    return guard.like;
  }
  const Variable* variable = pattern.kind == ExprKind::kVariable ? context_.frame.Find(pattern.name) : nullptr;
  if (!variable || !variable->type.IsText()) return LikeClass::kGeneral;
  auto* text = std::get_if<std::string>(&variable->value);
  guard.like = text ? ClassifyPattern(*text) : LikeClass::kGeneral;
  guard.of_variable = true;
  guard.variable = variable->name;
  plan_->guards.push_back(guard);
  return guard.like;
}

// A pattern without wildcards is a comparison, one that begins with text a range of the index; where more than a %
// follows, what the range lets through is tested as any other pattern.
std::string Translator::TranslateLike(const Expr& expr, const Scope& scope) {
  Fragment value = Translate(*expr.args[0], scope);
  if (!value.type.IsText()) Coerce(value, SqlType::Text(), Purpose::kCompare);
  Fragment pattern = Translate(*expr.args[1], scope);
  bool escapes = expr.args.size() == 3;
  LikeClass like = escapes ? LikeClass::kGeneral : ClassOfPattern(*expr.args[1]);
  if (!pattern.type.IsText()) Coerce(pattern, SqlType::Text(), Purpose::kCompare);
  if (like == LikeClass::kPlain) {
    std::string_view collation = value.column ? "" : " COLLATE TSQL";
    return Negated(expr.flag, "(" + value.sql + " = " + pattern.sql + std::string(collation) + ")");
  }
  std::string test = "t_like(" + pattern.sql + ", " + value.sql;
  test += escapes ? ", " + Translate(*expr.args[2], scope).sql + ")" : ")";
  if ((like == LikeClass::kPrefix || like == LikeClass::kStart) && value.column && !expr.flag) {
    std::string range =
        value.sql + " >= t_like_low(" + pattern.sql + ") AND " + value.sql + " <= t_like_high(" + pattern.sql + ")";
    test = "(" + range + (like == LikeClass::kStart ? "" : " AND " + test) + ")";
  }
  return Negated(expr.flag, test);
}

}  // namespace luming::localdb
