#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "localdb/ast.h"
#include "localdb/catalogue.h"
#include "localdb/frame.h"
#include "localdb/plan.h"

namespace luming::localdb {

/// Where a translation finds the meaning of names.
struct TranslationContext {
  const Catalogue& catalogue;
  const Frame& frame;
  const LexedText& lexed;
  std::size_t first_literal = 0;  ///< of the statement
  /// Literals are written into the engine's text instead of being bound: for defaults and checks, which outlive their
  /// statement, and for statements with more literals than the engine binds.
  bool inline_literals = false;
};

/// Puts one statement into the engine's words. Names are resolved and types worked out here, so unknown tables and
/// columns (208, 207) show before anything runs. One translator serves one statement.
class Translator {
 public:
  explicit Translator(const TranslationContext& context);

  std::unique_ptr<Plan> Select(const Query& query);
  std::unique_ptr<Plan> Insert(const InsertStatement& insert);
  std::unique_ptr<Plan> Update(const UpdateStatement& update);
  std::unique_ptr<Plan> Delete(const DeleteStatement& erase);
  /// A query of one row and column: the value, in `type` when one is given.
  std::unique_ptr<Plan> Value(const Expr& value, const SqlType* type);
  /// A query of one row and column: 1 if the condition holds.
  std::unique_ptr<Plan> Condition(const Expr& condition);
  /// A constant in the engine's words, of the type of a column.
  std::string Default(const Expr& value, const SqlType& type);
  /// A check of a table's rows in the engine's words.
  std::string Check(const Expr& condition, const Table& table);

  /// A value in the engine's words with its type.
  struct Fragment {
    std::string sql;
    SqlType type;
    int parameter = -1;      ///< a bare parameter, whose conversion can still be chosen
    bool column = false;     ///< a bare column: has its collation and perhaps an index
    bool unchecked = false;  ///< whole number worked out by the engine, perhaps outside the range of its type
  };

 private:
  struct ScopeTable {
    std::string alias;
    const std::vector<Column>* columns;
  };
  /// The tables that a name can belong to; the parent is the query around.
  struct Scope {
    std::vector<ScopeTable> tables;
    const Scope* parent = nullptr;
  };
  /// A query in the engine's words with its columns.
  struct QuerySql {
    std::string sql;
    std::vector<Column> columns;
    std::vector<std::string> variables;
  };
  /// What the values of a query are stored in.
  using Targets = std::vector<const Column*>;
  struct CommonTableScope {
    std::string name;
    const std::vector<Column>* columns;
  };
  enum class Purpose : std::uint8_t { kCompare, kStore, kCast };

  // translator.cpp
  std::unique_ptr<Plan> Finish(std::string sql);
  const Table& RequireTable(const std::string& name);
  std::string Physical(const Table& table);
  Fragment AddParameter(PlanParameter parameter, const SqlType& type);
  const Literal& LiteralOf(const Expr& expr) const;
  void Guard(const Expr& literal, PlanGuard guard);
  /// The plan fits the same literal alone.
  void GuardText(const Expr& literal);
  std::vector<Column>* Keep(std::vector<Column> columns);

  // expression.cpp
  Fragment Translate(const Expr& expr, const Scope& scope);
  Fragment TranslateLiteral(const Expr& expr);
  Fragment TranslateVariable(const Expr& expr);
  Fragment TranslateColumn(const Expr& expr, const Scope& scope);
  Fragment TranslateNegate(const Expr& expr, const Scope& scope);
  Fragment TranslateArithmetic(const Expr& expr, const Scope& scope);
  Fragment Concatenate(Fragment left, Fragment right);
  Fragment TranslateCase(const Expr& expr, const Scope& scope);
  Fragment TranslateCast(const Expr& expr, const Scope& scope);
  Fragment TranslateSubquery(const Expr& expr, const Scope& scope);
  std::vector<Fragment> TranslateAll(const std::vector<ExprPtr>& exprs, const Scope& scope);

  bool HasOneRow(const Query& query) const;

  // grouping.cpp
  static bool IsAggregate(const Expr& expr);
  static bool HoldsAggregate(const Expr& expr);
  void CheckGrouping(const SelectCore& core, const Scope& scope) const;
  void RequireGrouped(const Expr& expr, const SelectCore& core, const Scope& scope) const;

  // coercion.cpp
  /// Makes the fragment a value of the type.
  void Coerce(Fragment& value, const SqlType& type, Purpose purpose);
  void CoerceParameter(Fragment& value, const SqlType& type, Purpose purpose);
  /// Brings two values to a type in which they compare; gives the collation to add, if any.
  std::string_view MakeComparable(Fragment& left, Fragment& right);
  std::string Collated(const Fragment& value) const;
  void Unguard(const Fragment& value);

  // condition.cpp
  std::string TranslateCondition(const Expr& expr, const Scope& scope);
  std::string TranslateCompare(const Expr& expr, const Scope& scope);
  std::string TranslateIn(const Expr& expr, const Scope& scope);
  std::string TranslateBetween(const Expr& expr, const Scope& scope);
  std::string TranslateLike(const Expr& expr, const Scope& scope);
  LikeClass ClassOfPattern(const Expr& pattern);

  // functions.cpp
  Fragment TranslateFunction(const Expr& expr, const Scope& scope);
  Fragment TranslateAggregate(const Expr& expr, const Scope& scope);
  Fragment TranslateDatePart(const Expr& expr, const Scope& scope);
  Fragment TranslateSpecial(const Expr& expr, const Scope& scope);
  Fragment TranslateNullChoice(const Expr& expr, const Scope& scope);
  Fragment TranslateWindow(const Expr& expr, const Scope& scope);

  // select.cpp
  QuerySql TranslateQuery(const Query& query, const Scope* parent, const Targets* targets = nullptr);
  QuerySql TranslateCore(const SelectCore& core, const Query& query, const Scope* parent, const Targets* targets);
  void TranslateItems(const SelectCore& core, const Scope& scope, const Targets* targets, QuerySql& out,
                      std::string& list);
  void TranslateStar(const SelectItem& item, const Scope& scope, const Targets* targets, QuerySql& out,
                     std::string& list);
  void StoreIn(const Targets* targets, std::size_t place, Fragment& value);
  std::string TranslateFrom(const std::vector<TableRef>& from, Scope& scope);
  std::string TranslateTable(const TableRef& ref, Scope& scope);
  std::string TranslateOrderBy(const std::vector<OrderItem>& items, const Scope& scope, const QuerySql& select);
  std::string TranslateOrderItem(const Expr& value, const Scope& scope, const QuerySql& select);
  std::string TranslateTop(const Expr& top, const Scope& scope);
  std::string CommonTablesSql(const Query& query, const Scope* parent);

  // insert.cpp, update.cpp, delete.cpp
  Targets InsertTargets(const InsertStatement& insert, const Table& table);
  std::string InsertRow(const std::vector<ExprPtr>& row, const Targets& targets, const Targets& defaults);
  std::string DefaultsOf(const Targets& columns);
  Fragment AssignedValue(const Assignment& assignment, const Column& column, const Scope& scope);
  std::string JoinedUpdate(const UpdateStatement& update);
  /// The table that a statement with its own FROM changes, and the alias by which it stands there.
  const Table& JoinedTarget(const std::string& target, const std::vector<TableRef>& from, std::string& alias);

  TranslationContext context_;
  std::unique_ptr<Plan> plan_;
  std::vector<bool> guarded_;  ///< of each parameter: its number's type was taken into account
  std::deque<std::vector<Column>> kept_columns_;
  std::vector<CommonTableScope> common_tables_;
};

}  // namespace luming::localdb
