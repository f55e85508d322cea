#include "tds_server/channel.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>

namespace luming::tds {
namespace {

constexpr std::size_t kHeadSize = 8;
constexpr char kLastPacket = 1;
constexpr std::size_t kLargestMessage = 64U << 20;

bool IsKnown(MessageType type) {
  switch (type) {
    case MessageType::kBatch:
    case MessageType::kReply:
    case MessageType::kAttention:
    case MessageType::kLogin:
    case MessageType::kPrelogin:
      return true;
  }
  return false;
}

}  // namespace

Channel::~Channel() {
  close(socket_);
}

bool Channel::ReadExactly(char* bytes, std::size_t count) {
  while (count > 0) {
    const ssize_t got = recv(socket_, bytes, count, 0);
    if (got <= 0) return false;
    bytes += got;
    count -= static_cast<std::size_t>(got);
  }
  return true;
}

std::optional<Message> Channel::Read() {
  Message message{};
  std::array<char, kHeadSize> head{};
  do {
    if (!ReadExactly(head.data(), head.size())) return std::nullopt;
    message.type = static_cast<MessageType>(head[0]);
    const std::size_t size =
        static_cast<std::size_t>(static_cast<unsigned char>(head[2])) << 8 | static_cast<unsigned char>(head[3]);
    const std::size_t before = message.body.size();
    if (!IsKnown(message.type) || size < kHeadSize || before > kLargestMessage) return std::nullopt;
    message.body.resize(before + size - kHeadSize);
    if (!ReadExactly(message.body.data() + before, size - kHeadSize)) return std::nullopt;
  } while ((head[1] & kLastPacket) == 0);
  return message;
}

bool Channel::Wait(std::chrono::milliseconds time) const {
  pollfd waiting{socket_, POLLIN, 0};
  return poll(&waiting, 1, static_cast<int>(time.count())) != 0;
}

void Channel::Send(std::string_view body, bool whole) {
  const std::size_t room = packet_size_ - kHeadSize;
  std::string packets;
  char number = 1;
  do {
    const std::string_view part = body.substr(0, room);
    body.remove_prefix(part.size());
    const std::size_t size = part.size() + kHeadSize;
    packets += static_cast<char>(MessageType::kReply);
    packets += whole && body.empty() ? kLastPacket : '\0';
    packets += static_cast<char>(size >> 8);
    packets += static_cast<char>(size & 0xff);
    packets.append(2, '\0');
    packets += number++;
    packets += '\0';
    packets += part;
  } while (!body.empty());
  SendRaw(packets);
}

void Channel::SendRaw(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
}

void Channel::Shutdown() {
  shutdown(socket_, SHUT_RDWR);
}

}  // namespace luming::tds
