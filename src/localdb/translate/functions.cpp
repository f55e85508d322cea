#include <array>

#include "localdb/errors.h"
#include "localdb/translate/translator.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

// What a function gives, where it follows a simple rule.
enum class Result : std::uint8_t { kInt, kFloat, kText, kDate, kFirst, kSpecial };

struct FunctionEntry {
  std::string_view name;
  std::size_t least;
  std::size_t most;
  Result result;
  /// The engine's text with ?1, ?2 … for the arguments; a lone name takes all arguments.
  std::string_view pattern;
  /// One letter for each argument: t text, i whole number, f float, d date, . as it is.
  std::string_view arguments;
};

constexpr std::array kFunctions = {
    FunctionEntry{"LEN", 1, 1, Result::kInt, "t_len", "t"},
    FunctionEntry{"DATALENGTH", 1, 1, Result::kInt, "t_datalength", "t"},
    FunctionEntry{"LEFT", 2, 2, Result::kText, "substr(?1, 1, max(?2, 0))", "ti"},
    FunctionEntry{"RIGHT", 2, 2, Result::kText, "t_right", "ti"},
    FunctionEntry{"SUBSTRING", 3, 3, Result::kText, "t_substring", "tii"},
    FunctionEntry{"LTRIM", 1, 1, Result::kText, "ltrim(?1, ' ')", "t"},
    FunctionEntry{"RTRIM", 1, 1, Result::kText, "rtrim(?1, ' ')", "t"},
    FunctionEntry{"TRIM", 1, 1, Result::kText, "trim(?1, ' ')", "t"},
    FunctionEntry{"UPPER", 1, 1, Result::kText, "upper", "t"},
    FunctionEntry{"LOWER", 1, 1, Result::kText, "lower", "t"},
    FunctionEntry{"REPLACE", 3, 3, Result::kText, "t_replace", "ttt"},
    FunctionEntry{"REPLICATE", 2, 2, Result::kText, "t_replicate", "ti"},
    FunctionEntry{"SPACE", 1, 1, Result::kText, "t_replicate(' ', ?1)", "i"},
    FunctionEntry{"REVERSE", 1, 1, Result::kText, "t_reverse", "t"},
    FunctionEntry{"STUFF", 4, 4, Result::kText, "t_stuff", "tiit"},
    FunctionEntry{"STR", 1, 3, Result::kText, "t_str", "fii"},
    FunctionEntry{"CHAR", 1, 1, Result::kText, "char", "i"},
    FunctionEntry{"NCHAR", 1, 1, Result::kText, "char", "i"},
    FunctionEntry{"ASCII", 1, 1, Result::kInt, "unicode", "t"},
    FunctionEntry{"UNICODE", 1, 1, Result::kInt, "unicode", "t"},
    FunctionEntry{"CHARINDEX", 2, 3, Result::kInt, "t_charindex", "tti"},
    FunctionEntry{"ISNUMERIC", 1, 1, Result::kInt, "t_isnumeric", "t"},
    FunctionEntry{"ISDATE", 1, 1, Result::kInt, "t_isdate", "t"},
    FunctionEntry{"YEAR", 1, 1, Result::kInt, "CAST(substr(?1, 1, 4) AS INTEGER)", "d"},
    FunctionEntry{"MONTH", 1, 1, Result::kInt, "CAST(substr(?1, 6, 2) AS INTEGER)", "d"},
    FunctionEntry{"DAY", 1, 1, Result::kInt, "CAST(substr(?1, 9, 2) AS INTEGER)", "d"},
    FunctionEntry{"ABS", 1, 1, Result::kFirst, "abs", "."},
    FunctionEntry{"SIGN", 1, 1, Result::kInt, "sign", "."},
    FunctionEntry{"CEILING", 1, 1, Result::kFirst, "t_ceiling", "."},
    FunctionEntry{"FLOOR", 1, 1, Result::kFirst, "t_floor", "."},
    FunctionEntry{"ROUND", 2, 3, Result::kFirst, "t_rounded", ".ii"},
    FunctionEntry{"SQRT", 1, 1, Result::kFloat, "sqrt", "f"},
    FunctionEntry{"POWER", 2, 2, Result::kFirst, "pow", ".f"},
    FunctionEntry{"NEWID", 0, 0, Result::kText, "t_newid", ""},
    FunctionEntry{"DB_NAME", 0, 0, Result::kText, "t_dbname", ""},
    FunctionEntry{"ERROR_MESSAGE", 0, 0, Result::kText, "t_error_message", ""},
    FunctionEntry{"ERROR_NUMBER", 0, 0, Result::kInt, "t_error_number", ""},
    FunctionEntry{"ERROR_SEVERITY", 0, 0, Result::kInt, "16", ""},
    FunctionEntry{"ERROR_STATE", 0, 0, Result::kInt, "1", ""},
    FunctionEntry{"HOST_NAME", 0, 0, Result::kText, "'localhost'", ""},
    FunctionEntry{"SUSER_SNAME", 0, 0, Result::kText, "'sa'", ""},
    FunctionEntry{"GETDATE", 0, 0, Result::kSpecial, "", ""},
    FunctionEntry{"SYSDATETIME", 0, 0, Result::kSpecial, "", ""},
    FunctionEntry{"SCOPE_IDENTITY", 0, 0, Result::kSpecial, "", ""},
    FunctionEntry{"ISNULL", 2, 2, Result::kSpecial, "", ""},
    FunctionEntry{"COALESCE", 2, 100, Result::kSpecial, "", ""},
    FunctionEntry{"NULLIF", 2, 2, Result::kSpecial, "", ""},
    FunctionEntry{"OBJECT_ID", 1, 2, Result::kSpecial, "", ""},
    FunctionEntry{"DATEADD", 3, 3, Result::kSpecial, "", ""},
    FunctionEntry{"DATEDIFF", 3, 3, Result::kSpecial, "", ""},
    FunctionEntry{"DATEPART", 2, 2, Result::kSpecial, "", ""},
    FunctionEntry{"DATENAME", 2, 2, Result::kSpecial, "", ""},
    FunctionEntry{"SUM", 1, 1, Result::kSpecial, "", ""},
    FunctionEntry{"AVG", 1, 1, Result::kSpecial, "", ""},
    FunctionEntry{"MIN", 1, 1, Result::kSpecial, "", ""},
    FunctionEntry{"MAX", 1, 1, Result::kSpecial, "", ""},
    FunctionEntry{"COUNT", 0, 1, Result::kSpecial, "", ""},
    FunctionEntry{"COUNT_BIG", 0, 1, Result::kSpecial, "", ""},
    FunctionEntry{"ROW_NUMBER", 0, 0, Result::kSpecial, "", ""},
    FunctionEntry{"RANK", 0, 0, Result::kSpecial, "", ""},
    FunctionEntry{"DENSE_RANK", 0, 0, Result::kSpecial, "", ""},
};

