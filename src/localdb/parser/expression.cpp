#include "localdb/errors.h"
#include "localdb/parser/parser.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

// A chain of operators is read without nesting, but the engine nests it.
constexpr std::size_t kLongestChain = 400;

// The length of a text type in CAST and CONVERT where none is written.
constexpr std::int32_t kCastLength = 30;

ExprPtr Make(ExprKind kind, ExprPtr first, ExprPtr second = nullptr) {
  auto expr = std::make_unique<Expr>(kind);
  expr->args.push_back(std::move(first));
  if (second) expr->args.push_back(std::move(second));
  return expr;
}

void CountChain(std::size_t length) {
  if (length > kLongestChain) throw SqlError(native::kNestedTooDeep);
}

}  // namespace

ExprPtr Parser::RequireValue(ExprPtr expr) const {
  if (expr->IsCondition()) Fail();
  return expr;
}

ExprPtr Parser::ParseValue() {
  return RequireValue(ParseSum());
}

ExprPtr Parser::ParseCondition() {
  ExprPtr condition = ParseOr();
  if (!condition->IsCondition()) Fail();
  return condition;
}

ExprPtr Parser::ParseOr() {
  Level level(*this);
  ExprPtr first = ParseAnd();
  if (!PeekWord("OR")) return first;
  if (!first->IsCondition()) Fail();
  ExprPtr any = Make(ExprKind::kOr, std::move(first));
  while (TakeWord("OR")) {
    any->args.push_back(ParseAnd());
    if (!any->args.back()->IsCondition()) Fail();
    CountChain(any->args.size());
  }
  return any;
}

ExprPtr Parser::ParseAnd() {
  ExprPtr first = ParseNot();
  if (!PeekWord("AND") || !first->IsCondition()) return first;
  ExprPtr all = Make(ExprKind::kAnd, std::move(first));
  while (TakeWord("AND")) {
    all->args.push_back(ParseNot());
    if (!all->args.back()->IsCondition()) Fail();
    CountChain(all->args.size());
  }
  return all;
}

ExprPtr Parser::ParseNot() {
  if (!TakeWord("NOT")) return ParsePredicate();
  Level level(*this);
  ExprPtr operand = ParseNot();
  if (!operand->IsCondition()) Fail();
  return Make(ExprKind::kNot, std::move(operand));
}

ExprPtr Parser::ParsePredicate() {
  if (TakeWord("EXISTS")) {
    auto exists = std::make_unique<Expr>(ExprKind::kExists);
    ExpectSymbol("(");
    exists->query = ParseQuery();
    ExpectSymbol(")");
    return exists;
  }
  ExprPtr operand = ParseSum();
  return operand->IsCondition() ? std::move(operand) : ParsePredicateTail(std::move(operand));
}

ExprPtr Parser::ParsePredicateTail(ExprPtr operand) {
  for (std::string_view symbol : {"=", "<>", "!=", "<=", ">=", "!<", "!>", "<", ">"}) {
    if (!TakeSymbol(symbol)) continue;
    ExprPtr compare = Make(ExprKind::kCompare, std::move(operand), ParseValue());
    compare->name = symbol == "!=" ? "<>" : symbol == "!<" ? ">=" : symbol == "!>" ? "<=" : symbol;
    return compare;
  }
  if (TakeWord("IS")) {
    ExprPtr test = Make(ExprKind::kIsNull, std::move(operand));
    test->flag = TakeWord("NOT");
    ExpectWord("NULL");
    return test;
  }
  bool negated =
      PeekWord("NOT") && (PeekWord("IN", 1) || PeekWord("LIKE", 1) || PeekWord("BETWEEN", 1)) && TakeWord("NOT");
  ExprPtr test;
  if (TakeWord("IN")) {
    test = ParseIn(std::move(operand));
  } else if (TakeWord("LIKE")) {
    test = Make(ExprKind::kLike, std::move(operand), ParseValue());
    if (TakeWord("ESCAPE")) test->args.push_back(ParseValue());
  } else if (TakeWord("BETWEEN")) {
    test = Make(ExprKind::kBetween, std::move(operand), ParseValue());
    ExpectWord("AND");
    test->args.push_back(ParseValue());
  } else {
    return operand;
  }
  test->flag = negated;
  return test;
}

ExprPtr Parser::ParseIn(ExprPtr operand) {
  ExprPtr in = Make(ExprKind::kIn, std::move(operand));
  ExpectSymbol("(");
  if (PeekWord("SELECT")) {
    in->query = ParseQuery();
  } else {
    do {
      in->args.push_back(ParseValue());
    } while (TakeSymbol(","));
  }
  ExpectSymbol(")");
  return in;
}

ExprPtr Parser::ParseSum() {
  ExprPtr left = ParseProduct();
  for (std::size_t length = 0; PeekSymbol("+") || PeekSymbol("-"); CountChain(++length)) {
    std::string op(PeekText());
    left = RequireValue(std::move(left));
    ++at_;
    left = Make(ExprKind::kArithmetic, std::move(left), RequireValue(ParseProduct()));
    left->name = op;
  }
  return left;
}

ExprPtr Parser::ParseProduct() {
  ExprPtr left = ParseUnary();
  for (std::size_t length = 0; PeekSymbol("*") || PeekSymbol("/") || PeekSymbol("%"); CountChain(++length)) {
    std::string op(PeekText());
    left = RequireValue(std::move(left));
    ++at_;
    left = Make(ExprKind::kArithmetic, std::move(left), RequireValue(ParseUnary()));
    left->name = op;
  }
  return left;
}

