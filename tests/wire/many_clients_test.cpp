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

/// Eight workstations that save receipts and returns of the same batches at once, or two that confirm the same notes.
class ManyClientsTest : public StoreTest {
 protected:
  static constexpr int kClients = 8;
  static constexpr int kDocuments = 16;  ///< of each, half of them receipts
  static constexpr int kLines = 3;
  static constexpr const char* kEmbedded =
      "Provider=sqloledb;Data Source=(localdb);Initial Catalog=lumndata;User ID=sa;Password=;";

  static std::string AddressOf(const tds::TdsServer& server) {
    return "Provider=sqloledb;Data Source=127.0.0.1," + std::to_string(server.Port()) +
           ";Initial Catalog=lumndata;User ID=sa;Password=;";
  }

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

  /// @param documents how many, and what with them
  Told RunClient(const std::string& address, const std::string& documents) {
    Told told;
    const std::string command =
        std::string(LUMING_BUSY_CLIENT) + " '" + directory.Path().string() + "' '" + address + "' " + documents;
    std::FILE* out = popen(command.c_str(), "r");
    if (!out) return told;
    char line[1024];
    while (std::fgets(line, sizeof line, out)) told.lines.push_back(TrimRight(Replace(line, "\n", "")));
    told.status = pclose(out);
    return told;
  }

  std::vector<Told> RunClients(int count, const std::string& address, const std::string& documents) {
    std::vector<Told> told(static_cast<std::size_t>(count));
    std::vector<std::thread> clients;
    for (Told& one : told) clients.emplace_back([&] { one = RunClient(address, documents); });
    for (std::thread& client : clients) client.join();
    return told;
  }

  void WorkTogether(const std::string& address) {
    const std::vector<Told> told = RunClients(kClients, address, std::to_string(kDocuments));
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

  /// Two keepers of the storehouse confirm the same notes, each of them over two batches.
  void ConfirmTogether(const std::string& address) {
    constexpr int kKeepers = 2;
    constexpr int kNotes = 20;
    LocalConnection store(directory.Path(), clock);
    store.Open(app.ConnStr);
    store.Execute("Update YK_CurryPH Set SL=995");
    for (const char* code : {"100001", "100002", "100003"}) {
      store.Execute("Insert Into YK_CurryPH(YPBM,PH,XQ,SL,PFJ,PLJ,RKRQ) Values('" + std::string(code) +
                    "','早','2026-12-31',5,1,1,'2026-02-01')");
    }
    for (int note = 1; note <= kNotes; ++note) {
      const std::string number = "N" + std::to_string(note);
      store.Execute("Insert Into YPSLD(SLDH,SLRQ,CKFS,SFTJ,LYDW) Values('" + number + "','2026-02-28',1,1,'西药房')");
      for (const char* code : {"100001", "100002", "100003"}) {
        store.Execute("Insert Into YPSLMX(SLDH,YPBM,DW,SLSL,SFSL,CLB) Values('" + number + "','" + code +
                      "','瓶',7,7,1)");
      }
    }
    for (const Told& one : RunClients(kKeepers, address, std::to_string(kNotes) + " confirm")) {
      EXPECT_EQ(one.status, 0) << Join(one.lines, "\n");
      EXPECT_EQ(std::ranges::count(one.lines, "closed"), kNotes) << Join(one.lines, "\n");
    }
    const auto number = [&](const std::string& sql) { return store.Execute(sql).Field(0).NumberOr(0); };
    EXPECT_EQ(number("Select COUNT(*) From YPSLD Where SFQR=1"), kNotes);
    EXPECT_EQ(number("Select COUNT(*) From YPSLMX Where LSJ Is Null"), 0);
    EXPECT_EQ(number("Select SUM(YKKCL) From YF_YPML"), 3000 - 3 * 7 * kNotes);
    EXPECT_EQ(number("Select SUM(SFSL) From YPSLMX"), 3 * 7 * kNotes);
    EXPECT_EQ(number("Select COUNT(*) From YPCRK Where LB=1"), 3 * kNotes);
    EXPECT_TRUE(FindDisagreements(store).empty()) << "counter, batches and log";
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
  WorkTogether(kEmbedded);
}

TEST_F(ManyClientsTest, AddUpOverTheWire) {
  tds::TdsServer server(directory.Path(), clock);
  WorkTogether(AddressOf(server));
}

TEST_F(ManyClientsTest, MoveANoteOnceThatTwoConfirmOnTheEmbeddedStore) {
  ConfirmTogether(kEmbedded);
}

TEST_F(ManyClientsTest, MoveANoteOnceThatTwoConfirmOverTheWire) {
  tds::TdsServer server(directory.Path(), clock);
  ConfirmTogether(AddressOf(server));
}

}  // namespace
}  // namespace luming