const FunctionEntry& FindFunction(const Expr& call) {
  for (const FunctionEntry& entry : kFunctions) {
    if (entry.name != call.name) continue;
    if (call.args.size() < entry.least || call.args.size() > entry.most)
      throw SqlError(native::kArgumentCount, call.name);
    return entry;
  }
  throw SqlError(native::kUnknownFunction, call.name);
}

// The parts of a date with the short forms that the dialect has for them.
std::string_view DatePart(const Expr& expr) {
  struct Part {
    std::string_view name;
    std::array<std::string_view, 3> forms;
  };
  static constexpr std::array<Part, 9> kParts = {{{"year", {"year", "yy", "yyyy"}},
                                                  {"quarter", {"quarter", "qq", "q"}},
                                                  {"month", {"month", "mm", "m"}},
                                                  {"day", {"day", "dd", "d"}},
                                                  {"week", {"week", "wk", "ww"}},
                                                  {"weekday", {"weekday", "dw", "w"}},
                                                  {"hour", {"hour", "hh", "hh"}},
                                                  {"minute", {"minute", "mi", "n"}},
                                                  {"second", {"second", "ss", "s"}}}};
  for (const Part& part : kParts) {
    for (std::string_view form : part.forms) {
      if (expr.kind == ExprKind::kColumn && EqualsIgnoreCase(expr.name, form)) return part.name;
    }
  }
  throw SqlError(native::kSyntax, expr.name);
}

