#include "localdb/parser/parser.h"

namespace luming::localdb {

DeleteStatement Parser::ParseDelete() {
  DeleteStatement erase;
  ExpectWord("DELETE");
  erase.top = ParseTop();
  TakeWord("FROM");
  erase.target = Peek().kind == TokenKind::kVariable ? ExpectVariable() : ExpectObjectName();
  SkipTableHint();
  if (PeekWord("FROM")) erase.from = ParseFrom();
  erase.where = ParseWhere();
  return erase;
}

DeleteStatement Parser::ParseTruncate() {
  DeleteStatement erase;
  ExpectWord("TRUNCATE");
  ExpectWord("TABLE");
  erase.target = ExpectObjectName();
  return erase;
}

}  // namespace luming::localdb
