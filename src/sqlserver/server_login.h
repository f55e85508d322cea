#pragma once

#include <string>
#include <string_view>

#include "sqlserver/odbc_driver.h"

namespace luming::sqlserver {

/// What a connection string of an ADO client says about server and operator.
struct ServerLogin {
  std::string host;      ///< name or address; this computer is "localhost"
  std::string instance;  ///< empty for the server's default instance
  int port = 0;          ///< 0 when the string names none
  std::string database;
  std::string user;
  std::string password;
  bool trusted = false;  ///< the operating system's user instead of user and password
  std::string language;  ///< of the server's messages; empty leaves it to the server
  std::string encrypt;   ///< "yes" or "no"; empty leaves it to server and driver

  /// As the operator knows the server: "host", "host\instance" or "host,port".
  std::string Shown() const;
};

/// Reads "Provider=sqloledb;Data Source=…;Initial Catalog=…;User ID=…;Password=…;" and its relatives. Unknown parts are
/// passed over. Failure kGeneralProvider without a server or for a zero byte, which no driver carries.
ServerLogin ReadServerLogin(std::string_view connection_string);

/// The same for the driver manager. No value reads as a further part. Failure kGeneralProvider for a value that the
/// driver has no way to be told.
std::string OdbcConnectionString(const ServerLogin& login, const OdbcDriver& driver);

}  // namespace luming::sqlserver
