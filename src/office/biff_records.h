#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace luming {

/// Bytes of the binary workbook format: little-endian numbers and its two kinds of text.
class BiffBytes {
 public:
  template <class Number>
  BiffBytes& Put(Number value) {
    static_assert(std::is_integral_v<Number>);
    const auto bits = static_cast<std::make_unsigned_t<Number>>(value);
    for (std::size_t i = 0; i < sizeof(Number); ++i) bytes_.push_back(static_cast<char>(bits >> (8 * i) & 0xFF));
    return *this;
  }
  BiffBytes& U8(unsigned value) { return Put(static_cast<std::uint8_t>(value)); }
  BiffBytes& U16(unsigned value) { return Put(static_cast<std::uint16_t>(value)); }
  BiffBytes& U32(std::uint32_t value) { return Put(value); }
  BiffBytes& Double(double value);
  /// A text with its count of UTF-16 units in one byte (at most 255) or in two.
  BiffBytes& ShortText(std::string_view utf8);
  BiffBytes& LongText(std::string_view utf8);

  const std::string& bytes() const { return bytes_; }
  void Clear() { bytes_.clear(); }

 private:
  std::string bytes_;
};

/// A stream of records.
class BiffStream {
 public:
  /// A record holds so many bytes; what is longer goes on in CONTINUE records.
  static constexpr std::size_t kMostBytes = 8224;

  void Record(std::uint16_t id, const BiffBytes& body) { Record(id, body.bytes()); }
  void Record(std::uint16_t id, std::string_view body = {});  ///< at most kMostBytes
  std::size_t Position() const { return bytes_.size(); }
  /// Overwrites four bytes that were written as a placeholder.
  void Patch(std::size_t position, std::uint32_t value);
  std::string Take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

}  // namespace luming
