#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "demand.h"
#include "sqlserver/server_browser.h"
#include "util/text.h"

using namespace luming;

/// What a stranger on the network sends as the answer of a server browser: some names, all of them text that can be
/// shown and typed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string whole =
      std::string("\x05") + static_cast<char>(size & 0xFF) + static_cast<char>(size >> 8 & 0xFF) + std::string(bytes);
  for (const std::string_view answer : {bytes, std::string_view(whole)}) {
    for (const std::string& server : ServersOf(answer)) {
      Demand(IsValidUtf8(server));
      Demand(!server.empty() && server.find_first_of(";\r\n") == std::string::npos);
    }
  }
  return 0;
}
