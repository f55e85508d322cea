#include <functional>

#include "localdb/definition.h"
#include "localdb/errors.h"
#include "localdb/interpreter.h"
#include "util/text.h"

namespace luming::localdb {
namespace {

std::string Hexadecimal(std::size_t number) {
  static constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (; number != 0; number /= 16) text += kDigits[number % 16];
  return text;
}

}  // namespace

// A temporary table bears the level of its maker and its definition in its engine name, so that a plan made for one is
// never run on another.
void Interpreter::CreateTemporary(const std::string& name, const TableDefinition& definition, const LexedText& lexed,
                                  Frame& owner) {
  if (owner.OwnsTemporary(name)) {
    if (!name.starts_with('@')) throw SqlError(native::kObjectExists, name);
    RunPlain(session_.store.get(), "DELETE FROM " + QuoteName(owner.FindTemporary(name)->physical));
    return;
  }
  std::unique_ptr<Table> table = MakeTable(name, definition, lexed);
  std::size_t hash = std::hash<std::string>()(CreateTableSql(*table, definition, lexed, true));
  table->physical = name + "@" + std::to_string(depth_) + "." + Hexadecimal(hash);
  RunPlain(session_.store.get(), "DROP TABLE IF EXISTS temp." + QuoteName(table->physical));
  RunPlain(session_.store.get(), CreateTableSql(*table, definition, lexed, true));
  owner.AddTemporary(std::move(table));
}

void Interpreter::DropTemporary(const std::string& name, Frame& owner) {
  const Table* table = owner.FindTemporary(name);
  if (!table) throw SqlError(native::kDropMissing, name);
  RunPlain(session_.store.get(), "DROP TABLE IF EXISTS temp." + QuoteName(table->physical));
  owner.DropTemporary(name);
}

void Interpreter::DropTemporaries(Frame& frame) {
  for (const auto& table : frame.temporaries()) {
    RunPlain(session_.store.get(), "DROP TABLE IF EXISTS temp." + QuoteName(table->physical));
  }
}

bool Interpreter::RunDefinition(const Statement& statement, Body& body) {
  const auto& node = statement.node;
  Definer definer(session_.store.get(), session_.catalogue);
  std::string source(body.lexed.Slice(statement.first_token, statement.last_token));
  Frame& owner = depth_ == 0 ? session_.frame : body.frame;
  if (auto* create = std::get_if<CreateTableStatement>(&node)) {
    if (create->name.starts_with('#')) {
      CreateTemporary(create->name, create->definition, body.lexed, owner);
      return true;
    }
    definer.CreateTable(*create, body.lexed, source);
  } else if (auto* alter = std::get_if<AlterTableStatement>(&node)) {
    definer.AlterTable(*alter, body.lexed, source);
  } else if (auto* index = std::get_if<CreateIndexStatement>(&node)) {
    if (index->table.starts_with('#')) return true;
    definer.CreateIndex(*index, source);
  } else if (auto* procedure = std::get_if<CreateProcedureStatement>(&node)) {
    definer.CreateProcedure(*procedure, source);
  } else if (auto* drop = std::get_if<DropStatement>(&node)) {
    for (const std::string& name : drop->names) {
      bool temporary = name.starts_with('#');
      if (!temporary) {
        definer.Drop(drop->kind, name, drop->if_exists);
      } else if (!drop->if_exists || body.frame.FindTemporary(name)) {
        DropTemporary(name, body.frame.OwnsTemporary(name) ? body.frame : session_.frame);
      }
    }
  } else {
    return false;
  }
  session_.plans.Clear();
  session_.system_tables_filled = false;
  return true;
}

}  // namespace luming::localdb
