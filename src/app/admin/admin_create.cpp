#include "app/admin/admin_command.h"
#include "app/admin/admin_store.h"
#include "app/store_maker.h"
#include "util/clock.h"

namespace luming {

namespace {

int Create(const std::vector<std::string>& given, AdminConsole& console) {
  const AdminArguments arguments(given, {"--password", "--data"}, {"--demo"});
  StoreRequest request;
  request.directory = arguments.Word(0, "没有指定目录。");
  arguments.DemandAtMost(1);
  request.demo = arguments.Has("--demo");
  request.password = arguments.Value("--password");
  request.data = DatabaseFiles(arguments);
  DemandFreePlace(request.directory);
  if (!request.demo && !request.password) request.password = console.ask_secret("管理员的密码：");
  MakeApplicationDirectory(request, SystemClock());
  console.out << "已建立：" << request.directory.string() << "\n";
  return kAdminDone;
}

}  // namespace

const AdminCommand kAdminCreate{
    "create",
    "  luming-admin create 目录 [--demo] [--password 密码] [--data 数据库文件目录]\n"
    "      建立可以直接启动的应用程序目录。--demo 带演示数据；否则只有操作员“管理员”，没有给出密码时会询问。\n",
    Create};

}  // namespace luming
