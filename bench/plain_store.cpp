#include "plain_store.h"

#include <cstdio>
#include <cstdlib>

#include "localdb/collation.h"

namespace luming::bench {

namespace {

void Demand(bool held, sqlite3* store) {
  if (held) return;
  std::fprintf(stderr, "SQLite: %s\n", sqlite3_errmsg(store));
  std::exit(1);
}

}  // namespace

PlainStatement::PlainStatement(sqlite3* store, const char* sql) {
  sqlite3_stmt* raw = nullptr;
  Demand(sqlite3_prepare_v3(store, sql, -1, SQLITE_PREPARE_PERSISTENT, &raw, nullptr) == SQLITE_OK, store);
  statement_.reset(raw);
}

PlainStatement& PlainStatement::Bind(int place, std::string_view text) {
  sqlite3_bind_text64(statement_.get(), place, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
  return *this;
}

PlainStatement& PlainStatement::Bind(int place, double number) {
  sqlite3_bind_double(statement_.get(), place, number);
  return *this;
}

PlainStatement& PlainStatement::Bind(int place, std::int64_t number) {
  sqlite3_bind_int64(statement_.get(), place, number);
  return *this;
}

PlainStatement& PlainStatement::Bind(int place, std::nullptr_t) {
  sqlite3_bind_null(statement_.get(), place);
  return *this;
}

bool PlainStatement::Step() {
  const int result = sqlite3_step(statement_.get());
  Demand(result == SQLITE_ROW || result == SQLITE_DONE, sqlite3_db_handle(statement_.get()));
  return result == SQLITE_ROW;
}

void PlainStatement::Run() {
  while (Step()) continue;
  Reset();
}

void PlainStatement::Reset() {
  sqlite3_reset(statement_.get());
}

std::string_view PlainStatement::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_.get(), column));
  return {text ? text : "", static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column))};
}

PlainStore::PlainStore(const std::filesystem::path& file) {
  sqlite3* raw = nullptr;
  const int result =
      sqlite3_open_v2(file.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  store_.reset(raw);
  Demand(result == SQLITE_OK, raw);
  localdb::RegisterCollation(raw);
  for (const char* setting : {"PRAGMA journal_mode = WAL", "PRAGMA synchronous = FULL", "PRAGMA foreign_keys = ON",
                              "PRAGMA temp_store = MEMORY", "PRAGMA cache_size = -16000"}) {
    Run(setting);
  }
}

void PlainStore::Run(const std::string& sql) {
  Demand(sqlite3_exec(get(), sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, get());
}

std::string PlainStore::Read(const std::string& sql) {
  PlainStatement query(get(), sql.c_str());
  return query.Step() ? std::string(query.Text(0)) : std::string();
}

}  // namespace luming::bench
