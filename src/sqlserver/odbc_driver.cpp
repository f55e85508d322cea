#include "sqlserver/odbc_driver.h"

#include <array>
#include <string_view>

#include "sqlserver/odbc_handle.h"
#include "util/failure.h"
#include "util/number_text.h"
#include "util/text.h"
#include "util/utf16.h"

namespace luming::sqlserver {

namespace {

constexpr std::string_view kMicrosoft = "ODBC Driver ";
constexpr std::string_view kForTheServer = " for SQL Server";
constexpr std::string_view kFreeTds = "FreeTDS";

/// The version of "ODBC Driver 18 for SQL Server"; 0 for any other driver.
double VersionOf(const std::string& name) {
  if (!name.starts_with(kMicrosoft) || !name.ends_with(kForTheServer)) return 0;
  return Val(std::string_view(name).substr(kMicrosoft.size()));
}

}  // namespace

std::vector<std::string> InstalledDrivers() {
  const OdbcEnvironment environment;
  std::vector<std::string> names;
  std::array<SQLWCHAR, 512> name{};
  std::array<SQLWCHAR, 4096> unused{};
  for (SQLUSMALLINT direction = SQL_FETCH_FIRST;; direction = SQL_FETCH_NEXT) {
    SQLSMALLINT length = 0;
    SQLSMALLINT unused_length = 0;
    const SQLRETURN result =
        Odbc().Drivers(environment.get(), direction, name.data(), static_cast<SQLSMALLINT>(name.size()), &length,
                       unused.data(), static_cast<SQLSMALLINT>(unused.size()), &unused_length);
    if (!SQL_SUCCEEDED(result)) return names;
    const std::u16string_view units(reinterpret_cast<const char16_t*>(name.data()), name.size() - 1);
    names.push_back(FromUtf16(units.substr(0, units.find(u'\0'))));
  }
}

std::optional<std::filesystem::path> FindFreeTds() {
  for (const char* place : {"/usr/lib/x86_64-linux-gnu/odbc", "/usr/lib/aarch64-linux-gnu/odbc", "/usr/lib/odbc",
                            "/usr/lib64", "/usr/local/lib/odbc", "/usr/local/lib", "/usr/lib"}) {
    const std::filesystem::path library = std::filesystem::path(place) / "libtdsodbc.so";
    std::error_code unreadable;
    if (std::filesystem::exists(library, unreadable)) return library;
  }
  return std::nullopt;
}

std::optional<OdbcDriver> ChooseDriver(const std::vector<std::string>& installed,
                                       const std::optional<std::filesystem::path>& freetds) {
  const std::string* newest = nullptr;
  for (const std::string& name : installed) {
    if (VersionOf(name) > (newest ? VersionOf(*newest) : 0)) newest = &name;
  }
  if (newest) return OdbcDriver{OdbcDriver::Maker::kMicrosoft, *newest};
  if (freetds) return OdbcDriver{OdbcDriver::Maker::kFreeTds, freetds->string()};
  for (const std::string& name : installed) {
    if (EqualsIgnoreCase(name, kFreeTds)) return OdbcDriver{OdbcDriver::Maker::kFreeTds, name};
  }
  return std::nullopt;
}

OdbcDriver FindDriver() {
  const std::optional<OdbcDriver> driver = ChooseDriver(InstalledDrivers(), FindFreeTds());
  if (driver) return *driver;
  throw Failure(failure::kGeneralProvider,
                "本机没有安装 SQL Server 的 ODBC 驱动程序，无法连接数据库服务器。请安装软件包 tdsodbc（FreeTDS），"
                "或者微软的 ODBC Driver for SQL Server。");
}

}  // namespace luming::sqlserver
