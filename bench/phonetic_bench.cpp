#include <string>
#include <vector>

#include "duel.h"
#include "masterdata/phonetic.h"
#include "plain_store.h"
#include "stores.h"
#include "support/app_test.h"
#include "support/fake_output.h"
#include "util/text.h"

namespace luming::bench {

namespace {

constexpr int kNames = 1000;

std::vector<std::string> Names(Connection& connection) {
  std::vector<std::string> names;
  for (Recordset rows = connection.Execute("Select Top 1000 YPMC From YF_YPML Order by YPBM"); !rows.Eof();
       rows.MoveNext()) {
    names.push_back(rows.Field(0).Text());
  }
  return names;
}

/// The same codes by one prepared statement.
std::string PlainCode(PlainStatement& find, const std::string& name) {
  std::string code;
  for (const std::string& character : Characters(name)) {
    if (character.size() == 1) {
      if (character != " ") code += character;
      continue;
    }
    find.Bind(1, character);
    if (find.Step()) code += find.Text(0);
    find.Reset();
  }
  return code;
}

void BM_PhoneticCodes(benchmark::State& state) {
  StoreCopy store;
  ScriptedDesktop desktop;
  FakeDevices devices;
  FakePrinting printing;
  FakeWorkbooks workbooks;
  CommandTable commands;
  AppContext app({desktop, devices, printing, workbooks, BenchClock()}, store.Home(), {}, commands);
  app.Cn = store.Connect();
  PlainStore plain(store.File());
  PlainStatement find(plain.get(), "SELECT PY FROM GY_HZBM WHERE HZ = ?");
  const std::vector<std::string> names = Names(*app.Cn);
  std::vector<std::string> ours(names.size());
  std::vector<std::string> theirs(names.size());
  Duel duel(state);
  while (duel.NextRound()) {
    duel.Fight(
        [&] {
          for (std::size_t i = 0; i < names.size(); ++i) ours[i] = GetPYDM(app, names[i]);
        },
        [&] {
          for (std::size_t i = 0; i < names.size(); ++i) theirs[i] = PlainCode(find, names[i]);
        });
  }
  if (ours != theirs || names.size() != kNames) return state.SkipWithError("both should give the same codes");
  duel.Report(2, kNames);
}
BENCHMARK(BM_PhoneticCodes)->Apply(AsDuel);

}  // namespace

}  // namespace luming::bench
