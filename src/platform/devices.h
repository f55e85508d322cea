#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "util/date_time.h"

namespace luming {

/// Services of the machine and its operating system. All operations may throw Failure.
class Devices {
 public:
  virtual ~Devices() = default;

  /// Brings the computer's clock to the server's time; changes nothing within two seconds of it.
  virtual void SetClock(const DateTime& server) = 0;
  virtual std::string ComputerName() = 0;
  /// Database servers that the network offers, found within a bounded time.
  virtual std::vector<std::string> ListServers() = 0;
  virtual void ActivateKeyboardLayout(int handle) = 0;
  virtual std::filesystem::path SystemDirectory() = 0;
  /// Starts a program minimised with focus.
  virtual void StartProgram(const std::filesystem::path& program) = 0;
  /// Opens a document with the program that the desktop has for it.
  virtual void OpenDocument(const std::filesystem::path& document) = 0;
};

}  // namespace luming
