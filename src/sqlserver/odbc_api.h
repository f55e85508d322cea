#pragma once

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace luming::sqlserver {

/// The calls of the ODBC driver manager that this adapter makes. They are looked up when the first server is opened, so
/// that a workstation with the embedded database alone needs no driver manager. Texts go in and out as UTF-16.
struct OdbcApi {
  decltype(&::SQLAllocHandle) AllocHandle;
  decltype(&::SQLFreeHandle) FreeHandle;
  decltype(&::SQLSetEnvAttr) SetEnvAttr;
  decltype(&::SQLDriversW) Drivers;
  decltype(&::SQLSetConnectAttrW) SetConnectAttr;
  decltype(&::SQLGetConnectAttrW) GetConnectAttr;
  decltype(&::SQLDriverConnectW) DriverConnect;
  decltype(&::SQLDisconnect) Disconnect;
  decltype(&::SQLSetStmtAttrW) SetStmtAttr;
  decltype(&::SQLExecDirectW) ExecDirect;
  decltype(&::SQLNumResultCols) NumResultCols;
  decltype(&::SQLDescribeColW) DescribeCol;
  decltype(&::SQLFetch) Fetch;
  decltype(&::SQLGetData) GetData;
  decltype(&::SQLMoreResults) MoreResults;
  decltype(&::SQLGetDiagRecW) GetDiagRec;
};

/// Loads a driver manager. Failure kGeneralProvider that says what to install when the library is not there.
OdbcApi LoadOdbc(const char* library);

/// The machine's driver manager, loaded once. Failure as LoadOdbc.
const OdbcApi& Odbc();

}  // namespace luming::sqlserver
