#pragma once

#include <memory>
#include <string>

#include "localdb/ast.h"
#include "localdb/catalogue.h"
#include "localdb/sqlite.h"

namespace luming::localdb {

/// The table that a definition describes. Constraints get a name where none is written.
std::unique_ptr<Table> MakeTable(const std::string& name, const TableDefinition& definition, const LexedText& lexed);
/// Adds columns and constraints to a table.
void ExtendTable(Table& table, const TableDefinition& definition, const LexedText& lexed);
Key MakeKey(const CreateIndexStatement& index);

/// The tables in which the dialect looks for its own objects: sysobjects, INFORMATION_SCHEMA.COLUMNS and their kin.
void AddSystemTables(Catalogue& catalogue);
bool IsSystemTable(std::string_view name);
/// Fills them from the catalogue; they are temporary tables of the connection.
void FillSystemTables(sqlite3* store, const Catalogue& catalogue);

/// CREATE TABLE in the engine's words. A primary key becomes a unique constraint, since the engine's own row number
/// serves the identity column.
std::string CreateTableSql(const Table& table, const TableDefinition& definition, const LexedText& lexed,
                           bool temporary);

/// Carries out the statements that change the catalogue, each whole or not at all.
class Definer {
 public:
  Definer(sqlite3* store, Catalogue& catalogue) : store_(store), catalogue_(catalogue) {}

  void CreateTable(const CreateTableStatement& create, const LexedText& lexed, std::string_view source);
  void AlterTable(const AlterTableStatement& alter, const LexedText& lexed, std::string_view source);
  void CreateIndex(const CreateIndexStatement& create, std::string_view source);
  void CreateProcedure(const CreateProcedureStatement& create, std::string_view source);
  void Drop(ObjectKind kind, const std::string& name, bool if_exists);

 private:
  void Run(const std::string& sql);
  bool DropTable(const std::string& name);
  bool DropProcedure(const std::string& name);
  bool DropIndex(const std::string& name);
  std::int64_t Record(std::string_view type, std::string_view name, std::string_view parent, std::string_view source);
  void Erase(std::string_view condition, std::string_view name);
  template <typename Change>
  void Whole(Change change);
  const Table& RequireTable(const std::string& name) const;

  sqlite3* store_;
  Catalogue& catalogue_;
};

}  // namespace luming::localdb
