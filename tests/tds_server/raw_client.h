#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "tds_server/channel.h"

namespace luming::test {

/// A client that sends what it is told, right or wrong.
class RawClient {
 public:
  explicit RawClient(int port);
  ~RawClient();
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  void SendRaw(std::string_view bytes);
  /// One message in one packet.
  void Send(tds::MessageType type, std::string_view body);
  /// Logs in as sa; the answer's tokens.
  std::string LogIn(std::string_view database, unsigned version = 0x74);
  void SendBatch(std::string_view sql);
  /// The body of the next reply; empty when the server has cut the connection.
  std::string Receive();
  /// True when the server has cut the connection without another byte.
  bool IsCut();

 private:
  int socket_;
  std::unique_ptr<tds::Channel> channel_;
};

/// The message LOGIN7 for user sa without password.
std::string LoginBody(std::string_view database, unsigned version);

}  // namespace luming::test
