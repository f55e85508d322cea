#include <string>
#include <string_view>
#include <vector>

#include "duel.h"
#include "frame/command_table.h"
#include "masterdata/catalogue_columns.h"
#include "masterdata/drug_catalogue.h"
#include "plain_store.h"
#include "screen/grid.h"
#include "stores.h"
#include "support/app_test.h"
#include "support/fake_output.h"

namespace luming::bench {

namespace {

/// A drug's fields as the bare question gives them.
using Drug = std::vector<std::string>;

/// The catalogue's questions put to SQLite alone, their rows read into memory as text.
class PlainCatalogue {
 public:
  PlainCatalogue(const std::filesystem::path& file, const std::string& condition)
      : store_(file),
        read_(store_.get(), ("SELECT " + Fields() + " FROM YF_YPML WHERE " + condition +
                             " AND SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName = '西药库') "
                             "ORDER BY SUBSTR(PYDM, 1, 1)")
                                .c_str()) {}

  std::vector<Drug> Read() {
    std::vector<Drug> drugs;
    while (read_.Step()) {
      Drug& drug = drugs.emplace_back(fields_);
      for (std::size_t i = 0; i < fields_; ++i) drug[i] = read_.Text(static_cast<int>(i));
    }
    read_.Reset();
    return drugs;
  }

 private:
  /// All that the grid shows and the table holds.
  std::string Fields() {
    std::string fields;
    for (const CatalogueColumn& column : CatalogueColumns()) {
      if (*column.field == '\0') continue;
      if (fields_++ > 0) fields += ", ";
      fields += column.field;
    }
    return fields;
  }

  std::size_t fields_ = 0;
  PlainStore store_;
  PlainStatement read_;
};

/// The catalogue screen over a store, of an operator who may look at it.
class CatalogueDesk {
 public:
  explicit CatalogueDesk(const StoreCopy& store)
      : app_({desktop_, devices_, printing_, workbooks_, BenchClock()}, store.Home(), {}, commands_) {
    app_.Cn = store.Connect();
    app_.KFMC = "西药库";
    app_.CurUser.YPGL_CKYPML = true;
    screen_ = &app_.forms.Get<Frm_YPML>(app_);
    screen_->EnsureLoaded();
  }
  Frm_YPML& screen() { return *screen_; }

 private:
  ScriptedDesktop desktop_;
  FakeDevices devices_;
  FakePrinting printing_;
  FakeWorkbooks workbooks_;
  CommandTable commands_;
  AppContext app_;
  Frm_YPML* screen_;
};

/// The total row stands behind the drugs.
bool ShowsThese(const Grid& grid, const std::vector<Drug>& drugs) {
  if (grid.MaxRows() != static_cast<int>(drugs.size()) + 1) return false;
  for (std::size_t i = 0; i < drugs.size(); ++i) {
    if (grid.Text(static_cast<int>(i) + 1, catalogue::kYPBM) != drugs[i].front()) return false;
  }
  return true;
}

/// From the click on a node of the tree to the filled grid with its values and totals.
void Load(benchmark::State& state, const std::string& node, const std::string& condition) {
  StoreCopy store;
  GrowCatalogue(store, static_cast<int>(state.range(0)));
  CatalogueDesk desk(store);
  PlainCatalogue plain(store.File(), condition);
  std::vector<Drug> drugs;
  Duel duel(state);
  while (duel.NextRound()) {
    duel.Fight([&] { desk.screen().LoadData(node); }, [&] { drugs = plain.Read(); });
  }
  if (!ShowsThese(desk.screen().fpSpread1, drugs)) return state.SkipWithError("both should find the same");
  state.counters["rows"] = static_cast<double>(drugs.size());
  duel.Report(2);
}

void BM_CatalogueAll(benchmark::State& state) {
  Load(state, "所有收费项目", "1");
}
BENCHMARK(BM_CatalogueAll)->Apply(AsDuel)->ArgName("drugs")->Arg(3000)->Arg(50000);

void BM_CatalogueChargeItem(benchmark::State& state) {
  Load(state, "中成药费", "SFXM = '中成药费'");
}
BENCHMARK(BM_CatalogueChargeItem)->Apply(AsDuel)->ArgName("drugs")->Arg(50000);

/// Few of many: every name is looked at.
void BM_CatalogueInjections(benchmark::State& state) {
  Load(state, "针剂", "SUBSTR(REPLACE(YPMC, ' ', ''), -1) = '针'");
}
BENCHMARK(BM_CatalogueInjections)->Apply(AsDuel)->ArgName("drugs")->Arg(50000);

}  // namespace

}  // namespace luming::bench
