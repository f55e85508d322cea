#include <termios.h>
#include <unistd.h>

#include <iostream>
#include <string>

#include "app/admin/admin_command.h"

namespace {

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

std::string AskSecret(const std::string& prompt) {
  std::cerr << prompt << std::flush;
  std::string secret;
  {
    const SilentInput silent;
    std::getline(std::cin, secret);
  }
  std::cerr << "\n";
  return secret;
}

}  // namespace

int main(int argc, char** argv) {
  luming::AdminConsole console{std::cout, std::cerr, AskSecret};
  return luming::RunAdmin({argv + 1, argv + argc}, console);
}
