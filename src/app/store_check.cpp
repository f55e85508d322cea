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
  bool batches_left_alone = false;
  std::vector<std::string> movements;
};

// What the log calls the movements that change the counter and leave the batches as they were.
constexpr const char* kStockTake = "药品盘点";
constexpr const char* kSale = "药库药品批发";

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
    drug.log = kind == kStockTake ? moved : drug.log + (in ? moved : -moved);
    drug.batches_left_alone = drug.batches_left_alone || kind == kStockTake || kind == kSale;
    drug.movements.push_back(rows.Field("RQ").Format("yyyy-mm-dd hh:nn:ss") + "  " + (in ? "入 " : "出 ") +
                             rows.Field("SL").TextOrEmpty() + rows.Field("DW").TextOrEmpty() + "  " + kind + "  " +
                             rows.Field("BZ").TextOrEmpty() + "  " + rows.Field("CZY").TextOrEmpty());
  }
}

bool Same(double first, double second) {
  constexpr int kDecimals = 6;
  return RoundDecimal(first, kDecimals) == RoundDecimal(second, kDecimals);
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

std::string ReportOf(const std::vector<Disagreement>& found) {
  if (found.empty()) return "库存、批次和流水全部一致。\n";
  const auto to_be_counted = std::ranges::count_if(found, &Disagreement::only_batches);
  const auto damaged = std::ssize(found) - to_be_counted;
  std::string text = damaged == 0 ? "库存和流水全部一致。\n"
                                  : "库存、批次、流水不一致的药品共 " + std::to_string(damaged) + " 种（最小单位数量）：\n";
  for (const Disagreement& drug : found) text += drug.only_batches ? "" : "\n" + ReportOf(drug);
  if (to_be_counted == 0) return text;
  text += "\n盘点或批发没有改动批次、批次合计与库存不同的药品共 " + std::to_string(to_be_counted) +
          " 种，请逐个盘点并核对批次：\n\n";
  for (const Disagreement& drug : found) {
    if (!drug.only_batches) continue;
    text += drug.code + "  " + drug.name + "  库存 " + NumberText(drug.counter) + "  批次合计 " +
            NumberText(drug.batches) + "\n";
  }
  return text;
}

std::string ReportOf(const std::vector<UnmovedNote>& found) {
  if (found.empty()) return {};
  std::string text = "\n已确认但没有出库的出库单共 " + std::to_string(found.size()) + " 张：\n";
  for (const UnmovedNote& note : found) text += note.number + "  " + note.confirmed + "\n";
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
    const bool log_agrees = Same(drug.counter, drug.log);
    if (log_agrees && Same(drug.counter, drug.batches)) continue;
    found.push_back({drug.code, drug.name, drug.counter, RoundDecimal(drug.batches, 6), RoundDecimal(drug.log, 6),
                     log_agrees && drug.batches_left_alone, Newest(drug.movements)});
  }
  return found;
}

std::vector<UnmovedNote> FindUnmovedNotes(Connection& connection) {
  std::vector<UnmovedNote> found;
  Recordset notes = connection.Execute(
      "Select SLDH,CKRQ,LYDW,YKQRR From YPSLD Where SFQR=1 And Exists(Select 1 From YPSLMX Where YPSLMX.SLDH=YPSLD.SLDH "
      "And LSJ Is Null) Order by CKRQ,ID");
  for (; !notes.Eof(); notes.MoveNext()) {
    found.push_back({notes.Field("SLDH").TextOrEmpty(), notes.Field("CKRQ").Format("yyyy-mm-dd") + "  " +
                                                            notes.Field("LYDW").TextOrEmpty() + "  " +
                                                            notes.Field("YKQRR").TextOrEmpty()});
  }
  return found;
}

std::string CheckStore(const std::string& place, bool& agree) {
  const SystemClock clock;
  const std::shared_ptr<Connection> connection = OpenStore(place, clock);
  const std::vector<Disagreement> drugs = FindDisagreements(*connection);
  const std::vector<UnmovedNote> notes = FindUnmovedNotes(*connection);
  connection->Close();
  agree = notes.empty() && std::ranges::all_of(drugs, &Disagreement::only_batches);
  return ReportOf(drugs) + ReportOf(notes);
}

}  // namespace luming
