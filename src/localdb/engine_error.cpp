#include "localdb/engine_error.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "util/system_reason.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

// Temporary tables bear the level of their maker behind their name: "#T@2.1f".
std::string_view LogicalName(std::string_view physical) {
  if (physical.starts_with("temp.")) physical.remove_prefix(5);
  return physical.starts_with('#') || physical.starts_with('@') ? physical.substr(0, physical.find('@', 1)) : physical;
}

// "UNIQUE constraint failed: T.A, T.B" names the columns; the catalogue knows whose key they are.
SqlError KeyError(std::string_view message, const Catalogue* catalogue) {
  std::size_t colon = message.find(": ");
  std::vector<std::string> columns;
  std::string table_name;
  if (colon != std::string_view::npos) {
    for (const std::string& name : Split(message.substr(colon + 2), ", ")) {
      std::size_t dot = name.rfind('.');
      table_name = name.substr(0, dot);
      columns.push_back(name.substr(dot + 1));
    }
  }
  const Table* table = catalogue ? catalogue->FindTable(table_name) : nullptr;
  if (!table) return SqlError(native::kDuplicateKey, LogicalName(table_name), Join(columns, ","));
  for (const Key& key : table->keys) {
    bool same = std::equal(key.columns.begin(), key.columns.end(), columns.begin(), columns.end(),
                           [](const std::string& a, const std::string& b) { return EqualsIgnoreCase(a, b); });
    if (same && key.unique) {
      return SqlError(key.constraint ? native::kDuplicateKey : native::kDuplicateIndexKey, table->name, key.name);
    }
  }
  return SqlError(native::kDuplicateKey, table->name, Join(columns, ","));
}

SqlError NullError(std::string_view message) {
  std::string_view name = message.substr(message.find(": ") + 2);
  std::size_t dot = name.rfind('.');
  return SqlError(native::kNull, name.substr(dot + 1), LogicalName(name.substr(0, dot)));
}

SqlError ConstraintError(sqlite3* store, const Catalogue* catalogue) {
  std::string_view message = sqlite3_errmsg(store);
  switch (sqlite3_extended_errcode(store)) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
      return KeyError(message, catalogue);
    case SQLITE_CONSTRAINT_NOTNULL:
      return NullError(message);
    case SQLITE_CONSTRAINT_FOREIGNKEY:
      return SqlError(native::kReference, "引用的记录不存在，或记录仍被引用");
    default:
      return SqlError(native::kReference, "不满足 CHECK 条件");
  }
}

bool IsWritable(const std::string& path) {
  return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

// The engine keeps no reason of this. A store is written beside its file, too, so its directory may be what refuses.
std::string ReasonNotWritten(sqlite3* store, const std::string& file) {
  if (sqlite3_extended_errcode(store) == SQLITE_READONLY_DBMOVED) return "文件已被移走或替换，请重新启动程序";
  if (!IsWritable(file)) return SystemReason(errno);
  const std::string directory = std::filesystem::path(file).parent_path().string();
  if (!IsWritable(directory)) return "目录 " + directory + " " + SystemReason(errno);
  return sqlite3_errmsg(store);
}

SqlError SystemError(sqlite3* store, int native, const std::string& file) {
  // Of a commit that fails the engine keeps no number, but the system does.
  const int kept = sqlite3_system_errno(store);
  const int system = kept != 0 ? kept : errno;
  if (system == ENOSPC || system == EDQUOT) return SqlError(native::kFull, file);
  return SqlError(native, file, system == 0 ? ReasonNotWritten(store, file) : SystemReason(system));
}

}  // namespace

int StepEngine(sqlite3_stmt* statement) {
  errno = 0;
  return sqlite3_step(statement);
}

SqlError EngineError(sqlite3* store, const Catalogue* catalogue, std::string file) {
  if (file.empty() && store) file = sqlite3_db_filename(store, "main");
  switch (sqlite3_errcode(store) & 0xff) {
    case SQLITE_CONSTRAINT:
      return ConstraintError(store, catalogue);
    case SQLITE_TOOBIG:
      return SqlError(native::kTooLong, "", "1000000000");
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
      return SqlError(native::kLockTimeout, "文件“" + file + "”");
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return SqlError(native::kDamaged, file);
    case SQLITE_FULL:
      return SqlError(native::kFull, file);
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return SqlError(native::kReadOnly, file, ReasonNotWritten(store, file));
    case SQLITE_CANTOPEN:
      return SystemError(store, native::kCannotOpen, file);
    case SQLITE_IOERR:
      return SystemError(store, native::kInputOutput, file);
    default:
      break;
  }
  std::string_view message = sqlite3_errmsg(store);
  constexpr std::string_view kNoTable = "no such table: ";
  if (message.starts_with(kNoTable))
    return SqlError(native::kMissingObject, LogicalName(message.substr(kNoTable.size())));
  bool too_deep =
      message.find("too large") != std::string_view::npos || message.find("overflow") != std::string_view::npos;
  if (too_deep) return SqlError(native::kNestedTooDeep);
  return SqlError(native::kInternal, message);
}

}  // namespace luming::localdb
