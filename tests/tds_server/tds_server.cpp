#include "tds_server/tds_server.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace luming::tds {
namespace {

/// A socket that listens on the loopback interface. The port that it got goes to `port`.
int Listen(int& port) {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int yes = 1;
  setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  socklen_t size = sizeof address;
  auto* plain = reinterpret_cast<sockaddr*>(&address);
  constexpr int kWaiting = 64;
  const bool listens =
      bind(listener, plain, size) == 0 && listen(listener, kWaiting) == 0 && getsockname(listener, plain, &size) == 0;
  if (!listens) {
    close(listener);
    throw Failure(failure::kGeneralProvider, "测试服务器不能使用端口 " + std::to_string(port) + "。");
  }
  port = ntohs(address.sin_port);
  return listener;
}

}  // namespace

TdsServer::TdsServer(std::filesystem::path directory, const Clock& clock, ServerOptions options)
    : rules_{std::move(directory), clock, std::move(options.user), std::move(options.password),
             options.busy_timeout, {}} {
  Start();
}

TdsServer::~TdsServer() {
  Stop();
}

void TdsServer::Start() {
  if (listener_ >= 0) return;
  listener_ = Listen(port_);
  acceptor_ = std::thread([this] { Accept(); });
}

void TdsServer::Stop() {
  if (listener_ < 0) return;
  shutdown(listener_, SHUT_RDWR);
  acceptor_.join();
  close(listener_);
  listener_ = -1;
  CutAll();
}

void TdsServer::CutAll() {
  {
    const std::lock_guard lock(mutex_);
    for (Client& client : clients_) client.session.Shutdown();
  }
  Forget(true);
}

void TdsServer::Forget(bool all) {
  std::list<Client> gone;
  {
    const std::lock_guard lock(mutex_);
    for (auto client = clients_.begin(); client != clients_.end();) {
      const auto next = std::next(client);
      if (all || client->session.IsOver()) gone.splice(gone.end(), clients_, client);
      client = next;
    }
  }
  for (Client& client : gone) client.thread.join();
}

void TdsServer::Accept() {
  for (;;) {
    const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) return;
    const int yes = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    Forget(false);
    const std::lock_guard lock(mutex_);
    Client& client = clients_.emplace_back(socket, rules_);
    client.thread = std::thread([&client] { client.session.Run(); });
  }
}

}  // namespace luming::tds
