#include <sqlite3.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "demand.h"
#include "localdb/collation.h"
#include "localdb/definition.h"
#include "localdb/engine_functions.h"
#include "localdb/errors.h"
#include "localdb/parser/parser.h"
#include "localdb/translate/translator.h"

using namespace luming;
using namespace luming::localdb;

namespace {

constexpr const char* kTables =
    "Create Table T(id int identity(1,1), a varchar(20) not null, d decimal(18,6), r datetime, b bit default 1)";

/// A catalogue with one table, and the engine with the same.
struct World {
  World() {
    Script script(kTables);
    script.statements = Parser(script.lexed).ParseBatch();
    const auto& create = std::get<CreateTableStatement>(script.statements[0]->node);
    auto table = MakeTable("T", create.definition, script.lexed);
    sqlite3* raw = nullptr;
    Demand(sqlite3_open(":memory:", &raw) == SQLITE_OK);
    engine.reset(raw);
    RegisterCollation(raw);
    functions.clock = &clock;
    functions.catalogue = &catalogue;
    RegisterFunctions(raw, functions);
    std::string sql = CreateTableSql(*table, create.definition, script.lexed, false);
    Demand(sqlite3_exec(raw, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK);
    catalogue.AddTable(std::move(table));
    frame.Declare("@x", SqlType::Text(20)).value = "a%";
    frame.Declare("@n", SqlType::Int()).value = std::int64_t{5};
  }

  FixedClock clock{DateTime(2026, 3, 1)};
  FunctionContext functions;
  Catalogue catalogue;
  Frame frame;
  StoreHandle engine;
};

std::unique_ptr<Plan> Translate(const World& world, const LexedText& lexed, const Statement& statement) {
  std::size_t first = lexed.tokens()[statement.first_token].literal;
  Translator translator({world.catalogue, world.frame, lexed, first});
  if (auto* select = std::get_if<SelectStatement>(&statement.node)) return translator.Select(*select->query);
  if (auto* update = std::get_if<UpdateStatement>(&statement.node)) return translator.Update(*update);
  if (auto* erase = std::get_if<DeleteStatement>(&statement.node)) return translator.Delete(*erase);
  auto* insert = std::get_if<InsertStatement>(&statement.node);
  return insert && !insert->exec ? translator.Insert(*insert) : nullptr;
}

bool Same(const Literal& left, const Literal& right) {
  return left.text == right.text && left.is_string == right.is_string && left.has_quotes == right.has_quotes;
}

/// The quick look may find nothing; what it finds is what the whole look finds.
bool SkimAgrees(const LexedText& lexed) {
  LexedText skimmed;
  skimmed.Skim(lexed.text());
  return skimmed.key().empty() ||
         (skimmed.key() == lexed.key() && std::ranges::equal(skimmed.literals(), lexed.literals(), Same));
}

}  // namespace

// Whatever is sent, the answer is a plan or an SqlError, and the engine can be asked to prepare the plan.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const World world;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string_view half = text.substr(0, size / 2);
  MatchesLike(half, text.substr(size / 2));
  Demand(CompareText(half, text) == -CompareText(text, half));
  LexedText lexed;
  try {
    lexed.Lex(text);
    Demand(SkimAgrees(lexed));
    const auto statements = Parser(lexed).ParseBatch();
    for (const auto& statement : statements) {
      Demand(!lexed.KeyOf(statement->first_token, statement->last_token).empty());
      const std::unique_ptr<Plan> plan = Translate(world, lexed, *statement);
      if (!plan) continue;
      sqlite3_stmt* raw = nullptr;
      sqlite3_prepare_v2(world.engine.get(), plan->sql.c_str(), -1, &raw, nullptr);
      sqlite3_finalize(raw);
    }
  } catch (const SqlError& error) {
    Demand(!error.description().empty() && error.native() != 0);
  }
  try {
    Demand(CanonicalDate(FromCanonicalDate(CanonicalDate(text))) == CanonicalDate(text));
  } catch (const SqlError&) {
  }
  return 0;
}
