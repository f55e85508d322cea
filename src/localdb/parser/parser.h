#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "localdb/ast.h"

namespace luming::localdb {

/// Recursive descent over the tokens of one batch. Every error is SqlError 102 or 156 with the text near it, or 191
/// where the text is nested deeper than any stack should be.
class Parser {
 public:
  explicit Parser(const LexedText& lexed) : lexed_(lexed) {}

  std::vector<StatementPtr> ParseBatch();

 private:
  // cursor.cpp: tokens one by one.
  const Token& Peek(std::size_t ahead = 0) const;
  std::string_view PeekText(std::size_t ahead = 0) const { return lexed_.TextOf(Peek(ahead)); }
  bool PeekWord(std::string_view word, std::size_t ahead = 0) const;
  bool PeekAnyWord(std::initializer_list<std::string_view> words) const;
  bool PeekSymbol(std::string_view symbol, std::size_t ahead = 0) const;
  bool PeekName() const;  ///< a quoted name or a word that is not reserved
  bool TakeWord(std::string_view word);
  bool TakeSymbol(std::string_view symbol);
  void ExpectWord(std::string_view word);
  void ExpectSymbol(std::string_view symbol);
  std::string ExpectName();
  std::string ExpectObjectName();  ///< with or without database and schema; these are dropped unless they are "sys"
  std::string ExpectVariable();
  int ExpectInteger();
  std::vector<std::string> ExpectNameList();  ///< in parentheses
  [[noreturn]] void Fail() const;
  bool PeekReserved(std::size_t ahead = 0) const;

  /// Counts how deep the text is nested.
  class Level {
   public:
    explicit Level(Parser& parser);
    ~Level() { --parser_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Parser& parser_;
  };

  // expression.cpp
  ExprPtr ParseValue();
  ExprPtr ParseCondition();
  ExprPtr ParseOr();
  ExprPtr ParseAnd();
  ExprPtr ParseNot();
  ExprPtr ParsePredicate();
  ExprPtr ParsePredicateTail(ExprPtr operand);
  ExprPtr ParseIn(ExprPtr operand);
  ExprPtr ParseSum();
  ExprPtr ParseProduct();
  ExprPtr ParseUnary();
  ExprPtr ParsePrimary();
  ExprPtr ParseParenthesis();
  ExprPtr ParseColumn();
  ExprPtr ParseFunction();
  ExprPtr ParseCase();
  ExprPtr ParseCast();
  ExprPtr ParseConvert();
  ExprPtr ParseLiteral();
  std::unique_ptr<Window> ParseWindow();
  ExprPtr RequireValue(ExprPtr expr) const;
  /// @param default_length of a text type whose length is not written
  SqlType ParseType(std::int32_t default_length = 1, std::string* written = nullptr);

  // select.cpp
  QueryPtr ParseQuery();
  void ParseCommonTables(Query& query);
  void ParseSetOperators(Query& query);
  SelectCore ParseCore();
  SelectItem ParseSelectItem();
  std::string ParseColumnAlias();
  ExprPtr ParseTop();
  std::vector<TableRef> ParseFrom();
  TableRef ParseTable(JoinKind join);
  void ParseJoins(std::vector<TableRef>& tables);
  bool TakeJoin(JoinKind& join);
  void SkipTableHint();
  std::vector<OrderItem> ParseOrderBy();
  ExprPtr ParseWhere();

  // insert.cpp, update.cpp, delete.cpp, create_table.cpp, create_index.cpp, create_procedure.cpp, drop.cpp, exec.cpp
  InsertStatement ParseInsert();
  UpdateStatement ParseUpdate();
  Assignment ParseAssignment();
  DeleteStatement ParseDelete();
  DeleteStatement ParseTruncate();
  CreateTableStatement ParseCreateTable();
  AlterTableStatement ParseAlterTable();
  TableDefinition ParseTableDefinition();
  void ParseTableItem(TableDefinition& definition);
  void ParseColumnDefinition(TableDefinition& definition);
  bool ParseColumnOption(ColumnDefinition& column, TableDefinition& definition);
  TableConstraint ParseConstraint(const std::string& column);
  CreateIndexStatement ParseCreateIndex();
  void SkipIndexOptions();
  CreateProcedureStatement ParseCreateProcedure();
  Parameter ParseParameter();
  DropStatement ParseDrop();
  ExecStatement ParseExec();
  ExecStatement ParseCall();
  Argument ParseArgument();
  ExprPtr ParseArgumentValue();

  // control.cpp
  std::vector<StatementPtr> ParseStatementsUntilEnd(std::string_view what);
  StatementPtr ParseStatement();
  void ParseStatementNode(Statement& statement);
  bool ParseDataStatement(Statement& statement);
  bool ParseDefinitionStatement(Statement& statement);
  bool ParseControlStatement(Statement& statement);
  DeclareStatement ParseDeclare();
  void ParseSet(Statement& statement);
  IfStatement ParseIf();
  void ParseBegin(Statement& statement);
  RaiseStatement ParseRaise();
  void SkipTransactionName();

  const LexedText& lexed_;
  std::size_t at_ = 0;
  int depth_ = 0;
  bool in_procedure_ = false;
};

}  // namespace luming::localdb
