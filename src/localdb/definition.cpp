#include "localdb/definition.h"

#include <algorithm>

#include "localdb/errors.h"
#include "localdb/executor.h"
#include "localdb/translate/translator.h"
#include "util/text.h"

namespace luming::localdb {

namespace {

using Kind = TableConstraint::Kind;

TranslationContext InlineContext(const LexedText& lexed) {
  static const Catalogue no_catalogue;
  static const Frame no_frame;
  return {no_catalogue, no_frame, lexed, 0, true};
}

Column MakeColumn(const ColumnDefinition& definition, const LexedText& lexed) {
  Column column;
  column.name = definition.name;
  column.type = definition.type;
  column.type_name = definition.type_name;
  column.identity = definition.identity;
  column.nullable = definition.nullable.value_or(!definition.identity);
  if (definition.default_value) {
    column.default_sql = Translator(InlineContext(lexed)).Default(*definition.default_value, definition.type);
  }
  return column;
}

Key MakeKey(const Table& table, const TableConstraint& constraint) {
  Key key;
  key.name = constraint.name;
  key.columns = constraint.columns;
  key.unique = key.constraint = true;
  key.primary = constraint.kind == Kind::kPrimaryKey;
  if (key.name.empty()) key.name = (key.primary ? "PK_" : "UQ_") + table.name;
  return key;
}

std::string QuotedList(const std::vector<std::string>& names) {
  std::vector<std::string> quoted;
  for (const std::string& name : names) quoted.push_back(QuoteName(name));
  return Join(quoted, ", ");
}

std::string ColumnSql(const Column& column) {
  std::string sql = QuoteName(column.name) + " ";
  if (column.identity) return sql + "INTEGER PRIMARY KEY AUTOINCREMENT";
  sql += StorageClass(column.type);
  if (column.type.IsText()) sql += " COLLATE TSQL";
  return column.nullable ? sql : sql + " NOT NULL";
}

std::string ConstraintSql(const Table& table, const TableConstraint& constraint, const LexedText& lexed) {
  switch (constraint.kind) {
    case Kind::kCheck: {
      std::string check = Translator(InlineContext(lexed)).Check(*constraint.check, table);
      return "CHECK (" + Replace(check, QuoteName(table.name) + ".", "") + ")";
    }
    case Kind::kForeignKey: {
      std::string parent = constraint.parent_columns.empty() ? "" : "(" + QuotedList(constraint.parent_columns) + ")";
      return "FOREIGN KEY (" + QuotedList(constraint.columns) + ") REFERENCES " + QuoteName(constraint.parent) + parent;
    }
    default:
      return "UNIQUE (" + QuotedList(constraint.columns) + ")";
  }
}

// The identity column is the engine's own key already.
bool IsIdentityKey(const Table& table, const TableConstraint& constraint) {
  bool key = constraint.kind == Kind::kPrimaryKey || constraint.kind == Kind::kUnique;
  const Column* identity = table.Identity();
  return key && identity && constraint.columns.size() == 1 && EqualsIgnoreCase(constraint.columns[0], identity->name);
}

std::string IndexName(std::string_view table, std::string_view index) {
  return QuoteName(std::string(table) + "." + std::string(index));
}

}  // namespace

void ExtendTable(Table& table, const TableDefinition& definition, const LexedText& lexed) {
  for (const ColumnDefinition& column : definition.columns) {
    if (table.FindColumn(column.name)) throw SqlError(native::kObjectExists, column.name);
    if (column.identity && table.Identity()) throw SqlError(native::kSyntax, column.name);
    table.columns.push_back(MakeColumn(column, lexed));
  }
  for (const TableConstraint& constraint : definition.constraints) {
    for (const std::string& name : constraint.columns) {
      auto column = std::find_if(table.columns.begin(), table.columns.end(),
                                 [&](const Column& c) { return EqualsIgnoreCase(c.name, name); });
      if (column == table.columns.end()) throw SqlError(native::kMissingColumn, name);
      if (constraint.kind == Kind::kPrimaryKey) column->nullable = false;
    }
    bool key = constraint.kind == Kind::kPrimaryKey || constraint.kind == Kind::kUnique;
    if (key) table.keys.push_back(MakeKey(table, constraint));
  }
}

std::unique_ptr<Table> MakeTable(const std::string& name, const TableDefinition& definition, const LexedText& lexed) {
  auto table = std::make_unique<Table>();
  table->name = name;
  table->physical = name;
  ExtendTable(*table, definition, lexed);
  return table;
}

Key MakeKey(const CreateIndexStatement& index) {
  Key key;
  key.name = index.name;
  key.unique = index.unique;
  for (const auto& [column, descending] : index.columns) key.columns.push_back(column);
  return key;
}

std::string CreateTableSql(const Table& table, const TableDefinition& definition, const LexedText& lexed,
                           bool temporary) {
  std::string items;
  for (const Column& column : table.columns) items += (items.empty() ? "" : ", ") + ColumnSql(column);
  for (const TableConstraint& constraint : definition.constraints) {
    if (!IsIdentityKey(table, constraint)) items += ", " + ConstraintSql(table, constraint, lexed);
  }
  std::string_view create = temporary ? "CREATE TEMP TABLE " : "CREATE TABLE ";
  return std::string(create) + QuoteName(table.physical) + "(" + items + ")";
}

void Definer::Run(const std::string& sql) {
  RunPlain(store_, sql);
}

// A definition changes the engine's schema and the store's own tables together.
template <typename Change>
void Definer::Whole(Change change) {
  Run("SAVEPOINT definition");
  try {
    change();
    Run("UPDATE \"luming$state\" SET catalogue_version = catalogue_version + 1");
    Run("RELEASE definition");
  } catch (const SqlError&) {
    if (sqlite3_get_autocommit(store_) == 0) {
      Run("ROLLBACK TO definition");
      Run("RELEASE definition");
    }
    throw;
  }
  catalogue_.ReadVersion(store_);
}

std::int64_t Definer::Record(std::string_view type, std::string_view name, std::string_view parent,
                             std::string_view source) {
  RunBound(store_, "INSERT INTO \"luming$objects\"(type, name, parent, source) VALUES(?, ?, ?, ?)",
           {type, name, parent, source});
  return sqlite3_last_insert_rowid(store_);
}

void Definer::Erase(std::string_view condition, std::string_view name) {
  RunBound(store_, "DELETE FROM \"luming$objects\" WHERE " + std::string(condition), {name});
}

const Table& Definer::RequireTable(const std::string& name) const {
  const Table* table = catalogue_.FindTable(name);
  if (!table || IsSystemTable(name)) throw SqlError(native::kMissingObject, name);
  return *table;
}

void Definer::CreateTable(const CreateTableStatement& create, const LexedText& lexed, std::string_view source) {
  if (catalogue_.FindObject(create.name) != 0) throw SqlError(native::kObjectExists, create.name);
  auto table = MakeTable(create.name, create.definition, lexed);
  Whole([&] {
    Run(CreateTableSql(*table, create.definition, lexed, false));
    const auto& columns = create.definition.columns;
    auto identity = std::find_if(columns.begin(), columns.end(), [](const auto& c) { return c.identity; });
    if (identity != columns.end() && identity->identity_seed > 1) {
      RunBound(store_,
               "INSERT INTO sqlite_sequence(name, seq) VALUES(?, " + std::to_string(identity->identity_seed - 1) + ")",
               {table->name});
    }
    table->id = Record("U", table->name, "", source);
  });
  catalogue_.AddTable(std::move(table));
}

void Definer::AlterTable(const AlterTableStatement& alter, const LexedText& lexed, std::string_view source) {
  Table extended = RequireTable(alter.name);
  std::size_t old_columns = extended.columns.size();
  ExtendTable(extended, alter.added, lexed);
  Whole([&] {
    for (std::size_t i = old_columns; i < extended.columns.size(); ++i) {
      Column column = extended.columns[i];
      bool required = !column.nullable;
      column.nullable = true;
      if (column.identity || (required && column.default_sql.empty()))
        throw SqlError(native::kNull, column.name, alter.name);
      Run("ALTER TABLE " + QuoteName(extended.name) + " ADD COLUMN " + ColumnSql(column));
      if (required)
        Run("UPDATE " + QuoteName(extended.name) + " SET " + QuoteName(column.name) + " = " + column.default_sql);
    }
    for (const TableConstraint& constraint : alter.added.constraints) {
      bool key = constraint.kind == Kind::kPrimaryKey || constraint.kind == Kind::kUnique;
      if (!key) throw SqlError(native::kSyntaxKeyword, "CONSTRAINT");
      Run("CREATE UNIQUE INDEX " + IndexName(extended.name, MakeKey(extended, constraint).name) + " ON " +
          QuoteName(extended.name) + "(" + QuotedList(constraint.columns) + ")");
    }
    Record("A", "", extended.name, source);
  });
  catalogue_.AddTable(std::make_unique<Table>(std::move(extended)));
}

void Definer::CreateIndex(const CreateIndexStatement& create, std::string_view source) {
  const Table& table = RequireTable(create.table);
  std::string columns;
  for (const auto& [name, descending] : create.columns) {
    if (!table.FindColumn(name)) throw SqlError(native::kMissingColumn, name);
    columns += (columns.empty() ? "" : ", ") + QuoteName(name) + (descending ? " DESC" : "");
  }
  for (const Key& key : table.keys) {
    if (EqualsIgnoreCase(key.name, create.name)) throw SqlError(native::kObjectExists, create.name);
  }
  std::string name = table.name;
  Whole([&] {
    Run((create.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + IndexName(name, create.name) + " ON " +
        QuoteName(name) + "(" + columns + ")");
    Record("I", create.name, name, source);
  });
  catalogue_.Define(0, std::string(source));
}

void Definer::CreateProcedure(const CreateProcedureStatement& create, std::string_view source) {
  auto old = catalogue_.FindProcedure(create.name);
  if (!old && catalogue_.FindObject(create.name) != 0) throw SqlError(native::kObjectExists, create.name);
  if (old && !create.alter) throw SqlError(native::kObjectExists, create.name);
  std::int64_t id = 0;
  Whole([&] {
    if (old) Erase("type = 'P' AND name = ? COLLATE NOCASE", create.name);
    id = Record("P", create.name, "", source);
  });
  catalogue_.Define(id, std::string(source));
}

void Definer::Drop(ObjectKind kind, const std::string& name, bool if_exists) {
  bool dropped = kind == ObjectKind::kTable       ? DropTable(name)
                 : kind == ObjectKind::kProcedure ? DropProcedure(name)
                                                  : DropIndex(name);
  if (!dropped && !if_exists) throw SqlError(native::kDropMissing, name);
}

bool Definer::DropProcedure(const std::string& name) {
  if (!catalogue_.FindProcedure(name)) return false;
  Whole([&] { Erase("type = 'P' AND name = ? COLLATE NOCASE", name); });
  catalogue_.RemoveProcedure(name);
  return true;
}

bool Definer::DropTable(const std::string& name) {
  const Table* table = IsSystemTable(name) ? nullptr : catalogue_.FindTable(name);
  if (!table) return false;
  Whole([&] {
    Run("DROP TABLE " + QuoteName(table->name));
    Erase("type = 'U' AND name = ?1 COLLATE NOCASE OR parent = ?1 COLLATE NOCASE", name);
  });
  catalogue_.RemoveTable(name);
  return true;
}

bool Definer::DropIndex(const std::string& name) {
  for (const auto& entry : catalogue_.tables()) {
    const Table& table = *entry.second;
    for (const Key& key : table.keys) {
      if (key.constraint || !EqualsIgnoreCase(key.name, name)) continue;
      Whole([&] {
        Run("DROP INDEX " + IndexName(table.name, key.name));
        Erase("type = 'I' AND name = ? COLLATE NOCASE", name);
      });
      catalogue_.RemoveKey(table.name, name);
      return true;
    }
  }
  return false;
}

}  // namespace luming::localdb
