#include <algorithm>

#include "app/admin/admin_rights.h"
#include "app/admin/admin_verb.h"
#include "app/store_filler.h"
#include "util/failure.h"

namespace luming {

namespace {

constexpr const char* kSearchTypes = "拼音码,五笔码,编码";

std::string DemandSearchType(const std::string& told) {
  for (const std::string& known : ListOf(kSearchTypes)) {
    if (told == known) return told;
  }
  throw Failure(failure::kInvalidCall, "没有搜索方式“" + told + "”，只有：" + Listed(ListOf(kSearchTypes)));
}

bool IsOperator(const OpenedStore& store, const std::string& name) {
  return store.Count("Select Count(*) From userdb Where username=?", {name}) > 0;
}

std::string DemandOperator(const OpenedStore& store, const std::string& told) {
  const std::vector<std::string> found = store.Column("Select username From userdb Where username=?", {told});
  if (!found.empty()) return found.front();
  throw Failure(failure::kInvalidCall, "没有操作员“" + told + "”。现有的操作员：" +
                                           Listed(store.Column("Select username From userdb Order by id")));
}

void DemandNewName(const OpenedStore& store, const std::string& name) {
  DemandUsableName("操作员姓名", name);
  if (IsOperator(store, name)) throw Failure(failure::kInvalidCall, "已经有操作员“" + name + "”。");
}

/// Clerk columns keep names, not numbers: what was booked under a name would belong to nobody, or to somebody else.
void DemandUnused(const OpenedStore& store, const std::string& name, const std::string& what) {
  const int booked = store.Count("Select Count(*) From YPCRK Where CZY=?", {name});
  if (booked == 0) return;
  throw Failure(failure::kInvalidCall, "操作员“" + name + "”已经有 " + std::to_string(booked) + " 笔出入库流水，" +
                                           what + "后这些流水找不到人。可以改密码或改到没有权限的组；一定要" + what +
                                           "请加 --force。");
}

void SetUnit(const OpenedStore& store, const std::string& name, const std::string& unit) {
  if (!unit.empty()) DemandUsableName("社区编号", unit);
  store.Run("Delete Yf_sq Where username=?", {name});
  if (!unit.empty()) store.Run("Insert Into Yf_sq(username,SQBH) Values(?,?)", {name, unit});
}

std::vector<std::string> StorehousesOf(const OpenedStore& store, const std::string& group) {
  std::vector<std::string> open;
  const std::vector<std::string> rights = RightsOf(store, group);
  const auto has = [&](const char* key) { return std::ranges::count(rights, key) > 0; };
  for (const std::string& storehouse : store.Column("Select Sname From YF_YKLX Where SLX Like'药库'")) {
    const bool guarded = storehouse == "西药库" || storehouse == "中药库";
    if (!guarded || has(storehouse == "西药库" ? "YPGL_XYKIN" : "YPGL_ZYKIN")) open.push_back(storehouse);
  }
  return open;
}

/// Whoever may enter no storehouse is put out of the program behind the login.
void TellOfStorehouses(const OpenedStore& store, const std::string& group, AdminConsole& console) {
  if (!StorehousesOf(store, group).empty()) return;
  console.out
      << "注意：组“" << group
      << "”不能进入任何药库，这个操作员登录后会退出。请用 luming-admin group change 加上“进入西药库”或“进入中药库”。\n";
}

int List(const AdminArguments&, const OpenedStore& store, AdminConsole& console) {
  std::vector<std::vector<std::string>> table = {{"操作员", "组", "搜索方式", "社区编号", "可以进入的药库"}};
  Recordset rows = store.Run("Select username,group_name,SearchType From userdb Order by id");
  for (; !rows.Eof(); rows.MoveNext()) {
    const std::string name = rows.Field("username").Text();
    const std::string group = rows.Field("group_name").Text();
    table.push_back({name, group, rows.Field("SearchType").TextOrEmpty(),
                     Listed(store.Column("Select SQBH From Yf_sq Where username=?", {name}), ""),
                     Listed(StorehousesOf(store, group))});
  }
  console.out << TableText(table);
  return kAdminDone;
}

int Add(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  const std::string& name = arguments.Word(1, "没有指定操作员姓名。");
  if (!arguments.Has("--group")) throw BadUsage{"没有用 --group 指定组。"};
  DemandNewName(store, name);
  const std::string group = DemandGroup(store, *arguments.Value("--group"));
  const std::string search = DemandSearchType(arguments.Value("--search").value_or("拼音码"));
  const auto given = arguments.Value("--password");
  const std::string password = given ? *given : console.ask_secret("操作员“" + name + "”的密码：");
  DemandUsablePassword(password);
  store.Change([&] {
    store.Run("Insert Into userdb(username,password,group_name,IME,SearchType) Values(?,?,?,0,?)",
              {name, password, group, search});
    SetUnit(store, name, arguments.Value("--unit").value_or(""));
  });
  console.out << "已添加操作员：" << name << "\n";
  TellOfStorehouses(store, group, console);
  return kAdminDone;
}

int Alter(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  arguments.DemandSomeChange();
  const std::string name = DemandOperator(store, arguments.Word(1, "没有指定操作员姓名。"));
  const auto set = [&](const char* column, const std::string& value) {
    store.Run(std::string("Update userdb Set ") + column + "=? Where username=?", {value, name});
  };
  std::optional<std::string> password = arguments.Value("--password");
  if (arguments.Has("--ask-password")) password = console.ask_secret("操作员“" + name + "”的新密码：");
  if (password) DemandUsablePassword(*password);
  const auto new_name = arguments.Value("--name");
  ChangeKeepingFullRights(store, [&] {
    if (const auto group = arguments.Value("--group")) set("group_name", DemandGroup(store, *group));
    if (const auto search = arguments.Value("--search")) set("SearchType", DemandSearchType(*search));
    if (password) set("password", *password);
    if (const auto unit = arguments.Value("--unit")) SetUnit(store, name, *unit);
    if (!new_name || *new_name == name) return;
    DemandNewName(store, *new_name);
    if (!arguments.Has("--force")) DemandUnused(store, name, "改名");
    store.Run("Update Yf_sq Set username=? Where username=?", {*new_name, name});
    set("username", *new_name);
  });
  console.out << "已修改操作员：" << new_name.value_or(name) << "\n";
  if (const auto group = arguments.Value("--group")) TellOfStorehouses(store, *group, console);
  return kAdminDone;
}

int Remove(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  const std::string name = DemandOperator(store, arguments.Word(1, "没有指定操作员姓名。"));
  ChangeKeepingFullRights(store, [&] {
    if (!arguments.Has("--force")) DemandUnused(store, name, "删除");
    SetUnit(store, name, "");
    store.Run("Delete userdb Where username=?", {name});
  });
  console.out << "已删除操作员：" << name << "\n";
  return kAdminDone;
}

int Operator(const std::vector<std::string>& arguments, AdminConsole& console) {
  static const std::vector<AdminVerb> kVerbs = {
      {"list", List, 1},
      {"add", Add, 2, {"--group", "--password", "--search", "--unit"}},
      {"change", Alter, 2, {"--name", "--group", "--password", "--search", "--unit"}, {"--ask-password", "--force"}},
      {"remove", Remove, 2, {}, {"--force"}},
  };
  return RunVerb(kVerbs, arguments, console);
}

}  // namespace

const AdminCommand kAdminOperator{
    "operator",
    "  luming-admin operator list 目录\n"
    "      列出操作员、所在的组和可以进入的药库。“目录”处也可以写连接字符串。\n"
    "  luming-admin operator add 目录 姓名 --group 组 [--password 密码] [--search 拼音码|五笔码|编码] [--unit 社区编号]\n"
    "      添加操作员。没有给出密码时会询问。\n"
    "  luming-admin operator change 目录 姓名 [--name 新姓名] [--group 组] [--password 密码 | --ask-password]\n"
    "                               [--search 搜索方式] [--unit 社区编号] [--force]\n"
    "      修改操作员；没有写出的项目不变。已经有出入库流水的操作员改名要加 --force。\n"
    "  luming-admin operator remove 目录 姓名 [--force]\n"
    "      删除操作员。已经有出入库流水的操作员要加 --force；最后一个拥有全部权限的操作员不能删除。\n",
    Operator};

}  // namespace luming
