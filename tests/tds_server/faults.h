#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace luming::tds {

/// What the server can be told to do wrong.
enum class FaultKind {
  // At the login.
  kRefuseLogin,     ///< error 18456
  kRefuseDatabase,  ///< error 4060
  kSilentLogin,     ///< takes the connection and never answers
  kCutLogin,        ///< cuts it at the first message
  kGarbageLogin,    ///< answers with bytes that mean nothing
  // At a statement.
  kCutBefore,     ///< cuts the connection and does not run the statement
  kCutDuring,     ///< runs the statement and cuts instead of answering
  kCutAfter,      ///< answers, then cuts
  kCutInResult,   ///< cuts behind a number of rows
  kCutInsideRow,  ///< cuts in the middle of the row behind them
  kSilent,        ///< never answers, not even an attention; does not run the statement
  kSlow,          ///< waits before it runs the statement, which an attention cancels
  kLate,          ///< runs the statement and waits before it answers; an attention cancels the answer alone
  kDeadlock,      ///< error 1205: does not run the statement and rolls the transaction back
  kGarbage,       ///< runs the statement and answers with bytes that mean nothing
  kError,         ///< answers with an error of a given number; does not run the statement
};

/// "cut-before", "refuse-login" …; nothing for a name that is none.
std::optional<FaultKind> FindFaultKind(std::string_view name);

struct Fault {
  FaultKind kind;
  std::string statement = {};  ///< a part of the statement's text, without regard to case; empty: any statement
  int skip = 0;                ///< so many matching statements (or logins) pass first
  int times = 1;               ///< then so many are hit; -1 for all
  int rows = 1;                ///< of kCutInResult and kCutInsideRow
  std::chrono::milliseconds delay = std::chrono::seconds(1);  ///< of kSlow and kLate
  int number = 1222;                                          ///< of kError
};

/// The faults that are still to come. Used by all sessions.
class FaultList {
 public:
  void Add(Fault fault);
  /// Forgets all, and gives the number of those that have not come yet.
  int Clear();
  std::optional<Fault> TakeAtLogin();
  std::optional<Fault> TakeAtStatement(std::string_view sql);

 private:
  std::optional<Fault> Take(bool at_login, std::string_view sql);

  std::mutex mutex_;
  std::vector<Fault> faults_;
};

}  // namespace luming::tds
