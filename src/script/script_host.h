#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "screen/forms.h"
#include "util/date_time.h"

namespace luming {

/// The program as an operator script drives it. The composition root implements it, the script engine uses it. Whatever
/// a handler throws comes through: Failure that nobody trapped, ProcessEnded.
class ScriptHost {
 public:
  virtual ~ScriptHost() = default;

  /// Application directory of the next start; Failure while the process runs.
  virtual void SetHome(const std::filesystem::path& directory) = 0;
  /// What the program, the embedded database included, takes for now from here on; it stands still.
  virtual void SetClock(const DateTime& now) = 0;

  /// Starts the process as the command line would, again after it has ended. Failure while it runs.
  /// @param hand_off the command tail; empty for the login dialog
  virtual void Start(const std::string& hand_off) = 0;
  /// Executes a command of the main window. Failure when there is no main window.
  virtual void ExecuteCommand(int command) = 0;

  /// The forms that exist; null before the start and after the end of the process.
  virtual Forms* OpenForms() = 0;

  /// Runs a statement beside the program, on the store that it is connected with, else on that of the connection file:
  /// on a connection of its own, not traced.
  virtual Recordset RunBeside(std::string_view sql) = 0;

  /// @name What the program has sent since the last call of ForgetSent, in order
  /// @{
  virtual const std::vector<TracedStatement>& Statements() const = 0;
  virtual const std::vector<std::string>& Spoken() const = 0;  ///< to the voice device
  virtual void ForgetSent() = 0;
  /// @}

  /// An entry of the program's settings file in the application directory. Failure when it cannot be written.
  virtual void WriteSetting(const std::string& section, const std::string& key, const std::string& value) = 0;
  virtual std::string ReadSetting(const std::string& section, const std::string& key) = 0;  ///< empty without it

  /// What the last print or preview laid out, as text; empty before the first.
  virtual std::string LastPages() const = 0;
};

}  // namespace luming
