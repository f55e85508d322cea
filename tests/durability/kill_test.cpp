#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "app/store_check.h"
#include "localdb/collation.h"
#include "localdb/local_connection.h"
#include "support/store_test.h"
#include "util/text.h"

namespace luming {
namespace {

/// A program that saves receipts, with what it tells.
class Saver {
 public:
  Saver(const std::filesystem::path& home, int seed) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    told_ = ends[0];
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    std::vector<std::string> words = {LUMING_RECEIPT_SAVER, home.string(), std::to_string(seed)};
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (posix_spawn(&process_, LUMING_RECEIPT_SAVER, &actions, nullptr, arguments.data(), environ) != 0) process_ = 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
  }
  ~Saver() {
    Kill();
    if (told_ >= 0) close(told_);
  }
  Saver(const Saver&) = delete;
  Saver& operator=(const Saver&) = delete;

  /// Waits for its first word: its screen is open, the first save begins.
  bool WaitUntilReady() {
    char bytes[16];
    const ssize_t count = read(told_, bytes, sizeof bytes);
    if (count > 0) text_.append(bytes, static_cast<std::size_t>(count));
    return count > 0;
  }

  /// False when it had ended by itself already.
  bool Kill() {
    if (process_ <= 0) return false;
    kill(process_, SIGKILL);
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = 0;
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  }

  /// Everything it told before it was killed, line by line.
  std::vector<std::string> Told() {
    char bytes[4096];
    for (ssize_t count = 0; (count = read(told_, bytes, sizeof bytes)) > 0;) {
      text_.append(bytes, static_cast<std::size_t>(count));
    }
    // What stands behind the last line end was cut off in the middle.
    text_.resize(text_.rfind('\n') + 1);
    return Split(text_, "\n");
  }

 private:
  pid_t process_ = 0;
  int told_ = -1;
  std::string text_;
};

/// What is known to be saved: the number of lines of each receipt.
using Receipts = std::map<std::string, int>;

class KillTest : public StoreTest {
 protected:
  static constexpr int kDrugs = 40;

  KillTest() {
    // Stock that no batch and no movement accounts for would hide what a killed save leaves.
    Run("Update YF_YPML Set YKKCL=0");
    for (int i = 3; i < kDrugs; ++i) {
      const std::string code = std::to_string(100001 + i);
      Run("Insert Into YF_YPML(YPBM,YPMC,GG,DW,ZXDW,CLB,LSJ,CLLSJ,PFJ,PLJ,YKKCL,SCCJ,SFXM) Values('" + code +
          "','药品" + code + "','0.1g','盒','片'," + std::to_string(i % 12 + 1) +
          ",12,1,8.4,9.6,0,'望川制药','西药费')");
    }
    app.Cn->Close();
  }

  /// Takes over what the program told. Gives the receipt that was being saved when it was killed, if there was one.
  std::string TakeOver(const std::vector<std::string>& told, Receipts& saved) {
    std::string begun;
    int lines = 0;
    for (const std::string& line : told) {
      const std::vector<std::string> words = Split(line, " ");
      if (words.size() == 3) {
        begun = words[1];
        lines = std::stoi(words[2]);
      } else if (line == "saved") {
        saved[begun] = lines;
        begun.clear();
      }
    }
    return begun;
  }

  std::map<std::string, int> Counts(Connection& store, const std::string& sql) {
    std::map<std::string, int> counts;
    for (Recordset rows = store.Execute(sql); !rows.Eof(); rows.MoveNext()) {
      counts[rows.Field(0).Text()] += std::stoi(rows.Field(1).Text());
    }
    return counts;
  }

  /// Opens the store anew and holds heads, lines, counter, batches and log against each other and against what is known
  /// to be saved.
  void Check(Receipts& saved, const std::string& begun) {
    LocalConnection store(directory.Path(), clock);
    store.Open(app.ConnStr);
    const Receipts heads = Counts(store, "Select RKDH,FPH From YK_YPRK");
    if (heads.contains(begun)) saved[begun] = heads.at(begun);  // committed, but killed before it could tell
    ASSERT_EQ(heads, saved);
    ASSERT_EQ(Counts(store, "Select RKDH,Count(*) From YK_YPRKMX Group By RKDH"), saved);
    Receipts logged;
    for (const auto& [number, lines] : saved) logged["入库单号：" + number] = lines;
    ASSERT_EQ(Counts(store, "Select BZ,Count(*) From YPCRK Group By BZ"), logged);
    ASSERT_TRUE(FindDisagreements(store).empty());
    ASSERT_EQ(store.Execute("Select Sum(RKSL*CLB) From YK_YPRKMX").Field(0).NumberOr(0),
              store.Execute("Select Sum(KCL) From YPCRK").Field(0).NumberOr(0));
  }

  std::string FileCheck() {
    sqlite3* store = nullptr;
    sqlite3_open(StorePath(directory.Path(), "lumndata").c_str(), &store);
    localdb::RegisterCollation(store);
    std::string result;
    const auto take = [](void* text, int, char** values, char**) {
      *static_cast<std::string*>(text) += values[0];
      return 0;
    };
    sqlite3_exec(store, "PRAGMA integrity_check", take, &result, nullptr);
    sqlite3_close(store);
    return result;
  }
};

TEST_F(KillTest, LosesNothingCommittedAndKeepsNothingElse) {
  constexpr int kKills = 110;
  constexpr int kLongestMicroseconds = 40'000;
  std::mt19937 random(20260301);
  Receipts saved;
  int killed_in_a_save = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    Saver saver(directory.Path(), kill);
    // Now and then it dies while it starts, which is when it takes in the log that its forerunner left.
    const bool ready = kill % 10 == 9 || saver.WaitUntilReady();
    ASSERT_TRUE(ready) << "at kill " << kill;
    usleep(random() % kLongestMicroseconds);
    ASSERT_TRUE(saver.Kill()) << "ended by itself at kill " << kill;
    const std::string begun = TakeOver(saver.Told(), saved);
    if (!begun.empty()) ++killed_in_a_save;
    ASSERT_NO_FATAL_FAILURE(Check(saved, begun)) << "at kill " << kill;
  }
  EXPECT_EQ(FileCheck(), "ok");
  // Had most kills hit other moments, the test would tell little.
  EXPECT_GT(killed_in_a_save, kKills / 3);
  EXPECT_GT(saved.size(), std::size_t{kKills} / 3);
}

}  // namespace
}  // namespace luming
