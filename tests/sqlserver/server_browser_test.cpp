#include "sqlserver/server_browser.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <thread>

#include "util/ansi_text.h"

namespace luming {
namespace {

using Names = std::vector<std::string>;

std::string Answer(const std::string& text) {
  return std::string("\x05") + static_cast<char>(text.size() & 0xFF) + static_cast<char>(text.size() >> 8) + text;
}

TEST(ServerBrowserTest, AnswersNameInstancesAsADataSourceTakesThem) {
  EXPECT_EQ(ServersOf(Answer("ServerName;SQL1;InstanceName;MSSQLSERVER;IsClustered;No;Version;10.0.1600.22;tcp;1433;;"
                             "ServerName;SQL1;InstanceName;HIS;IsClustered;No;Version;15.0.2000.5;tcp;50123;np;"
                             "\\\\SQL1\\pipe\\MSSQL$HIS\\sql\\query;;")),
            (Names{"SQL1", "SQL1\\HIS"}));
  EXPECT_EQ(ServersOf(Answer(ToAnsi("ServerName;药库;InstanceName;MSSQLSERVER;;"))), Names{"药库"});
  EXPECT_EQ(ServersOf(Answer("servername;A;Version;;InstanceName;I;;")), Names{"A\\I"});
  EXPECT_EQ(ServersOf(Answer("ServerName;A;;ServerName;B;;")), (Names{"A", "B"}));
}

TEST(ServerBrowserTest, WhatIsNoAnswerNamesNothing) {
  const std::string good = Answer("ServerName;SQL1;InstanceName;HIS;;");
  for (std::size_t size = 0; size < good.size(); ++size) EXPECT_TRUE(ServersOf(good.substr(0, size)).empty()) << size;
  EXPECT_TRUE(ServersOf(good + "x").empty());
  EXPECT_TRUE(ServersOf("\x04" + good.substr(1)).empty());
  for (const char* text :
       {"", ";", ";;;;", "ServerName", "ServerName;", "InstanceName;HIS;;", "ServerName;;InstanceName;X;;",
        "ServerName;a b;;", "ServerName;a\nb;;", "ServerName;a\\b;;", "ServerName;A;InstanceName;b c;;"}) {
    EXPECT_TRUE(ServersOf(Answer(text)).empty()) << text;
  }
  EXPECT_TRUE(ServersOf(Answer("ServerName;" + std::string(200, 'A') + ";;")).empty());
  std::string flood;
  for (int i = 0; i < 4000; ++i) flood += "ServerName;S" + std::to_string(i) + ";;";
  EXPECT_LE(ServersOf(Answer(flood)).size(), 500U);
}

/// A browser on this machine that sends prepared datagrams for the first question.
class FakeBrowser {
 public:
  explicit FakeBrowser(Names datagrams) : datagrams_(std::move(datagrams)), socket_(::socket(AF_INET, SOCK_DGRAM, 0)) {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address_;
    ::bind(socket_, reinterpret_cast<sockaddr*>(&address_), size);
    ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address_), &size);
    thread_ = std::thread([this] { Serve(); });
  }
  ~FakeBrowser() {
    thread_.join();
    ::close(socket_);
  }

  BrowserPlace Place() const { return {"127.0.0.1", false, ntohs(address_.sin_port)}; }
  char question = 0;

 private:
  void Serve() {
    sockaddr_in client{};
    socklen_t size = sizeof client;
    if (::recvfrom(socket_, &question, 1, 0, reinterpret_cast<sockaddr*>(&client), &size) != 1) return;
    for (const std::string& datagram : datagrams_) {
      ::sendto(socket_, datagram.data(), datagram.size(), 0, reinterpret_cast<sockaddr*>(&client), size);
    }
  }

  Names datagrams_;
  int socket_;
  sockaddr_in address_{};
  std::thread thread_;
};

TEST(ServerBrowserTest, AnswersAreGatheredForABoundedTime) {
  const auto start = std::chrono::steady_clock::now();
  {
    FakeBrowser one({Answer("ServerName;B;InstanceName;HIS;;"), "garbage", "", Answer("ServerName;A;;")});
    FakeBrowser other({Answer("ServerName;A;;")});
    const std::vector<BrowserPlace> places = {one.Place(), other.Place(), {"no address"}};
    EXPECT_EQ(AskBrowsers(places, std::chrono::milliseconds(300)), (Names{"A", "B\\HIS"}));
    EXPECT_EQ(one.question, 0x03) << "a single machine is asked in its own way";
  }
  EXPECT_TRUE(AskBrowsers({{"127.0.0.1", false, 9}}, std::chrono::milliseconds(100)).empty());
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
  EXPECT_FALSE(PlacesOfNetwork().empty());
}

}  // namespace
}  // namespace luming
