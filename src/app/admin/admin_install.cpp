#include "app/admin/admin_command.h"
#include "app/admin/admin_store.h"
#include "app/composition.h"
#include "app/store_filler.h"
#include "app/store_install.h"
#include "app/store_place.h"
#include "platform/connection_string.h"
#include "platform/sql_script.h"
#include "util/clock.h"
#include "util/text.h"

namespace luming {

namespace {

/// A database that holds the system already is left as it is, but for procedures that were asked for.
int Keep(Connection& store, const StoreFiles& files, const StoreSurvey& survey, bool procedures,
         AdminConsole& console) {
  if (procedures) {
    RunScript(store, files.procedures);
    console.out << "已重新安装存储过程 " << ProceduresOf(files).size() << " 个，表和数据没有改动。\n";
    return kAdminDone;
  }
  console.out << "数据库中已有本系统的全部 " << survey.tables.size() << " 个表，没有做任何改动。\n";
  if (survey.missing_procedures.empty()) return kAdminDone;
  console.out << "缺少存储过程：" << Join(survey.missing_procedures, "、")
              << "\n用 --procedures 可以重新安装存储过程。\n";
  return kAdminDisagrees;
}

int Install(const std::vector<std::string>& given, AdminConsole& console) {
  const AdminArguments arguments(given, {"--password", "--data"}, {"--demo", "--procedures"});
  const std::string place = WithPassword(arguments.Word(0, "没有指定连接字符串。"), console);
  arguments.DemandAtMost(1);
  if (!IsConnectionString(place)) throw BadUsage{"install 需要服务器的连接字符串，应用程序目录请用 create 建立。"};
  std::optional<std::string> password = arguments.Value("--password");
  if (password) DemandUsablePassword(*password);
  const bool demo = arguments.Has("--demo");
  const StoreFiles files = ReadStoreFiles(DatabaseFiles(arguments), demo);
  const SystemClock clock;
  const std::shared_ptr<Connection> store = OpenStore(place, clock);
  console.out << "已连接" << ShownPlace(place) << "。\n";
  DemandChineseDatabase(*store);
  const StoreSurvey survey = SurveyStore(*store, files);
  const bool procedures = arguments.Has("--procedures");
  if (!survey.tables.empty() && survey.missing_tables.empty()) return Keep(*store, files, survey, procedures, console);
  DemandEmptyDatabase(survey);
  if (!demo && !password) {
    password = console.ask_secret("管理员的密码：");
    DemandUsablePassword(*password);
  }
  console.out << InstallStore(store, files, password, clock);
  return kAdminDone;
}

}  // namespace

const AdminCommand kAdminInstall{
    "install",
    "  luming-admin install 连接字符串 [--demo] [--password 密码] [--data 数据库文件目录] [--procedures]\n"
    "      在服务器的空数据库中建立表、存储过程和基础数据，要么全部建立，要么不留下任何内容。连接字符串形如\n"
    "      'Provider=sqloledb;Data Source=服务器;Initial Catalog=数据库;User ID=用户;Password=密码;'，\n"
    "      没有写数据库密码时会询问。已经安装过的数据库不会改动；--procedures 只重新安装存储过程。\n",
    Install};

}  // namespace luming
