#pragma once

#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace luming {

/// How a run of luming-admin ended, as its exit code.
enum AdminExit { kAdminDone = 0, kAdminDisagrees = 1, kAdminFailed = 2 };

/// Where a run of luming-admin speaks and asks.
struct AdminConsole {
  std::ostream& out;
  std::ostream& err;
  /// Asks for one line that nobody may read over the shoulder.
  std::function<std::string(const std::string& prompt)> ask_secret;
};

/// A command line that cannot be understood: told to the person at the console together with the usage.
struct BadUsage {
  std::string what;
};

/// What stands behind a subcommand's name: words, and options, which begin with "--".
class AdminArguments {
 public:
  /// @param with_value the options that the next argument belongs to
  /// @param flags      the options that stand alone
  /// Any other option, and a missing value, is BadUsage.
  AdminArguments(const std::vector<std::string>& arguments, const std::vector<std::string_view>& with_value,
                 const std::vector<std::string_view>& flags = {});

  std::size_t WordCount() const { return words_.size(); }
  /// BadUsage with `missing` when there are not so many words, counted from 0.
  const std::string& Word(std::size_t index, const char* missing) const;
  /// BadUsage when there are more than so many words.
  void DemandAtMost(std::size_t words) const;
  /// BadUsage when no option stands there that says what to change.
  void DemandSomeChange() const;
  bool Has(const std::string& option) const { return options_.contains(option); }
  /// The option's value; the last one counts. Nothing when it was not given.
  std::optional<std::string> Value(const std::string& option) const;

 private:
  std::vector<std::string> words_;
  std::map<std::string, std::string> options_;
};

/// A subcommand of luming-admin.
struct AdminCommand {
  const char* name;
  const char* usage;                                                             ///< whole lines
  int (*run)(const std::vector<std::string>& arguments, AdminConsole& console);  ///< what stands behind the name
};

/// @name The subcommands, one unit each
/// @{
extern const AdminCommand kAdminCreate;
extern const AdminCommand kAdminCheck;
extern const AdminCommand kAdminOperator;
extern const AdminCommand kAdminGroup;
extern const AdminCommand kAdminStorehouse;
extern const AdminCommand kAdminInstall;
extern const AdminCommand kAdminConnect;
extern const AdminCommand kAdminCopy;
/// @}

/// Runs a command line and tells failures. @return the exit code
int RunAdmin(const std::vector<std::string>& arguments, AdminConsole& console);

}  // namespace luming
