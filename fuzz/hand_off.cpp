#include <algorithm>
#include <cstdint>

#include "demand.h"
#include "frame/startup.h"

using namespace luming;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view tail(reinterpret_cast<const char*>(data), size);
  const bool whole = std::ranges::count(tail, '$') >= 3;
  try {
    const HandOff fields = ParseHandOff(tail);
    Demand(whole);
    Demand(tail.starts_with(fields.connection + "$" + fields.name + "$" + fields.typed + "$"));
  } catch (const Failure& failure) {
    Demand(!whole && failure.number() == failure::kInvalidCall);
  }
  return 0;
}
