#include "localdb/parser/parser.h"

namespace luming::localdb {

UpdateStatement Parser::ParseUpdate() {
  UpdateStatement update;
  ExpectWord("UPDATE");
  update.top = ParseTop();
  update.target = Peek().kind == TokenKind::kVariable ? ExpectVariable() : ExpectObjectName();
  SkipTableHint();
  ExpectWord("SET");
  do {
    update.assignments.push_back(ParseAssignment());
  } while (TakeSymbol(","));
  if (PeekWord("FROM")) update.from = ParseFrom();
  update.where = ParseWhere();
  return update;
}

Assignment Parser::ParseAssignment() {
  Assignment assignment;
  if (Peek().kind == TokenKind::kVariable) {
    assignment.variable = ExpectVariable();
  } else {
    assignment.column = ExpectName();
    while (TakeSymbol(".")) assignment.column = ExpectName();
  }
  for (std::string_view compound : {"+=", "-=", "*=", "/="}) {
    if (!TakeSymbol(compound)) continue;
    bool variable = !assignment.variable.empty();
    auto old_value = std::make_unique<Expr>(variable ? ExprKind::kVariable : ExprKind::kColumn);
    old_value->name = variable ? assignment.variable : assignment.column;
    assignment.value = std::make_unique<Expr>(ExprKind::kArithmetic);
    assignment.value->name = compound.front();
    assignment.value->args.push_back(std::move(old_value));
    assignment.value->args.push_back(ParseValue());
    return assignment;
  }
  ExpectSymbol("=");
  bool chained = !assignment.variable.empty() && PeekName() && PeekSymbol("=", 1);
  if (chained) {
    assignment.column = ExpectName();
    ExpectSymbol("=");
  }
  assignment.value = ParseValue();
  return assignment;
}

}  // namespace luming::localdb
