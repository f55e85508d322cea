#include "stock/batch_stock.h"

#include "frame/gateway.h"
#include "platform/statement.h"
#include "util/number_text.h"

namespace luming {

namespace {

enum class Closing { kSweep, kNoSweep };

/// One draw from the batches of one drug.
class BatchDraw {
 public:
  BatchDraw(Connection& connection, std::string code, double quantity)
      : connection_(connection), code_(std::move(code)), quantity_(quantity) {}

  void Draw(const std::string& batch) {
    Sweep();
    if (batch.empty()) {
      DrawOldest(Closing::kSweep);
    } else {
      DrawNamed(batch);
    }
  }

 private:
  void DrawNamed(const std::string& batch) {
    const Recordset rows = Batches(" AND PH Like" + Quoted(batch, "批号"));
    if (rows.Eof()) return;
    const std::string id = rows.Field("ID").Text();
    if (quantity_ <= rows.Field("SL").Number()) {
      Reduce(id, quantity_);
      Sweep();
      return;
    }
    // A short batch voids the batch record of the whole drug; only the counter knows what is left.
    Empty(id);
    DeleteDrug();
    connection_.Execute("Delete YK_CurryPH Where SL=0");
    DrawOldest(Closing::kNoSweep);
  }

  void DrawOldest(Closing closing) {
    Recordset rows = Batches({});
    if (rows.Eof()) return;
    double remainder = quantity_;
    if (rows.RecordCount() == 1) {
      Reduce(rows.Field("ID").Text(), remainder);
      if (closing == Closing::kSweep) Sweep();
      return;
    }
    for (; !rows.Eof(); rows.MoveNext()) {
      const std::string id = rows.Field("ID").Text();
      const double held = rows.Field("SL").Number();
      if (remainder <= held) {
        Reduce(id, remainder);
        if (closing == Closing::kSweep) Sweep();
        return;
      }
      Empty(id);
      remainder -= held;
    }
    if (remainder > 0) DeleteDrug();
  }

  Recordset Batches(const Statement& further_condition) {
    return connection_.Execute("Select ID,SL From YK_CurryPH Where YPBM Like" + Quoted(code_, "编码") +
                               further_condition + " Order by RKRQ");
  }
  void Reduce(const std::string& id, double quantity) {
    connection_.Execute("Update YK_CurryPH Set SL=SL" + Less(quantity) + " Where ID=" + Bare(id));
  }
  void Empty(const std::string& id) { connection_.Execute("Update YK_CurryPH Set SL=0 Where ID=" + Bare(id)); }
  void DeleteDrug() { connection_.Execute("Delete YK_CurryPH Where YPBM Like" + Quoted(code_, "编码")); }
  void Sweep() { connection_.Execute("Delete YK_CurryPH Where sl<=0"); }

  Connection& connection_;
  std::string code_;
  double quantity_;
};

}  // namespace

void ConsumeBatch(AppContext& app, const std::string& YPBM, double quantity, const std::string& PH) {
  Trapped(app, [&] {
    if (!app.Cn) throw StandardFailure(failure::kBadConnection);
    BatchDraw(*app.Cn, YPBM, quantity).Draw(PH);
  });
}

}  // namespace luming
