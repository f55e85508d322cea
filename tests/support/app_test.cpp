#include "support/app_test.h"

namespace luming {

void FakeDevices::NeedConsent() const {
  if (refuses) throw Failure(70, "没有权限");
}

void FakeDevices::SetClock(const DateTime& server) {
  NeedConsent();
  clock_settings.push_back(server);
}

void FakeDevices::ActivateKeyboardLayout(std::int32_t handle) {
  NeedConsent();
  activated.push_back(handle);
}

std::vector<std::string> FakeDevices::ListServers() {
  NeedConsent();
  return servers;
}

void FakeDevices::StartProgram(const std::filesystem::path& program) {
  NeedConsent();
  started.push_back(program.string());
}

void FakeDevices::OpenDocument(const std::filesystem::path& document) {
  NeedConsent();
  started.push_back(document.string());
}

AppTest::AppTest()
    : suite(directory / "suite"),
      home(suite / "yk"),
      app(
          ports, home, [this] { return store.Connect(); }, commands),
      handler(app.forms) {
  std::filesystem::create_directories(home);
}

void AppTest::Connect() {
  app.ConnStr = "Data Source=test;";
  app.Cn = app.CreateConnection();
  app.Cn->Open(app.ConnStr);
  store.TakeSent();
}

void AppTest::PrepareLogin(const std::vector<std::pair<std::string, bool>>& rights) {
  const auto user = [](const std::string& name) {
    return FakeStore::Row{TextValue(name), TextValue("药库"), NumberValue(67699721), TextValue("五笔码")};
  };
  const std::vector<std::string> columns = {"username", "group_name", "IME", "SearchType"};
  store.Answer("select * from userdb ", columns, {user("张三"), user("李四")});
  store.Answer("SELECT top 1 GETDATE() FROM sysobjects", {""}, {{Value(DateTime(2026, 3, 1, 10, 2, 30))}});
  for (const std::string name : {"张三", "李四"}) {
    store.Answer("select * from userdb where username like '" + name + "' and password like '1234'", columns,
                 {user(name)});
    store.Answer("select * from userdb where username like '" + name + "' and password like 'no'", columns, {});
    store.Answer("select SQBH from Yf_sq where username like'" + name + "'", {"SQBH"}, {{TextValue("SQ01")}});
  }
  std::vector<FakeStore::Row> rows;
  for (const auto& [key, right] : rights) rows.push_back({TextValue(key), NumberValue(right ? 1 : 0)});
  store.Answer("Select MoudelKey,QX from QX_Temp2 Where Groupname ='药库'", {"MoudelKey", "QX"}, rows);
  store.Answer("Select top 1 DMMC From CS Where Controlid Like'BBDW'", {"DMMC"}, {{TextValue("鹿鸣医院")}});
  store.Answer("Select Sname From YF_YKLX Where SLX Like'药库'", {"Sname"},
               {{TextValue("西药库")}, {TextValue("中药库")}, {TextValue("器械库")}});
}

}  // namespace luming
