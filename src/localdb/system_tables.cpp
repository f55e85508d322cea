#include <algorithm>
#include <array>

#include "localdb/definition.h"
#include "localdb/executor.h"
#include "localdb/parser/parser.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

struct SystemTable {
  std::string_view name;
  std::string_view definition;  ///< as the dialect has it
};

constexpr std::array kSystemTables = {
    SystemTable{"sysobjects", "name nvarchar(128), id int, xtype char(2), type char(2), uid int"},
    SystemTable{"sys.objects",
                "name nvarchar(128), object_id int, type char(2), type_desc nvarchar(60), schema_id int"},
    SystemTable{"sys.tables", "name nvarchar(128), object_id int, type char(2)"},
    SystemTable{"sys.procedures", "name nvarchar(128), object_id int, type char(2)"},
    SystemTable{"sys.indexes", "object_id int, name nvarchar(128), is_unique bit, is_primary_key bit"},
    SystemTable{"sysindexes", "id int, name nvarchar(128)"},
    SystemTable{"sys.columns",
                "object_id int, name nvarchar(128), column_id int, max_length smallint, precision tinyint, "
                "scale tinyint, is_nullable bit, is_identity bit"},
    SystemTable{"syscolumns", "id int, name nvarchar(128), colid smallint, length smallint, isnullable int"},
    SystemTable{"INFORMATION_SCHEMA.TABLES",
                "TABLE_SCHEMA nvarchar(128), TABLE_NAME nvarchar(128), TABLE_TYPE varchar(10)"},
    SystemTable{
        "INFORMATION_SCHEMA.COLUMNS",
        "TABLE_SCHEMA nvarchar(128), TABLE_NAME nvarchar(128), COLUMN_NAME nvarchar(128), ORDINAL_POSITION int, "
        "COLUMN_DEFAULT nvarchar(4000), IS_NULLABLE varchar(3), DATA_TYPE nvarchar(128), "
        "CHARACTER_MAXIMUM_LENGTH int, NUMERIC_PRECISION tinyint, NUMERIC_SCALE int"},
};

using Row = std::vector<std::string>;

std::string Number(std::int64_t value) {
  return std::to_string(value);
}

/// An empty text goes in as NULL.
void Insert(sqlite3* store, std::string_view table, const Row& row) {
  std::string marks;
  std::vector<std::string_view> values;
  for (const std::string& value : row) {
    marks += marks.empty() ? "?" : ", ?";
    values.push_back(value.empty() ? std::string_view() : value);
  }
  RunBound(store, "INSERT INTO temp." + QuoteName(table) + " VALUES(" + marks + ")", values);
}

// A type is a char(2).
void InsertObject(sqlite3* store, const std::string& name, std::int64_t id, const std::string& letter) {
  std::string type = letter + " ";
  Insert(store, "sysobjects", {name, Number(id), type, type, "1"});
  std::string description = letter == "P" ? "SQL_STORED_PROCEDURE" : letter == "S" ? "SYSTEM_TABLE" : "USER_TABLE";
  Insert(store, "sys.objects", {name, Number(id), type, description, "1"});
}

void InsertColumn(sqlite3* store, const Table& table, const Column& column, std::size_t place) {
  std::string id = Number(table.id);
  std::string number = Number(static_cast<std::int64_t>(place));
  std::string length = column.type.IsText() ? Number(column.type.length) : "";
  std::string nullable = column.nullable ? "1" : "0";
  std::string precision = Number(column.type.precision);
  std::string scale = Number(column.type.scale);
  std::string type = LowerAscii(column.type_name);
  Insert(store, "sys.columns",
         {id, column.name, number, length, precision, scale, nullable, column.identity ? "1" : "0"});
  Insert(store, "syscolumns", {id, column.name, number, length, nullable});
  Insert(store, "INFORMATION_SCHEMA.COLUMNS",
         {"dbo", table.name, column.name, number, column.default_sql, column.nullable ? "YES" : "NO", type, length,
          precision, scale});
}

}  // namespace

bool IsSystemTable(std::string_view name) {
  return std::any_of(kSystemTables.begin(), kSystemTables.end(),
                     [&](const SystemTable& table) { return EqualsIgnoreCase(table.name, name); });
}

void AddSystemTables(Catalogue& catalogue) {
  for (const SystemTable& system : kSystemTables) {
    Script script("CREATE TABLE x(" + std::string(system.definition) + ")");
    script.statements = Parser(script.lexed).ParseBatch();
    const auto& create = std::get<CreateTableStatement>(script.statements[0]->node);
    catalogue.AddTable(MakeTable(std::string(system.name), create.definition, script.lexed));
  }
}

void FillSystemTables(sqlite3* store, const Catalogue& catalogue) {
  for (const SystemTable& system : kSystemTables) {
    const Table& table = *catalogue.FindTable(system.name);
    RunPlain(store, "DROP TABLE IF EXISTS temp." + QuoteName(table.physical));
    RunPlain(store, CreateTableSql(table, {}, LexedText(), true));
  }
  InsertObject(store, "sysobjects", 1, "S");
  for (const auto& [name, table] : catalogue.tables()) {
    if (IsSystemTable(name)) continue;
    InsertObject(store, name, table->id, "U");
    Insert(store, "sys.tables", {name, Number(table->id), "U "});
    Insert(store, "INFORMATION_SCHEMA.TABLES", {"dbo", name, "BASE TABLE"});
    for (std::size_t i = 0; i < table->columns.size(); ++i) InsertColumn(store, *table, table->columns[i], i + 1);
    for (const Key& key : table->keys) {
      Insert(store, "sys.indexes", {Number(table->id), key.name, key.unique ? "1" : "0", key.primary ? "1" : "0"});
      Insert(store, "sysindexes", {Number(table->id), key.name});
    }
  }
  for (const auto& [name, procedure] : catalogue.procedures()) {
    InsertObject(store, name, procedure->id, "P");
    Insert(store, "sys.procedures", {name, Number(procedure->id), "P "});
  }
}

}  // namespace luming::localdb
