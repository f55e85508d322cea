#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "localdb/local_connection.h"
#include "support/temp_directory.h"
#include "tds_server/odbc_client.h"
#include "tds_server/tds_server.h"

namespace luming::test {
namespace {

using std::chrono_literals::operator""ms;
using std::chrono_literals::operator""s;
using tds::FaultKind;

/// A server over a store with one table of three rows, the real driver, and a connection beside.
class FaultsTest : public testing::Test {
 protected:
  FaultsTest() {
    CreateStore(directory_.Path(), "s");
    beside_.Open("Data Source=(localdb);Initial Catalog=s;");
    beside_.Execute(
        "Create Table T(a int not null primary key) Insert into T Values(1) Insert into T Values(2) "
        "Insert into T Values(3)");
    EXPECT_EQ(client_.Open(server_.Port(), "s"), "");
  }

  int Rows() { return beside_.Execute("Select a From T").RecordCount(); }
  /// A transaction that has written one row.
  void BeginAndWrite(OdbcClient& client) {
    EXPECT_EQ(client.Run("Begin Transaction").error, 0);
    EXPECT_EQ(client.Run("Insert into T Values(10)").error, 0);
  }
  /// Waits until the server has dropped what a cut client left open.
  bool StoreIsFree() {
    try {
      beside_.BeginTrans();
    } catch (const Failure&) {
      return false;
    }
    beside_.RollbackTrans();
    return true;
  }

