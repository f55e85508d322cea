#include "office/biff_records.h"

#include <bit>

#include "util/utf16.h"

namespace luming {

BiffBytes& BiffBytes::Double(double value) {
  return Put(std::bit_cast<std::uint64_t>(value));
}

BiffBytes& BiffBytes::ShortText(std::string_view utf8) {
  const std::u16string units = ToUtf16(utf8);
  U8(static_cast<unsigned>(units.size())).U8(1);
  for (const char16_t unit : units) U16(unit);
  return *this;
}

BiffBytes& BiffBytes::LongText(std::string_view utf8) {
  const std::u16string units = ToUtf16(utf8);
  U16(static_cast<unsigned>(units.size())).U8(1);
  for (const char16_t unit : units) U16(unit);
  return *this;
}

void BiffStream::Record(std::uint16_t id, std::string_view body) {
  BiffBytes head;
  head.U16(id).U16(static_cast<unsigned>(body.size()));
  bytes_ += head.bytes();
  bytes_ += body;
}

void BiffStream::Patch(std::size_t position, std::uint32_t value) {
  bytes_.replace(position, sizeof value, BiffBytes().U32(value).bytes());
}

}  // namespace luming
