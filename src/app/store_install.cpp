#include "app/store_install.h"

#include <algorithm>
#include <array>

#include "app/store_filler.h"
#include "office/scratch_directory.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {

namespace {

using Names = std::vector<std::string>;

/// Tables that the server's own tools leave in a database.
constexpr std::array kOfTheServer = {"sysdiagrams", "dtproperties"};

bool Holds(const Names& names, const std::string& name) {
  return std::ranges::any_of(names, [&](const std::string& other) { return EqualsIgnoreCase(other, name); });
}

Names Without(const Names& names, const Names& others) {
  Names rest;
  std::ranges::copy_if(names, std::back_inserter(rest), [&](const auto& name) { return !Holds(others, name); });
  return rest;
}

/// @param type "U" for tables, "P" for procedures
Names ObjectsOf(Connection& store, const std::string& type) {
  Names names;
  Recordset rows = store.Execute("Select name From sysobjects Where xtype='" + type + "' Order by name");
  for (; !rows.Eof(); rows.MoveNext()) names.push_back(rows.Field(0).Text());
  return names;
}

}  // namespace

StoreSurvey SurveyStore(Connection& store, const StoreFiles& files) {
  const Names wanted = TablesOf(files);
  const Names found = Without(ObjectsOf(store, "U"), {kOfTheServer.begin(), kOfTheServer.end()});
  const Names missing = Without(wanted, found);
  return {Without(wanted, missing), missing, Without(found, wanted),
          Without(ProceduresOf(files), ObjectsOf(store, "P"))};
}

void DemandChineseDatabase(Connection& store) {
  Recordset seen = store.Execute(
      "Select DB_NAME(),'药库' As kept,DATALENGTH('药库') As bytes,Case When 'a'='A ' Then 1 Else 0 End As equal");
  const std::string name = seen.Field(0).TextOrEmpty();
  for (const char* system : {"master", "model", "msdb", "tempdb"}) {
    if (EqualsIgnoreCase(name, system)) {
      throw Failure(failure::kInvalidCall, "数据库 " + name + " 属于服务器本身，请先建立一个专用的数据库。");
    }
  }
  constexpr double kBytesOfTwoCharacters = 4;
  const bool chinese = seen.Field("kept").TextOrEmpty() == "药库" &&
                       seen.Field("bytes").Number() == kBytesOfTwoCharacters && seen.Field("equal").Number() == 1;
  if (chinese) return;
  throw Failure(failure::kInvalidCall,
                "数据库 " + name + " 不能按本系统的要求保存和比较中文，请用排序规则 Chinese_PRC_CI_AS 重新建立。");
}

void DemandEmptyDatabase(const StoreSurvey& survey) {
  if (survey.IsEmpty()) return;
  std::string words = "数据库不是空的，没有做任何改动。";
  if (!survey.tables.empty()) words += "\n已有本系统的表：" + Join(survey.tables, "、");
  if (!survey.tables.empty() && !survey.missing_tables.empty())
    words += "\n缺少的表：" + Join(survey.missing_tables, "、");
  if (!survey.foreign_tables.empty()) words += "\n其他程序的表：" + Join(survey.foreign_tables, "、");
  throw Failure(failure::kInvalidCall, words);
}

std::string InstallStore(const std::shared_ptr<Connection>& store, const StoreFiles& files,
                         const std::optional<std::string>& password, const Clock& clock) {
  const ScratchDirectory home;
  FillStore(store, files, password, home.path(), clock);
  std::string report = "已建立表 " + std::to_string(TablesOf(files).size()) + " 个，存储过程 " +
                       std::to_string(ProceduresOf(files).size()) + " 个。\n";
  for (const std::string& table : TablesOf(files)) {
    const std::string count = store->Execute("Select Count(*) From " + table).Field(0).Text();
    if (count != "0") report += "  " + table + "  " + count + " 行\n";
  }
  return report;
}

}  // namespace luming