  TempDirectory directory_;
  FixedClock clock_{DateTime(2026, 3, 1)};
  tds::TdsServer server_{directory_.Path(), clock_, {.password = "密a;b"}};
  LocalConnection beside_{directory_.Path(), clock_};
  OdbcClient client_{"密a;b"};
};

TEST_F(FaultsTest, LoginsAreRefused) {
  OdbcClient wrong_password("x");
  EXPECT_EQ(wrong_password.Open(server_.Port(), "s"), "not open 18456 0");
  OdbcClient other("密a;b");
  EXPECT_EQ(other.Open(server_.Port(), "missing"), "not open 18456 4060 0");
  server_.Misbehave({.kind = FaultKind::kRefuseLogin});
  server_.Misbehave({.kind = FaultKind::kRefuseDatabase});
  EXPECT_EQ(other.Open(server_.Port(), "s"), "not open 18456 0");
  EXPECT_EQ(other.Open(server_.Port(), "s"), "not open 18456 4060 0");
  EXPECT_EQ(other.Open(server_.Port(), "s"), "");
}

TEST_F(FaultsTest, LoginsThatEndInNothing) {
  for (FaultKind kind : {FaultKind::kSilentLogin, FaultKind::kCutLogin, FaultKind::kGarbageLogin}) {
    server_.Misbehave({.kind = kind});
    OdbcClient other("密a;b");
    EXPECT_NE(other.Open(server_.Port(), "s"), "");
    EXPECT_EQ(other.Open(server_.Port(), "s"), "");
  }
}

TEST_F(FaultsTest, CutsBeforeDuringAndAfterAStatement) {
  server_.Misbehave({.kind = FaultKind::kCutBefore, .statement = "INSERT"});
  EXPECT_NE(client_.Run("Insert into T Values(4)").state, "");
  EXPECT_TRUE(client_.IsDead());
  EXPECT_EQ(Rows(), 3);

  OdbcClient second("密a;b");
  ASSERT_EQ(second.Open(server_.Port(), "s"), "");
  server_.Misbehave({.kind = FaultKind::kCutDuring, .statement = "insert", .skip = 1});
  EXPECT_EQ(second.Run("Insert into T Values(4)").error, 0);
  EXPECT_NE(second.Run("Insert into T Values(5)").state, "");
  EXPECT_TRUE(second.IsDead());
  EXPECT_EQ(Rows(), 5);

  OdbcClient third("密a;b");
  ASSERT_EQ(third.Open(server_.Port(), "s"), "");
  server_.Misbehave({.kind = FaultKind::kCutAfter});
  EXPECT_EQ(third.Run("Insert into T Values(6)").counts, std::vector<long>{1});
  EXPECT_NE(third.Run("Select 1").state, "");
  EXPECT_EQ(Rows(), 6);
}

TEST_F(FaultsTest, CutInATransactionRollsItBack) {
  for (FaultKind kind : {FaultKind::kCutBefore, FaultKind::kCutDuring, FaultKind::kCutAfter}) {
    OdbcClient client("密a;b");
    ASSERT_EQ(client.Open(server_.Port(), "s"), "");
    server_.Misbehave({.kind = kind, .statement = "Values(11)"});
    BeginAndWrite(client);
    client.Run("Insert into T Values(11)");
    EXPECT_TRUE(StoreIsFree());
    EXPECT_EQ(Rows(), 3);
  }
  // A commit that is carried out but not answered is kept, one that is not carried out is not.
  OdbcClient client("密a;b");
  ASSERT_EQ(client.Open(server_.Port(), "s"), "");
  server_.Misbehave({.kind = FaultKind::kCutBefore, .statement = "commit"});
  BeginAndWrite(client);
  EXPECT_NE(client.Run("Commit Transaction").state, "");
  EXPECT_TRUE(StoreIsFree());
  EXPECT_EQ(Rows(), 3);
  ASSERT_EQ(client.Open(server_.Port(), "s"), "");
  server_.Misbehave({.kind = FaultKind::kCutDuring, .statement = "commit"});
  BeginAndWrite(client);
  EXPECT_NE(client.Run("Commit Transaction").state, "");
  EXPECT_EQ(Rows(), 4);
}

TEST_F(FaultsTest, CutsInResultsLeaveTheRowsAheadOfThem) {
  server_.Misbehave({.kind = FaultKind::kCutInResult, .rows = 2});
  OdbcOutcome outcome = client_.Run("Select a From T Order By a");
  EXPECT_LE(outcome.rows.size(), 2U);
  EXPECT_TRUE(client_.IsDead());
  OdbcClient second("密a;b");
  ASSERT_EQ(second.Open(server_.Port(), "s"), "");
  server_.Misbehave({.kind = FaultKind::kCutInsideRow, .rows = 2});
  outcome = second.Run("Select a From T Order By a");
  EXPECT_LE(outcome.rows.size(), 2U);
  EXPECT_TRUE(second.IsDead());
}

TEST_F(FaultsTest, SlowAnswersAreCancelledByTheClient) {
  server_.Misbehave({.kind = FaultKind::kSlow, .statement = "Values(4)", .delay = 60s});
  EXPECT_EQ(client_.Run("Insert into T Values(4)", 1).state.substr(0, 2), "HY");
  EXPECT_FALSE(client_.IsDead());
  EXPECT_EQ(client_.Run("Insert into T Values(5)").counts, std::vector<long>{1});
  EXPECT_EQ(Rows(), 4);
  server_.Misbehave({.kind = FaultKind::kSlow, .delay = 50ms});
  EXPECT_EQ(client_.Run("Select 7").rows.at(0).at(0), "7");
}

TEST_F(FaultsTest, SilenceIsLeftByTheClientAlone) {
  server_.Misbehave({.kind = FaultKind::kSilent});
  std::thread rescue([this] {
    std::this_thread::sleep_for(1500ms);
    server_.CutAll();
  });
  EXPECT_NE(client_.Run("Insert into T Values(4)", 1).state, "");
  rescue.join();
  EXPECT_TRUE(client_.IsDead());
  EXPECT_EQ(Rows(), 3);
}

TEST_F(FaultsTest, DeadlocksRollTheTransactionBack) {
  server_.Misbehave({.kind = FaultKind::kDeadlock, .statement = "Values(11)"});
  BeginAndWrite(client_);
  EXPECT_EQ(client_.Run("Insert into T Values(11)").error, 1205);
  EXPECT_FALSE(client_.IsDead());
  EXPECT_EQ(client_.Run("Select @@TRANCOUNT").rows.at(0).at(0), "0");
  EXPECT_EQ(Rows(), 3);
}

TEST_F(FaultsTest, GarbageAndErrorsOfAnyNumber) {
  server_.Misbehave({.kind = FaultKind::kError, .statement = "From T", .times = 2, .number = 1222});
  EXPECT_EQ(client_.Run("Select a From T").error, 1222);
  EXPECT_EQ(client_.Run("Select a From T").error, 1222);
  EXPECT_EQ(client_.Run("Select a From T").rows.size(), 3U);
  server_.Misbehave({.kind = FaultKind::kGarbage});
  EXPECT_NE(client_.Run("Select a From T").state, "");
}

TEST_F(FaultsTest, ServerComesBackOnItsPort) {
  BeginAndWrite(client_);
  server_.Stop();
  EXPECT_NE(client_.Run("Select 1").state, "");
  EXPECT_TRUE(client_.IsDead());
  EXPECT_NE(client_.Open(server_.Port(), "s"), "");
  server_.Start();
  OdbcClient again("密a;b");
  EXPECT_EQ(again.Open(server_.Port(), "s"), "");
  EXPECT_EQ(again.Run("Select a From T").rows.size(), 3U);
}

TEST_F(FaultsTest, WaitForAnothersTransactionEndsInALockTimeout) {
  tds::TdsServer impatient(directory_.Path(), clock_, {.busy_timeout = 100ms});
  OdbcClient second;
  ASSERT_EQ(second.Open(impatient.Port(), "s"), "");
  BeginAndWrite(client_);
  EXPECT_EQ(second.Run("Select a From T").rows.size(), 3U);
  EXPECT_EQ(second.Run("Insert into T Values(20)").error, 1222);
  EXPECT_EQ(client_.Run("Commit Transaction").error, 0);
  EXPECT_EQ(second.Run("Insert into T Values(20)").error, 0);
  EXPECT_EQ(Rows(), 5);
}

TEST_F(FaultsTest, AttentionEndsTheWaitForAnothersTransaction) {
  tds::TdsServer patient(directory_.Path(), clock_, {.busy_timeout = 60s});
  OdbcClient second;
  ASSERT_EQ(second.Open(patient.Port(), "s"), "");
  BeginAndWrite(client_);
  EXPECT_EQ(second.Run("Insert into T Values(20)", 1).state.substr(0, 2), "HY");
  EXPECT_FALSE(second.IsDead());
  EXPECT_EQ(client_.Run("Commit Transaction").error, 0);
  EXPECT_EQ(Rows(), 4) << "the statement that was given up has not run";
  EXPECT_EQ(second.Run("Insert into T Values(20)").error, 0);
}

TEST_F(FaultsTest, EightClientsWriteAtOnce) {
  constexpr int kClients = 8;
  constexpr int kSaves = 20;
  beside_.Execute("Create Table C(a int, n int) Insert into C Values(1,0)");
  std::vector<std::string> wrong(kClients);
  std::vector<std::thread> clients;
  for (int number = 0; number < kClients; ++number) {
    clients.emplace_back([&, number] {
      OdbcClient client("密a;b");
      if (client.Open(server_.Port(), "s") != "") wrong[static_cast<std::size_t>(number)] = "no login";
      for (int save = 0; save < kSaves; ++save) {
        for (const std::string& sql :
             {std::string("Begin Transaction"),
              "Insert into T Values(" + std::to_string(100 + number * kSaves + save) + ")",
              std::string("Update C Set n=n+1 Where a=1"), std::string("Commit Transaction")}) {
          const OdbcOutcome outcome = client.Run(sql);
          if (!outcome.state.empty()) wrong[static_cast<std::size_t>(number)] = sql + ": " + outcome.message;
        }
      }
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(wrong, std::vector<std::string>(kClients));
  EXPECT_EQ(Rows(), 3 + kClients * kSaves);
  EXPECT_EQ(beside_.Execute("Select n From C").Field(0).Long(), kClients * kSaves);
}

}  // namespace
}  // namespace luming::test
