#include <algorithm>
#include <iterator>

#include "localdb/errors.h"
#include "localdb/translate/translator.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

bool SameValue(const Expr& left, const Expr& right, const LexedText& lexed) {
  bool alike = left.kind == right.kind && left.flag == right.flag && left.star == right.star &&
               left.type == right.type && EqualsIgnoreCase(left.name, right.name) &&
               left.args.size() == right.args.size();
  if (!alike || left.query || right.query) return false;
  bool literal = left.kind == ExprKind::kLiteral;
  if (literal && lexed.literals()[left.literal].text != lexed.literals()[right.literal].text) return false;
  bool qualified = !left.qualifier.empty() && !right.qualifier.empty();
  if (qualified && !EqualsIgnoreCase(left.qualifier, right.qualifier)) return false;
  return std::equal(left.args.begin(), left.args.end(), right.args.begin(),
                    [&](const ExprPtr& a, const ExprPtr& b) { return SameValue(*a, *b, lexed); });
}

}  // namespace

bool Translator::IsAggregate(const Expr& expr) {
  static constexpr std::string_view kAggregates[] = {"SUM", "AVG", "MIN", "MAX", "COUNT", "COUNT_BIG"};
  bool call = expr.kind == ExprKind::kFunction && !expr.over;
  return call && std::find(std::begin(kAggregates), std::end(kAggregates), expr.name) != std::end(kAggregates);
}

bool Translator::HoldsAggregate(const Expr& expr) {
  return IsAggregate(expr) ||
         std::any_of(expr.args.begin(), expr.args.end(), [](const ExprPtr& arg) { return HoldsAggregate(*arg); });
}

// A column outside an aggregate has no one value in a group. The engine would take that of any row.
void Translator::RequireGrouped(const Expr& expr, const SelectCore& core, const Scope& scope) const {
  auto same = [&](const ExprPtr& group) { return SameValue(*group, expr, context_.lexed); };
  if (IsAggregate(expr) || expr.over || std::any_of(core.group_by.begin(), core.group_by.end(), same)) return;
  if (expr.kind == ExprKind::kColumn) {
    for (const ScopeTable& table : scope.tables) {
      if (!expr.qualifier.empty() && !EqualsIgnoreCase(table.alias, expr.qualifier)) continue;
      bool own = std::any_of(table.columns->begin(), table.columns->end(),
                             [&](const Column& column) { return EqualsIgnoreCase(column.name, expr.name); });
      if (own) throw SqlError(native::kNotGrouped, expr.name);
    }
  }
  for (const ExprPtr& arg : expr.args) RequireGrouped(*arg, core, scope);
}

void Translator::CheckGrouping(const SelectCore& core, const Scope& scope) const {
  auto aggregates = [](const SelectItem& item) { return item.value && HoldsAggregate(*item.value); };
  bool grouped = !core.group_by.empty() || core.having || std::any_of(core.items.begin(), core.items.end(), aggregates);
  if (!grouped) return;
  for (const SelectItem& item : core.items) {
    if (!item.value) throw SqlError(native::kNotGrouped, "*");
    RequireGrouped(*item.value, core, scope);
  }
  if (core.having) RequireGrouped(*core.having, core, scope);
}

}  // namespace luming::localdb
