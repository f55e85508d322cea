#include "support/store_test.h"

#include <algorithm>
#include <filesystem>

#include "platform/sql_script.h"
#include "platform/tracing_connection.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

namespace {

constexpr const char* kName = "lumndata";
constexpr const char* kConnection =
    "Provider=sqloledb;Data Source=(localdb);Initial Catalog=lumndata;User ID=sa;Password=;";

const std::vector<std::string> kRows = {
    "Insert Into YF_YKLX(Sname,SLX) Values('西药库','药库')",
    "Insert Into eK_ChargeItem(sItemName,YPBZ) Values('西药费',1)",
    "Insert Into YFYK_LinkItem(sInvItemName,sChargeItemName) Values('西药库','西药费')",
    "Insert Into QX_Temp(MoudelKey,MoudelName) Values('YPGL_FSYP','输入负数')",
    "Insert Into QX_Temp(MoudelKey,MoudelName) Values('YPGL_YKJYLR','药库进药录入')",
    "Insert Into CS(Controlid,DM,DMMC) Values('GHDW','YB','云泊医药有限公司')",
    "Insert Into CS(Controlid,DM,DMMC) Values('YP_YSR','F','方立群')",
    "Insert Into CS(Controlid,DM,DMMC) Values('YP_FHR','L','吕静仪')",
    "Insert Into YF_YPML(YPBM,YPMC,GG,DW,ZXDW,CLB,LSJ,CLLSJ,PFJ,PLJ,YKKCL,PYDM,WBDM,SCCJ,SFXM) Values("
    "'100001','阿莫西林胶囊','0.25g*10粒','盒','粒',10,15.5,1.55,12,13,0,'AMXLJN','BASSEG','望川制药','西药费')",
    "Insert Into YF_YPML(YPBM,YPMC,GG,DW,ZXDW,CLB,LSJ,CLLSJ,PFJ,PLJ,YKKCL,PYDM,WBDM,SCCJ,SFXM) Values("
    "'100002','碘伏消毒液','100ml','瓶','',1,8,0,5.25,6,7,'DFXDY','DWIGI','林壑药业','西药费')",
    "Insert Into YF_YPML(YPBM,YPMC,GG,DW,ZXDW,CLB,LSJ,CLLSJ,PFJ,PLJ,YKKCL,PYDM,WBDM,SCCJ,SFXM) Values("
    "'100003','头孢克肟片','0.1g*6片','盒','片',6,30,5,20,24,0,'TBKWP','UEDET','云岫制药','西药费')",
};

std::string ReadDatabaseFile(const char* name) {
  const std::filesystem::path file = std::filesystem::path(LUMING_DATABASE_DIR) / name;
  return ReadWholeFile(file).value();
}

/// The store that every test starts from, made once for the whole program.
const std::filesystem::path& PreparedStore() {
  static const TempDirectory directory;
  static const std::filesystem::path file = [] {
    const std::string place = directory.Path().string();
    const FixedClock clock{DateTime(2026, 3, 1)};
    CreateStore(place, kName);
    LocalConnection connection(place, clock);
    connection.Open(kConnection);
    RunScript(connection, ReadDatabaseFile("schema.sql"));
    RunScript(connection, ReadDatabaseFile("procedures.sql"));
    for (const std::string& row : kRows) connection.Execute(row);
    connection.Close();
    return std::filesystem::path(StorePath(place, kName));
  }();
  return file;
}

void GrantEverything(User_qx& user) {
  user.GetUserName = "管理员";
  for (const OperatorRight& right : kAllRights) user.*(right.flag) = true;
}

}  // namespace

StoreTest::StoreTest()
    : app({desktop, devices, printing, workbooks, clock}, directory.Path(), {}, MainCommands()), handler(app.forms) {
  app.KFMC = "西药库";
  app.ConnStr = kConnection;
  GrantEverything(app.CurUser);
  std::filesystem::copy_file(PreparedStore(), StorePath(directory.Path().string(), kName));
  app.Cn = OpenStore();
}

std::unique_ptr<Connection> StoreTest::OpenStore() {
  auto store = std::make_unique<LocalConnection>(directory.Path().string(), clock);
  store->Open(kConnection);
  beside_ = store.get();
  return std::make_unique<TracingConnection>(std::move(store),
                                             [this](const TracedStatement& sent) { sent_.push_back(sent.sql); });
}

std::vector<std::string> StoreTest::TakeSent() {
  return std::exchange(sent_, {});
}

std::string StoreTest::SentLike(const std::string& beginning) {
  const auto found = std::ranges::find_if(sent_, [&](const std::string& sql) { return sql.starts_with(beginning); });
  if (found != sent_.end()) return *found;
  ADD_FAILURE() << "not sent: " << beginning;
  return {};
}

void StoreTest::Type(Form& form, std::string_view text) {
  for (std::size_t at = 0; at < text.size();) form.UserType(NextCodePoint(text, at));
}

}  // namespace luming
