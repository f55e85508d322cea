#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "localdb/executor.h"
#include "localdb/plan.h"

namespace luming::localdb {

/// Keeps the plans of statements, those of texts by their key and those of procedures by the statement's place in
/// memory. One key may have several plans, told apart by their guards. The least recently used plans go first.
class PlanCache {
 public:
  explicit PlanCache(std::size_t capacity = 600) : capacity_(capacity) {}

  /// The plan that fits the values; null without one. Stays valid until the next Insert or Clear.
  Plan* Find(std::string_view key, const Bindings& bindings);
  Plan* Find(const void* statement, const Bindings& bindings);
  Plan* Insert(std::string_view key, std::unique_ptr<Plan> plan);
  Plan* Insert(const void* statement, std::unique_ptr<Plan> plan);
  void Clear();
  std::size_t size() const { return entries_.size(); }

 private:
  struct Entry {
    std::string key;
    std::unique_ptr<Plan> plan;
  };
  using Entries = std::list<Entry>;
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
  };

  static std::string KeyOf(const void* statement);

  std::size_t capacity_;
  Entries entries_;  ///< most recently used first
  std::unordered_map<std::string, std::vector<Entries::iterator>, Hash, std::equal_to<>> places_;
};

}  // namespace luming::localdb
