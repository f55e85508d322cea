#include "app/system_devices.h"

#include <spawn.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

#include "app/connection_router.h"
#include "app/run_command.h"
#include "sqlserver/server_browser.h"
#include "util/failure.h"

namespace luming {

namespace {

using std::chrono::milliseconds;
constexpr milliseconds kGoodEnough{2000};
constexpr std::array kCalculators = {"gnome-calculator", "kcalc", "mate-calc", "galculator", "qalculate-gtk", "xcalc"};

/// The moment that the workstation's time zone gives to a civil time.
std::chrono::sys_time<milliseconds> MomentOf(const DateTime& civil) {
  std::tm parts{};
  parts.tm_year = civil.Year() - 1900;
  parts.tm_mon = civil.Month() - 1;
  parts.tm_mday = civil.Day();
  parts.tm_hour = civil.Hour();
  parts.tm_min = civil.Minute();
  parts.tm_sec = civil.Second();
  parts.tm_isdst = -1;
  const std::time_t seconds = std::mktime(&parts);
  return std::chrono::sys_time<milliseconds>(std::chrono::seconds(seconds) + milliseconds(civil.Millisecond()));
}

/// Starts the program through a shell that leaves it behind, so that nobody has to wait for its end.
void Launch(const std::filesystem::path& program, const std::string& argument) {
  std::string shell = "/bin/sh";
  std::string option = "-c";
  std::string script = "\"$0\" ${1:+\"$1\"} >/dev/null 2>&1 &";
  std::string name = program.string();
  std::string passed = argument;
  std::array<char*, 6> arguments = {shell.data(), option.data(), script.data(), name.data(), passed.data(), nullptr};
  pid_t child = 0;
  if (posix_spawn(&child, shell.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) {
    throw Failure(failure::kFileNotFound, "无法启动程序：" + name);
  }
  waitpid(child, nullptr, 0);
}

void NeedFile(const std::filesystem::path& file) {
  std::error_code unreadable;
  if (!std::filesystem::exists(file, unreadable)) {
    throw Failure(failure::kFileNotFound, "文件未找到：" + file.string());
  }
}

}  // namespace

SystemDevices::SystemDevices(const Clock& clock, VoiceLibrary voice, ClockSetter setter)
    : clock_(clock), setter_(std::move(setter)), voice_(std::move(voice)) {}

void SystemDevices::SetClock(const DateTime& server) {
  const milliseconds difference = server.Point() - clock_.Now().Point();
  if (std::chrono::abs(difference) <= kGoodEnough) return;
  if (!setter_(MomentOf(server))) {
    throw Failure(70, "没有权限设置本机的日期和时间，请给系统管理员联系。");
  }
}

bool SystemDevices::SetMachineClock(std::chrono::sys_time<milliseconds> now) {
  const auto since = now.time_since_epoch();
  timeval value{};
  value.tv_sec = std::chrono::duration_cast<std::chrono::seconds>(since).count();
  value.tv_usec = static_cast<suseconds_t>((since % std::chrono::seconds(1)).count() * 1000);
  return settimeofday(&value, nullptr) == 0;
}

std::string SystemDevices::ComputerName() {
  std::array<char, 225> name{};
  if (gethostname(name.data(), name.size() - 1) != 0) return "localhost";
  return name.data();
}

std::vector<std::string> SystemDevices::ListServers() {
  constexpr milliseconds kPatience{1000};
  std::vector<std::string> servers = AskBrowsers(PlacesOfNetwork(), kPatience);
  servers.insert(servers.begin(), std::string(RoutedConnection::kEmbedded));
  return servers;
}

void SystemDevices::StartProgram(const std::filesystem::path& program) {
  if (program.filename() != "calc.exe") {
    NeedFile(program);
    return Launch(program, {});
  }
  for (const char* calculator : kCalculators) {
    if (const auto found = FindProgram(calculator)) return Launch(*found, {});
  }
  throw Failure(failure::kFileNotFound, "本机没有安装计算器程序。");
}

void SystemDevices::OpenDocument(const std::filesystem::path& document) {
  NeedFile(document);
  const auto opener = FindProgram("xdg-open");
  if (!opener) throw Failure(failure::kFileNotFound, "本机没有打开文档的程序（xdg-open）。");
  Launch(*opener, document.string());
}

std::vector<std::string> UntouchedDevices::ListServers() {
  return {std::string(RoutedConnection::kEmbedded)};
}

std::vector<KeyboardLayout> UntouchedDevices::GetKeyboardLayoutList() {
  return {{1001, "智能拼音"}, {1002, ""}, {1003, "五笔字型"}};
}

std::optional<KeyboardLayout> UntouchedDevices::GetKeyboardLayout() {
  const std::vector<KeyboardLayout> offered = GetKeyboardLayoutList();
  const auto found = std::ranges::find(offered, active_layout_, &KeyboardLayout::handle);
  return found == offered.end() ? std::nullopt : std::optional(*found);
}

void UntouchedDevices::OpenDocument(const std::filesystem::path& document) {
  NeedFile(document);
}

}  // namespace luming
