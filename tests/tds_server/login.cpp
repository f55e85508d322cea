#include "tds_server/login.h"

#include "tds_server/wire.h"

namespace luming::tds {
namespace {

// Places of the fixed part; a text is told by its offset and its count of characters.
constexpr std::size_t kVersionPlace = 4;
constexpr std::size_t kUserPlace = 40;
constexpr std::size_t kPasswordPlace = 44;
constexpr std::size_t kDatabasePlace = 68;

std::string TextBytes(std::string_view body, std::size_t place) {
  Reader reader(body);
  reader.MoveTo(place);
  const std::size_t offset = reader.U16();
  const std::size_t count = reader.U16();
  reader.MoveTo(offset);
  return std::string(reader.Raw(count * 2));
}

// Each byte of a password has its halves changed and is then disguised by a constant.
std::string Undisguised(std::string bytes) {
  for (char& byte : bytes) {
    const unsigned value = static_cast<unsigned char>(byte) ^ 0xa5U;
    byte = static_cast<char>((value >> 4) | (value << 4));
  }
  return bytes;
}

}  // namespace

Login ReadLogin(std::string_view body) {
  Login login;
  Reader reader(body);
  reader.MoveTo(kVersionPlace);
  login.version = reader.U32() >> 24;
  login.packet_size = reader.U32();
  login.user = Utf8Of(TextBytes(body, kUserPlace));
  login.password = Utf8Of(Undisguised(TextBytes(body, kPasswordPlace)));
  login.database = Utf8Of(TextBytes(body, kDatabasePlace));
  return login;
}

std::string PreloginAnswer() {
  // Version 16.0.0 and encryption not supported, each told by number, offset and size; those numbers have the high byte
  // first.
  using std::string_view_literals::operator""sv;
  return std::string(
      "\x00\x00\x0b\x00\x06"
      "\x01\x00\x11\x00\x01"
      "\xff"
      "\x10\x00\x00\x00\x00\x00"
      "\x02"sv);
}

}  // namespace luming::tds
