#include <string>

#include "duel.h"
#include "plain_store.h"
#include "stores.h"
#include "support/document_desk.h"

namespace luming::bench {

namespace {

using Line = ReceiptDesk::Line;

/// A line as plain SQLite gets it: figures are figures already, the expiry is in its stored form.
struct PlainLine {
  const Line* texts;
  double wholesale, retail, quantity, price, amount, unit_price;
  std::int64_t ratio;
  std::string expiry;
};

PlainLine Read(const Line& line) {
  const auto text = [&line](int column) -> const std::string& { return line[static_cast<std::size_t>(column) - 1]; };
  const auto number = [&text](int column) { return std::stod(text(column)); };
  PlainLine plain{&line,
                  number(receipt::kWholesalePrice),
                  number(receipt::kRetailPrice),
                  number(receipt::kQuantity),
                  number(receipt::kPurchasePrice),
                  number(receipt::kAmount),
                  0,
                  std::stoi(text(receipt::kRatio)),
                  text(receipt::kExpiry) + " 00:00:00.000"};
  plain.unit_price = text(receipt::kUnitPurchasePrice).empty() ? plain.price : number(receipt::kUnitPurchasePrice);
  return plain;
}

/// The work of the screen's save with prepared statements: the same rows read and written in the same order, but no
/// text of a statement is made, cut up or looked up, and no figure is read from a text.
class PlainReceipt {
 public:
  explicit PlainReceipt(const std::filesystem::path& file) : store_(file) {}

  PlainStore& store() { return store_; }

  void Save(const std::vector<PlainLine>& lines, const std::string& invoice) {
    begin_.Run();
    const std::string number = NextNumber();
    InsertHead(number, invoice);
    for (const PlainLine& line : lines) SaveLine(number, line);
    NextNumber();
    commit_.Run();
  }

 private:
  /// The screen asks twice, and so does this.
  std::string NextNumber() {
    last_.Bind(1, "2026-03-01 00:00:00.000").Bind(2, "2026-03-01 23:59:59.000");
    const bool first = !last_.Step();
    last_.Reset();
    int count = 1;
    if (!first && last_.Step()) {
      const std::string last(last_.Text(0));
      count = std::stoi(last.substr(last.size() - 4)) + 1;
    }
    last_.Reset();
    char number[32];
    std::snprintf(number, sizeof number, "20260301%04d", count);
    return number;
  }

  void InsertHead(const std::string& number, const std::string& invoice) {
    head_.Bind(1, "西药库").Bind(2, number).Bind(3, "2026-03-01 10:00:00.000").Bind(4, invoice);
    head_.Bind(5, "2026-03-01 00:00:00.000").Bind(6, "云泊医药有限公司").Bind(7, std::int64_t{1});
    head_.Bind(8, "方立群").Bind(9, "吕静仪").Bind(10, "管理员");
    head_.Run();
  }

  void SaveLine(const std::string& number, const PlainLine& line) {
    const Line& text = *line.texts;
    const std::string& code = text[receipt::kCode - 1];
    const std::string& unit = text[receipt::kUnit - 1];
    const std::string& batch = text[receipt::kBatch - 1];
    const double received = static_cast<double>(line.ratio) * line.quantity;
    line_.Bind(1, number).Bind(2, code).Bind(3, text[receipt::kName - 1]).Bind(4, text[receipt::kSpecification - 1]);
    line_.Bind(5, unit).Bind(6, text[receipt::kOrigin - 1]).Bind(7, line.wholesale).Bind(8, line.quantity);
    line_.Bind(9, line.price).Bind(10, line.amount).Bind(11, batch).Bind(12, line.expiry).Bind(13, line.ratio);
    line_.Bind(14, line.retail).Bind(15, line.unit_price);
    line_.Run();

    find_batch_.Bind(1, code).Bind(2, batch);
    const bool known = find_batch_.Step();
    const std::int64_t id = known ? find_batch_.Whole(0) : 0;
    find_batch_.Reset();
    if (known) {
      add_to_batch_.Bind(1, received).Bind(2, id).Run();
    } else {
      new_batch_.Bind(1, number).Bind(2, code).Bind(3, batch).Bind(4, line.expiry).Bind(5, received);
      new_batch_.Bind(6, line.unit_price).Bind(7, line.wholesale).Bind(8, "2026-03-01 00:00:00.000");
      new_batch_.Run();
    }
    counter_.Bind(1, line.price / static_cast<double>(line.ratio)).Bind(2, line.wholesale).Bind(3, received);
    counter_.Bind(4, code).Run();

    const std::string reference = "入库单号：" + number;
    log_.Bind(1, code).Bind(2, line.quantity).Bind(3, line.ratio).Bind(4, received).Bind(5, unit);
    log_.Bind(6, std::int64_t{0}).Bind(7, "入库记录").Bind(8, "2026-03-01 10:00:00.000").Bind(9, "西药库");
    log_.Bind(10, reference).Bind(11, "管理员").Run();
  }

