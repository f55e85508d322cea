#include "app/admin/admin_command.h"
#include "app/admin/admin_store.h"
#include "app/store_check.h"

namespace luming {

namespace {

int Check(const std::vector<std::string>& given, AdminConsole& console) {
  const AdminArguments arguments(given, {});
  const std::string place = WithPassword(arguments.Word(0, "check 需要一个目录或连接字符串。"), console);
  arguments.DemandAtMost(1);
  bool agree = false;
  console.out << CheckStore(place, agree);
  return agree ? kAdminDone : kAdminDisagrees;
}

}  // namespace

const AdminCommand kAdminCheck{
    "check",
    "  luming-admin check 目录|连接字符串\n"
    "      只读检查：列出库存、批次和流水不一致的药品，以及已确认但没有出库的出库单。全部一致返回 0，有不一致返回 1，出错返回 2。\n",
    Check};

}  // namespace luming
