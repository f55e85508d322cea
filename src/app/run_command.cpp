#include "app/run_command.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>

#include "util/text.h"

namespace luming {

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::size_t kMostOutput = 1 << 20;

/// The reading end of what a command prints, closed with its owner.
class OutputPipe {
 public:
  OutputPipe() {
    if (::pipe2(ends_.data(), O_CLOEXEC) != 0) ends_ = {-1, -1};
  }
  ~OutputPipe() {
    for (const int end : ends_) {
      if (end >= 0) ::close(end);
    }
  }
  OutputPipe(const OutputPipe&) = delete;
  OutputPipe& operator=(const OutputPipe&) = delete;

  bool IsOpen() const { return ends_[0] >= 0; }
  int WritingEnd() const { return ends_[1]; }
  void CloseWritingEnd() {
    ::close(ends_[1]);
    ends_[1] = -1;
  }
  /// Reads until the end. @return false when the deadline came first
  bool ReadAll(std::string& output, Clock::time_point deadline) const;

 private:
  std::array<int, 2> ends_{-1, -1};
};

bool OutputPipe::ReadAll(std::string& output, Clock::time_point deadline) const {
  while (output.size() < kMostOutput) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd waiting{ends_[0], POLLIN, 0};
    if (left <= 0 || ::poll(&waiting, 1, static_cast<int>(left)) <= 0) return false;
    std::array<char, 4096> block{};
    const ssize_t count = ::read(ends_[0], block.data(), block.size());
    if (count <= 0) return count == 0;
    output.append(block.data(), static_cast<std::size_t>(count));
  }
  return true;
}

std::optional<pid_t> Spawn(const std::string& program, std::vector<std::string> command, int output) {
  std::vector<char*> arguments;
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int failed = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failed != 0) return std::nullopt;
  return child;
}

/// Waits for the command's end, which is near: it has closed its output. @return its status, nothing when it is late
std::optional<int> EndOf(pid_t child, Clock::time_point deadline) {
  constexpr useconds_t kPause = 2000;
  for (;;) {
    int status = 0;
    if (::waitpid(child, &status, WNOHANG) == child) return status;
    if (Clock::now() >= deadline) return std::nullopt;
    ::usleep(kPause);
  }
}

}  // namespace

std::optional<std::string> FindProgram(std::string_view name) {
  const char* directories = std::getenv("PATH");
  for (const std::string& directory : Split(directories ? directories : "/usr/local/bin:/usr/bin:/bin", ":")) {
    const std::filesystem::path candidate = std::filesystem::path(directory) / name;
    if (!directory.empty() && ::access(candidate.c_str(), X_OK) == 0) return candidate.string();
  }
  return std::nullopt;
}

CommandResult RunCommand(const std::vector<std::string>& command, std::chrono::milliseconds patience) {
  using Kind = CommandResult::Kind;
  const Clock::time_point deadline = Clock::now() + patience;
  const std::optional<std::string> program = FindProgram(command.front());
  OutputPipe pipe;
  if (!program || !pipe.IsOpen()) return {Kind::kMissing, {}};
  const std::optional<pid_t> child = Spawn(*program, command, pipe.WritingEnd());
  if (!child) return {Kind::kMissing, {}};
  pipe.CloseWritingEnd();
  CommandResult result;
  std::optional<int> status;
  if (pipe.ReadAll(result.output, deadline)) status = EndOf(*child, deadline);
  if (!status) {
    ::kill(*child, SIGKILL);
    ::waitpid(*child, nullptr, 0);
    return {Kind::kTooLate, {}};
  }
  if (!WIFEXITED(*status) || WEXITSTATUS(*status) != 0) return {Kind::kFailed, {}};
  result.kind = Kind::kDone;
  return result;
}

}  // namespace luming
