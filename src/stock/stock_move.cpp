#include "stock/stock_move.h"

#include "frame/gateway.h"
#include "stock/batch_stock.h"
#include "stock/movement_log.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming {

namespace {

/// Adds to the batch of that drug and number, or creates it; an existing one keeps its dates and prices.
void AddToBatch(AppContext& app, const StockMove& move, const MovedLine& line, const std::string& number,
                const DateTime& now) {
  Recordset found;
  OpenRs(app, found,
         "Select id From YK_CurryPH Where YPBM Like" + Quoted(line.YPBM, "编码") + " And PH Like" +
             Quoted(line.PH, "批号"));
  const std::string units = NumberText(line.Moved());
  if (found.RecordCount() < 1) {
    app.Cn->Execute(move.batch_insert + Statement(" YK_CurryPH(RKDH,YPBM,PH,XQ,SL,PFJ,PLJ,RKRQ)Values(") +
                    Quoted(number, "单号") + "," + Quoted(line.YPBM, "编码") + "," + Quoted(line.PH, "批号") + "," +
                    line.XQ + "," + units + "," + line.PFJ + "," + line.PLJ + "," +
                    Quoted(FormatDate(now, "YYYY-MM-DD")) + ")");
  } else {
    app.Cn->Execute("Update YK_CurryPH SET SL=SL+" + units + " Where ID=" + Bare(found.Field("ID").Text()));
  }
}

void MoveCounter(AppContext& app, const StockMove& move, const MovedLine& line) {
  const double units = line.Moved();
  app.Cn->Execute(move.update + line.further + move.counter + "=" + move.counter +
                  (move.in ? "+" + NumberText(units) : Less(units)) + " Where YPBM Like" + Quoted(line.YPBM, "编码"));
}

void Log(AppContext& app, const StockMove& move, const MovedLine& line, const std::string& number,
         const DateTime& now) {
  AddMoveLog(app, {.YPBM = line.YPBM,
                   .SL = line.quantity,
                   .CLB = line.ratio,
                   .KCL = line.Moved(),
                   .DW = line.DW,
                   .in = move.in,
                   .MS = move.kind,
                   .RQ = DateText(now),
                   .KFBM = app.KFMC,
                   .BZ = move.reference + number});
}

}  // namespace

double SmallestUnits(double quantity, double ratio) {
  constexpr int kDecimals = 6;
  return RoundDecimal(quantity * ratio, kDecimals);
}

void MoveStock(AppContext& app, const StockMove& move, const MovedLine& line, const std::string& number) {
  const DateTime now = app.clock.Now();
  if (move.batches == BatchEffect::kAdded) AddToBatch(app, move, line, number, now);
  MoveCounter(app, move, line);
  Log(app, move, line, number, now);
  if (move.batches == BatchEffect::kConsumed) ConsumeBatch(app, line.YPBM, line.Moved(), line.PH);
}

}  // namespace luming
