#include "localdb/parser/parser.h"

namespace luming::localdb {

// A procedure's body is all that follows in its batch.
CreateProcedureStatement Parser::ParseCreateProcedure() {
  if (in_procedure_ || depth_ > 1) Fail();
  in_procedure_ = true;
  CreateProcedureStatement create;
  create.alter = TakeWord("ALTER");
  if (!create.alter) ExpectWord("CREATE");
  if (TakeWord("OR")) ExpectWord("ALTER"), create.alter = true;
  if (!TakeWord("PROC")) ExpectWord("PROCEDURE");
  create.name = ExpectObjectName();
  bool parenthesis = TakeSymbol("(");
  if (Peek().kind == TokenKind::kVariable) {
    do {
      create.parameters.push_back(ParseParameter());
    } while (TakeSymbol(","));
  }
  if (parenthesis) ExpectSymbol(")");
  if (TakeWord("WITH")) {
    do {
      ExpectName();
    } while (TakeSymbol(","));
  }
  ExpectWord("AS");
  while (Peek().kind != TokenKind::kEnd) {
    if (!TakeSymbol(";")) create.body.push_back(ParseStatement());
  }
  in_procedure_ = false;
  return create;
}

Parameter Parser::ParseParameter() {
  Parameter parameter;
  parameter.name = ExpectVariable();
  TakeWord("AS");
  parameter.type = ParseType();
  if (TakeSymbol("=")) parameter.default_value = ParseArgumentValue();
  parameter.output = TakeWord("OUTPUT") || TakeWord("OUT");
  return parameter;
}

}  // namespace luming::localdb
