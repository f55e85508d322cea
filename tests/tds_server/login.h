#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace luming::tds {

/// What a client says when it logs in.
struct Login {
  unsigned version = 0;  ///< the protocol's: 0x74 for 7.4
  std::uint32_t packet_size = 0;
  std::string user;
  std::string password;
  std::string database;
};

/// Reads the message LOGIN7. Throws ProtocolError.
Login ReadLogin(std::string_view body);

/// The answer to the message PRELOGIN: no encryption.
std::string PreloginAnswer();

}  // namespace luming::tds