  PlainStore store_;
  PlainStatement begin_{store_.get(), "BEGIN IMMEDIATE"};
  PlainStatement commit_{store_.get(), "COMMIT"};
  PlainStatement last_{store_.get(), "SELECT RKDH FROM YK_YPRK WHERE RKRQ BETWEEN ? AND ? ORDER BY id DESC LIMIT 1"};
  PlainStatement head_{store_.get(),
                       "INSERT INTO YK_YPRK(KFMC,RKDH,RKRQ,FPH,FPRQ,GHDW,FKBZ,YSR,FHR,DJR) "
                       "VALUES(?,?,?,?,?,?,?,?,?,?)"};
  PlainStatement line_{store_.get(),
                       "INSERT INTO YK_YPRKMX(RKDH,YPBM,PM,GG,DW,CD,PLJ,RKSL,PFJ,JE,PH,XQ,CLB,LSJ,SJPFJ) "
                       "VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)"};
  PlainStatement find_batch_{store_.get(), "SELECT id FROM YK_CurryPH WHERE YPBM = ? AND PH = ?"};
  PlainStatement new_batch_{store_.get(),
                            "INSERT INTO YK_CurryPH(RKDH,YPBM,PH,XQ,SL,PFJ,PLJ,RKRQ) VALUES(?,?,?,?,?,?,?,?)"};
  PlainStatement add_to_batch_{store_.get(), "UPDATE YK_CurryPH SET SL = SL + ? WHERE id = ?"};
  PlainStatement counter_{store_.get(), "UPDATE YF_YPML SET PFJ = ?, PLJ = ?, YKKCL = YKKCL + ? WHERE YPBM = ?"};
  PlainStatement log_{store_.get(),
                      "INSERT INTO YPCRK(YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY) "
                      "VALUES(?,?,?,?,?,?,?,?,?,?,?)"};
};

/// Both stores must tell the same afterwards, or the two have not done the same work.
bool Agree(const StoreCopy& ours, PlainStore& plain) {
  PlainStore own(ours.File());
  for (const char* sum :
       {"SELECT COUNT(*) || ' ' || MAX(RKDH) FROM YK_YPRK",
        "SELECT COUNT(*) || ' ' || round(SUM(PLJ + RKSL + PFJ + JE + CLB + LSJ + SJPFJ), 2) FROM YK_YPRKMX",
        "SELECT COUNT(*) || ' ' || round(SUM(SL + PFJ + PLJ), 2) || MAX(XQ || RKRQ) FROM YK_CurryPH",
        "SELECT round(SUM(YKKCL + PLJ), 2) FROM YF_YPML",
        "SELECT COUNT(*) || ' ' || round(SUM(SL + CLB + KCL + LB), 2) || MAX(RQ) FROM YPCRK"}) {
    const std::string a = own.Read(sum);
    const std::string b = plain.Read(sum);
    if (a == b) continue;
    std::fprintf(stderr, "%s: %s and %s\n", sum, a.c_str(), b.c_str());
    return false;
  }
  return true;
}

void SaveReceipts(benchmark::State& state, int history) {
  StoreCopy ours;
  StoreCopy theirs;
  if (history > 0) {
    AddHistory(ours, history);
    AddHistory(theirs, history);
  }
  ReceiptDesk desk(ours.Home(), ours.Connect(), BenchClock());
  PlainReceipt plain(theirs.File());
  const int count = static_cast<int>(state.range(0));
  Duel duel(state);
  int round = 0;
  while (duel.NextRound()) {
    // Three receipts of new batches are followed by one that adds to them.
    const std::string batch = "P" + std::to_string(round / 4 * 4 + std::min(round % 4, 2));
    const std::vector<Line> lines = desk.LinesOf(round++ * 37, count, batch);
    std::vector<PlainLine> plain_lines;
    for (const Line& line : lines) plain_lines.push_back(Read(line));
    desk.Write(lines, "FP1");
    bool saved = false;
    duel.Fight([&] { saved = desk.Save(); }, [&] { plain.Save(plain_lines, "FP1"); });
    if (!saved) return state.SkipWithError("the receipt was not saved");
  }
  if (!Agree(ours, plain.store())) return state.SkipWithError("both stores should hold the same");
  duel.Report(1.5, count);
}

void BM_SaveReceipt(benchmark::State& state) {
  SaveReceipts(state, 0);
}
BENCHMARK(BM_SaveReceipt)->Apply(AsDuel)->ArgName("lines")->Arg(1)->Arg(20)->Arg(100)->Arg(1000);

void BM_SaveReceiptAfterMillionMovements(benchmark::State& state) {
  SaveReceipts(state, 1'000'000);
}
BENCHMARK(BM_SaveReceiptAfterMillionMovements)->Apply(AsDuel)->ArgName("lines")->Arg(100)->Iterations(40);

}  // namespace

}  // namespace luming::bench
