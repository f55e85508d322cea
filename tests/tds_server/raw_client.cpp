#include "tds_server/raw_client.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <cerrno>

#include "tds_server/wire.h"

namespace luming::test {

RawClient::RawClient(int port) : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  channel_ = std::make_unique<tds::Channel>(socket_);
  // A test that waits for an answer which never comes fails instead of standing still.
  const timeval patience{5, 0};
  setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  if (connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) channel_->Shutdown();
}

RawClient::~RawClient() = default;

void RawClient::SendRaw(std::string_view bytes) {
  channel_->SendRaw(bytes);
}

void RawClient::Send(tds::MessageType type, std::string_view body) {
  const std::size_t size = body.size() + 8;
  std::string packet = {static_cast<char>(type), 1, static_cast<char>(size >> 8), static_cast<char>(size & 0xff)};
  packet.append(4, '\0');
  packet += body;
  SendRaw(packet);
}

std::string RawClient::LogIn(std::string_view database, unsigned version) {
  Send(tds::MessageType::kLogin, LoginBody(database, version));
  return Receive();
}

void RawClient::SendBatch(std::string_view sql) {
  tds::Writer body;
  body.U32(4);
  body.Text(sql);
  Send(tds::MessageType::kBatch, body.bytes());
}

std::string RawClient::Receive() {
  const std::optional<tds::Message> message = channel_->Read();
  return message ? message->body : "";
}

bool RawClient::IsCut() {
  char byte = 0;
  const ssize_t got = recv(socket_, &byte, 1, 0);
  return got == 0 || (got < 0 && errno != EAGAIN);
}

std::string LoginBody(std::string_view database, unsigned version) {
  constexpr std::size_t kFixedSize = 94;
  const std::string user = tds::Utf16Bytes("sa");
  const std::string name = tds::Utf16Bytes(database);
  tds::Writer body;
  body.U32(static_cast<std::uint32_t>(kFixedSize + user.size() + name.size()));
  body.U32(version << 24);
  body.U32(4096);
  body.Raw(std::string(24, '\0'));
  for (std::size_t place = 36; place < kFixedSize; place += 4) {
    std::size_t offset = kFixedSize;
    std::size_t count = 0;
    if (place == 40) count = user.size() / 2;
    if (place == 68) {
      offset += user.size();
      count = name.size() / 2;
    }
    body.U16(static_cast<unsigned>(offset));
    body.U16(static_cast<unsigned>(count));
  }
  body.bytes().resize(kFixedSize);
  body.Raw(user);
  body.Raw(name);
  return body.bytes();
}

}  // namespace luming::test
