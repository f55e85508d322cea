#include "office/office_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>
#include <vector>

#include "office/find_office.h"

namespace luming {

namespace {

constexpr unsigned kLongestLifeInSeconds = 180;
constexpr int kAsksForSecondStart = 81;

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

/// The environment with Chinese as its language, so that the office program chooses Chinese fonts.
std::vector<std::string> ChineseEnvironment() {
  std::vector<std::string> texts;
  for (char** entry = environ; *entry; ++entry) {
    const std::string_view text(*entry);
    if (!text.starts_with("LANG=") && !text.starts_with("LC_") && !text.starts_with("LANGUAGE=")) {
      texts.emplace_back(text);
    }
  }
  texts.emplace_back("LANG=zh_CN.UTF-8");
  return texts;
}

/// An office program that was killed leaves its sockets behind: those of this user to which nobody listens.
void RemoveDeadSockets() {
  const std::string ours = "OSL_PIPE_" + std::to_string(getuid()) + "_";
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator("/tmp", ignored)) {
    const std::string path = entry.path().string();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (!entry.path().filename().string().starts_with(ours) || path.size() >= sizeof address.sun_path) continue;
    path.copy(address.sun_path, path.size());
    const int line = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool refused = connect(line, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0;
    if (refused && errno == ECONNREFUSED) unlink(path.c_str());
    close(line);
  }
}

}  // namespace

OfficeProcess::OfficeProcess(const std::filesystem::path& office) : office_(office) {
  std::error_code missing;
  if (!std::filesystem::exists(office_ / "soffice.bin", missing)) throw NoOffice();
  pipe_ = scratch_.path().filename().string();
  Start();
}

void OfficeProcess::Start() {
  std::vector<std::string> words = {(office_ / "soffice.bin").string(),
                                    "--headless",
                                    "--invisible",
                                    "--norestore",
                                    "--nologo",
                                    "--nodefault",
                                    "--nolockcheck",
                                    "-env:UserInstallation=file://" + (scratch_.path() / "profile").string(),
                                    "--accept=pipe,name=" + pipe_ + ";urp;"};
  std::vector<std::string> environment = ChineseEnvironment();
  const std::vector<char*> arguments = Pointers(words);
  const std::vector<char*> variables = Pointers(environment);
  const pid_t parent = getpid();

  process_ = fork();
  if (process_ < 0) throw NoOffice();
  if (process_ > 0) return;
  // Only what may be called between fork and exec. The alarm outlives exec and ends a program that hangs.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(1);
  setpgid(0, 0);
  alarm(kLongestLifeInSeconds);
  const int nowhere = open("/dev/null", O_RDWR);
  for (int standard = 0; standard <= 2; ++standard) dup2(nowhere, standard);
  execve(arguments.front(), arguments.data(), variables.data());
  _exit(1);
}

void OfficeProcess::KeepAlive() {
  int status = 0;
  if (process_ > 0 && waitpid(process_, &status, WNOHANG) == 0) return;
  process_ = -1;
  if (!started_again_ && WIFEXITED(status) && WEXITSTATUS(status) == kAsksForSecondStart) {
    started_again_ = true;
    Start();
    return;
  }
  throw OfficeRefused("办公软件意外退出，请重试。");
}

void OfficeProcess::AwaitEnd() {
  using namespace std::chrono_literals;
  for (int i = 0; i < 100 && process_ > 0; ++i) {
    int status = 0;
    if (waitpid(process_, &status, WNOHANG) != 0) {
      killed_ = WIFSIGNALED(status);
      process_ = -1;
      return;
    }
    std::this_thread::sleep_for(20ms);
  }
}

OfficeProcess::~OfficeProcess() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    killed_ = true;
  }
  if (killed_) RemoveDeadSockets();
}

}  // namespace luming
