#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "frame/app_context.h"
#include "frame/command_table.h"
#include "support/fake_output.h"
#include "support/fake_store.h"
#include "support/scripted_desktop.h"
#include "support/temp_directory.h"

namespace luming {

/// A machine that only remembers what it was asked to do.
class FakeDevices : public Devices {
 public:
  std::vector<DateTime> clock_settings;
  std::vector<std::string> started;
  std::vector<std::string> servers;
  std::vector<KeyboardLayout> layouts;
  std::optional<KeyboardLayout> layout;
  std::vector<std::int32_t> activated;
  bool refuses = false;  ///< every request fails

  void SetClock(const DateTime& server) override;
  std::string ComputerName() override { return "YK-01"; }
  std::vector<std::string> ListServers() override;
  std::vector<KeyboardLayout> GetKeyboardLayoutList() override { return layouts; }
  std::optional<KeyboardLayout> GetKeyboardLayout() override { return layout; }
  void ActivateKeyboardLayout(std::int32_t handle) override;
  std::filesystem::path SystemDirectory() override { return "/system"; }
  void StartProgram(const std::filesystem::path& program) override;
  void OpenDocument(const std::filesystem::path& document) override;
  void dsbdll(int, const std::string&) override {}

 private:
  void NeedConsent() const;
};

/// What a test of the frame stands on: a context over a fake store, an application directory below a suite's directory.
class AppTest : public ::testing::Test {
 protected:
  AppTest();

  /// A connection in `app.Cn` that is open already, nothing recorded.
  void Connect();
  /// The operators, rights and storehouses that a login asks for. One group "药库" with the given rights.
  void PrepareLogin(const std::vector<std::pair<std::string, bool>>& rights = {{"YPGL_XYKIN", true}});

  TempDirectory directory;
  std::filesystem::path suite;
  std::filesystem::path home;
  ScriptedDesktop desktop;
  FakeDevices devices;
  FakePrinting printing;
  FakeWorkbooks workbooks;
  FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  FakeStore store;
  CommandTable commands;
  Ports ports{desktop, devices, printing, workbooks, clock};
  AppContext app;
  /// Keeps forms that close themselves until the test is over, as the running handler would.
  Forms::HandlerScope handler;
};

}  // namespace luming
