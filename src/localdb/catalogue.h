#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "localdb/ast.h"
#include "localdb/types.h"

struct sqlite3;

namespace luming::localdb {

struct Column {
  std::string name;
  SqlType type;
  std::string type_name;  ///< as written in the definition
  bool nullable = true;
  bool identity = false;
  std::string default_sql;  ///< in the engine's words, of the column's type; empty: NULL
};

/// A primary key, a unique constraint or an index.
struct Key {
  std::string name;
  std::vector<std::string> columns;
  bool unique = false;
  bool primary = false;
  bool constraint = false;  ///< violated: 2627, else 2601
};

struct Table {
  std::string name;
  std::string physical;  ///< the name that the engine knows it by
  std::int64_t id = 0;
  std::vector<Column> columns;
  std::vector<Key> keys;

  const Column* FindColumn(std::string_view name) const;
  const Column* Identity() const;
};

struct Procedure {
  std::string name;
  std::int64_t id = 0;
  std::unique_ptr<Script> script;

  const CreateProcedureStatement& definition() const;
};

struct NameLess {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const;
};

template <typename T>
using NameMap = std::map<std::string, T, NameLess>;

/// What the store holds: tables with the types of their columns, and procedures. The store keeps the defining texts;
/// they are read again when it is opened.
class Catalogue {
 public:
  /// Reads the store's own tables. Throws SqlError 824 when they cannot be read.
  void Load(sqlite3* store);

  const Table* FindTable(std::string_view name) const;
  std::shared_ptr<const Procedure> FindProcedure(std::string_view name) const;
  /// The number of a table or procedure; 0 without one.
  std::int64_t FindObject(std::string_view name) const;

  /// Grows with each change of the store's definitions, by any program.
  std::int64_t version() const { return version_; }

  const NameMap<std::unique_ptr<Table>>& tables() const { return tables_; }
  const NameMap<std::shared_ptr<const Procedure>>& procedures() const { return procedures_; }

  void AddTable(std::unique_ptr<Table> table);
  void AddProcedure(std::shared_ptr<const Procedure> procedure);
  /// Takes up what one defining text says: a table, a change of a table, an index, a procedure.
  void Define(std::int64_t id, std::string source);
  void RemoveTable(std::string_view name) { tables_.erase(tables_.find(name)); }
  void RemoveProcedure(std::string_view name) { procedures_.erase(procedures_.find(name)); }
  void RemoveKey(std::string_view table, std::string_view key);
  void ReadVersion(sqlite3* store);

 private:
  NameMap<std::unique_ptr<Table>> tables_;
  NameMap<std::shared_ptr<const Procedure>> procedures_;
  std::int64_t version_ = 0;
};

/// A name as the engine takes it, in double quotes.
std::string QuoteName(std::string_view name);

}  // namespace luming::localdb
