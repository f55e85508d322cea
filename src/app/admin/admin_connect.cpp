#include "app/admin/admin_command.h"
#include "app/admin/admin_store.h"
#include "app/store_place.h"
#include "platform/connection_string.h"
#include "util/clock.h"
#include "util/failure.h"

namespace luming {

namespace {

int Connect(const std::vector<std::string>& given, AdminConsole& console) {
  const AdminArguments arguments(given, {});
  const std::string& directory = arguments.Word(0, "没有指定目录。");
  const std::string address = WithPassword(arguments.Word(1, "没有指定连接字符串。"), console);
  arguments.DemandAtMost(2);
  if (!IsConnectionString(address)) throw BadUsage{"不是连接字符串：" + address};
  if (!std::filesystem::is_directory(directory)) {
    throw Failure(failure::kFileNotFound, "不是应用程序目录：" + directory);
  }
  const ConnectionString parts(address);
  const ConnectionFields fields{parts.Server(), parts.Database(), parts.User(), parts.Password()};
  const SystemClock clock;
  OpenStore(ConnectionStringOf(fields), clock)->Close();
  WriteConnectionFile(directory, fields);
  console.out << "目录 " << directory << " 的程序从现在起连接" << ShownPlace(address) << "。\n";
  return kAdminDone;
}

}  // namespace

const AdminCommand kAdminConnect{
    "connect",
    "  luming-admin connect 目录 连接字符串\n"
    "      让应用程序目录的程序改为连接这台服务器：先试连，成功后才写入 DatabaseSet.data。\n",
    Connect};

}  // namespace luming
