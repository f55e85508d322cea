#include "masterdata/batch_pane.h"

#include <vector>

#include "frame/gateway.h"
#include "output/grid_routines.h"
#include "platform/statement.h"
#include "screen/redraw_pause.h"
#include "util/number_text.h"

namespace luming {

namespace {

enum Column { kBatch = 1, kQuantity, kExpiry, kPurchasePrice, kWholesalePrice, kReceived, kCost, kWholesale };

std::vector<GridColumn> Columns(BatchAmounts amounts) {
  std::vector<GridColumn> columns = {GridColumn("批号", 16).Code(),      GridColumn("数量", 10).Figure(),
                                     GridColumn("效期", 11).Date(),      GridColumn("进价", 11).Figure(),
                                     GridColumn("批发价", 11).Figure(),  GridColumn("入库日期", 11).Date(),
                                     GridColumn("进价金额", 14).Figure()};
  if (amounts == BatchAmounts::kPurchaseAndWholesale) columns.push_back(GridColumn("批发价金额", 14).Figure());
  return columns;
}

}  // namespace

BatchPane::BatchPane(Form* form, AppContext& app, BatchAmounts amounts)
    : Grid(form, "fpSpread2", Columns(amounts)), BatchDrug(form, "BatchDrug"), app_(app), amounts_(amounts) {
  SetReadOnly(true);
  Clear();
}

void BatchPane::Clear() {
  SetMaxRows(0);
  BatchDrug.SetCaption("库存批次");
}

void BatchPane::ShowBatches(const std::string& code, const std::string& name) {
  if (code.empty()) return Clear();
  Trapped(app_, [&] {
    Recordset rows;
    OpenRs(app_, rows,
           "Select PH,XQ,SL,PFJ,PLJ,RKRQ from YK_CurryPH Where YPBM Like" + Quoted(code, "编码") + " AND SL>0");
    const RedrawPause pause(*this);
    Fill(rows);
    CloseRs(rows);
    BatchDrug.SetCaption("库存批次：" + code + "  " + name);
    if (amounts_ == BatchAmounts::kPurchaseAndWholesale && MaxRows() > 1) GridSumRow(*this, 1, {kCost, kWholesale});
  });
}

void BatchPane::Fill(Recordset& rows) {
  SetMaxRows(0);
  SetMaxRows(rows.RecordCount());
  for (int row = 1; !rows.Eof(); rows.MoveNext(), ++row) {
    const double quantity = rows.Field("SL").NumberOr(0);
    const auto amount = [&](const char* price) {
      return FormatNumber(quantity * rows.Field(price).NumberOr(0), "0.00");
    };
    SetText(row, kBatch, rows.Field("PH").TextOrEmpty());
    SetText(row, kQuantity, rows.Field("SL").TextOrEmpty());
    SetText(row, kExpiry, rows.Field("XQ").Format("yyyy-mm-dd"));
    SetText(row, kPurchasePrice, rows.Field("PFJ").Format("0.00"));
    SetText(row, kWholesalePrice, rows.Field("PLJ").Format("0.00"));
    SetText(row, kReceived, rows.Field("RKRQ").Format("YYYY-MM-DD"));
    SetText(row, kCost, amount("PFJ"));
    if (amounts_ == BatchAmounts::kPurchaseAndWholesale) SetText(row, kWholesale, amount("PLJ"));
  }
}

}  // namespace luming
