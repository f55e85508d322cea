#include <array>
#include <string>
#include <vector>

#include "duel.h"
#include "plain_store.h"
#include "screen/grid.h"
#include "stores.h"
#include "support/document_desk.h"
#include "util/text.h"

namespace luming::bench {

namespace {

/// The question of the search as plain SQLite is best asked it: ranges of both code indexes, the codes in capitals as
/// they are stored. The same rows in the same order, but only the columns that the grid shows.
constexpr const char* kSearch =
    "SELECT YPBM, YPMC, GG, DW, SCCJ, YKKCL, LSJ, PFJ, CLB, ZXDW, CLLSJ, PLJ FROM YF_YPML "
    "WHERE (PYDM >= ?1 AND PYDM < ?2 OR SP_PYDM >= ?1 AND SP_PYDM < ?2) "
    "AND SFXM IN (SELECT sChargeItemName FROM YFYK_LinkItem WHERE sInvItemName = '西药库') "
    "AND SFXM NOT IN (SELECT sItemName FROM eK_ChargeItem WHERE YPBZ = 0) "
    "AND (SFTY = 0 OR YKKCL > 0) "
    "ORDER BY CASE WHEN PYDM >= ?1 AND PYDM < ?2 THEN 0 ELSE 1 END, LENGTH(PYDM), PYDM, YPBM";

using Row = std::array<std::string, 12>;

/// The bare question, its rows read into memory.
class PlainSearch {
 public:
  explicit PlainSearch(const std::filesystem::path& file) : store_(file) {}

  std::vector<Row> Read(std::string_view prefix) {
    std::string end(prefix);
    ++end.back();
    std::vector<Row> rows;
    search_.Bind(1, prefix).Bind(2, end);
    while (search_.Step()) {
      Row& row = rows.emplace_back();
      for (std::size_t i = 0; i < row.size(); ++i) row[i] = search_.Text(static_cast<int>(i));
    }
    search_.Reset();
    return rows;
  }

 private:
  PlainStore store_;
  PlainStatement search_{store_.get(), kSearch};
};

/// From the changed text to the filled list. @param typed in capitals
void Keystroke(benchmark::State& state, const std::string& typed) {
  StoreCopy store;
  GrowCatalogue(store, static_cast<int>(state.range(0)));
  ReceiptDesk desk(store.Home(), store.Connect(), BenchClock());
  PlainSearch plain(store.File());
  desk.Choose("CXFS", "拼音码");
  auto& search = desk.Field<TextBox>("PM");
  std::vector<Row> rows;
  std::string before = typed;
  Duel duel(state);
  while (duel.NextRound()) {
    // Capitals and small letters are the same search, and a text that differs from the last one.
    const std::string text = before == typed ? LowerAscii(typed) : typed;
    duel.Fight([&] { search.UserText(text); }, [&] { rows = plain.Read(typed); });
    before = text;
  }
  const auto& found = desk.Field<Grid>("fpSpread2");
  bool same = found.MaxRows() == static_cast<int>(rows.size());
  for (int row = 1; same && row <= found.MaxRows(); ++row) {
    same = found.Text(row, 1) == rows[static_cast<std::size_t>(row) - 1][0];
  }
  if (!same) return state.SkipWithError("both should find the same");
  state.counters["rows"] = static_cast<double>(rows.size());
  duel.Report(2);
}

void BM_KeystrokeRarePrefix(benchmark::State& state) {
  Keystroke(state, "AM");
}
BENCHMARK(BM_KeystrokeRarePrefix)->Apply(AsDuel)->ArgName("drugs")->Arg(3000)->Arg(50000);

/// 盐酸…, with which one name in eight begins.
void BM_KeystrokeCommonestPrefix(benchmark::State& state) {
  Keystroke(state, "YS");
}
BENCHMARK(BM_KeystrokeCommonestPrefix)->Apply(AsDuel)->ArgName("drugs")->Arg(3000)->Arg(50000);

void BM_KeystrokeFirstLetter(benchmark::State& state) {
  Keystroke(state, "A");
}
BENCHMARK(BM_KeystrokeFirstLetter)->Apply(AsDuel)->ArgName("drugs")->Arg(3000)->Arg(50000);

}  // namespace

}  // namespace luming::bench
