#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>

#include "localdb/local_connection.h"
#include "tds_server/channel.h"
#include "tds_server/faults.h"
#include "tds_server/login.h"
#include "tds_server/reply.h"

namespace luming::tds {

/// What all sessions of a server share.
struct SessionRules {
  std::filesystem::path directory;
  const Clock& clock;
  std::string user;
  std::string password;
  std::chrono::milliseconds busy_timeout;
  FaultList faults;
};

/// One client's conversation, on a thread of its own, with an embedded connection of its own.
class Session {
 public:
  Session(int socket, SessionRules& rules) : channel_(socket), rules_(rules) {}

  /// Returns when the client has gone or has been cut off; what it left open is rolled back.
  void Run();
  /// Cuts the client off; from any thread.
  void Shutdown();
  bool IsOver() const { return over_; }

 private:
  bool LogIn();
  bool AnswerLogin(const Login& login);
  bool RefuseLogin(const Login& login, int number);
  /// False when the conversation is over.
  bool Serve(const Message& message);
  bool RunText(const std::string& sql);
  /// Runs the text in the engine and sends what it gave, as far as the fault lets it.
  bool RunAndAnswer(const std::string& sql, const std::optional<Fault>& fault);
  bool AnswerError(int number, const std::string& text);
  bool AnswerAttention();
  bool AnswerDeadlock();
  /// False when an attention has come in that time.
  bool WaitUndisturbed(std::chrono::milliseconds time);
  void WaitForEver();

  Channel channel_;
  SessionRules& rules_;
  std::unique_ptr<LocalConnection> store_;
  std::atomic<bool> over_ = false;
};

}  // namespace luming::tds
