#include "tds_server/wire.h"

#include "util/utf16.h"

namespace luming::tds {

std::string Utf16Bytes(std::string_view utf8) {
  Writer out;
  for (const char16_t unit : ToUtf16(utf8)) out.U16(unit);
  return std::move(out.bytes());
}

std::string Utf8Of(std::string_view utf16_bytes) {
  Reader reader(utf16_bytes);
  std::u16string units;
  for (std::size_t left = utf16_bytes.size() / 2; left > 0; --left) units += static_cast<char16_t>(reader.U16());
  return FromUtf16(units);
}

void Writer::Number(std::uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i, value >>= 8) bytes_ += static_cast<char>(value & 0xff);
}

void Writer::ShortText(std::string_view utf8) {
  const std::string text = Utf16Bytes(utf8).substr(0, 2 * 255);
  U8(static_cast<unsigned>(text.size() / 2));
  Raw(text);
}

void Writer::LongText(std::string_view utf8) {
  const std::string text = Utf16Bytes(utf8).substr(0, 2 * 65535);
  U16(static_cast<unsigned>(text.size() / 2));
  Raw(text);
}

std::uint64_t Reader::Number(int bytes) {
  std::uint64_t value = 0;
  int shift = 0;
  for (char byte : Raw(static_cast<std::size_t>(bytes))) {
    value |= std::uint64_t{static_cast<unsigned char>(byte)} << shift;
    shift += 8;
  }
  return value;
}

std::string_view Reader::Raw(std::size_t count) {
  if (count > bytes_.size() - at_) throw ProtocolError("a message ends too early");
  at_ += count;
  return bytes_.substr(at_ - count, count);
}

void Reader::MoveTo(std::size_t position) {
  if (position > bytes_.size()) throw ProtocolError("a message ends too early");
  at_ = position;
}

}  // namespace luming::tds
