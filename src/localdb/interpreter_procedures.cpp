#include <algorithm>

#include "localdb/errors.h"
#include "localdb/interpreter.h"
#include "localdb/parser/parser.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

constexpr int kDeepestCall = 32;

// Settings that a procedure makes end with it.
class KeepSettings {
 public:
  explicit KeepSettings(Session& session)
      : session_(session), xact_abort_(session.xact_abort), no_count_(session.no_count) {}
  ~KeepSettings() {
    session_.xact_abort = xact_abort_;
    session_.no_count = no_count_;
  }
  KeepSettings(const KeepSettings&) = delete;
  KeepSettings& operator=(const KeepSettings&) = delete;

 private:
  Session& session_;
  bool xact_abort_;
  bool no_count_;
};

}  // namespace

void Interpreter::RunExec(const ExecStatement& exec, Body& body) {
  if (exec.text) return RunText(EvaluateText(*exec.text, body), body);
  session_.RefreshCatalogue();
  if (EqualsIgnoreCase(exec.procedure, "sp_executesql")) return RunSystemProcedure(exec, body);
  auto procedure = session_.catalogue.FindProcedure(exec.procedure);
  if (!procedure) throw SqlError(native::kMissingProcedure, exec.procedure);
  RunProcedure(*procedure, exec, body);
}

void Interpreter::RunText(const std::string& text, Body& body) {
  if (depth_ >= kDeepestCall) throw SqlError(native::kNesting);
  auto script = std::make_unique<Script>(text);
  script->statements = Parser(script->lexed).ParseBatch();
  Frame frame(&body.frame);
  Body inner{script->lexed, frame, false};
  ++depth_;
  try {
    RunAll(script->statements, inner);
  } catch (const SqlError&) {
    --depth_;
    DropTemporaries(frame);
    throw;
  }
  --depth_;
  DropTemporaries(frame);
}

// sp_executesql N'…', N'@a int', @a: the text runs with the parameters as its variables.
void Interpreter::RunSystemProcedure(const ExecStatement& exec, Body& body) {
  if (exec.arguments.empty()) throw SqlError(native::kMissingParameter, exec.procedure, "@statement");
  auto text = [&](std::size_t i) {
    std::optional<Datum> value = ArgumentValue(exec.arguments[i], SqlType::Text(), body);
    auto* found = value ? std::get_if<std::string>(&*value) : nullptr;
    return found ? *found : std::string();
  };
  if (exec.arguments.size() == 1) return RunText(text(0), body);
  auto procedure = std::make_shared<Procedure>();
  procedure->name = exec.procedure;
  procedure->script = std::make_unique<Script>("CREATE PROCEDURE sp_executesql " + text(1) + " AS " + text(0));
  procedure->script->statements = Parser(procedure->script->lexed).ParseBatch();
  ExecStatement call;
  call.procedure = exec.procedure;
  for (std::size_t i = 2; i < exec.arguments.size(); ++i) {
    Argument argument;
    argument.parameter = exec.arguments[i].parameter;
    argument.output = exec.arguments[i].output;
    argument.value = std::make_unique<Expr>(exec.arguments[i].value->kind);
    argument.value->name = exec.arguments[i].value->name;
    argument.value->literal = exec.arguments[i].value->literal;
    call.arguments.push_back(std::move(argument));
  }
  RunProcedure(*procedure, call, body);
  session_.plans.Clear();
}

void Interpreter::RunProcedure(const Procedure& procedure, const ExecStatement& exec, Body& body) {
  if (depth_ >= kDeepestCall) throw SqlError(native::kNesting);
  std::shared_ptr<const Procedure> kept = session_.catalogue.FindProcedure(procedure.name);
  Frame frame(&body.frame);
  PassArguments(procedure, exec, body, frame);
  KeepSettings settings(session_);
  Body inner{procedure.script->lexed, frame, true};
  return_value_ = 0;
  if (listener_ && depth_ == 0) listener_->ProcedureBegan();
  ++depth_;
  try {
    RunAll(procedure.definition().body, inner);
  } catch (const SqlError&) {
    --depth_;
    DropTemporaries(frame);
    throw;
  }
  --depth_;
  DropTemporaries(frame);
  if (listener_ && depth_ == 0) listener_->ProcedureEnded(return_value_);
  ReturnOutputs(procedure, exec, body, frame);
  if (!exec.return_variable.empty()) Assign(exec.return_variable, return_value_, SqlType::BigInt(), body);
}

// What an argument stands for; nothing for DEFAULT. A bare word is a text.
std::optional<Datum> Interpreter::ArgumentValue(const Argument& argument, const SqlType& type, Body& caller) {
  const Expr& value = *argument.value;
  if (value.kind == ExprKind::kDefault) return std::nullopt;
  if (value.kind == ExprKind::kColumn) return Convert(value.name, SqlType::Text(), type, Overlong::kCut);
  if (value.kind == ExprKind::kLiteral) {
    PlanParameter literal;
    literal.literal = value.literal;
    literal.converts = true;
    literal.type = type;
    return Executor::ValueOf(literal, BindingsOf(caller, 0), *session_.functions.clock);
  }
  return Evaluate(value, type, caller);
}

void Interpreter::PassArguments(const Procedure& procedure, const ExecStatement& exec, Body& caller, Frame& frame) {
  const auto& parameters = procedure.definition().parameters;
  std::vector<bool> passed(parameters.size(), false);
  for (std::size_t i = 0; i < exec.arguments.size(); ++i) {
    const Argument& argument = exec.arguments[i];
    auto parameter = parameters.begin() + static_cast<std::ptrdiff_t>(std::min(i, parameters.size()));
    if (!argument.parameter.empty()) {
      parameter = std::find_if(parameters.begin(), parameters.end(),
                               [&](const Parameter& p) { return EqualsIgnoreCase(p.name, argument.parameter); });
      if (parameter == parameters.end()) throw SqlError(native::kNotParameter, procedure.name, argument.parameter);
    }
    if (parameter == parameters.end()) throw SqlError(native::kTooManyArguments, procedure.name);
    std::optional<Datum> value = ArgumentValue(argument, parameter->type, caller);
    if (!value) continue;
    frame.Declare(parameter->name, parameter->type).value = std::move(*value);
    passed[static_cast<std::size_t>(parameter - parameters.begin())] = true;
  }
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (passed[i]) continue;
    const Parameter& parameter = parameters[i];
    if (!parameter.default_value) throw SqlError(native::kMissingParameter, procedure.name, parameter.name);
    Body defaults{procedure.script->lexed, frame, true};
    Datum value;
    if (parameter.default_value->kind == ExprKind::kColumn) {
      value = Convert(parameter.default_value->name, SqlType::Text(), parameter.type, Overlong::kCut);
    } else {
      value = Evaluate(*parameter.default_value, parameter.type, defaults);
    }
    frame.Declare(parameter.name, parameter.type).value = std::move(value);
  }
}

void Interpreter::ReturnOutputs(const Procedure& procedure, const ExecStatement& exec, Body& caller, Frame& frame) {
  const auto& parameters = procedure.definition().parameters;
  for (std::size_t i = 0; i < exec.arguments.size(); ++i) {
    const Argument& argument = exec.arguments[i];
    if (!argument.output || argument.value->kind != ExprKind::kVariable) continue;
    const std::string& name = argument.parameter.empty() ? parameters.at(i).name : argument.parameter;
    const Variable* result = frame.Find(name);
    if (result) Assign(argument.value->name, result->value, result->type, caller);
  }
}

}  // namespace luming::localdb
