#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "app/admin/admin_command.h"

namespace luming {

/// What one run of luming-admin came to.
struct AdminRun {
  int exit = 0;
  std::string out;
  std::string err;
};

/// Runs a command line of luming-admin. @param secret what is answered when it asks for a secret
inline AdminRun RunAdminLine(const std::vector<std::string>& arguments, const std::string& secret = {}) {
  std::ostringstream out;
  std::ostringstream err;
  AdminConsole console{out, err, [&](const std::string& prompt) {
                         err << prompt;
                         return secret;
                       }};
  const int exit = RunAdmin(arguments, console);
  return {exit, out.str(), err.str()};
}

}  // namespace luming
