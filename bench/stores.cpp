#include "stores.h"

#include "app/store_maker.h"
#include "localdb/local_connection.h"
#include "plain_store.h"

namespace luming::bench {

namespace {

constexpr const char* kName = "lumndata";
constexpr const char* kConnection = "Data Source=(localdb);Initial Catalog=lumndata;";

/// The years before the demonstration's first receipt, row by row in the order of their days.
constexpr const char* kHistory =
    "INSERT INTO YK_YPRKMX(RKDH, YPBM, PM, GG, DW, CD, PLJ, RKSL, PFJ, JE, PH, XQ, CLB, LSJ, SJPFJ)"
    " SELECT strftime('%Y%m%d', '2016-01-01', (n * 3500 / total) || ' days') || printf('%04d', n / 20 % 40 + 1), YPBM,"
    "  YPMC, GG, DW, SCCJ, PLJ, 2.0, PFJ, 2 * PFJ, 'H' || n / 5000, '2027-09-30 00:00:00.000', CAST(CLB AS INTEGER),"
    "  LSJ, PFJ FROM past JOIN drug ON drug.place = n * 7919 % (SELECT COUNT(*) FROM drug) ORDER BY n;"
    "INSERT INTO YPCRK(YPBM, SL, CLB, KCL, DW, LB, MS, RQ, KFBM, BZ, CZY)"
    " SELECT YPBM, 2.0, 1, 2.0, DW, n % 2, CASE n % 2 WHEN 0 THEN '入库记录' ELSE '药库领药到 内科' END,"
    "  strftime('%Y-%m-%d 09:30:00.000', '2016-01-01', (n * 3500 / total) || ' days'), '西药库', '单号：' || n / 20,"
    "  '管理员' FROM past JOIN drug ON drug.place = n * 7919 % (SELECT COUNT(*) FROM drug) ORDER BY n;";

}  // namespace

const Clock& BenchClock() {
  static const FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  return clock;
}

const std::filesystem::path& DemoHome() {
  static const TempDirectory directory;
  static const std::filesystem::path home = [] {
    StoreRequest request;
    request.directory = directory / "demo";
    request.data = LUMING_DATABASE_DIR;
    request.demo = true;
    MakeApplicationDirectory(request, BenchClock());
    return request.directory;
  }();
  return home;
}

StoreCopy::StoreCopy() {
  std::filesystem::copy(DemoHome(), directory_.Path(), std::filesystem::copy_options::recursive);
}

std::filesystem::path StoreCopy::File() const {
  return StorePath(Home(), kName);
}

std::unique_ptr<Connection> StoreCopy::Connect() const {
  auto connection = std::make_unique<LocalConnection>(Home(), BenchClock());
  connection->Open(kConnection);
  return connection;
}

void AddHistory(const StoreCopy& store, int rows) {
  PlainStore plain(store.File());
  plain.Run("PRAGMA cache_size = -200000; BEGIN;");
  plain.Run("CREATE TEMP TABLE drug AS SELECT *, ROW_NUMBER() OVER (ORDER BY YPBM) - 1 AS place FROM YF_YPML;");
  plain.Run("CREATE UNIQUE INDEX temp.drug_place ON drug(place);");
  plain.Run(
      "CREATE TEMP TABLE past AS WITH RECURSIVE counted(n) AS (SELECT 0 UNION ALL SELECT n + 1 FROM counted"
      " WHERE n + 1 < " +
      std::to_string(rows) + ") SELECT n, " + std::to_string(rows) + " AS total FROM counted;");
  plain.Run(kHistory);
  plain.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE);");
}

void GrowCatalogue(const StoreCopy& store, int drugs) {
  PlainStore plain(store.File());
  plain.Run("BEGIN; CREATE TEMP TABLE model AS SELECT *, ROW_NUMBER() OVER (ORDER BY YPBM) - 1 AS place FROM YF_YPML;");
  plain.Run("CREATE UNIQUE INDEX temp.model_place ON model(place);");
  const std::string columns =
      plain.Read("SELECT group_concat(name) FROM pragma_table_info('YF_YPML') WHERE name<>'YPBM'");
  plain.Run(
      "WITH RECURSIVE counted(n) AS (SELECT COUNT(*) FROM model UNION ALL SELECT n + 1 FROM counted WHERE n + 1 < " +
      std::to_string(drugs) + ") INSERT INTO YF_YPML(YPBM," + columns + ") SELECT 900000000 + n," + columns +
      " FROM counted JOIN model ON place = n % (SELECT COUNT(*) FROM model);");
  plain.Run("COMMIT; PRAGMA wal_checkpoint(TRUNCATE);");
}

}  // namespace luming::bench
