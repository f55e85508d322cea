#include "localdb/store_file.h"

#include <csignal>
#include <filesystem>
#include <system_error>

#include "localdb/engine_error.h"
#include "localdb/errors.h"
#include "localdb/executor.h"
#include "util/system_reason.h"

namespace luming::localdb {
namespace {

// "LMDB" in the file's head, and the format of the tables inside.
constexpr std::int64_t kApplicationId = 0x4c4d4442;
constexpr std::int64_t kFormat = 1;

const char* const kNewStore[] = {
    "PRAGMA journal_mode = WAL",
    "BEGIN IMMEDIATE",
    "PRAGMA application_id = 1280132162",
    "PRAGMA user_version = 1",
    R"(CREATE TABLE "luming$objects"(
         id INTEGER PRIMARY KEY AUTOINCREMENT, type TEXT NOT NULL, name TEXT NOT NULL, parent TEXT NOT NULL,
         source TEXT NOT NULL))",
    "CREATE TABLE \"luming$state\"(catalogue_version INTEGER NOT NULL)",
    "INSERT INTO \"luming$state\" VALUES(1)",
    "COMMIT",
};

const char* const kSettings[] = {
    "PRAGMA synchronous = FULL",
    "PRAGMA foreign_keys = ON",
    "PRAGMA temp_store = MEMORY",
    "PRAGMA cache_size = -16000",
};

std::string Shown(const std::filesystem::path& path) {
  std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

/// What holds for the whole process, once.
bool PrepareEngine() {
  // Nobody asks for the engine's count of its memory, which would lock a mutex at every allocation.
  sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
  // A file that may not grow is a write that fails and is told; it must not end the program.
  std::signal(SIGXFSZ, SIG_IGN);
  return true;
}

StoreHandle Open(const std::filesystem::path& path, int flags) {
  [[maybe_unused]] static const bool prepared = PrepareEngine();
  sqlite3* raw = nullptr;
  int result = sqlite3_open_v2(Shown(path).c_str(), &raw, flags | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  StoreHandle store(raw);
  if (result != SQLITE_OK) throw EngineError(raw, nullptr, Shown(path));
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  sqlite3_db_config(raw, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  return store;
}

// Asks often. The engine's own handler naps longer and longer, so that whoever has waited long asks the most seldom and
// is overtaken again and again.
int WaitForTheOther(void* how, int times) {
  constexpr std::chrono::milliseconds kNap{2};
  const auto& wait = *static_cast<const LockWait*>(how);
  if (times >= wait.most / kNap || (wait.goes_on && !wait.goes_on())) return 0;
  sqlite3_sleep(static_cast<int>(kNap.count()));
  return 1;
}

}  // namespace

void CreateStoreFile(const std::filesystem::path& path) {
  if (std::filesystem::exists(path)) throw SqlError(native::kObjectExists, Shown(path));
  StoreHandle store = Open(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  for (const char* statement : kNewStore) RunPlain(store.get(), statement);
}

StoreHandle OpenStoreFile(const std::filesystem::path& path, const std::string& name, const LockWait& wait) {
  std::error_code error;
  const bool is_file = std::filesystem::is_regular_file(path, error);
  const bool missing = !error || error == std::errc::no_such_file_or_directory;
  if (!missing) throw SqlError(native::kCannotOpen, Shown(path), SystemReason(error.value()));
  if (!is_file) throw SqlError(native::kNoStore, name, "，没有文件“" + Shown(path) + "”");
  StoreHandle store = Open(path, SQLITE_OPEN_READWRITE);
  sqlite3_busy_handler(store.get(), WaitForTheOther, const_cast<LockWait*>(&wait));
  bool ours = ReadNumber(store.get(), "PRAGMA application_id") == kApplicationId;
  if (!ours || ReadNumber(store.get(), "PRAGMA user_version") != kFormat) throw SqlError(native::kForeign, Shown(path));
  for (const char* setting : kSettings) RunPlain(store.get(), setting);
  return store;
}

}  // namespace luming::localdb
