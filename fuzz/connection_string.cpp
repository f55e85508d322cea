#include "platform/connection_string.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "demand.h"
#include "sqlserver/server_login.h"
#include "util/failure.h"

using namespace luming;

namespace {

/// The string's parts as FreeTDS reads them: a value in braces ends with "};".
std::vector<std::pair<std::string, std::string>> PartsOf(std::string_view text) {
  std::vector<std::pair<std::string, std::string>> parts;
  while (!text.empty()) {
    const std::size_t equals = text.find('=');
    Demand(equals != std::string_view::npos);
    const std::string key(text.substr(0, equals));
    text.remove_prefix(equals + 1);
    const bool braces = text.starts_with('{');
    if (braces) text.remove_prefix(1);
    const std::size_t end = text.find(braces ? "};" : ";");
    Demand(end != std::string_view::npos);
    parts.emplace_back(key, text.substr(0, end));
    text.remove_prefix(end + (braces ? 2 : 1));
  }
  return parts;
}

}  // namespace

/// Any text as a connection string: it is read and told to a driver, or refused; the driver gets the values as they
/// were and no part that a value made up.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const ConnectionString given(text);
  try {
    const sqlserver::ServerLogin login = sqlserver::ReadServerLogin(text);
    Demand(!login.host.empty() && login.port >= 0 && login.port <= 65535);
    const auto driver = sqlserver::OdbcDriver{sqlserver::OdbcDriver::Maker::kFreeTds, "FreeTDS"};
    std::size_t users = 0;
    for (const auto& [key, value] : PartsOf(sqlserver::OdbcConnectionString(login, driver))) {
      if (key == "UID") Demand(++users == 1 && value == given.User());
      if (key == "PWD") Demand(value == given.Password());
      if (key == "Database") Demand(value == given.Database());
      if (key == "Driver") Demand(value == "FreeTDS");
    }
    Demand(users == 1 || login.trusted);
  } catch (const Failure&) {
  }
  return 0;
}
