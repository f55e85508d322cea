#include "sqlserver/server_browser.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <set>

#include "util/ansi_text.h"
#include "util/text.h"

namespace luming {

namespace {

using Clock = std::chrono::steady_clock;

constexpr char kAskMany = 0x02;
constexpr char kAskOne = 0x03;
constexpr char kAnswer = 0x05;
constexpr std::size_t kAnswerHead = 3;  // the kind and the length of the text in two bytes, low byte first
constexpr std::size_t kLongestName = 128;
constexpr std::size_t kMostServers = 500;
constexpr const char* kDefaultInstance = "MSSQLSERVER";

class Socket {
 public:
  Socket() : handle_(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    const int yes = 1;
    if (handle_ >= 0) ::setsockopt(handle_, SOL_SOCKET, SO_BROADCAST, &yes, sizeof yes);
  }
  ~Socket() {
    if (handle_ >= 0) ::close(handle_);
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  bool IsOpen() const { return handle_ >= 0; }

  void Ask(const BrowserPlace& place) const {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(place.port);
    if (::inet_pton(AF_INET, place.address.c_str(), &address.sin_addr) != 1) return;
    const char question = place.many ? kAskMany : kAskOne;
    ::sendto(handle_, &question, sizeof question, 0, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  }

  /// The next answer; nothing when none came until then. An empty text for an error that a place sent back.
  std::optional<std::string> Receive(Clock::time_point until) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
    pollfd waiting{handle_, POLLIN, 0};
    if (left <= 0 || ::poll(&waiting, 1, static_cast<int>(left)) <= 0) return std::nullopt;
    const ssize_t length = ::recv(handle_, buffer_.data(), buffer_.size(), MSG_DONTWAIT);
    return buffer_.substr(0, length > 0 ? static_cast<std::size_t>(length) : 0);
  }

 private:
  int handle_;
  std::string buffer_ = std::string(65536, '\0');
};

bool IsName(std::string_view text) {
  const auto printable = [](char c) { return static_cast<unsigned char>(c) > ' ' && c != '\\' && c != '\x7f'; };
  return !text.empty() && text.size() <= kLongestName && std::ranges::all_of(text, printable);
}

void AddServer(std::vector<std::string>& servers, const std::string& host, const std::string& instance) {
  if (!IsName(host) || servers.size() >= kMostServers) return;
  if (instance.empty() || EqualsIgnoreCase(instance, kDefaultInstance)) {
    servers.push_back(host);
  } else if (IsName(instance)) {
    servers.push_back(host + "\\" + instance);
  }
}

std::string AddressOf(const sockaddr* address) {
  char text[INET_ADDRSTRLEN] = {};
  const auto* internet = reinterpret_cast<const sockaddr_in*>(address);
  return ::inet_ntop(AF_INET, &internet->sin_addr, text, sizeof text) ? text : "";
}

}  // namespace

std::vector<std::string> ServersOf(std::string_view answer) {
  if (answer.size() < kAnswerHead || answer[0] != kAnswer) return {};
  const auto byte = [&](std::size_t at) { return static_cast<std::size_t>(static_cast<unsigned char>(answer[at])); };
  if (answer.size() - kAnswerHead != (byte(1) | byte(2) << 8U)) return {};
  const std::vector<std::string> words = Split(FromAnsi(answer.substr(kAnswerHead)), ";");
  std::vector<std::string> servers;
  std::string host;
  std::string instance;
  for (std::size_t i = 0; i + 1 < words.size(); ++i) {
    if (EqualsIgnoreCase(words[i], "ServerName")) {
      AddServer(servers, host, instance);
      host = words[++i];
      instance.clear();
    } else if (EqualsIgnoreCase(words[i], "InstanceName")) {
      instance = words[++i];
    }
  }
  AddServer(servers, host, instance);
  return servers;
}

std::vector<BrowserPlace> PlacesOfNetwork() {
  std::vector<BrowserPlace> places = {{"127.0.0.1", false}};
  ifaddrs* first = nullptr;
  if (::getifaddrs(&first) != 0) return places;
  for (const ifaddrs* one = first; one; one = one->ifa_next) {
    const bool broadcasts = one->ifa_addr && one->ifa_addr->sa_family == AF_INET && (one->ifa_flags & IFF_UP) != 0 &&
                            (one->ifa_flags & IFF_BROADCAST) != 0 && one->ifa_broadaddr;
    if (broadcasts) places.push_back({AddressOf(one->ifa_broadaddr)});
  }
  ::freeifaddrs(first);
  return places;
}

std::vector<std::string> AskBrowsers(const std::vector<BrowserPlace>& places, std::chrono::milliseconds patience) {
  const Clock::time_point until = Clock::now() + patience;
  Socket socket;
  if (!socket.IsOpen()) return {};
  for (const BrowserPlace& place : places) socket.Ask(place);
  std::set<std::string> found;
  while (const std::optional<std::string> answer = socket.Receive(until)) {
    for (const std::string& server : ServersOf(*answer)) {
      if (found.size() < kMostServers) found.insert(server);
    }
  }
  return {found.begin(), found.end()};
}

}  // namespace luming
