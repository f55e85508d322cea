#include "app/admin/admin_rights.h"

#include <algorithm>

#include "frame/user_rights.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {

namespace {

bool HasEveryRight(const OpenedStore& store, const std::string& group) {
  const std::vector<std::string> given = RightsOf(store, group);
  return std::ranges::all_of(kAllRights,
                             [&](const OperatorRight& right) { return std::ranges::count(given, right.key) > 0; });
}

bool SomeoneHasEveryRight(const OpenedStore& store) {
  const std::vector<std::string> groups = store.Column("Select Distinct group_name From userdb");
  return std::ranges::any_of(groups, [&](const std::string& group) { return HasEveryRight(store, group); });
}

}  // namespace

AdminRights::AdminRights(const OpenedStore& store) {
  for (const OperatorRight& right : kAllRights) keys_.emplace_back(right.key);
  Recordset rows = store.Run("Select MoudelKey,MoudelName From QX_Temp");
  for (; !rows.Eof(); rows.MoveNext()) names_[rows.Field("MoudelKey").Text()] = rows.Field("MoudelName").Text();
}

const std::string& AdminRights::NameOf(const std::string& key) const {
  const auto found = names_.find(key);
  return found == names_.end() ? key : found->second;
}

const std::string& AdminRights::KeyOf(const std::string& told) const {
  for (const std::string& key : keys_) {
    if (EqualsIgnoreCase(key, told) || NameOf(key) == told) return key;
  }
  throw Failure(failure::kInvalidCall, "没有权限“" + told + "”。所有权限可以用 luming-admin group list 目录 组 查看。");
}

std::vector<std::string> GroupsOf(const OpenedStore& store) {
  return store.Column("Select Distinct Groupname From QX_Temp2 Order by Groupname");
}

std::string DemandGroup(const OpenedStore& store, const std::string& told) {
  const std::vector<std::string> found = store.Column("Select Groupname From QX_Temp2 Where Groupname=?", {told});
  if (!found.empty()) return found.front();
  throw Failure(failure::kInvalidCall, "没有组“" + told + "”。现有的组：" + Listed(GroupsOf(store)));
}

std::vector<std::string> RightsOf(const OpenedStore& store, const std::string& group) {
  return store.Column("Select MoudelKey From QX_Temp2 Where Groupname=? And QX<>0", {group});
}

void ChangeKeepingFullRights(const OpenedStore& store, const std::function<void()>& change) {
  store.Change([&] {
    const bool before = SomeoneHasEveryRight(store);
    change();
    if (before && !SomeoneHasEveryRight(store)) {
      throw Failure(failure::kInvalidCall, "这样就没有拥有全部权限的操作员了，至少要留一个。没有改动。");
    }
  });
}

}  // namespace luming
