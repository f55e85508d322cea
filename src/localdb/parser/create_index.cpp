#include "localdb/parser/parser.h"

namespace luming::localdb {

CreateIndexStatement Parser::ParseCreateIndex() {
  CreateIndexStatement create;
  ExpectWord("CREATE");
  create.unique = TakeWord("UNIQUE");
  if (!TakeWord("CLUSTERED")) TakeWord("NONCLUSTERED");
  ExpectWord("INDEX");
  create.name = ExpectName();
  ExpectWord("ON");
  create.table = ExpectObjectName();
  ExpectSymbol("(");
  do {
    std::string column = ExpectName();
    bool descending = TakeWord("DESC");
    if (!descending) TakeWord("ASC");
    create.columns.emplace_back(std::move(column), descending);
  } while (TakeSymbol(","));
  ExpectSymbol(")");
  if (TakeWord("INCLUDE")) ExpectNameList();
  SkipIndexOptions();
  return create;
}

// Fill factors and file groups have no meaning here.
void Parser::SkipIndexOptions() {
  if (PeekWord("WITH") && PeekSymbol("(", 1)) {
    at_ += 2;
    do {
      ExpectName();
      ExpectSymbol("=");
      ++at_;
    } while (TakeSymbol(","));
    ExpectSymbol(")");
  }
  if (PeekWord("ON") && (Peek(1).kind == TokenKind::kQuoted || PeekWord("PRIMARY", 1))) at_ += 2;
}

}  // namespace luming::localdb
