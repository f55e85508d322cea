#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace luming::sqlserver {

/// A driver for the server, as the driver manager is told of it.
struct OdbcDriver {
  enum class Maker { kMicrosoft, kFreeTds };
  Maker maker;
  std::string name;  ///< of an installed driver, or the path of its library
};

/// The names of the drivers that the driver manager knows. Failure when there is no driver manager.
std::vector<std::string> InstalledDrivers();

/// Where packages put the library of FreeTDS; nothing when it is not there.
std::optional<std::filesystem::path> FindFreeTds();

/// The server maker's own driver when it is installed, the newest if there are several; else FreeTDS, by its library
/// where that was found.
std::optional<OdbcDriver> ChooseDriver(const std::vector<std::string>& installed,
                                       const std::optional<std::filesystem::path>& freetds);

/// The driver of this machine. Failure kGeneralProvider that says what to install when there is none.
OdbcDriver FindDriver();

}  // namespace luming::sqlserver
