#include "localdb/plan_cache.h"

#include <algorithm>

namespace luming::localdb {
namespace {

bool Holds(const PlanGuard& guard, const Bindings& bindings) {
  if (guard.of_variable) {
    const Variable* variable = bindings.frame.Find(guard.variable);
    auto* text = variable ? std::get_if<std::string>(&variable->value) : nullptr;
    return guard.like == (text ? ClassifyPattern(*text) : LikeClass::kGeneral);
  }
  const Literal& literal = bindings.lexed.literals()[bindings.first_literal + guard.literal];
  switch (guard.kind) {
    case PlanGuard::Kind::kNumberType:
      return NumberLiteralType(literal.text) == guard.type;
    case PlanGuard::Kind::kLike:
      return ClassifyPattern(literal.text) == guard.like;
    default:
      return literal.text == guard.text;
  }
}

bool Fits(const Plan& plan, const Bindings& bindings) {
  auto holds = [&](const PlanGuard& guard) { return Holds(guard, bindings); };
  auto known = [&](const std::string& physical) { return bindings.frame.HasPhysical(physical); };
  return std::all_of(plan.guards.begin(), plan.guards.end(), holds) &&
         std::all_of(plan.temporaries.begin(), plan.temporaries.end(), known);
}

}  // namespace

std::string PlanCache::KeyOf(const void* statement) {
  // No text begins with this byte.
  return std::string(1, '\0') + std::string(reinterpret_cast<const char*>(&statement), sizeof statement);
}

Plan* PlanCache::Find(std::string_view key, const Bindings& bindings) {
  auto found = places_.find(key);
  if (found == places_.end()) return nullptr;
  for (Entries::iterator entry : found->second) {
    if (!Fits(*entry->plan, bindings)) continue;
    entries_.splice(entries_.begin(), entries_, entry);
    return entry->plan.get();
  }
  return nullptr;
}

Plan* PlanCache::Find(const void* statement, const Bindings& bindings) {
  return Find(KeyOf(statement), bindings);
}

Plan* PlanCache::Insert(std::string_view key, std::unique_ptr<Plan> plan) {
  if (entries_.size() >= capacity_) {
    Entries::iterator last = std::prev(entries_.end());
    auto place = places_.find(last->key);
    std::erase(place->second, last);
    if (place->second.empty()) places_.erase(place);
    entries_.erase(last);
  }
  entries_.push_front({std::string(key), std::move(plan)});
  places_[entries_.front().key].push_back(entries_.begin());
  return entries_.front().plan.get();
}

Plan* PlanCache::Insert(const void* statement, std::unique_ptr<Plan> plan) {
  return Insert(KeyOf(statement), std::move(plan));
}

void PlanCache::Clear() {
  places_.clear();
  entries_.clear();
}

}  // namespace luming::localdb
