#include "app/store_check.h"

#include <algorithm>
#include <map>

#include "app/store_place.h"
#include "util/clock.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

/// What is known of one drug code while the tables are read.
struct Figures {
  bool in_catalogue = false;
  std::string code;
  std::string name;
  double counter = 0;
  double batches = 0;
  double log = 0;
  std::vector<std::string> movements;
};

/// By the code as the database compares it.
using Drugs = std::map<std::string, Figures>;

Figures& DrugOf(Drugs& drugs, const Value& code) {
  const std::string text = code.TextOrEmpty();
  Figures& figures = drugs[UpperAscii(TrimRight(text))];
  if (figures.code.empty()) figures.code = text;
  return figures;
}

void ReadCatalogue(Connection& connection, Drugs& drugs) {
  for (Recordset rows = connection.Execute("Select YPBM,YPMC,YKKCL From YF_YPML"); !rows.Eof(); rows.MoveNext()) {
    Figures& drug = DrugOf(drugs, rows.Field("YPBM"));
    drug.name = rows.Field("YPMC").TextOrEmpty();
    drug.counter = rows.Field("YKKCL").NumberOr(0);
  }
}

void ReadBatchStock(Connection& connection, Drugs& drugs) {
  for (Recordset rows = connection.Execute("Select YPBM,SL From YK_CurryPH"); !rows.Eof(); rows.MoveNext()) {
    DrugOf(drugs, rows.Field("YPBM")).batches += rows.Field("SL").NumberOr(0);
  }
}

/// A stock take's row holds the counted stock and is no movement: the figure starts anew from it.
void ReadLog(Connection& connection, Drugs& drugs) {
  Recordset rows = connection.Execute("Select YPBM,SL,DW,KCL,LB,MS,RQ,BZ,CZY From YPCRK Order by id");
  for (; !rows.Eof(); rows.MoveNext()) {
    Figures& drug = DrugOf(drugs, rows.Field("YPBM"));
    const double moved = rows.Field("KCL").NumberOr(0);
    const bool in = rows.Field("LB").NumberOr(0) == 0;
    const std::string kind = rows.Field("MS").TextOrEmpty();
    drug.log = kind == "药品盘点" ? moved : drug.log + (in ? moved : -moved);
    drug.movements.push_back(rows.Field("RQ").Format("yyyy-mm-dd hh:nn:ss") + "  " + (in ? "入 " : "出 ") +
                             rows.Field("SL").TextOrEmpty() + rows.Field("DW").TextOrEmpty() + "  " + kind + "  " +
                             rows.Field("BZ").TextOrEmpty() + "  " + rows.Field("CZY").TextOrEmpty());
  }
}

bool Agrees(const Figures& drug) {
  constexpr int kDecimals = 6;
  const double counter = RoundDecimal(drug.counter, kDecimals);
  return counter == RoundDecimal(drug.batches, kDecimals) && counter == RoundDecimal(drug.log, kDecimals);
}

std::vector<std::string> Newest(const std::vector<std::string>& movements) {
  constexpr std::ptrdiff_t kShown = 5;
  const auto count = std::min(kShown, static_cast<std::ptrdiff_t>(movements.size()));
  return {movements.rbegin(), movements.rbegin() + count};
}

std::string ReportOf(const Disagreement& found) {
  std::string text = found.code + "  " + found.name + "\n    库存 " + NumberText(found.counter) + "  批次合计 " +
                     NumberText(found.batches) + "  流水结存 " + NumberText(found.log) + "\n";
  if (found.last.empty()) text += "    没有出入库流水\n";
  for (const std::string& movement : found.last) text += "    " + movement + "\n";
  return text;
}

}  // namespace

std::vector<Disagreement> FindDisagreements(Connection& connection) {
  Drugs drugs;
  ReadCatalogue(connection, drugs);
  ReadBatchStock(connection, drugs);
  ReadLog(connection, drugs);
  std::vector<Disagreement> found;
  for (const auto& [key, drug] : drugs) {
    if (Agrees(drug)) continue;
    found.push_back({drug.code, drug.name, drug.counter, RoundDecimal(drug.batches, 6), RoundDecimal(drug.log, 6),
                     Newest(drug.movements)});
  }
  return found;
}

std::string CheckStore(const std::string& place, bool& agree) {
  const SystemClock clock;
  const std::shared_ptr<Connection> connection = OpenStore(place, clock);
  const std::vector<Disagreement> found = FindDisagreements(*connection);
  connection->Close();
  agree = found.empty();
  if (agree) return "库存、批次和流水全部一致。\n";
  std::string text = "库存、批次、流水不一致的药品共 " + std::to_string(found.size()) + " 种（最小单位数量）：\n";
  for (const Disagreement& drug : found) text += "\n" + ReportOf(drug);
  return text;
}

}  // namespace luming
