#include "localdb/parser/parser.h"

namespace luming::localdb {

InsertStatement Parser::ParseInsert() {
  InsertStatement insert;
  ExpectWord("INSERT");
  TakeWord("INTO");
  insert.table = Peek().kind == TokenKind::kVariable ? ExpectVariable() : ExpectObjectName();
  if (PeekSymbol("(") && !PeekWord("SELECT", 1)) insert.columns = ExpectNameList();
  if (TakeWord("DEFAULT")) {
    ExpectWord("VALUES");
  } else if (TakeWord("VALUES")) {
    do {
      ExpectSymbol("(");
      std::vector<ExprPtr> row;
      do {
        row.push_back(ParseValue());
      } while (TakeSymbol(","));
      ExpectSymbol(")");
      insert.rows.push_back(std::move(row));
    } while (TakeSymbol(","));
  } else if (PeekWord("EXEC") || PeekWord("EXECUTE")) {
    insert.exec = std::make_unique<ExecStatement>(ParseExec());
  } else {
    bool parenthesis = TakeSymbol("(");
    insert.query = ParseQuery();
    if (parenthesis) ExpectSymbol(")");
  }
  return insert;
}

}  // namespace luming::localdb
