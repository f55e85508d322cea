#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sqlserver/odbc_api.h"

namespace luming::sqlserver {

/// What the driver or the server said about a call.
struct Diagnostic {
  std::string state;  ///< five characters, "42S02"
  long native = 0;    ///< the server's own number; 20000 to 20999 are FreeTDS's
  std::string text;   ///< without the names of the parts that it passed through
};

/// An environment, a connection or a statement of the driver manager. A connection is closed by its owner ahead of the
/// handle's end.
class OdbcHandle {
 public:
  /// @param parent null for an environment. Failure kGeneralProvider when the driver manager has no memory for it.
  OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent);
  ~OdbcHandle();
  OdbcHandle(const OdbcHandle&) = delete;
  OdbcHandle& operator=(const OdbcHandle&) = delete;

  SQLHANDLE get() const { return handle_; }
  std::vector<Diagnostic> Diagnostics() const;

 private:
  SQLSMALLINT kind_;
  SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

/// An environment of ODBC 3.
class OdbcEnvironment : public OdbcHandle {
 public:
  OdbcEnvironment();
};

/// For numbers that attributes take in the place of a pointer.
inline SQLPOINTER AttributeValue(SQLULEN value) {
  return reinterpret_cast<SQLPOINTER>(value);
}

}  // namespace luming::sqlserver
