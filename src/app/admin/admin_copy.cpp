#include "app/admin/admin_command.h"
#include "app/admin/admin_store.h"
#include "app/store_copy.h"
#include "app/store_install.h"
#include "app/store_maker.h"
#include "app/store_place.h"
#include "util/clock.h"

namespace luming {

namespace {

namespace fs = std::filesystem;

bool IsFreePlace(const std::string& place) {
  return !IsConnectionString(place) && (!fs::exists(place) || (fs::is_directory(place) && fs::is_empty(place)));
}

int Copy(const std::vector<std::string>& given, AdminConsole& console) {
  const AdminArguments arguments(given, {"--data"});
  const std::string from = WithPassword(arguments.Word(0, "没有指定来源。"), console);
  const std::string to = WithPassword(arguments.Word(1, "没有指定目标。"), console);
  arguments.DemandAtMost(2);
  const StoreFiles files = ReadStoreFiles(DatabaseFiles(arguments), false);
  const SystemClock clock;
  const std::shared_ptr<Connection> source = OpenStore(from, clock);
  const auto copy_into = [&](const std::string& place) {
    const std::shared_ptr<Connection> target = OpenStore(place, clock);
    DemandChineseDatabase(*target);
    CopyStore(*source, *target, files, [&console](const std::string& line) { console.out << line << std::endl; });
    target->Close();
  };
  console.out << "从" << ShownPlace(from) << "复制到" << ShownPlace(to) << "：" << std::endl;
  if (IsFreePlace(to)) {
    StageApplicationDirectory(to, [&](const fs::path& home) { copy_into(home.string()); });
  } else {
    copy_into(to);
  }
  console.out << "复制完成。\n";
  return kAdminDone;
}

}  // namespace

const AdminCommand kAdminCopy{
    "copy",
    "  luming-admin copy 来源 目标 [--data 数据库文件目录]\n"
    "      把全部数据从来源复制到目标，两者都可以是应用程序目录或者服务器的连接字符串。目标必须是空的：空数据库、\n"
    "      没有数据的数据库，或者还没有的目录。复制后逐行核对；出错时目标保持原样。复制期间请退出所有客户端。\n",
    Copy};

}  // namespace luming
