#pragma once

#include <filesystem>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "tds_server/faults.h"
#include "tds_server/session.h"

namespace luming::tds {

struct ServerOptions {
  std::string user = "sa";
  std::string password = {};
  std::chrono::milliseconds busy_timeout = LocalConnection::kBusyTimeout;
};

/// A database server for tests, on 127.0.0.1 alone: it speaks the wire protocol of SQL Server (TDS 7.4, without
/// encryption) and runs what it is sent in the embedded engine. A database NAME is the store NAME.db in its directory.
///
///   TdsServer server(directory.Path(), clock);            // runs until it is destroyed
///   connect to "127.0.0.1", server.Port(), user sa, no password
///   server.Misbehave({.kind = FaultKind::kCutBefore, .statement = "Insert into eK_RK"});
class TdsServer {
 public:
  /// Listens when it returns. @param clock what GETDATE() tells; must outlive the server
  /// Failure when there is no port to be had.
  TdsServer(std::filesystem::path directory, const Clock& clock, ServerOptions options = {});
  ~TdsServer();
  TdsServer(const TdsServer&) = delete;
  TdsServer& operator=(const TdsServer&) = delete;

  int Port() const { return port_; }

  /// Adds a fault; the faults that fit a statement are used up in the order in which they came.
  void Misbehave(Fault fault) { rules_.faults.Add(std::move(fault)); }
  /// Forgets the faults that have not come yet and tells how many they were.
  int Behave() { return rules_.faults.Clear(); }

  /// Cuts all clients off and refuses new ones, until Start on the same port.
  void Stop();
  void Start();
  /// Cuts all clients off and takes new ones.
  void CutAll();

 private:
  struct Client {
    Client(int socket, SessionRules& rules) : session(socket, rules) {}
    Session session;
    std::thread thread;
  };

  void Accept();
  void Forget(bool all);

  SessionRules rules_;
  int port_ = 0;  ///< a free one from the first start on
  int listener_ = -1;
  std::thread acceptor_;
  std::mutex mutex_;
  std::list<Client> clients_;
};

}  // namespace luming::tds
