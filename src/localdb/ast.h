#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "localdb/lexer.h"
#include "localdb/types.h"

// What the parser makes of a text. Names are without their brackets, in the spelling of the text.
namespace luming::localdb {

struct Query;
struct Expr;
using ExprPtr = std::unique_ptr<Expr>;
using QueryPtr = std::unique_ptr<Query>;

enum class ExprKind : std::uint8_t {
  // Values.
  kLiteral,  ///< `literal`
  kNull,
  kDefault,   ///< the word DEFAULT in a list of values
  kColumn,    ///< `qualifier`, `name`
  kVariable,  ///< `name` with its @
  kNegate,
  kArithmetic,  ///< `name` is the operator
  kFunction,    ///< `name`, `args`; `star` for COUNT(*), `flag` for DISTINCT, `over`
  kCase,        ///< `flag`: args are operand, then pairs; else pairs of condition and value; `has_else`: one more
  kCast,        ///< `type`; with a second arg the style of CONVERT
  kSubquery,
  // Conditions; `flag` is NOT.
  kCompare,  ///< `name` is the operator
  kAnd,
  kOr,
  kNot,
  kIn,  ///< args: operand and items; or operand and `query`
  kBetween,
  kLike,  ///< args: operand, pattern, perhaps the escape character
  kIsNull,
  kExists,
};

struct OrderItem {
  ExprPtr value;
  bool descending = false;
};

struct Window {
  std::vector<ExprPtr> partition_by;
  std::vector<OrderItem> order_by;
};

struct Expr {
  explicit Expr(ExprKind k) : kind(k) {}

  bool IsCondition() const { return kind >= ExprKind::kCompare; }

