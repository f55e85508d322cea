#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/admin/opened_store.h"

namespace luming {

/// The rights of groups: which keys exist, what they are called, who has them.
class AdminRights {
 public:
  explicit AdminRights(const OpenedStore& store);

  /// All keys in the order in which the program knows them.
  const std::vector<std::string>& Keys() const { return keys_; }
  /// The right as the operator reads it; the key when the store does not name it.
  const std::string& NameOf(const std::string& key) const;
  /// The key of a right that is told by key or by name. Failure when there is no such right.
  const std::string& KeyOf(const std::string& told) const;

 private:
  std::vector<std::string> keys_;
  std::map<std::string, std::string> names_;
};

/// All groups by name.
std::vector<std::string> GroupsOf(const OpenedStore& store);
/// The name as the store has it. Failure, with the groups that there are, when there is none such.
std::string DemandGroup(const OpenedStore& store, const std::string& told);
/// The keys that the group has been given.
std::vector<std::string> RightsOf(const OpenedStore& store, const std::string& group);

/// All or nothing of `change`; Failure when nobody with every right would be left after it, though there was somebody.
void ChangeKeepingFullRights(const OpenedStore& store, const std::function<void()>& change);

}  // namespace luming
