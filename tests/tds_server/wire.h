#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace luming::tds {

/// A message that breaks the protocol; ends its session.
class ProtocolError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Little-endian UTF-16, the protocol's form of all text.
std::string Utf16Bytes(std::string_view utf8);
std::string Utf8Of(std::string_view utf16_bytes);

/// Bytes of a message being made; numbers are little-endian.
class Writer {
 public:
  void U8(unsigned value) { Number(value, 1); }
  void U16(unsigned value) { Number(value, 2); }
  void U32(std::uint32_t value) { Number(value, 4); }
  void U64(std::uint64_t value) { Number(value, 8); }
  void Number(std::uint64_t value, int bytes);
  void Raw(std::string_view bytes) { bytes_ += bytes; }
  void Text(std::string_view utf8) { bytes_ += Utf16Bytes(utf8); }
  /// A text of at most 255 characters behind its count.
  void ShortText(std::string_view utf8);
  /// A text of at most 65535 characters behind its count.
  void LongText(std::string_view utf8);

  const std::string& bytes() const { return bytes_; }
  std::string& bytes() { return bytes_; }

 private:
  std::string bytes_;
};

/// Bytes of a message being read. Reading past the end is a ProtocolError.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  std::uint8_t U8() { return static_cast<std::uint8_t>(Number(1)); }
  std::uint16_t U16() { return static_cast<std::uint16_t>(Number(2)); }
  std::uint32_t U32() { return static_cast<std::uint32_t>(Number(4)); }
  std::uint64_t Number(int bytes);
  std::string_view Raw(std::size_t count);
  std::string_view Rest() { return Raw(bytes_.size() - at_); }
  void MoveTo(std::size_t position);

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;
};

}  // namespace luming::tds