ExprPtr Parser::ParseUnary() {
  Level level(*this);
  if (TakeSymbol("+")) return RequireValue(ParseUnary());
  if (TakeSymbol("-")) return Make(ExprKind::kNegate, RequireValue(ParseUnary()));
  ExprPtr primary = ParsePrimary();
  if (TakeWord("COLLATE")) ExpectName();
  return primary;
}

ExprPtr Parser::ParsePrimary() {
  switch (Peek().kind) {
    case TokenKind::kString:
    case TokenKind::kNumber:
      return ParseLiteral();
    case TokenKind::kVariable: {
      auto variable = std::make_unique<Expr>(ExprKind::kVariable);
      variable->name = ExpectVariable();
      return variable;
    }
    case TokenKind::kSymbol:
      if (PeekSymbol("(")) return ParseParenthesis();
      Fail();
    case TokenKind::kQuoted:
      return ParseColumn();
    case TokenKind::kWord:
      break;
    case TokenKind::kEnd:
      Fail();
  }
  if (TakeWord("NULL")) return std::make_unique<Expr>(ExprKind::kNull);
  if (TakeWord("DEFAULT")) return std::make_unique<Expr>(ExprKind::kDefault);
  if (PeekWord("CASE")) return ParseCase();
  if (PeekWord("CAST") && PeekSymbol("(", 1)) return ParseCast();
  if (PeekWord("CONVERT") && PeekSymbol("(", 1)) return ParseConvert();
  if (PeekWord("CURRENT_TIMESTAMP")) return ParseFunction();
  if (PeekSymbol("(", 1) && (!PeekReserved() || PeekAnyWord({"LEFT", "RIGHT"}))) return ParseFunction();
  return ParseColumn();
}

ExprPtr Parser::ParseLiteral() {
  auto literal = std::make_unique<Expr>(ExprKind::kLiteral);
  literal->literal = Peek().literal;
  ++at_;
  return literal;
}

ExprPtr Parser::ParseParenthesis() {
  ExpectSymbol("(");
  ExprPtr inner;
  if (PeekWord("SELECT")) {
    inner = std::make_unique<Expr>(ExprKind::kSubquery);
    inner->query = ParseQuery();
  } else {
    inner = ParseOr();
  }
  ExpectSymbol(")");
  return inner;
}

ExprPtr Parser::ParseColumn() {
  auto column = std::make_unique<Expr>(ExprKind::kColumn);
  column->name = ExpectName();
  while (TakeSymbol(".")) {
    column->qualifier = column->name;
    while (TakeSymbol(".")) continue;
    column->name = ExpectName();
  }
  return column;
}

ExprPtr Parser::ParseFunction() {
  auto call = std::make_unique<Expr>(ExprKind::kFunction);
  call->name = UpperAscii(PeekText());
  ++at_;
  if (call->name == "CURRENT_TIMESTAMP") {
    call->name = "GETDATE";
    return call;
  }
  ExpectSymbol("(");
  if (TakeSymbol("*")) {
    call->star = true;
  } else if (!PeekSymbol(")")) {
    call->flag = TakeWord("DISTINCT");
    if (!call->flag) TakeWord("ALL");
    do {
      call->args.push_back(ParseValue());
    } while (TakeSymbol(","));
  }
  ExpectSymbol(")");
  if (TakeWord("OVER")) call->over = ParseWindow();
  return call;
}

std::unique_ptr<Window> Parser::ParseWindow() {
  auto window = std::make_unique<Window>();
  ExpectSymbol("(");
  if (TakeWord("PARTITION")) {
    ExpectWord("BY");
    do {
      window->partition_by.push_back(ParseValue());
    } while (TakeSymbol(","));
  }
  window->order_by = ParseOrderBy();
  ExpectSymbol(")");
  return window;
}

ExprPtr Parser::ParseCase() {
  Level level(*this);
  ExpectWord("CASE");
  auto choice = std::make_unique<Expr>(ExprKind::kCase);
  if (!PeekWord("WHEN")) {
    choice->flag = true;
    choice->args.push_back(ParseValue());
  }
  if (!PeekWord("WHEN")) Fail();
  while (TakeWord("WHEN")) {
    choice->args.push_back(choice->flag ? ParseValue() : ParseCondition());
    ExpectWord("THEN");
    choice->args.push_back(ParseValue());
  }
  if (TakeWord("ELSE")) {
    choice->has_else = true;
    choice->args.push_back(ParseValue());
  }
  ExpectWord("END");
  return choice;
}

ExprPtr Parser::ParseCast() {
  ExpectWord("CAST");
  ExpectSymbol("(");
  ExprPtr cast = Make(ExprKind::kCast, ParseValue());
  ExpectWord("AS");
  cast->type = ParseType(kCastLength);
  ExpectSymbol(")");
  return cast;
}

ExprPtr Parser::ParseConvert() {
  ExpectWord("CONVERT");
  ExpectSymbol("(");
  SqlType type = ParseType(kCastLength);
  ExpectSymbol(",");
  ExprPtr cast = Make(ExprKind::kCast, ParseValue());
  if (TakeSymbol(",")) cast->args.push_back(ParseValue());
  cast->type = type;
  ExpectSymbol(")");
  return cast;
}

SqlType Parser::ParseType(std::int32_t default_length, std::string* written) {
  std::string name = ExpectName();
  std::optional<int> first;
  std::optional<int> second;
  if (TakeSymbol("(")) {
    if (TakeWord("MAX")) {
      first = SqlType::kMaxLength;
    } else {
      first = ExpectInteger();
      if (TakeSymbol(",")) second = ExpectInteger();
    }
    ExpectSymbol(")");
  }
  auto type = FindType(name, first, second);
  if (!type) throw SqlError(native::kMissingType, name);
  if (!first && type->IsText() && type->length == 1) type->length = default_length;
  if (written) *written = name;
  return *type;
}

}  // namespace luming::localdb
