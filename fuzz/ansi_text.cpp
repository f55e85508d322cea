#include "util/ansi_text.h"

#include <cstdint>

#include "demand.h"
#include "util/date_text.h"
#include "util/text.h"

using namespace luming;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::string utf8 = FromAnsi(bytes);
  Demand(IsValidUtf8(utf8));
  if (utf8.find("\uFFFD") == std::string::npos) Demand(ToAnsi(utf8) == bytes);

  const std::string valid = ToValidUtf8(bytes);
  Demand(IsValidUtf8(valid));
  Demand(CharCount(valid) == CharCount(bytes));
  Demand(Join(Characters(bytes), "") == bytes);
  Demand(AnsiLength(bytes) == ToAnsi(bytes).size());

  const std::size_t limit = size > 0 ? data[0] : 0;
  const std::string cut = CutAnsi(valid, limit);
  Demand(IsValidUtf8(cut));
  Demand(IsDate(valid) ? cut == valid : AnsiLength(cut) <= limit && Trim(valid).starts_with(cut));
  return 0;
}
