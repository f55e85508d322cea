#include "localdb/translate/translator.h"

#include <algorithm>

#include "localdb/definition.h"
#include "localdb/errors.h"
#include "util/text.h"

namespace luming::localdb {

Translator::Translator(const TranslationContext& context) : context_(context), plan_(std::make_unique<Plan>()) {}

std::unique_ptr<Plan> Translator::Finish(std::string sql) {
  plan_->sql = std::move(sql);
  for (std::size_t i = 0; i < guarded_.size(); ++i) {
    const PlanParameter& parameter = plan_->parameters[i];
    if (!guarded_[i] || parameter.source != PlanParameter::Source::kLiteral) continue;
    const Literal& literal = context_.lexed.literals()[context_.first_literal + parameter.literal];
    if (literal.is_string) continue;
    PlanGuard guard;
    guard.literal = parameter.literal;
    guard.type = NumberLiteralType(literal.text);
    plan_->guards.push_back(std::move(guard));
  }
  return std::move(plan_);
}

const Table& Translator::RequireTable(const std::string& name) {
  bool temporary = name.starts_with('#') || name.starts_with('@');
  const Table* table = temporary ? context_.frame.FindTemporary(name) : context_.catalogue.FindTable(name);
  if (!table) throw SqlError(name.starts_with('@') ? native::kMustDeclare : native::kMissingObject, name);
  if (IsSystemTable(name)) plan_->uses_system_tables = true;
  return *table;
}

std::string Translator::Physical(const Table& table) {
  bool temporary = table.physical != table.name;
  if (temporary &&
      std::find(plan_->temporaries.begin(), plan_->temporaries.end(), table.physical) == plan_->temporaries.end()) {
    plan_->temporaries.push_back(table.physical);
  }
  return QuoteName(table.physical);
}

Translator::Fragment Translator::AddParameter(PlanParameter parameter, const SqlType& type) {
  plan_->parameters.push_back(std::move(parameter));
  guarded_.push_back(true);
  int number = static_cast<int>(plan_->parameters.size());
  return {"?" + std::to_string(number), type, number - 1, false};
}

const Literal& Translator::LiteralOf(const Expr& expr) const {
  return context_.lexed.literals()[expr.literal];
}

void Translator::Guard(const Expr& literal, PlanGuard guard) {
  guard.literal = literal.literal - context_.first_literal;
  plan_->guards.push_back(std::move(guard));
}

void Translator::GuardText(const Expr& literal) {
  PlanGuard guard;
  guard.kind = PlanGuard::Kind::kText;
  guard.text = LiteralOf(literal).text;
  Guard(literal, std::move(guard));
}

std::vector<Column>* Translator::Keep(std::vector<Column> columns) {
  return &kept_columns_.emplace_back(std::move(columns));
}

std::unique_ptr<Plan> Translator::Select(const Query& query) {
  QuerySql select = TranslateQuery(query, nullptr);
  plan_->is_query = true;
  plan_->outputs = std::move(select.columns);
  plan_->variables = std::move(select.variables);
  return Finish(std::move(select.sql));
}

std::unique_ptr<Plan> Translator::Value(const Expr& value, const SqlType* type) {
  Fragment fragment = Translate(value, Scope());
  if (type) Coerce(fragment, *type, Purpose::kCast);
  Column column;
  column.type = fragment.type;
  plan_->is_query = true;
  plan_->outputs.push_back(std::move(column));
  return Finish("SELECT " + fragment.sql);
}

std::unique_ptr<Plan> Translator::Condition(const Expr& condition) {
  std::string sql = TranslateCondition(condition, Scope());
  Column column;
  column.type = SqlType::Int();
  plan_->is_query = true;
  plan_->outputs.push_back(std::move(column));
  return Finish("SELECT CASE WHEN " + sql + " THEN 1 ELSE 0 END");
}

std::string Translator::Default(const Expr& value, const SqlType& type) {
  Fragment fragment = Translate(value, Scope());
  Coerce(fragment, type, Purpose::kStore);
  return fragment.sql;
}

std::string Translator::Check(const Expr& condition, const Table& table) {
  Scope scope;
  scope.tables.push_back({table.name, &table.columns});
  return TranslateCondition(condition, scope);
}

}  // namespace luming::localdb
