#include <algorithm>

#include "app/admin/admin_verb.h"
#include "util/failure.h"

namespace luming {

namespace {

constexpr const char* kStorehouse = "药库";
constexpr const char* kPharmacy = "药房";

struct House {
  std::string name;
  std::string kind;  ///< kStorehouse or kPharmacy
};

std::vector<House> HousesOf(const OpenedStore& store) {
  std::vector<House> houses;
  Recordset rows = store.Run("Select Sname,SLX From YF_YKLX Order by SLX Desc,Sname");
  for (; !rows.Eof(); rows.MoveNext()) houses.push_back({rows.Field("Sname").Text(), rows.Field("SLX").Text()});
  return houses;
}

House DemandHouse(const OpenedStore& store, const std::string& told) {
  std::vector<std::string> names;
  for (const House& house : HousesOf(store)) {
    if (house.name == told) return house;
    names.push_back(house.name);
  }
  throw Failure(failure::kInvalidCall, "没有药库或药房“" + told + "”。现有的：" + Listed(names));
}

void DemandNewHouse(const OpenedStore& store, const std::string& name) {
  DemandUsableName("药库名称", name);
  if (store.Count("Select Count(*) From YF_YKLX Where Sname=?", {name}) > 0) {
    throw Failure(failure::kInvalidCall, "已经有药库或药房“" + name + "”。");
  }
}

std::vector<std::string> ItemsOf(const OpenedStore& store, const std::string& house) {
  return store.Column("Select sChargeItemName From YFYK_LinkItem Where sInvItemName=? Order by sChargeItemName",
                      {house});
}

std::string DemandDrugItem(const OpenedStore& store, const std::string& told) {
  const std::vector<std::string> found =
      store.Column("Select sItemName From eK_ChargeItem Where YPBZ=1 And sItemName=?", {told});
  if (!found.empty()) return found.front();
  throw Failure(failure::kInvalidCall, "没有药品收费项目“" + told + "”。现有的药品收费项目：" +
                                           Listed(store.Column("Select sItemName From eK_ChargeItem Where YPBZ=1")));
}

/// A drug has one stock counter, whichever storehouse it is looked at from.
void DemandItemKeptNowhereElse(const OpenedStore& store, const std::string& item, const House& house) {
  if (house.kind != kStorehouse) return;
  const std::vector<std::string> keepers = store.Column(
      "Select L.sInvItemName From YFYK_LinkItem L Inner Join YF_YKLX H On H.Sname=L.sInvItemName "
      "Where H.SLX='药库' And L.sChargeItemName=? And L.sInvItemName<>?",
      {item, house.name});
  if (keepers.empty()) return;
  throw Failure(failure::kInvalidCall,
                "收费项目“" + item + "”的药品已经由“" + keepers.front() + "”保管，一种药品只能在一个药库。");
}

/// What is in stock of an item: storehouses count YKKCL, pharmacies KCL.
int DrugsInStock(const OpenedStore& store, const std::string& item, const House& house) {
  const char* counter = house.kind == kStorehouse ? "YKKCL" : "KCL";
  return store.Count(std::string("Select Count(*) From YF_YPML Where SFXM=? And ") + counter + "<>0", {item});
}

void DemandNoStock(const OpenedStore& store, const std::vector<std::string>& items, const House& house) {
  for (const std::string& item : items) {
    const int drugs = DrugsInStock(store, item, house);
    if (drugs == 0) continue;
    throw Failure(failure::kInvalidCall, "“" + house.name + "”的收费项目“" + item + "”还有 " + std::to_string(drugs) +
                                             " 种药品有库存，要先出库、退药或盘点为零。");
  }
}

/// Every document and every movement carries the storehouse's name.
void DemandNoDocuments(const OpenedStore& store, const House& house, const std::string& what) {
  const int booked = store.Count("Select Count(*) From YPCRK Where KFBM=?", {house.name});
  if (booked == 0) return;
  throw Failure(failure::kInvalidCall, "“" + house.name + "”已经有 " + std::to_string(booked) +
                                           " 笔出入库流水，单据上都写着它的名称，不能" + what + "。");
}

void Link(const OpenedStore& store, const House& house, const std::vector<std::string>& items) {
  const std::vector<std::string> linked = ItemsOf(store, house.name);
  for (const std::string& told : items) {
    const std::string item = DemandDrugItem(store, told);
    if (std::ranges::count(linked, item) > 0) continue;
    DemandItemKeptNowhereElse(store, item, house);
    store.Run("Insert Into YFYK_LinkItem(sInvItemName,sChargeItemName) Values(?,?)", {house.name, item});
  }
}

void Unlink(const OpenedStore& store, const House& house, const std::vector<std::string>& items) {
  const std::vector<std::string> linked = ItemsOf(store, house.name);
  for (const std::string& item : items) {
    if (std::ranges::count(linked, item) == 0) {
      throw Failure(failure::kInvalidCall, "“" + house.name + "”没有关联收费项目“" + item + "”。");
    }
  }
  DemandNoStock(store, items, house);
  for (const std::string& item : items) {
    store.Run("Delete YFYK_LinkItem Where sInvItemName=? And sChargeItemName=?", {house.name, item});
  }
}

void TellOfRights(const House& house, AdminConsole& console) {
  if (house.kind != kStorehouse || house.name == "西药库" || house.name == "中药库") return;
  console.out << "注意：只有“西药库”和“中药库”要有权限才能进入，“" << house.name << "”每个操作员都可以进入。\n";
}

int List(const AdminArguments&, const OpenedStore& store, AdminConsole& console) {
  std::vector<std::vector<std::string>> table = {{"名称", "类型", "有库存的药品", "关联的收费项目"}};
  for (const House& house : HousesOf(store)) {
    const std::vector<std::string> items = ItemsOf(store, house.name);
    int drugs = 0;
    for (const std::string& item : items) drugs += DrugsInStock(store, item, house);
    table.push_back({house.name, house.kind, std::to_string(drugs), Listed(items)});
  }
  console.out << TableText(table);
  return kAdminDone;
}

int Add(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  const House house{arguments.Word(1, "没有指定药库名称。"), arguments.Has("--pharmacy") ? kPharmacy : kStorehouse};
  DemandNewHouse(store, house.name);
  store.Change([&] {
    store.Run("Insert Into YF_YKLX(Sname,SLX) Values(?,?)", {house.name, house.kind});
    Link(store, house, ListOf(arguments.Value("--link").value_or("")));
  });
  console.out << "已添加" << house.kind << "：" << house.name << "，关联的收费项目："
              << Listed(ItemsOf(store, house.name)) << "\n";
  TellOfRights(house, console);
  return kAdminDone;
}

int Alter(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  arguments.DemandSomeChange();
  House house = DemandHouse(store, arguments.Word(1, "没有指定药库名称。"));
  store.Change([&] {
    Unlink(store, house, ListOf(arguments.Value("--unlink").value_or("")));
    Link(store, house, ListOf(arguments.Value("--link").value_or("")));
    const auto new_name = arguments.Value("--name");
    if (!new_name || *new_name == house.name) return;
    DemandNewHouse(store, *new_name);
    DemandNoDocuments(store, house, "改名");
    store.Run("Update YFYK_LinkItem Set sInvItemName=? Where sInvItemName=?", {*new_name, house.name});
    store.Run("Update YF_YKLX Set Sname=? Where Sname=?", {*new_name, house.name});
    house.name = *new_name;
  });
  console.out << "已修改" << house.kind << "：" << house.name << "，关联的收费项目："
              << Listed(ItemsOf(store, house.name)) << "\n";
  TellOfRights(house, console);
  return kAdminDone;
}

int Remove(const AdminArguments& arguments, const OpenedStore& store, AdminConsole& console) {
  const House house = DemandHouse(store, arguments.Word(1, "没有指定药库名称。"));
  store.Change([&] {
    DemandNoStock(store, ItemsOf(store, house.name), house);
    DemandNoDocuments(store, house, "删除");
    store.Run("Delete YFYK_LinkItem Where sInvItemName=?", {house.name});
    store.Run("Delete YF_YKLX Where Sname=?", {house.name});
  });
  console.out << "已删除" << house.kind << "：" << house.name << "\n";
  return kAdminDone;
}

int Storehouse(const std::vector<std::string>& arguments, AdminConsole& console) {
  static const std::vector<AdminVerb> kVerbs = {
      {"list", List, 1},
      {"add", Add, 2, {"--link"}, {"--pharmacy"}},
      {"change", Alter, 2, {"--name", "--link", "--unlink"}},
      {"remove", Remove, 2},
  };
  return RunVerb(kVerbs, arguments, console);
}

}  // namespace

const AdminCommand kAdminStorehouse{
    "storehouse",
    "  luming-admin storehouse list 目录\n"
    "      列出药库和药房、有库存的药品种数、关联的收费项目。“目录”处也可以写连接字符串。\n"
    "  luming-admin storehouse add 目录 名称 [--pharmacy] [--link 收费项目,...]\n"
    "      添加药库；--pharmacy 添加药房。药品按收费项目归药库保管，一个收费项目只能关联一个药库。\n"
    "  luming-admin storehouse change 目录 名称 [--name 新名称] [--link 收费项目,...] [--unlink 收费项目,...]\n"
    "      修改名称和关联。已经有单据的药库不能改名，还有库存的收费项目不能取消关联。\n"
    "  luming-admin storehouse remove 目录 名称\n"
    "      删除没有库存也没有单据的药库或药房。\n",
    Storehouse};

}  // namespace luming
