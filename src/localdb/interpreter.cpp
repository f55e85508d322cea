#include "localdb/interpreter.h"

#include "localdb/errors.h"
#include "util/text.h"

namespace luming::localdb {

std::vector<Recordset> Interpreter::RunBatch(const std::vector<StatementPtr>& statements, const LexedText& lexed) {
  Frame frame(&session_.frame);
  Body body{lexed, frame, false};
  try {
    RunAll(statements, body);
  } catch (const SqlError&) {
    DropTemporaries(frame);
    throw;
  }
  DropTemporaries(frame);
  if (first_error_) throw SqlError(*first_error_);
  return std::move(results_);
}

std::vector<Recordset> Interpreter::RunPlan(Plan& plan, const Bindings& bindings) {
  try {
    if (plan.is_query) {
      RunQuery(plan, bindings);
    } else {
      RunChange(plan, bindings);
    }
    session_.error.value = std::int64_t{0};
  } catch (const SqlError& error) {
    HandleError(error);
    throw;
  }
  return std::move(results_);
}

// What an error does to the transaction, whoever deals with it.
void Interpreter::HandleError(const SqlError& error) {
  session_.error.value = std::int64_t{error.native()};
  session_.transaction.CheckEngine();
  bool rolls_back = error.reach() == Reach::kTransaction || session_.xact_abort;
  if (rolls_back && session_.transaction.IsOpen()) session_.transaction.Rollback();
}

Interpreter::Flow Interpreter::RunAll(const std::vector<StatementPtr>& statements, Body& body) {
  for (const StatementPtr& statement : statements) {
    Flow flow = Run(*statement, body);
    if (flow != Flow::kNext) return flow;
  }
  return Flow::kNext;
}

Interpreter::Flow Interpreter::Run(const Statement& statement, Body& body) {
  try {
    return RunNode(statement, body);
  } catch (const SqlError& error) {
    HandleError(error);
    bool ends_statement_only = error.reach() == Reach::kStatement && !session_.xact_abort;
    if (tries_ > 0 || !ends_statement_only) throw;
    if (listener_) {
      listener_->Failed(error);
    } else if (!first_error_) {
      first_error_ = error;
    }
    return Flow::kNext;
  }
}

Interpreter::Flow Interpreter::RunNode(const Statement& statement, Body& body) {
  const auto& node = statement.node;
  if (auto* choice = std::get_if<IfStatement>(&node)) return RunIf(*choice, body);
  if (auto* loop = std::get_if<WhileStatement>(&node)) return RunWhile(*loop, body);
  if (auto* block = std::get_if<BlockStatement>(&node)) return RunAll(block->statements, body);
  if (auto* attempt = std::get_if<TryStatement>(&node)) return RunTry(*attempt, body);
  if (auto* jump = std::get_if<JumpStatement>(&node)) return jump->is_break ? Flow::kBreak : Flow::kContinue;
  if (auto* leave = std::get_if<ReturnStatement>(&node)) {
    if (leave->value) {
      Datum value = Evaluate(*leave->value, SqlType::BigInt(), body);
      return_value_ = IsNull(value) ? 0 : std::get<std::int64_t>(value);
    }
    return Flow::kReturn;
  }
  session_.transaction.RequireAlive();
  if (auto* declare = std::get_if<DeclareStatement>(&node)) {
    Declare(*declare, body);
  } else if (auto* set = std::get_if<SetStatement>(&node)) {
    const Variable* variable = body.frame.Find(set->variable);
    if (!variable) throw SqlError(native::kMustDeclare, set->variable);
    Assign(set->variable, Evaluate(*set->value, variable->type, body), variable->type, body);
    SetRowCount(1);
  } else if (auto* option = std::get_if<SetOptionStatement>(&node)) {
    SetOption(*option);
  } else if (auto* raise = std::get_if<RaiseStatement>(&node)) {
    Raise(*raise, body);
  } else if (auto* transaction = std::get_if<TransactionStatement>(&node)) {
    RunTransaction(*transaction);
  } else if (auto* exec = std::get_if<ExecStatement>(&node)) {
    RunExec(*exec, body);
  } else if (!std::holds_alternative<PrintStatement>(node) && !RunDefinition(statement, body)) {
    RunData(statement, body);
  }
  session_.error.value = std::int64_t{0};
  return Flow::kNext;
}

void Interpreter::SetRowCount(std::int64_t count) {
  session_.row_count.value = count;
}

Interpreter::Flow Interpreter::RunIf(const IfStatement& choice, Body& body) {
  bool holds = Holds(*choice.condition, body);
  if (holds) return Run(*choice.then_branch, body);
  return choice.else_branch ? Run(*choice.else_branch, body) : Flow::kNext;
}

Interpreter::Flow Interpreter::RunWhile(const WhileStatement& loop, Body& body) {
  while (Holds(*loop.condition, body)) {
    Flow flow = Run(*loop.body, body);
    if (flow == Flow::kBreak) break;
    if (flow == Flow::kReturn) return flow;
  }
  return Flow::kNext;
}

Interpreter::Flow Interpreter::RunTry(const TryStatement& attempt, Body& body) {
  try {
    ++tries_;
    Flow flow = RunAll(attempt.attempt, body);
    --tries_;
    return flow;
  } catch (const SqlError& error) {
    --tries_;
    session_.functions.caught_message = error.description();
    session_.functions.caught_number = error.native();
  }
  Flow flow = RunAll(attempt.rescue, body);
  session_.functions.caught_number = 0;
  return flow;
}

void Interpreter::Declare(const DeclareStatement& declare, Body& body) {
  for (const DeclareStatement::Variable& variable : declare.variables) {
    if (variable.table) {
      CreateTemporary(variable.name, *variable.table, body.lexed, body.frame);
      continue;
    }
    Datum value;
    if (variable.value) value = Evaluate(*variable.value, variable.type, body);
    body.frame.Declare(variable.name, variable.type).value = std::move(value);
  }
}

void Interpreter::Assign(const std::string& variable, const Datum& value, const SqlType& type, Body& body) {
  Variable* target = body.frame.Find(variable);
  if (!target || variable.starts_with("@@")) throw SqlError(native::kMustDeclare, variable);
  target->value = type == target->type ? value : Convert(value, type, target->type, Overlong::kCut);
}

void Interpreter::SetOption(const SetOptionStatement& set) {
  if (set.option == "XACT_ABORT") session_.xact_abort = set.on;
  if (set.option == "NOCOUNT") session_.no_count = set.on;
  if (set.option == "IDENTITY_INSERT") session_.identity_insert = set.on ? set.table : "";
}

void Interpreter::RunTransaction(const TransactionStatement& statement) {
  switch (statement.kind) {
    case TransactionStatement::Kind::kBegin:
      return session_.transaction.Begin();
    case TransactionStatement::Kind::kCommit:
      return session_.transaction.Commit();
    default:
      return session_.transaction.Rollback();
  }
}

// Message with %s and %d, severity, state, then their values. Up to severity 10 it is a mere notice.
void Interpreter::Raise(const RaiseStatement& raise, Body& body) {
  if (raise.arguments.size() < 3) throw SqlError(native::kSyntax, "RAISERROR");
  std::string pattern = EvaluateText(*raise.arguments[0], body);
  Datum severity = Evaluate(*raise.arguments[1], SqlType::Int(), body);
  std::string message;
  std::size_t next = 3;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    bool place = pattern[i] == '%' && i + 1 < pattern.size() &&
                 std::string_view("sdiu").find(pattern[i + 1]) != std::string_view::npos;
    if (place && next < raise.arguments.size()) {
      message += EvaluateText(*raise.arguments[next++], body);
      ++i;
    } else {
      message += pattern[i];
      if (pattern.compare(i, 2, "%%") == 0) ++i;
    }
  }
  bool notice = !IsNull(severity) && std::get<std::int64_t>(severity) <= 10;
  if (!notice) throw SqlError(native::kUser, message);
}

}  // namespace luming::localdb
