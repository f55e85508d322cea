#pragma once

#include <sqlite3.h>

#include <memory>

namespace luming::localdb {

struct CloseStore {
  void operator()(sqlite3* store) const { sqlite3_close_v2(store); }
};
using StoreHandle = std::unique_ptr<sqlite3, CloseStore>;

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

}  // namespace luming::localdb
