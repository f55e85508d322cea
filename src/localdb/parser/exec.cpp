#include "localdb/parser/parser.h"

namespace luming::localdb {

ExecStatement Parser::ParseExec() {
  if (!TakeWord("EXEC")) ExpectWord("EXECUTE");
  if (!PeekSymbol("(")) return ParseCall();
  ExecStatement exec;
  ExpectSymbol("(");
  exec.text = ParseValue();
  ExpectSymbol(")");
  return exec;
}

ExecStatement Parser::ParseCall() {
  ExecStatement exec;
  if (Peek().kind == TokenKind::kVariable && PeekSymbol("=", 1)) {
    exec.return_variable = ExpectVariable();
    ExpectSymbol("=");
  }
  exec.procedure = ExpectObjectName();
  bool has_arguments = Peek().kind == TokenKind::kString || Peek().kind == TokenKind::kNumber ||
                       Peek().kind == TokenKind::kVariable || PeekSymbol("-") || PeekSymbol("+") || PeekName() ||
                       PeekWord("NULL") || PeekWord("DEFAULT");
  if (!has_arguments) return exec;
  do {
    exec.arguments.push_back(ParseArgument());
  } while (TakeSymbol(","));
  return exec;
}

Argument Parser::ParseArgument() {
  Argument argument;
  if (Peek().kind == TokenKind::kVariable && PeekSymbol("=", 1)) {
    argument.parameter = ExpectVariable();
    ExpectSymbol("=");
  }
  argument.value = ParseArgumentValue();
  argument.output = TakeWord("OUTPUT") || TakeWord("OUT");
  return argument;
}

// No expressions stand here, but a bare word is a text: Exec P 西药库.
ExprPtr Parser::ParseArgumentValue() {
  if (TakeSymbol("+")) return ParseArgumentValue();
  if (PeekSymbol("-") && Peek(1).kind == TokenKind::kNumber) return ParseUnary();
  if (PeekName()) {
    auto word = std::make_unique<Expr>(ExprKind::kColumn);
    word->name = ExpectName();
    return word;
  }
  bool value = Peek().kind == TokenKind::kString || Peek().kind == TokenKind::kNumber ||
               Peek().kind == TokenKind::kVariable || PeekWord("NULL") || PeekWord("DEFAULT");
  if (!value) Fail();
  return ParsePrimary();
}

}  // namespace luming::localdb
