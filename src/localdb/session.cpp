#include <utility>

#include "localdb/collation.h"
#include "localdb/interpreter.h"
#include "util/text.h"

namespace luming::localdb {

Session::Session(StoreHandle handle, const Clock& clock, std::string database)
    : store(std::move(handle)),
      row_count(frame.Declare("@@ROWCOUNT", SqlType::Int())),
      error(frame.Declare("@@ERROR", SqlType::Int())),
      identity(frame.Declare("@@IDENTITY", SqlType::Decimal(38, 0))),
      executor(store.get(), functions),
      transaction(store.get(), frame) {
  functions.clock = &clock;
  functions.catalogue = &catalogue;
  functions.database = std::move(database);
  RegisterCollation(store.get());
  RegisterFunctions(store.get(), functions);
  sqlite3_rollback_hook(
      store.get(), [](void* session) { static_cast<Session*>(session)->rolled_back = true; }, this);
  row_count.value = error.value = std::int64_t{0};
  for (const char* name : {"@@FETCH_STATUS", "@@SPID", "@@NESTLEVEL"}) {
    frame.Declare(name, SqlType::Int()).value = std::int64_t{0};
  }
  frame.Declare("@@VERSION", SqlType::Text(300)).value = "luming";
  frame.Declare("@@SERVERNAME", SqlType::Text(128)).value = "(localdb)";
  catalogue.Load(store.get());
  data_version = ReadNumber(store.get(), "PRAGMA data_version");
}

void Session::ReloadCatalogue() {
  plans.Clear();
  system_tables_filled = false;
  catalogue.Load(store.get());
}

// A rollback takes the temporary tables with it that were made since the transaction began.
void Session::ForgetLostTemporaries() {
  std::vector<std::string> lost;
  for (const auto& table : frame.temporaries()) {
    std::string name = Replace(table->physical, "'", "''");
    if (ReadNumber(store.get(), "SELECT COUNT(*) FROM sqlite_temp_master WHERE name = '" + name + "'") == 0) {
      lost.push_back(table->name);
    }
  }
  for (const std::string& name : lost) frame.DropTemporary(name);
}

// What was undone need not have been a definition: a statement that fails is undone, too, and thousands may in a row.
void Session::RefreshCatalogue() {
  const bool undone = std::exchange(rolled_back, false);
  if (undone) {
    system_tables_filled = false;
    ForgetLostTemporaries();
  } else if (transaction.IsOpen()) {
    return;
  }
  const std::int64_t version = ReadNumber(store.get(), "PRAGMA data_version");
  const bool changed_by_others = std::exchange(data_version, version) != version;
  if (!undone && !changed_by_others) return;
  // The number that our undone definition bore another program may have given to its own.
  if ((undone && changed_by_others) ||
      ReadNumber(store.get(), "SELECT catalogue_version FROM \"luming$state\"") != catalogue.version()) {
    ReloadCatalogue();
  }
}

}  // namespace luming::localdb
