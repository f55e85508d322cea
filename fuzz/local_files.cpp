#include "frame/local_files.h"

#include <cstdint>

#include "demand.h"
#include "util/text.h"

using namespace luming;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  for (int record = 1; record <= 8; ++record) {
    try {
      Demand(IsValidUtf8(ReadRecord(bytes, record)));
    } catch (const Failure& failure) {
      Demand(failure.number() == failure::kBadRecordLength || failure.number() == failure::kPastEndOfFile);
    }
  }
  const std::string user = LastUserOf(bytes);
  Demand(IsValidUtf8(user) && user.find_first_of("\r\n") == std::string::npos);
  return 0;
}
