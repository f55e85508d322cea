#include "sqlserver/odbc_api.h"

#include <dlfcn.h>

#include "util/failure.h"

namespace luming::sqlserver {

namespace {

constexpr const char* kDriverManager = "libodbc.so.2";

Failure Missing(const char* what) {
  return {failure::kGeneralProvider,
          "本机没有可用的 ODBC 驱动程序管理器（" + std::string(what) +
              "），无法连接数据库服务器。请安装软件包 libodbc2 和 tdsodbc，或者微软的 ODBC 驱动程序。"};
}

template <class Function>
void LookUp(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  if (!function) throw Missing(name);
}

}  // namespace

OdbcApi LoadOdbc(const char* library) {
  void* const loaded = dlopen(library, RTLD_NOW | RTLD_LOCAL);
  if (!loaded) throw Missing(library);
  OdbcApi api{};
  LookUp(loaded, "SQLAllocHandle", api.AllocHandle);
  LookUp(loaded, "SQLFreeHandle", api.FreeHandle);
  LookUp(loaded, "SQLSetEnvAttr", api.SetEnvAttr);
  LookUp(loaded, "SQLDriversW", api.Drivers);
  LookUp(loaded, "SQLSetConnectAttrW", api.SetConnectAttr);
  LookUp(loaded, "SQLGetConnectAttrW", api.GetConnectAttr);
  LookUp(loaded, "SQLDriverConnectW", api.DriverConnect);
  LookUp(loaded, "SQLDisconnect", api.Disconnect);
  LookUp(loaded, "SQLSetStmtAttrW", api.SetStmtAttr);
  LookUp(loaded, "SQLExecDirectW", api.ExecDirect);
  LookUp(loaded, "SQLNumResultCols", api.NumResultCols);
  LookUp(loaded, "SQLDescribeColW", api.DescribeCol);
  LookUp(loaded, "SQLFetch", api.Fetch);
  LookUp(loaded, "SQLGetData", api.GetData);
  LookUp(loaded, "SQLMoreResults", api.MoreResults);
  LookUp(loaded, "SQLGetDiagRecW", api.GetDiagRec);
  return api;
}

const OdbcApi& Odbc() {
  static const OdbcApi api = LoadOdbc(kDriverManager);
  return api;
}

}  // namespace luming::sqlserver
