#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "util/date_time.h"

namespace luming {

/// A way of typing that the machine offers: a plain keyboard layout or an input method.
struct KeyboardLayout {
  std::int32_t handle = 0;  ///< the same on every machine that offers it; never 0
  std::string description;  ///< of the input method; empty for a plain layout
};

/// Services of the machine, its operating system and what is plugged into it. All operations may throw Failure.
class Devices {
 public:
  virtual ~Devices() = default;

  /// Brings the computer's clock to the server's time; changes nothing within two seconds of it.
  virtual void SetClock(const DateTime& server) = 0;
  virtual std::string ComputerName() = 0;
  /// Database servers that the network offers, found within a bounded time.
  virtual std::vector<std::string> ListServers() = 0;
  virtual std::vector<KeyboardLayout> GetKeyboardLayoutList() = 0;
  /// The one in use; nothing when the machine does not tell.
  virtual std::optional<KeyboardLayout> GetKeyboardLayout() = 0;
  /// A handle that the machine does not offer, 0 among them, changes nothing. Comes back within a bounded time.
  virtual void ActivateKeyboardLayout(std::int32_t handle) = 0;
  virtual std::filesystem::path SystemDirectory() = 0;
  /// Starts a program minimised with focus.
  virtual void StartProgram(const std::filesystem::path& program) = 0;
  /// Opens a document with the program that the desktop has for it.
  virtual void OpenDocument(const std::filesystem::path& document) = 0;
  /// Tells the voice device a text; the number is 1. What the text makes it say is the device's own.
  virtual void dsbdll(int number, const std::string& text) = 0;
};

}  // namespace luming
