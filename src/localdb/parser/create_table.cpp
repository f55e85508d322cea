#include "localdb/parser/parser.h"

namespace luming::localdb {

CreateTableStatement Parser::ParseCreateTable() {
  CreateTableStatement create;
  ExpectWord("CREATE");
  ExpectWord("TABLE");
  create.name = ExpectObjectName();
  create.definition = ParseTableDefinition();
  if (TakeWord("ON")) ExpectName();
  return create;
}

AlterTableStatement Parser::ParseAlterTable() {
  AlterTableStatement alter;
  ExpectWord("ALTER");
  ExpectWord("TABLE");
  alter.name = ExpectObjectName();
  ExpectWord("ADD");
  do {
    ParseTableItem(alter.added);
  } while (TakeSymbol(","));
  return alter;
}

TableDefinition Parser::ParseTableDefinition() {
  TableDefinition definition;
  ExpectSymbol("(");
  do {
    if (PeekSymbol(")") && !definition.columns.empty()) break;
    ParseTableItem(definition);
  } while (TakeSymbol(","));
  ExpectSymbol(")");
  return definition;
}

void Parser::ParseTableItem(TableDefinition& definition) {
  if (PeekAnyWord({"CONSTRAINT", "PRIMARY", "UNIQUE", "CHECK", "FOREIGN"})) {
    definition.constraints.push_back(ParseConstraint(""));
  } else {
    ParseColumnDefinition(definition);
  }
}

void Parser::ParseColumnDefinition(TableDefinition& definition) {
  ColumnDefinition column;
  column.name = ExpectName();
  column.type = ParseType(1, &column.type_name);
  while (ParseColumnOption(column, definition)) continue;
  definition.columns.push_back(std::move(column));
}

bool Parser::ParseColumnOption(ColumnDefinition& column, TableDefinition& definition) {
  if (TakeWord("NULL")) {
    column.nullable = true;
  } else if (TakeWord("NOT")) {
    ExpectWord("NULL");
    column.nullable = false;
  } else if (TakeWord("IDENTITY")) {
    column.identity = true;
    if (TakeSymbol("(")) {
      column.identity_seed = ExpectInteger();
      ExpectSymbol(",");
      ExpectInteger();
      ExpectSymbol(")");
    }
  } else if (TakeWord("COLLATE")) {
    ExpectName();
  } else if (PeekWord("DEFAULT") || (PeekWord("CONSTRAINT") && PeekWord("DEFAULT", 2))) {
    if (TakeWord("CONSTRAINT")) ExpectName();
    ExpectWord("DEFAULT");
    column.default_value = ParseValue();
  } else if (PeekAnyWord({"CONSTRAINT", "PRIMARY", "UNIQUE", "CHECK", "FOREIGN", "REFERENCES"})) {
    definition.constraints.push_back(ParseConstraint(column.name));
  } else {
    return false;
  }
  return true;
}

TableConstraint Parser::ParseConstraint(const std::string& column) {
  using Kind = TableConstraint::Kind;
  TableConstraint constraint;
  if (TakeWord("CONSTRAINT")) constraint.name = ExpectName();
  if (!column.empty()) constraint.columns = {column};
  if (TakeWord("CHECK")) {
    constraint.kind = Kind::kCheck;
    ExpectSymbol("(");
    constraint.check = ParseCondition();
    ExpectSymbol(")");
    return constraint;
  }
  if (PeekAnyWord({"FOREIGN", "REFERENCES"})) {
    constraint.kind = Kind::kForeignKey;
    if (TakeWord("FOREIGN")) {
      ExpectWord("KEY");
      if (column.empty()) constraint.columns = ExpectNameList();
    }
    ExpectWord("REFERENCES");
    constraint.parent = ExpectObjectName();
    if (PeekSymbol("(")) constraint.parent_columns = ExpectNameList();
    return constraint;
  }
  if (TakeWord("UNIQUE")) {
    constraint.kind = Kind::kUnique;
  } else {
    ExpectWord("PRIMARY");
    ExpectWord("KEY");
  }
  if (!TakeWord("CLUSTERED")) TakeWord("NONCLUSTERED");
  if (TakeSymbol("(")) {
    constraint.columns.clear();
    do {
      constraint.columns.push_back(ExpectName());
      if (!TakeWord("ASC")) TakeWord("DESC");
    } while (TakeSymbol(","));
    ExpectSymbol(")");
  }
  if (constraint.columns.empty()) Fail();
  SkipIndexOptions();
  return constraint;
}

}  // namespace luming::localdb
