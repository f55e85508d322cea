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

  /// What the program has sent since the last call of ForgetStatements, in order.
  virtual const std::vector<TracedStatement>& Statements() const = 0;
  virtual void ForgetStatements() = 0;

  /// What the last print or preview laid out, as text; empty before the first.
  virtual std::string LastPages() const = 0;
};

}  // namespace luming
