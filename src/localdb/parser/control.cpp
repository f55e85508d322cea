#include "localdb/parser/parser.h"
#include "util/text.h"

namespace luming::localdb {

std::vector<StatementPtr> Parser::ParseBatch() {
  std::vector<StatementPtr> statements;
  bool names_procedure = PeekName();
  while (Peek().kind != TokenKind::kEnd) {
    if (TakeSymbol(";")) continue;
    if (names_procedure && statements.empty()) {
      auto call = std::make_unique<Statement>();
      call->first_token = at_;
      call->node = ParseCall();
      call->last_token = at_;
      statements.push_back(std::move(call));
    } else {
      statements.push_back(ParseStatement());
    }
  }
  return statements;
}

StatementPtr Parser::ParseStatement() {
  Level level(*this);
  auto statement = std::make_unique<Statement>();
  statement->first_token = at_;
  ParseStatementNode(*statement);
  statement->last_token = at_;
  return statement;
}

void Parser::ParseStatementNode(Statement& statement) {
  if (ParseDataStatement(statement) || ParseDefinitionStatement(statement) || ParseControlStatement(statement)) return;
  Fail();
}

bool Parser::ParseDataStatement(Statement& statement) {
  if (PeekWord("SELECT") || PeekWord("WITH")) {
    statement.node = SelectStatement{ParseQuery()};
  } else if (PeekWord("INSERT")) {
    statement.node = ParseInsert();
  } else if (PeekWord("UPDATE")) {
    statement.node = ParseUpdate();
  } else if (PeekWord("DELETE")) {
    statement.node = ParseDelete();
  } else if (PeekWord("TRUNCATE")) {
    statement.node = ParseTruncate();
  } else if (PeekWord("EXEC") || PeekWord("EXECUTE")) {
    statement.node = ParseExec();
  } else {
    return false;
  }
  return true;
}

bool Parser::ParseDefinitionStatement(Statement& statement) {
  bool procedure = PeekWord("PROC", 1) || PeekWord("PROCEDURE", 1) || PeekWord("OR", 1);
  if (PeekWord("DROP")) {
    statement.node = ParseDrop();
  } else if ((PeekWord("CREATE") || PeekWord("ALTER")) && procedure) {
    statement.node = ParseCreateProcedure();
  } else if (PeekWord("ALTER")) {
    statement.node = ParseAlterTable();
  } else if (PeekWord("CREATE") && PeekWord("TABLE", 1)) {
    statement.node = ParseCreateTable();
  } else if (PeekWord("CREATE")) {
    statement.node = ParseCreateIndex();
  } else {
    return false;
  }
  return true;
}

bool Parser::ParseControlStatement(Statement& statement) {
  using Kind = TransactionStatement::Kind;
  if (PeekWord("IF")) {
    statement.node = ParseIf();
  } else if (PeekWord("BEGIN")) {
    ParseBegin(statement);
  } else if (PeekWord("DECLARE")) {
    statement.node = ParseDeclare();
  } else if (PeekWord("SET")) {
    ParseSet(statement);
  } else if (TakeWord("WHILE")) {
    ExprPtr condition = ParseCondition();
    statement.node = WhileStatement{std::move(condition), ParseStatement()};
  } else if (PeekWord("BREAK") || PeekWord("CONTINUE")) {
    statement.node = JumpStatement{PeekWord("BREAK")};
    ++at_;
  } else if (TakeWord("RETURN")) {
    bool value =
        Peek().kind == TokenKind::kNumber || Peek().kind == TokenKind::kVariable || PeekSymbol("-") || PeekSymbol("(");
    statement.node = ReturnStatement{value ? ParseValue() : nullptr};
  } else if (PeekWord("RAISERROR")) {
    statement.node = ParseRaise();
  } else if (TakeWord("PRINT")) {
    statement.node = PrintStatement{ParseValue()};
  } else if (TakeWord("COMMIT") || TakeWord("ROLLBACK")) {
    bool commit = EqualsIgnoreCase(lexed_.TextOf(lexed_.tokens()[at_ - 1]), "COMMIT");
    statement.node = TransactionStatement{commit ? Kind::kCommit : Kind::kRollback};
    SkipTransactionName();
  } else {
    return false;
  }
  return true;
}

void Parser::SkipTransactionName() {
  if (TakeWord("TRAN") || TakeWord("TRANSACTION")) {
    if (PeekName()) ExpectName();
  } else {
    TakeWord("WORK");
  }
}

std::vector<StatementPtr> Parser::ParseStatementsUntilEnd(std::string_view what) {
  std::vector<StatementPtr> statements;
  while (!TakeWord("END")) {
    if (!TakeSymbol(";")) statements.push_back(ParseStatement());
  }
  if (!what.empty()) ExpectWord(what);
  return statements;
}

void Parser::ParseBegin(Statement& statement) {
  ExpectWord("BEGIN");
  if (PeekWord("TRAN") || PeekWord("TRANSACTION")) {
    SkipTransactionName();
    statement.node = TransactionStatement{TransactionStatement::Kind::kBegin};
  } else if (TakeWord("TRY")) {
    TryStatement attempt;
    attempt.attempt = ParseStatementsUntilEnd("TRY");
    ExpectWord("BEGIN");
    ExpectWord("CATCH");
    attempt.rescue = ParseStatementsUntilEnd("CATCH");
    statement.node = std::move(attempt);
  } else {
    statement.node = BlockStatement{ParseStatementsUntilEnd("")};
  }
}

IfStatement Parser::ParseIf() {
  IfStatement choice;
  ExpectWord("IF");
  choice.condition = ParseCondition();
  choice.then_branch = ParseStatement();
  bool separated = PeekSymbol(";") && PeekWord("ELSE", 1);
  if (separated) TakeSymbol(";");
  if (TakeWord("ELSE")) choice.else_branch = ParseStatement();
  return choice;
}

DeclareStatement Parser::ParseDeclare() {
  DeclareStatement declare;
  ExpectWord("DECLARE");
  do {
    DeclareStatement::Variable variable;
    variable.name = ExpectVariable();
    TakeWord("AS");
    if (TakeWord("TABLE")) {
      variable.table = std::make_unique<TableDefinition>(ParseTableDefinition());
    } else {
      variable.type = ParseType();
      if (TakeSymbol("=")) variable.value = ParseValue();
    }
    declare.variables.push_back(std::move(variable));
  } while (TakeSymbol(","));
  return declare;
}

void Parser::ParseSet(Statement& statement) {
  ExpectWord("SET");
  if (Peek().kind == TokenKind::kVariable) {
    Assignment assignment = ParseAssignment();
    statement.node = SetStatement{assignment.variable, std::move(assignment.value)};
    return;
  }
  SetOptionStatement set;
  if (TakeWord("TRANSACTION")) {
    while (PeekName()) ExpectName();
    statement.node = std::move(set);
    return;
  }
  set.option = UpperAscii(ExpectName());
  if (set.option == "IDENTITY_INSERT") set.table = ExpectObjectName();
  if (Peek().kind == TokenKind::kNumber || Peek().kind == TokenKind::kString) {
    ++at_;
  } else {
    set.on = TakeWord("ON");
    if (!set.on) ExpectName();
  }
  statement.node = std::move(set);
}

RaiseStatement Parser::ParseRaise() {
  RaiseStatement raise;
  ExpectWord("RAISERROR");
  ExpectSymbol("(");
  do {
    raise.arguments.push_back(ParseValue());
  } while (TakeSymbol(","));
  ExpectSymbol(")");
  if (TakeWord("WITH")) ExpectName();
  return raise;
}

}  // namespace luming::localdb
