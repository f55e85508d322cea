#include <algorithm>
#include <set>

#include "app/admin/admin_rights.h"
#include "app/admin/admin_verb.h"
#include "util/failure.h"

namespace luming {

namespace {

std::vector<std::string> MembersOf(const OpenedStore& store, const std::string& group) {
  return store.Column("Select username From userdb Where group_name=? Order by id", {group});
}

void DemandNewGroup(const OpenedStore& store, const std::string& name) {
  DemandUsableName("组名", name);
  if (store.Count("Select Count(*) From QX_Temp2 Where Groupname=?", {name}) > 0) {
    throw Failure(failure::kInvalidCall, "已经有组“" + name + "”。");
  }
}

/// Writes a row for every right, given or not: a right without a row stays with whoever logs in after somebody who has
/// it.
void WriteRights(const OpenedStore& store, const std::string& group, const std::set<std::string>& given) {
  const AdminRights rights(store);
  store.Run("Delete QX_Temp2 Where Groupname=?", {group});
  for (const std::string& key : rights.Keys()) {
    store.Run("Insert Into QX_Temp2(Groupname,MoudelKey,QX) Values(?,?,?)",
              {group, key, given.contains(key) ? "1" : "0"});
  }
}

/// The rights after what the arguments ask for: --all and --none first, then --grant, then --revoke.
std::set<std::string> Asked(const AdminArguments& arguments, const OpenedStore& store, std::set<std::string> rights) {
  const AdminRights known(store);
  if (arguments.Has("--all") && arguments.Has("--none")) throw BadUsage{"--all 和 --none 只能用一个。"};
  if (arguments.Has("--all")) rights = {known.Keys().begin(), known.Keys().end()};
  if (arguments.Has("--none")) rights.clear();
  for (const std::string& told : ListOf(arguments.Value("--grant").value_or(""))) rights.insert(known.KeyOf(told));
  for (const std::string& told : ListOf(arguments.Value("--revoke").value_or(""))) rights.erase(known.KeyOf(told));
  return rights;
}

std::set<std::string> RightsAsSet(const OpenedStore& store, const std::string& group) {
  const std::vector<std::string> rights = RightsOf(store, group);
  return {rights.begin(), rights.end()};
}

void ListRights(const OpenedStore& store, const std::string& group, AdminConsole& console) {
  const std::set<std::string> given = RightsAsSet(store, group);
  const AdminRights rights(store);
  console.out << "组：" << group << "\n操作员：" << Listed(MembersOf(store, group)) << "\n\n";
  std::vector<std::vector<std::string>> table = {{"权限", "代号", "有无"}};
  for (const std::string& key : rights.Keys()) {
    table.push_back({rights.NameOf(key), key, given.contains(key) ? "有" : "－"});
  }
  console.out << TableText(table);
}

int List(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  if (arguments.WordCount() > 1) {
    ListRights(store, DemandGroup(store, arguments.Word(1, "")), console);
    return kAdminDone;
  }
  const std::size_t all = AdminRights(store).Keys().size();
  std::vector<std::vector<std::string>> table = {{"组", "权限", "操作员"}};
  for (const std::string& group : GroupsOf(store)) {
    table.push_back({group, std::to_string(RightsOf(store, group).size()) + "/" + std::to_string(all),
                     Listed(MembersOf(store, group))});
  }
  console.out << TableText(table);
  return kAdminDone;
}

int Add(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  const std::string& name = arguments.Word(1, "没有指定组名。");
  DemandNewGroup(store, name);
  const auto model = arguments.Value("--like");
  const std::set<std::string> start = model ? RightsAsSet(store, DemandGroup(store, *model)) : std::set<std::string>();
  const std::set<std::string> rights = Asked(arguments, store, start);
  store.Change([&] { WriteRights(store, name, rights); });
  console.out << "已添加组：" << name << "，权限 " << rights.size() << " 项\n";
  return kAdminDone;
}

int Alter(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  arguments.DemandSomeChange();
  const std::string name = DemandGroup(store, arguments.Word(1, "没有指定组名。"));
  const std::string new_name = arguments.Value("--name").value_or(name);
  if (new_name != name) DemandNewGroup(store, new_name);
  const std::set<std::string> rights = Asked(arguments, store, RightsAsSet(store, name));
  ChangeKeepingFullRights(store, [&] {
    store.Run("Delete QX_Temp2 Where Groupname=?", {name});
    WriteRights(store, new_name, rights);
    store.Run("Update userdb Set group_name=? Where group_name=?", {new_name, name});
  });
  console.out << "已修改组：" << new_name << "，权限 " << rights.size() << " 项。操作员下次登录时生效\n";
  return kAdminDone;
}

int Remove(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  const std::string name = DemandGroup(store, arguments.Word(1, "没有指定组名。"));
  if (const std::vector<std::string> members = MembersOf(store, name); !members.empty()) {
    throw Failure(failure::kInvalidCall,
                  "组“" + name + "”中还有操作员：" + Listed(members) + "。请先把他们改到别的组。");
  }
  store.Run("Delete QX_Temp2 Where Groupname=?", {name});
  console.out << "已删除组：" << name << "\n";
  return kAdminDone;
}

int Group(const std::vector<std::string>& arguments, AdminConsole& console) {
  static const std::vector<AdminVerb> kVerbs = {
      {"list", List, 2},
      {"add", Add, 2, {"--like", "--grant", "--revoke"}, {"--all", "--none"}},
      {"change", Alter, 2, {"--name", "--grant", "--revoke"}, {"--all", "--none"}},
      {"remove", Remove, 2},
  };
  return RunVerb(kVerbs, arguments, console);
}

}  // namespace

const AdminCommand kAdminGroup{
    "group",
    "  luming-admin group list 目录 [组]\n"
    "      列出各组的权限数和操作员；写出组名时列出这个组的每一项权限。“目录”处也可以写连接字符串。\n"
    "  luming-admin group add 目录 组 [--like 已有的组] [--all] [--grant 权限,...] [--revoke 权限,...]\n"
    "      添加组。权限可以写名称或代号，用逗号分开；不写就是没有任何权限的组。\n"
    "  luming-admin group change 目录 组 [--name 新组名] [--all | --none] [--grant 权限,...] [--revoke 权限,...]\n"
    "      修改组的名称和权限，操作员下次登录时生效。至少要留一个拥有全部权限的操作员。\n"
    "  luming-admin group remove 目录 组\n"
    "      删除没有操作员的组。\n",
    Group};

}  // namespace luming
