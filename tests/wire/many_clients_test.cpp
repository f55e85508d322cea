#include <algorithm>
#include <cstdio>
#include <iostream>
#include <thread>

#include "app/store_check.h"
#include "support/store_test.h"
#include "tds_server/tds_server.h"
#include "util/text.h"

namespace luming {
namespace {

/// What one workstation told.
struct Told {
  int status = -1;
  std::vector<std::string> lines;
};

/// Eight workstations that save receipts and returns of the same batches at once.
class ManyClientsTest : public StoreTest {
 protected:
  static constexpr int kClients = 8;
  static constexpr int kDocuments = 16;  ///< of each, half of them receipts
  static constexpr int kLines = 3;

  ManyClientsTest() {
    // Stock for the returns, with which counter, batch and log agree from the start.
    for (const char* code : {"100001", "100002", "100003"}) {
      const std::string drug = code;
      Run("Update YF_YPML Set YKKCL=1000 Where YPBM='" + drug + "'");
      Run("Insert Into YK_CurryPH(RKDH,YPBM,PH,SL,PFJ,PLJ,RKRQ) Values('0','" + drug +
          "','共用批',1000,1,1,'2026-02-01')");
      Run("Insert Into YPCRK(YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY) Values('" + drug +
          "',1000,1,1000,'盒',0,'期初','2026-02-01','西药库','','管理员')");
    }
    app.Cn->Close();
  }

  Told RunClient(const std::string& address) {
    Told told;
    const std::string command = std::string(LUMING_BUSY_CLIENT) + " '" + directory.Path().string() + "' '" + address +
                                "' " + std::to_string(kDocuments);
    std::FILE* out = popen(command.c_str(), "r");
    if (!out) return told;
    char line[1024];
    while (std::fgets(line, sizeof line, out)) told.lines.push_back(TrimRight(Replace(line, "\n", "")));
    told.status = pclose(out);
    return told;
  }

  void WorkTogether(const std::string& address) {
    std::vector<Told> told(kClients);
    std::vector<std::thread> clients;
    for (Told& one : told) clients.emplace_back([&] { one = RunClient(address); });
    for (std::thread& client : clients) client.join();
    for (const Told& one : told) {
      EXPECT_EQ(one.status, 0) << Join(one.lines, "\n");
      EXPECT_EQ(std::count_if(one.lines.begin(), one.lines.end(),
                              [](const std::string& line) { return line.starts_with("saved "); }),
                kDocuments);
    }
    Report(told);
    Check();
  }

  // Measured by whoever reads it; nothing depends on it.
  void Report(const std::vector<Told>& told) {
    std::vector<double> times;
    int failed = 0;
    for (const Told& one : told) {
      for (const std::string& line : one.lines) {
        if (line.starts_with("failed")) ++failed;
        if (line.starts_with("saved")) times.push_back(std::stod(line.substr(line.rfind(' '))));
      }
    }
    std::sort(times.begin(), times.end());
    if (times.empty()) return;
    std::cout << times.size() << " documents, median " << times[times.size() / 2] << " ms, longest " << times.back()
              << " ms, " << failed << " attempts failed\n";
  }

  void Check() {
    LocalConnection store(directory.Path(), clock);
    store.Open(app.ConnStr);
    const auto number = [&](const std::string& sql) { return store.Execute(sql).Field(0).NumberOr(0); };
    constexpr int kOfEach = kClients * kDocuments / 2;
    EXPECT_EQ(number("Select COUNT(*) From YK_YPRK"), kOfEach);
    EXPECT_EQ(number("Select COUNT(*) From YK_TYDJ"), kOfEach);
    EXPECT_EQ(number("Select COUNT(*) From YK_YPRKMX"), kOfEach * kLines);
    EXPECT_EQ(number("Select COUNT(*) From YK_TYDJMX"), kOfEach * kLines);
    EXPECT_EQ(number("Select COUNT(*) From YPCRK"), kLines + 2 * kOfEach * kLines);
    EXPECT_EQ(number("Select COUNT(*) From YK_YPRK a Where (Select COUNT(*) From YK_YPRKMX b Where b.RKDH=a.RKDH)<>3"),
              0);
    EXPECT_EQ(number("Select COUNT(*) From YK_TYDJ a Where (Select COUNT(*) From YK_TYDJMX b Where b.TYDH=a.TYDH)<>3"),
              0);
    EXPECT_EQ(number("Select SUM(YKKCL) From YF_YPML"),
              3000 + number("Select SUM(RKSL*CLB) From YK_YPRKMX") - number("Select SUM(TKSL*CLB) From YK_TYDJMX"));
    EXPECT_TRUE(FindDisagreements(store).empty()) << "counter, batches and log";
    // This engine lets one transaction write at a time, so that neither numbers nor batches are taken twice.
    EXPECT_EQ(number("Select COUNT(DISTINCT RKDH) From YK_YPRK"), kOfEach);
    EXPECT_EQ(number("Select COUNT(*) From YK_CurryPH"), kLines);
  }
};

TEST_F(ManyClientsTest, AddUpOnTheEmbeddedStore) {
  WorkTogether("Provider=sqloledb;Data Source=(localdb);Initial Catalog=lumndata;User ID=sa;Password=;");
}

TEST_F(ManyClientsTest, AddUpOverTheWire) {
  tds::TdsServer server(directory.Path(), clock);
  WorkTogether("Provider=sqloledb;Data Source=127.0.0.1," + std::to_string(server.Port()) +
               ";Initial Catalog=lumndata;User ID=sa;Password=;");
}

}  // namespace
}  // namespace luming