// A lone name is a function of the engine that takes all arguments.
bool IsFunctionName(std::string_view pattern) {
  return pattern.front() >= 'a' && pattern.front() <= 'z' && pattern.find('(') == std::string_view::npos;
}

std::string Fill(std::string_view pattern, const std::vector<std::string>& arguments) {
  if (IsFunctionName(pattern)) return std::string(pattern) + "(" + Join(arguments, ", ") + ")";
  std::string filled;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    if (pattern[i] == '?') {
      filled += arguments[static_cast<std::size_t>(pattern[++i] - '1')];
    } else {
      filled += pattern[i];
    }
  }
  return filled;
}

SqlType ArgumentType(char letter) {
  switch (letter) {
    case 't':
      return SqlType::Text();
    case 'i':
      return SqlType::BigInt();
    case 'd':
      return SqlType::DateTime();
    default:
      return SqlType::Float();
  }
}

}  // namespace

Translator::Fragment Translator::TranslateFunction(const Expr& expr, const Scope& scope) {
  const FunctionEntry& entry = FindFunction(expr);
  if (expr.over) return TranslateWindow(expr, scope);
  if (entry.result == Result::kSpecial) return TranslateSpecial(expr, scope);
  std::vector<std::string> arguments;
  SqlType first;
  for (std::size_t i = 0; i < expr.args.size(); ++i) {
    Fragment argument = Translate(*expr.args[i], scope);
    char letter = entry.arguments[i];
    bool number_wanted = letter == '.' && !argument.type.IsNumber();
    if (letter != '.' || number_wanted) Coerce(argument, ArgumentType(letter), Purpose::kCompare);
    if (i == 0) first = argument.type;
    arguments.push_back(argument.sql);
  }
  std::string sql = Fill(entry.pattern, arguments);
  switch (entry.result) {
    case Result::kInt:
      return {sql, SqlType::Int(), -1, false};
    case Result::kFloat:
      return {sql, SqlType::Float(), -1, false};
    case Result::kDate:
      return {sql, SqlType::DateTime(), -1, false};
    case Result::kText:
      return {sql, SqlType::Text(), -1, false};
    default:
      return {sql, first, -1, false};
  }
}

Translator::Fragment Translator::TranslateSpecial(const Expr& expr, const Scope& scope) {
  const std::string& name = expr.name;
  if (name == "GETDATE" || name == "SYSDATETIME") {
    if (context_.inline_literals) return {"t_now()", SqlType::DateTime(), -1, false};
    PlanParameter now;
    now.source = PlanParameter::Source::kNow;
    return AddParameter(std::move(now), SqlType::DateTime());
  }
  if (name == "SCOPE_IDENTITY") {
    Expr identity(ExprKind::kVariable);
    identity.name = "@@IDENTITY";
    return TranslateVariable(identity);
  }
  if (name == "ISNULL" || name == "COALESCE" || name == "NULLIF") return TranslateNullChoice(expr, scope);
  if (name == "OBJECT_ID") {
    Fragment object = Translate(*expr.args[0], scope);
    Coerce(object, SqlType::Text(), Purpose::kCompare);
    return {"t_object_id(" + object.sql + ")", SqlType::Int(), -1, false};
  }
  if (name.starts_with("DATE")) return TranslateDatePart(expr, scope);
  return TranslateAggregate(expr, scope);
}

// ISNULL has the type of its first argument, COALESCE the common one.
Translator::Fragment Translator::TranslateNullChoice(const Expr& expr, const Scope& scope) {
  std::vector<Fragment> values = TranslateAll(expr.args, scope);
  if (expr.name == "NULLIF") {
    SqlType type = values[0].type;
    std::string first = values[0].sql;
    Fragment again = values[0].parameter >= 0 ? Translate(*expr.args[0], scope) : values[0];
    std::string_view collation = MakeComparable(again, values[1]);
    return {"(CASE WHEN " + again.sql + " = " + values[1].sql + std::string(collation) + " THEN NULL ELSE " + first +
                " END)",
            type, -1, false};
  }
  SqlType type = values[0].type;
  for (const Fragment& value : values) {
    if (expr.name == "COALESCE" || type.IsNull()) type = CommonType(type, value.type);
  }
  std::string list;
  for (Fragment& value : values) {
    Coerce(value, type, Purpose::kCast);
    list += (list.empty() ? "" : ", ") + value.sql;
  }
  return {"coalesce(" + list + ")", type, -1, false};
}

