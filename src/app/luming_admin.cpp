#include <termios.h>
#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "app/composition.h"
#include "app/store_check.h"
#include "app/store_maker.h"
#include "util/clock.h"
#include "util/failure.h"

namespace luming {
namespace {

constexpr int kDone = 0;
constexpr int kDisagrees = 1;
constexpr int kFailed = 2;

constexpr const char* kUsage =
    "用法：\n"
    "  luming-admin create 目录 [--demo] [--password 密码] [--data 数据库文件目录]\n"
    "      建立可以直接启动的应用程序目录。--demo 带演示数据；否则只有操作员“管理员”，没有给出密码时会询问。\n"
    "  luming-admin check 目录\n"
    "      只读检查：列出库存、批次和流水不一致的药品。全部一致返回 0，有不一致返回 1，出错返回 2。\n";

struct BadUsage {
  std::string what;
};

/// Hides what is typed while it lives, when the input is a terminal.
class SilentInput {
 public:
  SilentInput() : terminal_(::tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (!terminal_) return;
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &silent);
  }
  ~SilentInput() {
    if (terminal_) ::tcsetattr(STDIN_FILENO, TCSANOW, &before_);
  }
  SilentInput(const SilentInput&) = delete;
  SilentInput& operator=(const SilentInput&) = delete;

 private:
  termios before_{};
  bool terminal_;
};

std::string AskPassword() {
  std::cerr << "管理员的密码：" << std::flush;
  std::string password;
  {
    const SilentInput silent;
    std::getline(std::cin, password);
  }
  std::cerr << "\n";
  return password;
}

StoreRequest ReadCreateArguments(const std::vector<std::string>& arguments) {
  StoreRequest request;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const auto value = [&] {
      if (i + 1 >= arguments.size()) throw BadUsage{arguments[i] + " 后面缺少内容。"};
      return arguments[++i];
    };
    if (arguments[i] == "--demo") {
      request.demo = true;
    } else if (arguments[i] == "--password") {
      request.password = value();
    } else if (arguments[i] == "--data") {
      request.data = value();
    } else if (arguments[i].starts_with("--") || !request.directory.empty()) {
      throw BadUsage{"不认识的参数：" + arguments[i]};
    } else {
      request.directory = arguments[i];
    }
  }
  if (request.directory.empty()) throw BadUsage{"没有指定目录。"};
  return request;
}

int Create(const std::vector<std::string>& arguments) {
  StoreRequest request = ReadCreateArguments(arguments);
  if (request.data.empty()) request.data = FindDatabaseFiles(ProgramDirectory());
  DemandFreePlace(request.directory);
  if (!request.demo && !request.password) request.password = AskPassword();
  MakeApplicationDirectory(request, SystemClock());
  std::cout << "已建立：" << request.directory.string() << "\n";
  return kDone;
}

int Check(const std::vector<std::string>& arguments) {
  if (arguments.size() != 2) throw BadUsage{"check 需要一个目录。"};
  bool agree = false;
  std::cout << CheckStore(arguments[1], agree);
  return agree ? kDone : kDisagrees;
}

int Run(const std::vector<std::string>& arguments) {
  try {
    if (arguments.empty()) throw BadUsage{"没有指定命令。"};
    if (arguments[0] == "create") return Create(arguments);
    if (arguments[0] == "check") return Check(arguments);
    if (arguments[0] == "help" || arguments[0] == "--help") {
      std::cout << kUsage;
      return kDone;
    }
    throw BadUsage{"不认识的命令：" + arguments[0]};
  } catch (const BadUsage& bad) {
    std::cerr << "luming-admin：" << bad.what << "\n" << kUsage;
  } catch (const Failure& failure) {
    std::cerr << "luming-admin：" << failure.description() << "\n";
  }
  return kFailed;
}

}  // namespace
}  // namespace luming

int main(int argc, char** argv) {
  return luming::Run({argv + 1, argv + argc});
}
