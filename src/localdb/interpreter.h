#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "localdb/ast.h"
#include "localdb/catalogue.h"
#include "localdb/executor.h"
#include "localdb/frame.h"
#include "localdb/plan_cache.h"
#include "localdb/result_listener.h"
#include "localdb/transaction.h"
#include "platform/database.h"

namespace luming::localdb {

/// What the statements of one connection work with.
struct Session {
  Session(StoreHandle handle, const Clock& clock, std::string database);

  StoreHandle store;
  Catalogue catalogue;
  FunctionContext functions;
  Frame frame;  ///< @@variables and the temporary tables of the connection
  Variable& row_count;
  Variable& error;
  Variable& identity;
  Executor executor;
  Transaction transaction;
  PlanCache plans;
  bool xact_abort = false;
  bool no_count = false;
  std::string identity_insert;  ///< the table whose identity column may be written
  bool system_tables_filled = false;
  bool rolled_back = false;  ///< set by the engine
  std::int64_t data_version = 0;

  /// Reads the catalogue again when another program has changed it or a rollback has undone definitions.
  void RefreshCatalogue();
  void ReloadCatalogue();
  void ForgetLostTemporaries();
};

/// Runs the statements of one text, and of the procedures it calls.
class Interpreter {
 public:
  /// @param listener is told what the statements give, instead of keeping it; may be null
  explicit Interpreter(Session& session, ResultListener* listener = nullptr) : session_(session), listener_(listener) {}

  /// Runs a batch to its end, or to an error that ends it. An error that ends only its statement is thrown behind the
  /// last statement, so that what stands behind it has run; a listener is told at once instead.
  std::vector<Recordset> RunBatch(const std::vector<StatementPtr>& statements, const LexedText& lexed);

  /// Runs a plan that is no part of a batch with variables.
  std::vector<Recordset> RunPlan(Plan& plan, const Bindings& bindings);

 private:
  enum class Flow : std::uint8_t { kNext, kBreak, kContinue, kReturn };
  /// What belongs to the running batch or procedure.
  struct Body {
    const LexedText& lexed;
    Frame& frame;
    bool is_procedure;
  };

  Flow RunAll(const std::vector<StatementPtr>& statements, Body& body);
  Flow Run(const Statement& statement, Body& body);
  Flow RunNode(const Statement& statement, Body& body);
  void HandleError(const SqlError& error);

  // Statements of data.
  Plan& FindPlan(const Statement& statement, Body& body);
  std::unique_ptr<Plan> Translate(const Statement& statement, const Bindings& bindings);
  Plan& Ready(Plan& plan);
  void RunData(const Statement& statement, Body& body);
  void RunChange(Plan& plan, const Bindings& bindings);
  void RunAssigning(Plan& plan, const Bindings& bindings, Body& body);
  void RunSelectInto(const Statement& statement, const SelectStatement& select, Body& body);
  void RunInsertExec(const InsertStatement& insert, Body& body);
  void InsertRow(const Table& table, const std::vector<const Column*>& columns, Recordset& row, const Body& body);
  Bindings BindingsOf(const Body& body, std::size_t first_literal) const {
    return {body.lexed, first_literal, body.frame};
  }

  // Values and conditions.
  Plan& ExpressionPlan(const Expr& expr, const SqlType* type, Body& body);
  Datum Evaluate(const Expr& expr, const SqlType& type, Body& body);
  std::string EvaluateText(const Expr& expr, Body& body);
  bool Holds(const Expr& condition, Body& body);
  void Assign(const std::string& variable, const Datum& value, const SqlType& type, Body& body);

  // Control.
  void Declare(const DeclareStatement& declare, Body& body);
  Flow RunIf(const IfStatement& choice, Body& body);
  Flow RunWhile(const WhileStatement& loop, Body& body);
  Flow RunTry(const TryStatement& attempt, Body& body);
  void Raise(const RaiseStatement& raise, Body& body);
  void SetOption(const SetOptionStatement& set);
  void RunTransaction(const TransactionStatement& statement);

  // Procedures.
  void RunExec(const ExecStatement& exec, Body& body);
  void RunText(const std::string& text, Body& body);
  void RunProcedure(const Procedure& procedure, const ExecStatement& exec, Body& body);
  void PassArguments(const Procedure& procedure, const ExecStatement& exec, Body& caller, Frame& frame);
  std::optional<Datum> ArgumentValue(const Argument& argument, const SqlType& type, Body& caller);
  void ReturnOutputs(const Procedure& procedure, const ExecStatement& exec, Body& caller, Frame& frame);
  void RunSystemProcedure(const ExecStatement& exec, Body& body);

  // Definitions.
  bool RunDefinition(const Statement& statement, Body& body);
  void CreateTemporary(const std::string& name, const TableDefinition& definition, const LexedText& lexed,
                       Frame& owner);
  void DropTemporary(const std::string& name, Frame& owner);
  void DropTemporaries(Frame& frame);

  void SetRowCount(std::int64_t count);
  void TellChanged(std::int64_t count);
  void RunQuery(Plan& plan, const Bindings& bindings);

  Session& session_;
  ResultListener* listener_;
  std::vector<Recordset> results_;
  std::optional<SqlError> first_error_;
  std::int64_t return_value_ = 0;
  int depth_ = 0;
  int tries_ = 0;
  std::vector<std::unique_ptr<Plan>> transient_plans_;
};

}  // namespace luming::localdb
