#include "localdb/catalogue.h"

#include <algorithm>

#include "localdb/definition.h"
#include "localdb/engine_error.h"
#include "localdb/errors.h"
#include "localdb/executor.h"
#include "localdb/parser/parser.h"
#include "localdb/sqlite.h"
#include "util/text.h"

namespace luming::localdb {

bool NameLess::operator()(std::string_view left, std::string_view right) const {
  auto lower = [](unsigned char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; };
  return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(), [&](char a, char b) {
    return lower(static_cast<unsigned char>(a)) < lower(static_cast<unsigned char>(b));
  });
}

const Column* Table::FindColumn(std::string_view wanted) const {
  auto found =
      std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return EqualsIgnoreCase(c.name, wanted); });
  return found == columns.end() ? nullptr : &*found;
}

const Column* Table::Identity() const {
  auto found = std::find_if(columns.begin(), columns.end(), [](const Column& c) { return c.identity; });
  return found == columns.end() ? nullptr : &*found;
}

const CreateProcedureStatement& Procedure::definition() const {
  return std::get<CreateProcedureStatement>(script->statements[0]->node);
}

std::string QuoteName(std::string_view name) {
  return "\"" + Replace(name, "\"", "\"\"") + "\"";
}

const Table* Catalogue::FindTable(std::string_view name) const {
  auto found = tables_.find(name);
  return found == tables_.end() ? nullptr : found->second.get();
}

std::shared_ptr<const Procedure> Catalogue::FindProcedure(std::string_view name) const {
  auto found = procedures_.find(name);
  return found == procedures_.end() ? nullptr : found->second;
}

std::int64_t Catalogue::FindObject(std::string_view name) const {
  if (const Table* table = FindTable(name)) return table->id;
  auto procedure = FindProcedure(name);
  return procedure ? procedure->id : 0;
}

void Catalogue::AddTable(std::unique_ptr<Table> table) {
  std::string name = table->name;
  tables_.insert_or_assign(std::move(name), std::move(table));
}

void Catalogue::AddProcedure(std::shared_ptr<const Procedure> procedure) {
  std::string name = procedure->name;
  procedures_.insert_or_assign(std::move(name), std::move(procedure));
}

void Catalogue::Load(sqlite3* store) {
  tables_.clear();
  procedures_.clear();
  sqlite3_stmt* raw = nullptr;
  int result =
      sqlite3_prepare_v2(store, "SELECT id, type, source FROM \"luming$objects\" ORDER BY id", -1, &raw, nullptr);
  StatementHandle rows(raw);
  if (result == SQLITE_OK) {
    while ((result = StepEngine(raw)) == SQLITE_ROW) {
      auto text = [&](int i) {
        auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(raw, i));
        return std::string(bytes ? bytes : "");
      };
      try {
        Define(sqlite3_column_int64(raw, 0), text(2));
      } catch (const SqlError&) {
        throw SqlError(native::kDamaged, sqlite3_db_filename(store, "main"));
      }
    }
  }
  // A statement of our own that the engine does not understand: the store lacks what every store has.
  if (result == SQLITE_ERROR) throw SqlError(native::kDamaged, sqlite3_db_filename(store, "main"));
  if (result != SQLITE_DONE) throw EngineError(store);
  ReadVersion(store);
  AddSystemTables(*this);
}

void Catalogue::ReadVersion(sqlite3* store) {
  version_ = ReadNumber(store, "SELECT catalogue_version FROM \"luming$state\"");
}

void Catalogue::RemoveKey(std::string_view table, std::string_view key) {
  std::erase_if(tables_.find(table)->second->keys, [&](const Key& k) { return EqualsIgnoreCase(k.name, key); });
}

void Catalogue::Define(std::int64_t id, std::string source) {
  auto script = std::make_unique<Script>(std::move(source));
  script->statements = Parser(script->lexed).ParseBatch();
  if (script->statements.size() != 1) throw SqlError(native::kSyntax, script->text);
  const auto& node = script->statements[0]->node;
  auto known = [&](const std::string& name) -> Table& {
    auto found = tables_.find(name);
    if (found == tables_.end()) throw SqlError(native::kMissingObject, name);
    return *found->second;
  };
  if (auto* create = std::get_if<CreateTableStatement>(&node)) {
    auto table = MakeTable(create->name, create->definition, script->lexed);
    table->id = id;
    AddTable(std::move(table));
  } else if (auto* alter = std::get_if<AlterTableStatement>(&node)) {
    ExtendTable(known(alter->name), alter->added, script->lexed);
  } else if (auto* index = std::get_if<CreateIndexStatement>(&node)) {
    known(index->table).keys.push_back(MakeKey(*index));
  } else if (auto* create_procedure = std::get_if<CreateProcedureStatement>(&node)) {
    auto procedure = std::make_shared<Procedure>();
    procedure->name = create_procedure->name;
    procedure->id = id;
    procedure->script = std::move(script);
    AddProcedure(std::move(procedure));
  }
}

}  // namespace luming::localdb
