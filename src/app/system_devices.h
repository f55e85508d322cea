#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "app/input_methods.h"
#include "app/voice_library.h"
#include "platform/devices.h"
#include "util/clock.h"

namespace luming {

/// The machine under Linux.
class SystemDevices : public Devices {
 public:
  /// Sets the machine's clock; returns false when the operating system refuses.
  using ClockSetter = std::function<bool(std::chrono::sys_time<std::chrono::milliseconds>)>;

  /// @param clock  what the machine's clock says now; outlives the devices
  /// @param voice  of the device at this workstation
  /// @param setter replaced by tests
  SystemDevices(const Clock& clock, VoiceLibrary voice, ClockSetter setter = SetMachineClock);

  void SetClock(const DateTime& server) override;
  std::string ComputerName() override;
  /// The embedded database, and the servers whose browser service answers within a second.
  std::vector<std::string> ListServers() override;
  std::vector<KeyboardLayout> GetKeyboardLayoutList() override { return input_methods_.List(); }
  std::optional<KeyboardLayout> GetKeyboardLayout() override { return input_methods_.Current(); }
  void ActivateKeyboardLayout(std::int32_t handle) override { input_methods_.Activate(handle); }
  std::filesystem::path SystemDirectory() override { return "/usr/bin"; }
  /// "calc.exe" starts the calculator that the desktop has.
  void StartProgram(const std::filesystem::path& program) override;
  void OpenDocument(const std::filesystem::path& document) override;
  void dsbdll(int number, const std::string& text) override { voice_.dsbdll(number, text); }

 private:
  static bool SetMachineClock(std::chrono::sys_time<std::chrono::milliseconds> now);

  const Clock& clock_;
  ClockSetter setter_;
  InputMethods input_methods_;
  VoiceLibrary voice_;
};

/// A machine that is left alone: for scripts and tests.
class UntouchedDevices : public Devices {
 public:
  std::vector<std::string> spoken;  ///< what the voice device was told, in order

  void SetClock(const DateTime&) override {}
  std::string ComputerName() override { return "WORKSTATION"; }
  std::vector<std::string> ListServers() override;
  /// Two input methods and a plain layout between them.
  std::vector<KeyboardLayout> GetKeyboardLayoutList() override;
  std::optional<KeyboardLayout> GetKeyboardLayout() override;
  void ActivateKeyboardLayout(std::int32_t handle) override { active_layout_ = handle; }
  std::filesystem::path SystemDirectory() override { return "/usr/bin"; }
  void StartProgram(const std::filesystem::path&) override {}
  void OpenDocument(const std::filesystem::path& document) override;
  void dsbdll(int, const std::string& text) override { spoken.push_back(text); }

 private:
  std::int32_t active_layout_ = 0;
};

}  // namespace luming