  ExprKind kind;
  bool flag = false;
  bool star = false;
  bool has_else = false;
  std::uint32_t literal = 0;
  SqlType type;
  std::string name;
  std::string qualifier;
  std::vector<ExprPtr> args;
  QueryPtr query;
  std::unique_ptr<Window> over;
};

enum class JoinKind : std::uint8_t { kComma, kInner, kLeft, kRight, kFull, kCross };

/// One table of a FROM list and how it is joined to those before it.
struct TableRef {
  JoinKind join = JoinKind::kComma;
  std::string name;
  std::string alias;  ///< the name again where none is given
  QueryPtr derived;   ///< instead of a name
  std::vector<std::string> derived_columns;
  ExprPtr on;
};

struct SelectItem {
  ExprPtr value;  ///< null for a star
  std::string alias;
  std::string variable;        ///< the target of SELECT @x = …
  std::string star_qualifier;  ///< of T.*
};

struct SelectCore {
  bool distinct = false;
  ExprPtr top;
  std::vector<SelectItem> items;
  std::string into;
  std::vector<TableRef> from;
  ExprPtr where;
  std::vector<ExprPtr> group_by;
  ExprPtr having;
};

enum class SetOperator : std::uint8_t { kUnion, kUnionAll, kExcept, kIntersect };

struct CommonTable {
  std::string name;
  std::vector<std::string> columns;
  QueryPtr query;
};

struct Query {
  std::vector<CommonTable> common_tables;
  std::vector<SelectCore> cores;
  std::vector<SetOperator> operators;  ///< one less than cores
  std::vector<OrderItem> order_by;
};

struct Statement;
using StatementPtr = std::unique_ptr<Statement>;

struct SelectStatement {
  QueryPtr query;
};

struct Argument {
  std::string parameter;  ///< of @p = value; empty by position
  ExprPtr value;
  bool output = false;
};

struct ExecStatement {
  std::string return_variable;
  std::string procedure;
  std::vector<Argument> arguments;
  ExprPtr text;  ///< EXEC('…') instead of a procedure
};

struct InsertStatement {
  std::string table;
  std::vector<std::string> columns;
  std::vector<std::vector<ExprPtr>> rows;  ///< without rows, query or exec: DEFAULT VALUES
  QueryPtr query;
  std::unique_ptr<ExecStatement> exec;
};

struct Assignment {
  std::string column;
  std::string variable;
  ExprPtr value;  ///< of += and its kin the whole sum
};

struct UpdateStatement {
  std::string target;
  ExprPtr top;
  std::vector<Assignment> assignments;
  std::vector<TableRef> from;
  ExprPtr where;
};

struct DeleteStatement {
  std::string target;
  ExprPtr top;
  std::vector<TableRef> from;
  ExprPtr where;
};

struct ColumnDefinition {
  std::string name;
  SqlType type;
  std::string type_name;  ///< as written
  std::optional<bool> nullable;
  bool identity = false;
  std::int64_t identity_seed = 1;
  ExprPtr default_value;
};

struct TableConstraint {
  enum class Kind : std::uint8_t { kPrimaryKey, kUnique, kCheck, kForeignKey };
  Kind kind = Kind::kPrimaryKey;
  std::string name;
  std::vector<std::string> columns;
  ExprPtr check;
  std::string parent;
  std::vector<std::string> parent_columns;
};

struct TableDefinition {
  std::vector<ColumnDefinition> columns;
  std::vector<TableConstraint> constraints;
};

struct CreateTableStatement {
  std::string name;
  TableDefinition definition;
};

struct AlterTableStatement {
  std::string name;
  TableDefinition added;
};

struct CreateIndexStatement {
  std::string name;
  std::string table;
  bool unique = false;
  std::vector<std::pair<std::string, bool>> columns;  ///< true: descending
};

struct Parameter {
  std::string name;
  SqlType type;
  ExprPtr default_value;
  bool output = false;
};

struct CreateProcedureStatement {
  std::string name;
  bool alter = false;
  std::vector<Parameter> parameters;
  std::vector<StatementPtr> body;
};

enum class ObjectKind : std::uint8_t { kTable, kIndex, kProcedure };

struct DropStatement {
  ObjectKind kind = ObjectKind::kTable;
  std::vector<std::string> names;
  bool if_exists = false;
};

struct DeclareStatement {
  struct Variable {
    std::string name;
    SqlType type;
    ExprPtr value;
    std::unique_ptr<TableDefinition> table;
  };
  std::vector<Variable> variables;
};

struct SetStatement {
  std::string variable;
  ExprPtr value;
};

struct SetOptionStatement {
  std::string option;  ///< upper case
  std::string table;   ///< of IDENTITY_INSERT
  bool on = false;
};

struct IfStatement {
  ExprPtr condition;
  StatementPtr then_branch;
  StatementPtr else_branch;
};

struct WhileStatement {
  ExprPtr condition;
  StatementPtr body;
};

struct BlockStatement {
  std::vector<StatementPtr> statements;
};

struct TryStatement {
  std::vector<StatementPtr> attempt;
  std::vector<StatementPtr> rescue;
};

struct JumpStatement {
  bool is_break = false;  ///< else CONTINUE
};

struct ReturnStatement {
  ExprPtr value;
};

struct RaiseStatement {
  std::vector<ExprPtr> arguments;  ///< message, severity, state, then what takes the place of %s and %d
};

struct PrintStatement {
  ExprPtr value;
};

struct TransactionStatement {
  enum class Kind : std::uint8_t { kBegin, kCommit, kRollback };
  Kind kind = Kind::kBegin;
};

struct Statement {
  std::variant<SelectStatement, InsertStatement, UpdateStatement, DeleteStatement, CreateTableStatement,
               AlterTableStatement, CreateIndexStatement, CreateProcedureStatement, DropStatement, ExecStatement,
               DeclareStatement, SetStatement, SetOptionStatement, IfStatement, WhileStatement, BlockStatement,
               TryStatement, JumpStatement, ReturnStatement, RaiseStatement, PrintStatement, TransactionStatement>
      node;
  std::size_t first_token = 0;
  std::size_t last_token = 0;  ///< behind the statement
};

/// A text with its statements. The statements refer to the literals of the text, so it stays where it was made.
struct Script {
  explicit Script(std::string source) : text(std::move(source)) { lexed.Lex(text); }
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  const std::string text;
  LexedText lexed;
  std::vector<StatementPtr> statements;
};

}  // namespace luming::localdb
