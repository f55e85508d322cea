#include <string>
#include <vector>

#include "duel.h"
#include "platform/tracing_connection.h"
#include "sqlserver/server_connection.h"
#include "stores.h"
#include "support/document_desk.h"
#include "tds_server/tds_server.h"

namespace luming::bench {

namespace {

/// A receipt saved through the server adapter, the driver and a server on this machine that runs the embedded engine,
/// beside the same receipt saved in the embedded store itself. What is more is the price of the round trips.
void BM_SaveReceiptOverTheWire(benchmark::State& state) {
  const int lines = static_cast<int>(state.range(0));
  StoreCopy near;
  StoreCopy far;
  tds::TdsServer server(far.Home(), BenchClock());
  auto connection = std::make_unique<ServerConnection>();
  connection->Open("Data Source=127.0.0.1," + std::to_string(server.Port()) +
                   ";Initial Catalog=lumndata;User ID=sa;Password=;");
  int trips = 0;
  ReceiptDesk wire(
      far.Home(),
      std::make_shared<TracingConnection>(std::move(connection), [&trips](const TracedStatement&) { ++trips; }),
      BenchClock());
  ReceiptDesk embedded(near.Home(), near.Connect(), BenchClock());
  Duel duel(state);
  int round = 0;
  while (duel.NextRound()) {
    const auto goods = wire.LinesOf(round * 37, lines, "P" + std::to_string(round / 4 * 4 + std::min(round % 4, 2)));
    ++round;
    wire.Write(goods, "FP1");
    embedded.Write(goods, "FP1");
    trips = 0;
    duel.Fight([&] { wire.Save(); }, [&] { embedded.Save(); });
    const bool saved = wire.Lines().MaxRows() == 0 && embedded.Lines().MaxRows() == 0;
    if (!saved) return state.SkipWithError("both receipts should be saved");
  }
  state.counters["round_trips"] = trips;
  state.counters["trips_a_line"] = static_cast<double>(trips) / lines;
  duel.Report(20, lines, "the embedded store");
}
BENCHMARK(BM_SaveReceiptOverTheWire)->Apply(AsDuel)->ArgName("lines")->Arg(1)->Arg(20)->Arg(100);

}  // namespace

}  // namespace luming::bench
