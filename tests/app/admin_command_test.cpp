#include "app/admin/admin_command.h"

#include <gtest/gtest.h>

#include "support/admin_run.h"
#include "support/temp_directory.h"

namespace luming {
namespace {

TEST(AdminCommandTest, ACommandLineThatCannotBeUnderstoodIsToldWithTheUsageOfWhatWasMeant) {
  struct Case {
    std::vector<std::string> arguments;
    const char* said;
    const char* usage;
  };
  const std::vector<Case> cases = {
      {{}, "没有指定命令。", "luming-admin check 目录"},
      {{"chekc", "x"}, "不认识的命令：chekc", "luming-admin create 目录"},
      {{"create"}, "没有指定目录。", "luming-admin create 目录"},
      {{"create", "a", "b"}, "不认识的参数：b", "luming-admin create 目录"},
      {{"create", "a", "--password"}, "--password 后面缺少内容。", "luming-admin create 目录"},
      {{"check", "a", "--demo"}, "不认识的参数：--demo", "luming-admin check 目录"},
  };
  for (const Case& c : cases) {
    const AdminRun run = RunAdminLine(c.arguments);
    EXPECT_EQ(run.exit, kAdminFailed);
    EXPECT_TRUE(run.err.starts_with(std::string("luming-admin：") + c.said + "\n用法：\n")) << run.err;
    EXPECT_NE(run.err.find(c.usage), std::string::npos) << run.err;
    EXPECT_EQ(run.out, "");
  }
}

TEST(AdminCommandTest, HelpGoesToTheOutputAndAFailureHasOneLine) {
  const AdminRun help = RunAdminLine({"help"});
  EXPECT_EQ(help.exit, kAdminDone);
  EXPECT_NE(help.out.find("luming-admin create"), std::string::npos);
  EXPECT_EQ(help.err, "");

  const TempDirectory directory;
  const AdminRun run = RunAdminLine({"check", directory.Path().string()});
  EXPECT_EQ(run.exit, kAdminFailed);
  EXPECT_EQ(run.err, "luming-admin：不是应用程序目录，没有连接文件：" + directory.Path().string() + "\n");

  const std::filesystem::path loop = directory / "loop";
  std::filesystem::create_symlink(loop, loop);
  const AdminRun fault = RunAdminLine({"check", loop.string()});
  EXPECT_EQ(fault.exit, kAdminFailed);
  EXPECT_TRUE(fault.err.starts_with("luming-admin：路径/文件访问错误：" + loop.string())) << fault.err;
}

}  // namespace
}  // namespace luming
