#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/system_devices.h"
#include "frame/app_context.h"
#include "platform/desktop.h"
#include "script/script_host.h"
#include "util/clock.h"

namespace luming {

/// The system's clock until a script sets it; then it stands still.
class ProgramClock : public Clock {
 public:
  DateTime Now() const override { return fixed_ ? *fixed_ : system_.Now(); }
  void Set(const DateTime& now) { fixed_ = now; }

 private:
  SystemClock system_;
  std::optional<DateTime> fixed_;
};

/// Whether the program may touch the machine it runs on: set its clock, start other programs, ask the network. Scripts
/// and tests leave it untouched, and only for them what is sent is remembered.
enum class Machine { kReal, kUntouched };

/// Ties desktop, devices, clock, application directory, connections and command table into one running program.
///
///   Program program(desktop, printing, Machine::kReal, directory);
///   program.Start(command_tail);      // then the desktop's event loop until Desktop::EndProcess
class Program : public ScriptHost {
 public:
  /// @param desktop, printing outlive the program
  /// @param home application directory
  Program(Desktop& desktop, Printing& printing, Machine machine, const std::filesystem::path& home);
  /// A program that cannot print.
  Program(Desktop& desktop, Machine machine, const std::filesystem::path& home);
  ~Program() override;

  /// The process-wide state; null before Start.
  AppContext* Context() { return context_.get(); }

  /// Every statement also goes to a file, one line each. Set before Start. Failure when it cannot be written.
  void TraceTo(const std::filesystem::path& file);

  void SetHome(const std::filesystem::path& directory) override;
  void SetClock(const DateTime& now) override;
  void Start(const std::string& hand_off) override;
  void ExecuteCommand(int command) override;
  Forms* OpenForms() override;
  Recordset RunBeside(std::string_view sql) override;
  const std::vector<TracedStatement>& Statements() const override { return statements_; }
  const std::vector<std::string>& Spoken() const override { return untouched_.spoken; }
  void ForgetSent() override;
  void WriteSetting(const std::string& section, const std::string& key, const std::string& value) override;
  std::string ReadSetting(const std::string& section, const std::string& key) override;
  std::string LastPages() const override { return printing_.LastPages(); }

 private:
  void Record(const TracedStatement& statement);

  Desktop& desktop_;
  Printing& printing_;
  ProgramClock clock_;
  std::unique_ptr<SystemDevices> machine_;  ///< none when it is left untouched
  UntouchedDevices untouched_;
  std::unique_ptr<Workbooks> workbooks_;
  std::filesystem::path home_;
  std::filesystem::path trace_file_;
  std::vector<TracedStatement> statements_;
  std::unique_ptr<Connection> beside_;
  std::unique_ptr<AppContext> context_;
};

/// A connection that becomes the embedded store of the application directory or the server, by what it is opened with.
/// @param clock what the embedded store takes for now; outlives the connection
std::unique_ptr<Connection> NewConnection(const std::filesystem::path& home, const Clock& clock);

/// The application directory when none is named on the command line: that of the running program.
std::filesystem::path ProgramDirectory();

}  // namespace luming
