#include "localdb/parser/parser.h"
#include "util/text.h"

namespace luming::localdb {

QueryPtr Parser::ParseQuery() {
  Level level(*this);
  auto query = std::make_unique<Query>();
  if (PeekWord("WITH")) ParseCommonTables(*query);
  query->cores.push_back(ParseCore());
  ParseSetOperators(*query);
  query->order_by = ParseOrderBy();
  return query;
}

void Parser::ParseCommonTables(Query& query) {
  ExpectWord("WITH");
  do {
    CommonTable table;
    table.name = ExpectName();
    if (PeekSymbol("(")) table.columns = ExpectNameList();
    ExpectWord("AS");
    ExpectSymbol("(");
    table.query = ParseQuery();
    ExpectSymbol(")");
    query.common_tables.push_back(std::move(table));
  } while (TakeSymbol(","));
}

void Parser::ParseSetOperators(Query& query) {
  for (;;) {
    if (TakeWord("UNION")) {
      query.operators.push_back(TakeWord("ALL") ? SetOperator::kUnionAll : SetOperator::kUnion);
    } else if (TakeWord("EXCEPT")) {
      query.operators.push_back(SetOperator::kExcept);
    } else if (TakeWord("INTERSECT")) {
      query.operators.push_back(SetOperator::kIntersect);
    } else {
      return;
    }
    bool parenthesis = TakeSymbol("(");
    query.cores.push_back(ParseCore());
    if (parenthesis) ExpectSymbol(")");
  }
}

SelectCore Parser::ParseCore() {
  SelectCore core;
  ExpectWord("SELECT");
  core.distinct = TakeWord("DISTINCT");
  if (!core.distinct) TakeWord("ALL");
  core.top = ParseTop();
  do {
    core.items.push_back(ParseSelectItem());
  } while (TakeSymbol(","));
  if (TakeWord("INTO")) core.into = ExpectObjectName();
  if (PeekWord("FROM")) core.from = ParseFrom();
  core.where = ParseWhere();
  if (TakeWord("GROUP")) {
    ExpectWord("BY");
    do {
      core.group_by.push_back(ParseValue());
    } while (TakeSymbol(","));
  }
  if (TakeWord("HAVING")) core.having = ParseCondition();
  return core;
}

ExprPtr Parser::ParseTop() {
  if (!TakeWord("TOP")) return nullptr;
  ExprPtr top;
  if (TakeSymbol("(")) {
    top = ParseValue();
    ExpectSymbol(")");
  } else if (Peek().kind == TokenKind::kNumber) {
    top = ParseLiteral();
  } else {
    Fail();
  }
  if (PeekWord("PERCENT")) Fail();
  return top;
}

SelectItem Parser::ParseSelectItem() {
  SelectItem item;
  if (TakeSymbol("*")) return item;
  bool dotted_star = PeekName() && PeekSymbol(".", 1) && PeekSymbol("*", 2);
  if (dotted_star) {
    item.star_qualifier = ExpectName();
    at_ += 2;
    return item;
  }
  if (PeekSymbol("=", 1)) {
    if (Peek().kind == TokenKind::kVariable) {
      item.variable = ExpectVariable();
    } else if (PeekName() || Peek().kind == TokenKind::kString) {
      item.alias = ParseColumnAlias();
    } else {
      Fail();
    }
    ExpectSymbol("=");
    item.value = ParseValue();
    return item;
  }
  item.value = ParseValue();
  bool has_alias = TakeWord("AS") || PeekName() || Peek().kind == TokenKind::kString;
  if (has_alias) item.alias = ParseColumnAlias();
  return item;
}

std::string Parser::ParseColumnAlias() {
  if (Peek().kind != TokenKind::kString) return ExpectName();
  std::string alias = lexed_.literals()[Peek().literal].Unquoted();
  ++at_;
  return alias;
}

std::vector<TableRef> Parser::ParseFrom() {
  ExpectWord("FROM");
  std::vector<TableRef> tables;
  do {
    tables.push_back(ParseTable(JoinKind::kComma));
    ParseJoins(tables);
  } while (TakeSymbol(","));
  return tables;
}

void Parser::ParseJoins(std::vector<TableRef>& tables) {
  for (JoinKind join; TakeJoin(join);) {
    tables.push_back(ParseTable(join));
    if (join == JoinKind::kCross) continue;
    ExpectWord("ON");
    tables.back().on = ParseCondition();
  }
}

bool Parser::TakeJoin(JoinKind& join) {
  if (TakeWord("JOIN")) {
    join = JoinKind::kInner;
    return true;
  }
  if (TakeWord("INNER")) {
    join = JoinKind::kInner;
  } else if (TakeWord("CROSS")) {
    join = JoinKind::kCross;
  } else if (PeekAnyWord({"LEFT", "RIGHT", "FULL"})) {
    join = PeekWord("LEFT") ? JoinKind::kLeft : PeekWord("RIGHT") ? JoinKind::kRight : JoinKind::kFull;
    ++at_;
    TakeWord("OUTER");
  } else {
    return false;
  }
  ExpectWord("JOIN");
  return true;
}

TableRef Parser::ParseTable(JoinKind join) {
  TableRef table;
  table.join = join;
  if (TakeSymbol("(")) {
    table.derived = ParseQuery();
    ExpectSymbol(")");
  } else if (Peek().kind == TokenKind::kVariable) {
    table.name = ExpectVariable();
  } else {
    table.name = ExpectObjectName();
  }
  table.alias = table.name;
  bool has_alias = TakeWord("AS") || PeekName();
  if (has_alias) table.alias = ExpectName();
  if (table.derived && table.alias.empty()) Fail();
  if (table.derived && PeekSymbol("(")) table.derived_columns = ExpectNameList();
  SkipTableHint();
  return table;
}

// Locking is the engine's own business: hints are read and forgotten.
void Parser::SkipTableHint() {
  if (!PeekSymbol("(") && !(PeekWord("WITH") && PeekSymbol("(", 1))) return;
  TakeWord("WITH");
  ExpectNameList();
}

std::vector<OrderItem> Parser::ParseOrderBy() {
  std::vector<OrderItem> items;
  if (!TakeWord("ORDER")) return items;
  ExpectWord("BY");
  do {
    OrderItem item;
    item.value = ParseValue();
    item.descending = TakeWord("DESC");
    if (!item.descending) TakeWord("ASC");
    items.push_back(std::move(item));
  } while (TakeSymbol(","));
  return items;
}

ExprPtr Parser::ParseWhere() {
  return TakeWord("WHERE") ? ParseCondition() : nullptr;
}

}  // namespace luming::localdb