Translator::Fragment Translator::TranslateDatePart(const Expr& expr, const Scope& scope) {
  std::string part = "'" + std::string(DatePart(*expr.args[0])) + "'";
  Fragment second = Translate(*expr.args[1], scope);
  if (expr.name == "DATEADD") {
    Coerce(second, SqlType::BigInt(), Purpose::kCompare);
    Fragment date = Translate(*expr.args[2], scope);
    Coerce(date, SqlType::DateTime(), Purpose::kCompare);
    return {"t_dateadd(" + part + ", " + second.sql + ", " + date.sql + ")", SqlType::DateTime(), -1, false};
  }
  Coerce(second, SqlType::DateTime(), Purpose::kCompare);
  if (expr.name == "DATEDIFF") {
    Fragment third = Translate(*expr.args[2], scope);
    Coerce(third, SqlType::DateTime(), Purpose::kCompare);
    return {"t_datediff(" + part + ", " + second.sql + ", " + third.sql + ")", SqlType::Int(), -1, false};
  }
  std::string sql = "t_datepart(" + part + ", " + second.sql + ")";
  if (expr.name == "DATENAME") return {"CAST(" + sql + " AS TEXT)", SqlType::Text(), -1, false};
  return {sql, SqlType::Int(), -1, false};
}

// A sum of decimals is rounded to their scale: the engine adds them as floats.
Translator::Fragment Translator::TranslateAggregate(const Expr& expr, const Scope& scope) {
  if (expr.star || expr.args.empty()) {
    bool count = expr.star && expr.name.starts_with("COUNT");
    if (!count) throw SqlError(native::kArgumentCount, expr.name);
    return {"count(*)", SqlType::Int(), -1, false};
  }
  Fragment value = Translate(*expr.args[0], scope);
  std::string distinct = expr.flag ? "DISTINCT " : "";
  std::string argument = distinct + Collated(value);
  if (expr.name.starts_with("COUNT")) return {"count(" + argument + ")", SqlType::Int(), -1, false};
  if (expr.name == "MIN" || expr.name == "MAX")
    return {LowerAscii(expr.name) + "(" + argument + ")", value.type, -1, false};
  if (!value.type.IsNumber()) throw SqlError(native::kBadOperand, TypeName(value.type.kind), expr.name);
  bool average = expr.name == "AVG";
  std::string sum = "sum(" + argument + ")";
  if (value.type.IsInteger()) {
    SqlType type = value.type.kind == TypeKind::kBigInt ? SqlType::BigInt() : SqlType::Int();
    return {average ? "(" + sum + " / count(" + argument + "))" : sum, type, -1, false, !average};
  }
  if (average) sum = "avg(" + argument + ")";
  if (value.type.kind == TypeKind::kFloat) return {sum, SqlType::Float(), -1, false};
  SqlType type = value.type;
  type.precision = 38;
  if (average && type.kind == TypeKind::kDecimal) type.scale = std::max<std::uint8_t>(type.scale, 6);
  return {"t_round(" + sum + ", " + std::to_string(type.scale) + ")", type, -1, false};
}

Translator::Fragment Translator::TranslateWindow(const Expr& expr, const Scope& scope) {
  bool ranking = expr.name == "ROW_NUMBER" || expr.name.ends_with("RANK");
  Fragment value{LowerAscii(expr.name) + "()", SqlType::BigInt(), -1, false};
  if (!ranking) value = TranslateAggregate(expr, scope);
  if (value.sql.starts_with("t_round(") || value.sql.starts_with("(")) throw SqlError(native::kSyntaxKeyword, "OVER");
  std::string partition;
  for (const ExprPtr& part : expr.over->partition_by) {
    partition += (partition.empty() ? "PARTITION BY " : ", ") + Collated(Translate(*part, scope));
  }
  std::string order;
  for (const OrderItem& item : expr.over->order_by) {
    order += (order.empty() ? " ORDER BY " : ", ") + Collated(Translate(*item.value, scope)) +
             (item.descending ? " DESC" : "");
  }
  return {value.sql + " OVER (" + partition + order + ")", value.type, -1, false};
}

}  // namespace luming::localdb
