#include "localdb/parser/parser.h"

namespace luming::localdb {

DropStatement Parser::ParseDrop() {
  DropStatement drop;
  ExpectWord("DROP");
  if (TakeWord("TABLE")) {
    drop.kind = ObjectKind::kTable;
  } else if (TakeWord("INDEX")) {
    drop.kind = ObjectKind::kIndex;
  } else if (TakeWord("PROC") || TakeWord("PROCEDURE")) {
    drop.kind = ObjectKind::kProcedure;
  } else {
    Fail();
  }
  if (TakeWord("IF")) {
    ExpectWord("EXISTS");
    drop.if_exists = true;
  }
  do {
    drop.names.push_back(ExpectObjectName());
    // An index is dropped with its table named behind it or in front of it: "I ON T" or "T.I".
    if (drop.kind == ObjectKind::kIndex && TakeWord("ON")) ExpectObjectName();
  } while (TakeSymbol(","));
  return drop;
}

}  // namespace luming::localdb
