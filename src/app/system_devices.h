#pragma once

#include <chrono>
#include <functional>

#include "platform/devices.h"
#include "util/clock.h"

namespace luming {

/// The machine under Linux.
class SystemDevices : public Devices {
 public:
  /// Sets the machine's clock; returns false when the operating system refuses.
  using ClockSetter = std::function<bool(std::chrono::sys_time<std::chrono::milliseconds>)>;

  /// @param clock  what the machine's clock says now; outlives the devices
  /// @param setter replaced by tests
  explicit SystemDevices(const Clock& clock, ClockSetter setter = SetMachineClock);

  void SetClock(const DateTime& server) override;
  std::string ComputerName() override;
  /// There is no such enumeration here: the operator types the server's name.
  std::vector<std::string> ListServers() override { return {}; }
  /// Keyboard layouts are the desktop's own affair here.
  void ActivateKeyboardLayout(int) override {}
  std::filesystem::path SystemDirectory() override { return "/usr/bin"; }
  /// "calc.exe" starts the calculator that the desktop has.
  void StartProgram(const std::filesystem::path& program) override;
  void OpenDocument(const std::filesystem::path& document) override;

 private:
  static bool SetMachineClock(std::chrono::sys_time<std::chrono::milliseconds> now);

  const Clock& clock_;
  ClockSetter setter_;
};

/// A machine that is left alone: for scripts and tests.
class UntouchedDevices : public Devices {
 public:
  void SetClock(const DateTime&) override {}
  std::string ComputerName() override { return "WORKSTATION"; }
  std::vector<std::string> ListServers() override { return {}; }
  void ActivateKeyboardLayout(int) override {}
  std::filesystem::path SystemDirectory() override { return "/usr/bin"; }
  void StartProgram(const std::filesystem::path&) override {}
  void OpenDocument(const std::filesystem::path& document) override;
};

}  // namespace luming
