#pragma once

#include <sqlite3.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace luming::bench {

/// A statement prepared once, by SQLite's own C interface. A failure ends the program: a benchmark that fails measures
/// nothing.
class PlainStatement {
 public:
  PlainStatement(sqlite3* store, const char* sql);

  PlainStatement& Bind(int place, std::string_view text);  ///< without a copy: the text lives until the statement ran
  PlainStatement& Bind(int place, double number);
  PlainStatement& Bind(int place, std::int64_t number);
  PlainStatement& Bind(int place, std::nullptr_t);
  bool Step();  ///< whether there is a row
  void Run();   ///< to its end, and ready for the next run
  void Reset();

  std::string_view Text(int column) const;
  std::int64_t Whole(int column) const { return sqlite3_column_int64(statement_.get(), column); }
  double Number(int column) const { return sqlite3_column_double(statement_.get(), column); }

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/// A store's file opened with SQLite alone: the same tables, indexes and rows, the same durability (write-ahead log,
/// full synchronisation) and the same page cache. Its texts carry the store's collation, so keys compare at the same
/// cost on both sides.
class PlainStore {
 public:
  explicit PlainStore(const std::filesystem::path& file);

  sqlite3* get() const { return store_.get(); }
  void Run(const std::string& sql);
  std::string Read(const std::string& sql);  ///< first column of the first row

 private:
  struct Close {
    void operator()(sqlite3* store) const { sqlite3_close_v2(store); }
  };
  std::unique_ptr<sqlite3, Close> store_;
};

}  // namespace luming::bench
