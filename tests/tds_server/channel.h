#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace luming::tds {

enum class MessageType : std::uint8_t {
  kBatch = 0x01,
  kReply = 0x04,
  kAttention = 0x06,
  kLogin = 0x10,
  kPrelogin = 0x12,
};

struct Message {
  MessageType type;
  std::string body;
};

/// A socket that carries messages, each in one or more packets. Owns the socket.
class Channel {
 public:
  explicit Channel(int socket) : socket_(socket) {}
  ~Channel();
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;

  /// Waits for the next message; nothing when the client has gone or sends what is no message.
  std::optional<Message> Read();
  /// True when something has arrived, or the client has gone, before the time is over.
  bool Wait(std::chrono::milliseconds time) const;
  /// Sends a reply, or a part of one that is never to end.
  void Send(std::string_view body, bool whole = true);
  /// Bytes as they are, in no packet.
  void SendRaw(std::string_view bytes);
  void set_packet_size(std::size_t size) { packet_size_ = size; }
  /// Ends the conversation; what waits in Read returns. May be called from another thread.
  void Shutdown();

 private:
  bool ReadExactly(char* bytes, std::size_t count);

  int socket_;
  std::size_t packet_size_ = 4096;
};

}  // namespace luming::tds
